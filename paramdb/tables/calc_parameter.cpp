#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/tables/calc_parameter.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

namespace {

constexpr int UnknownSetting = 99; // string id
constexpr int FirstSetting = 100;  // string id
constexpr int SettingCount = 52;

// The words of a setting: string ids from the base on. The last setting has words of its own instead.
struct Words {
    int parameter;
    int base;
    int listed; // how many a list shows; more may be there
};
constexpr Words AllWords[] = {
    {0, 200, 9},  {2, 300, 9},  {9, 500, 16}, {27, 400, 8},
    {33, 250, 8}, {34, 290, 3}, {42, 490, 2}, {47, 220, 4},
};

constexpr int EndSpectrumMethod = 51;
constexpr int FirstMethod = 20;
constexpr wchar_t const* Methods[] = {L"max", L"mean", L"last"};

bool LoadText(std::int64_t id, CString& text) {
    if (id < 0 || id > std::numeric_limits<std::int32_t>::max())
        return false;
    return CLibMgr().LoadStringW(static_cast<unsigned int>(id), text);
}

CString ValueInParentheses(int value) {
    CString text;
    text.Format(L"(%d)", value);
    return text;
}

} // namespace

CString QVIpCalcParameter::GetCalcParamEnumText(int parameter) {
    CString text;
    if (LoadText(std::int64_t{FirstSetting} + parameter, text))
        return text;
    CString unknown;
    LoadText(UnknownSetting, unknown);
    text.Format(L"%s #%d", unknown.GetString(), parameter);
    return text;
}

std::size_t QVIpCalcParameter::GetCalcParamEnumTexts(std::list<CString>& texts) {
    texts.clear();
    for (int parameter = 0; parameter < SettingCount; ++parameter)
        texts.push_back(GetCalcParamEnumText(parameter));
    return texts.size();
}

CString QVIpCalcParameter::GetCalcParamEnumSubText(int parameter, int value) {
    CString text;
    if (parameter == EndSpectrumMethod) {
        std::int64_t const method = std::int64_t{value} - FirstMethod;
        return method >= 0 && method < std::ssize(Methods) ? CString(Methods[method])
                                                           : ValueInParentheses(value);
    }
    auto const words = std::ranges::find(AllWords, parameter, &Words::parameter);
    if (words != std::end(AllWords) && LoadText(std::int64_t{words->base} + value, text))
        return text;
    return ValueInParentheses(value);
}

std::size_t QVIpCalcParameter::GetCalcParamEnumSubTexts(int parameter, std::list<CString>& texts) {
    texts.clear();
    auto const words = std::ranges::find(AllWords, parameter, &Words::parameter);
    int const listed = words != std::end(AllWords) ? words->listed : 0;
    for (int value = 0; value < listed; ++value)
        texts.push_back(GetCalcParamEnumSubText(parameter, value));
    if (parameter == EndSpectrumMethod)
        texts.assign(std::begin(Methods), std::end(Methods));
    return texts.size();
}
