#include <paramdb/distillery/signal_unit.h>

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace paramdb {
namespace {

// Held while a unit text is read or rewritten.
std::mutex unit_texts;

bool HasCommonUnit(QVAppSignalProperty const& row) {
    int const code = row.get<"unit_code">();
    return code == 0 || (code >= 2 && code <= 30);
}

CMeasuringUnit CommonUnit(int code, int prefix) {
    short const value = 1;
    return CMeasuringUnit(code, prefix, value, 1.0, 0);
}

// The text of a common unit, put together once.
std::wstring const& CommonUnitText(int code, int prefix) {
    static std::map<std::pair<int, int>, std::wstring> texts;
    constexpr std::size_t many = 1000; // prefixes may be garbage
    if (texts.size() > many)
        texts.clear();
    auto const [entry, is_new] = texts.try_emplace({code, prefix});
    if (is_new)
        entry->second = CommonUnit(code, prefix).prefixunit(false).GetString();
    return entry->second;
}

int PrefixOf(QVAppSignalProperty const& row) {
    int const prefix = row.get<"unit_prefix">();
    return prefix == 1 || prefix == -1 ? 0 : prefix;
}

void UpdateText(QVAppSignalProperty& row) {
    if (!HasCommonUnit(row))
        return;
    std::wstring const& text = CommonUnitText(row.get<"unit_code">(), PrefixOf(row));
    if (row.get<"unit">().view() != text)
        row.get<"unit">() = CFixedText(std::wstring_view(text));
}

} // namespace

CMeasuringUnit UnitOf(QVAppSignalProperty& row) {
    std::lock_guard const lock(unit_texts);
    UpdateText(row);
    if (HasCommonUnit(row))
        return CommonUnit(row.get<"unit_code">(), PrefixOf(row));
    CMeasuringUnit unit = CommonUnit(0, 0);
    if (row.get<"unit">().view() != L"----")
        unit.set(row.get<"unit">());
    return unit;
}

CTextBuffer<CFixedText::Capacity> UnitTextOf(QVAppSignalProperty& row) {
    std::lock_guard const lock(unit_texts);
    UpdateText(row);
    CTextBuffer<CFixedText::Capacity> text;
    return text += row.get<"unit">().view();
}

} // namespace paramdb
