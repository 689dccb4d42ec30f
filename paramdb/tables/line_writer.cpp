#include <paramdb/tables/line_writer.h>

#include <charconv>
#include <type_traits>

namespace paramdb {

void AppendField(std::wstring& line, ConstField field) {
    field.Visit([&]<class T>(T const& value) {
        if constexpr (std::is_same_v<T, CFixedText>) {
            line += value.view();
        } else {
            char buffer[32];
            std::to_chars_result result{};
            if constexpr (std::is_floating_point_v<T>)
                result =
                    std::to_chars(std::begin(buffer), std::end(buffer), value, std::chars_format::general, 6);
            else
                result = std::to_chars(std::begin(buffer), std::end(buffer), value);
            line.append(std::begin(buffer), result.ptr);
        }
    });
}

void AppendFields(std::wstring& line, std::span<ConstField const> fields) {
    for (ConstField const& field : fields) {
        if (&field != fields.data())
            line += L' ';
        AppendField(line, field);
    }
}

} // namespace paramdb
