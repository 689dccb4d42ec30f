#include "tools/report.h"

#include <gtest/gtest.h>
#include <locale>
#include <nlohmann/json.hpp>
#include <sstream>

using namespace paramdb::tools;

TEST(ReportText, PrintableKeepsTextAndHidesControls) {
    struct Case {
        std::wstring text;
        std::string shown;
    };
    Case const cases[] = {
        {L"", ""},
        {L"1. gear drive", "1. gear drive"},
        {L"Pr\u00FCfstand", "Pr\u00FCfstand"},
        {L"\xD83D\xDE00", "\xF0\x9F\x98\x80"}, // a surrogate pair
        {L"a\x1B[31mb", "a\uFFFD[31mb"},       // an escape sequence
        {L"a\nb\tc", "a\uFFFDb\uFFFDc"},       // what would break the layout
        {L"\x7F\x80\x9F\xA0", "\uFFFD\uFFFD\uFFFD\xC2\xA0"},
        {L"\xDCFF.lake", "\xFF.lake"}, // a byte of a file name that is no UTF-8
    };
    for (Case const& test : cases)
        EXPECT_EQ(Printable(test.text), test.shown);
}

TEST(ReportText, WidthCountsCharacters) {
    EXPECT_EQ(TextWidth(""), 0U);
    EXPECT_EQ(TextWidth("gear"), 4U);
    EXPECT_EQ(TextWidth("Pr\u00FCfstand"), 9U);
    EXPECT_EQ(TextWidth("\xF0\x9F\x98\x80\uFFFD"), 2U);
}

TEST(ReportText, GroupedPutsDigitsInThrees) {
    struct Case {
        std::uint64_t number;
        std::string text;
    };
    Case const cases[] = {
        {0, "0"},
        {7, "7"},
        {999, "999"},
        {1000, "1 000"},
        {12345, "12 345"},
        {100000, "100 000"},
        {1234567, "1 234 567"},
        {18446744073709551615U, "18 446 744 073 709 551 615"},
    };
    for (Case const& test : cases)
        EXPECT_EQ(Grouped(test.number), test.text);
}

TEST(ReportText, FixedHasItsDecimals) {
    EXPECT_EQ(Fixed(0, 1), "0.0");
    EXPECT_EQ(Fixed(1234.56, 1), "1234.6");
    EXPECT_EQ(Fixed(-0.125, 2), "-0.12");
    EXPECT_EQ(Fixed(2.5, 0), "2");
    EXPECT_EQ(Fixed(1.7976931348623157e308, 2).size(), 312U);
}

TEST(ReportText, DurationPicksItsUnit) {
    EXPECT_EQ(Duration(0), "0.00 ms");
    EXPECT_EQ(Duration(0.0012345), "1.23 ms");
    EXPECT_EQ(Duration(0.999), "999.00 ms");
    EXPECT_EQ(Duration(1), "1.00 s");
    EXPECT_EQ(Duration(75.256), "75.26 s");
}

TEST(ReportText, NumbersAreTheSameUnderEveryLocale) {
    struct Commas : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Commas));
    std::string const texts = Fixed(1234.5, 1) + "|" + Grouped(1234) + "|" + Duration(0.5);
    std::ostringstream json;
    PrintJson(json, {{"number", 1234.5}});
    std::locale::global(before);
    EXPECT_EQ(texts, "1234.5|1 234|500.00 ms");
    EXPECT_EQ(json.str(), "{\n  \"number\": 1234.5\n}\n");
}

TEST(ReportText, TableAlignsByCharacters) {
    using enum TextTable::Align;
    TextTable table({Left, Right, Left});
    table.Add({"name", "count", "note"});
    table.Add({"Pr\u00FCfstand", "1", "x"});
    table.Add({"b", "12 345"});
    table.Add({});
    std::ostringstream out;
    table.Print(out);
    EXPECT_EQ(out.str(), "name        count  note\n"
                         "Pr\u00FCfstand       1  x\n"
                         "b          12 345\n"
                         "\n");
}

TEST(ReportText, AnEmptyTableIsNothing) {
    std::ostringstream out;
    TextTable({TextTable::Align::Left}).Print(out);
    EXPECT_EQ(out.str(), "");
}

TEST(ReportJson, KeepsTheOrderOfKeysAndReplacesWhatIsNoUtf8) {
    nlohmann::ordered_json document;
    document["zeta"] = "a\xFF"
                       "b";
    document["alpha"] = nlohmann::ordered_json::array();
    std::ostringstream out;
    PrintJson(out, document);
    EXPECT_EQ(out.str(), "{\n  \"zeta\": \"a\uFFFDb\",\n  \"alpha\": []\n}\n");
}
