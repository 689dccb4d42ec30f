#include "tools/html_report/script_json.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>

using namespace paramdb::tools;
using paramdb::ConstField;

namespace {

using Json = nlohmann::ordered_json;

std::string TextJson(std::wstring_view text) {
    std::string out;
    AppendScriptText(out, text);
    return out;
}

template <class T>
std::string FieldJson(T const& value) {
    std::string out;
    AppendScriptField(out, ConstField(value));
    return out;
}

// What may stand in a script of any page in any encoding.
void ExpectHarmless(std::string const& json) {
    for (char const letter : json) {
        bool const is_ascii = letter >= 0x20 && letter < 0x7F;
        EXPECT_TRUE(is_ascii && letter != '<' && letter != '>' && letter != '&') << json;
    }
}

// The units that a JSON string of ASCII stands for.
std::wstring Units(std::string const& json) {
    std::wstring units;
    for (std::size_t place = 1; place + 1 < json.size(); ++place) {
        if (json[place] != '\\') {
            units += static_cast<wchar_t>(json[place]);
            continue;
        }
        EXPECT_EQ(json.substr(place, 2), "\\u");
        units += static_cast<wchar_t>(std::stoul(json.substr(place + 2, 4), nullptr, 16));
        place += 5;
    }
    return units;
}

} // namespace

TEST(ScriptJson, Texts) {
    struct Case {
        std::wstring_view text;
        char const* json;
    };
    using namespace std::string_view_literals;
    Case const cases[] = {
        {L""sv, R"("")"},
        {L"1. gear drive"sv, R"("1. gear drive")"},
        {L"<img src=x onerror=alert(1)>"sv, R"("\u003cimg src=x onerror=alert(1)\u003e")"},
        {L"</script><!--"sv, R"("\u003c/script\u003e\u003c!--")"},
        {L"a&b"sv, R"("a\u0026b")"},
        {L"\"'\\/"sv, R"("\u0022'\u005c/")"},
        {L"\x01\t\n\x1B\x7F"sv, R"("\u0001\u0009\u000a\u001b\u007f")"},
        {L"a\0b"sv, R"("a\u0000b")"},
        {L"Pr\u00FCfen \u20AC"sv, R"("Pr\u00fcfen \u20ac")"},
        {L"\u2028\u2029\u202E\uFEFF\uFFFF"sv, R"("\u2028\u2029\u202e\ufeff\uffff")"},
        {L"\xD83D\xDE00"sv, R"("\ud83d\ude00")"},
        {L"\xD83D lone \xDC80"sv, R"("\ud83d lone \udc80")"},
    };
    for (Case const& test : cases)
        EXPECT_EQ(TextJson(test.text), test.json);
    if constexpr (sizeof(wchar_t) == 4) {
        wchar_t const wide[] = {static_cast<wchar_t>(0x1F600), static_cast<wchar_t>(0x110000)};
        EXPECT_EQ(TextJson({wide, 2}), R"("\ud83d\ude00\ufffd")");
    }
}

TEST(ScriptJson, AnyTextComesBack) {
    constexpr unsigned Seed = 20240917;
    std::mt19937 random(Seed);
    std::uniform_int_distribution<unsigned> length(0, 40);
    std::uniform_int_distribution<unsigned> any(0, 0xFFFF);
    std::uniform_int_distribution<unsigned> near(0, 0x7F);
    for (int round = 0; round < 5000; ++round) {
        SCOPED_TRACE("seed " + std::to_string(Seed) + ", round " + std::to_string(round));
        std::wstring text(length(random), L' ');
        for (wchar_t& unit : text)
            unit = static_cast<wchar_t>(round % 2 == 0 ? any(random) : near(random));
        std::string const json = TextJson(text);
        ExpectHarmless(json);
        EXPECT_EQ(Units(json), text);
    }
}

TEST(ScriptJson, Fields) {
    constexpr std::int64_t Room = std::int64_t{1} << 53;
    EXPECT_EQ(FieldJson(std::int32_t{-1}), "-1");
    EXPECT_EQ(FieldJson(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(FieldJson(std::uint32_t{4294967295U}), "4294967295");
    EXPECT_EQ(FieldJson(Room), "9007199254740992");
    EXPECT_EQ(FieldJson(-Room), "-9007199254740992");
    EXPECT_EQ(FieldJson(Room + 1), R"("9007199254740993")");
    EXPECT_EQ(FieldJson(std::numeric_limits<std::int64_t>::min()), R"("-9223372036854775808")");
    EXPECT_EQ(FieldJson(0.1f), "0.1");
    EXPECT_EQ(FieldJson(0.1), "0.1");
    EXPECT_EQ(FieldJson(-0.0), "-0");
    EXPECT_EQ(FieldJson(1e30f), "1e+30");
    EXPECT_EQ(FieldJson(std::numeric_limits<float>::infinity()), R"("inf")");
    EXPECT_EQ(FieldJson(-std::numeric_limits<double>::infinity()), R"("-inf")");
    EXPECT_EQ(FieldJson(-std::nan("")), R"("nan")");
    EXPECT_EQ(FieldJson(CFixedText(L"<b>")), R"("\u003cb\u003e")");
}

TEST(ScriptJson, Documents) {
    std::string out = "before ";
    AppendScriptJson(out, {{"a<b", Json::array({1, 2.5, nullptr, true})},
                           {"text", "</script> & \xC3\xBC \xE2\x80\xA8 \x7F \"\\\n"},
                           {"no utf-8", "\xFF"}});
    EXPECT_EQ(out, R"(before {"a\u003cb":[1,2.5,null,true],)"
                   R"("text":"\u003c/script\u003e \u0026 \u00fc \u2028 \u007f \"\\\n","no utf-8":"\ufffd"})");
    ExpectHarmless(out);
}
