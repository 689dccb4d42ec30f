#include <paramdb/tables/field.h>

namespace paramdb {

wchar_t const* FieldTypeName(FieldType type) {
    constexpr wchar_t const* names[] = {L"int", L"unsigned int", L"int64", L"float", L"double", L"text"};
    return names[static_cast<std::size_t>(type)];
}

void ReserveTexts(std::span<Field const> fields) {
    for (Field const& field : fields)
        if (field.type() == FieldType::Text)
            field.As<CFixedText>().ReserveAll();
}

std::size_t TextBytes(std::span<ConstField const> fields) {
    std::size_t bytes = 0;
    for (ConstField const& field : fields)
        if (field.type() == FieldType::Text)
            bytes += field.As<CFixedText>().HeapBytes();
    return bytes;
}

} // namespace paramdb
