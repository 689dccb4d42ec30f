#include <paramdb/keys/value_base.h>
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/string_tables.h>
#include <paramdb/tables/calc_parameter.h>

#include <gtest/gtest.h>
#include <limits>
#include <list>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace {

wchar_t const* const Names[] = {
    L"Calculation",
    L"Trigger",
    L"Interpretation",
    L"Definition",
    L"Base order ref.",
    L"x start",
    L"x end",
    L"Source instrument",
    L"Source parameter",
    L"Area interpretation",
    L"Polygon",
    L"Avg. const.",
    L"Track transformation",
    L"Track transf. param.",
    L"Offset",
    L"Std.deviation",
    L"Reg. time",
    L"Reg. link",
    L"Reg. source",
    L"Reg. transform.",
    L"Reg. show mode",
    L"Reg. calc mode",
    L"Reg. source id",
    L"Reg. x param 1",
    L"Reg. x param 2",
    L"Reg. x param 3",
    L"Reg. x param 4",
    L"Bin. op. calc. mode",
    L"2nd source instrument",
    L"2nd source parameter",
    L"Source location",
    L"2nd Polygon",
    L"Composite Action Test",
    L"Calculation special",
    L"Shifting Evaluation",
    L"Track parameter A",
    L"Track parameter B",
    L"Track parameter C",
    L"Track parameter D",
    L"Track parameter E",
    L"y start",
    L"y end",
    L"Polygon mode",
    L"SignalGuard mode",
    L"Trend Detection mode",
    L"Learn procedure A",
    L"Learn procedure B",
    L"SignalGuard calculation",
    L"H\u00F6lder power",
    L"Spectral deviation calculation method",
    L"Spectral deviaton std.deviation weight",
    L"End spectrum calculation method",
};

std::map<int, std::vector<std::wstring>> const Words = {
    {0,
     {L"not defined", L"Minimum", L"Maximum", L"Average", L"Log. average / RMS", L"Sum", L"Log. sum",
      L"Position Maximum", L"Position Minimum"}},
    {2, {L"not defined", L"(1)", L"Points maximum", L"(3)", L"(4)", L"(5)", L"Maximum", L"(7)", L"Sum"}},
    {9,
     {L"not defined", L"Minimum", L"Maximum", L"Sum above", L"Sum below", L"Deviation", L"RMS above",
      L"RMS below", L"Minimum value", L"Maximum value", L"Area above", L"Area below",
      L"Loss Integral Response", L"Mean value above", L"Mean value below", L"Mean value overall"}},
    {27,
     {L"invalid", L"Addition", L"Subtraction", L"Multiplication", L"Rel.Magn.", L"Deviation, percent",
      L"Difference, absolute", L"Division"}},
    {33,
     {L"Standard", L"Median", L"Quantile 95%", L"Quantile 90%", L"DbMoyenne (Renault)", L"DbMax (Renault)",
      L"Standard Deviation", L"Quantile Diff. 90%-10%"}},
    {34, {L"End position", L"Maximum position", L"Maximum force", L"Position max. force", L"Shifting time"}},
    {42, {L"Polygon ID", L"2 point definition"}},
    {47, {L"(Shifting noise)", L"Peak", L"RMS", L"H\u00F6lder mean p6"}},
};

// The words that a list leaves out at its end.
std::map<int, std::size_t> const Unlisted = {{34, 2}};

std::vector<std::wstring> Plain(std::list<CString> const& texts) {
    std::vector<std::wstring> result;
    for (CString const& text : texts)
        result.emplace_back(text.GetString());
    return result;
}

class CalcParameterTest : public testing::Test {
protected:
    CalcParameterTest() { CLibMgr::SetLanguage(CLibMgr::Language::english); }
    ~CalcParameterTest() override { CLibMgr::ResetLanguage(); }
    std::list<CString> texts{L"old"};
};

TEST_F(CalcParameterTest, IsARowWithoutFields) {
    static_assert(std::is_base_of_v<QValueBase, QVIpCalcParameter>);
    static_assert(std::tuple_size_v<decltype(QVIpCalcParameter().tuple())> == 0);
    static_assert(QVIpCalcParameter::s_version == 1);
    static_assert(QVIpCalcParameter::NumEnums == 6);
}

TEST_F(CalcParameterTest, NamesOfTheSettings) {
    for (int parameter = 0; parameter < 52; ++parameter)
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumText(parameter), Names[parameter]);
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumTexts(texts), 52u);
    EXPECT_EQ(Plain(texts), std::vector<std::wstring>(std::begin(Names), std::end(Names)));
}

TEST_F(CalcParameterTest, SettingsWithoutName) {
    std::wstring const unknown = CLibMgr().Text(99).GetString();
    ASSERT_FALSE(unknown.empty());
    for (int const parameter :
         {52, -2, 99, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumText(parameter),
                  unknown + L" #" + std::to_wstring(parameter));
}

TEST_F(CalcParameterTest, WordsOfTheValues) {
    for (auto const& [parameter, words] : Words) {
        for (std::size_t value = 0; value < words.size(); ++value)
            EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(parameter, static_cast<int>(value)),
                      words[value]);
        auto const unlisted = Unlisted.find(parameter);
        std::size_t const listed = words.size() - (unlisted != Unlisted.end() ? unlisted->second : 0);
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubTexts(parameter, texts), listed);
        EXPECT_EQ(Plain(texts),
                  std::vector<std::wstring>(words.begin(), words.begin() + static_cast<long>(listed)));
    }
}

TEST_F(CalcParameterTest, MethodsOfTheEndSpectrum) {
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(51, 20), L"max");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(51, 21), L"mean");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(51, 22), L"last");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(51, 0), L"(0)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(51, 23), L"(23)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubTexts(51, texts), 3u);
    EXPECT_EQ(Plain(texts), (std::vector<std::wstring>{L"max", L"mean", L"last"}));
}

TEST_F(CalcParameterTest, ValuesWithoutWord) {
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(1, 3), L"(3)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(0, 9), L"(9)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(-1, -1), L"(-1)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(9, std::numeric_limits<int>::max()),
              L"(2147483647)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(9, std::numeric_limits<int>::min()),
              L"(-2147483648)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubTexts(1, texts), 0u);
    EXPECT_TRUE(texts.empty());
}

TEST_F(CalcParameterTest, AValueBeyondItsSettingFindsTheWordAtItsPlace) {
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(0, 20), L"(Shifting noise)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(0, -100), L"Calculation");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(34, 3), L"Position max. force") << "not in the list";
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(34, 4), L"Shifting time");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(34, 5), L"(5)");
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumText(100), L"not defined") << "the same for a name";
    EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumText(-1), L"Calculation parameter");
}

// A list is replaced, and each of its words is what the lookup of one gives.
TEST_F(CalcParameterTest, OnlyNineSettingsHaveWords) {
    for (int parameter = -2; parameter < 120; ++parameter) {
        SCOPED_TRACE(parameter);
        texts = {L"old", L"older"};
        std::size_t const count = QVIpCalcParameter::GetCalcParamEnumSubTexts(parameter, texts);
        ASSERT_EQ(count, texts.size());
        ASSERT_EQ(count > 0, parameter == 51 || Words.contains(parameter));
        int value = parameter == 51 ? 20 : 0;
        for (CString const& text : texts)
            ASSERT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(parameter, value++), text);
        ASSERT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(parameter, 1000000), L"(1000000)");
    }
}

TEST_F(CalcParameterTest, EveryLanguageHasTheVocabulary) {
    std::map<int, unsigned int> const bases = {{0, 200},  {2, 300},  {9, 500},  {27, 400},
                                               {33, 250}, {34, 290}, {42, 490}, {47, 220}};
    for (paramdb::StringTable const& table : paramdb::StringTables()) {
        SCOPED_TRACE(table.language);
        CLibMgr::SetLanguage(static_cast<CLibMgr::Language>(table.language));
        auto const text = [number = table.language](unsigned int id) {
            wchar_t const* const found = paramdb::FindString(number, id);
            return std::wstring(found != nullptr ? found : L"(none)");
        };
        std::vector<std::wstring> names;
        for (unsigned int id = 100; id <= 151; ++id)
            names.push_back(text(id));
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumTexts(texts), 52u);
        EXPECT_EQ(Plain(texts), names);
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumText(52), (text(99) + L" #52").c_str());
        for (auto const& [parameter, base] : bases) {
            SCOPED_TRACE(parameter);
            std::vector<std::wstring> words;
            for (unsigned int value = 0; value < Words.at(parameter).size(); ++value)
                words.push_back(text(base + value));
            for (std::size_t value = 0; value < words.size(); ++value)
                EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(parameter, static_cast<int>(value)),
                          words[value]);
            auto const unlisted = Unlisted.find(parameter);
            words.resize(words.size() - (unlisted != Unlisted.end() ? unlisted->second : 0));
            EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubTexts(parameter, texts), words.size());
            EXPECT_EQ(Plain(texts), words);
        }
        // These are the same everywhere.
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubTexts(51, texts), 3u);
        EXPECT_EQ(Plain(texts), (std::vector<std::wstring>{L"max", L"mean", L"last"}));
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(51, 21), L"mean");
        EXPECT_EQ(QVIpCalcParameter::GetCalcParamEnumSubText(1, 5), L"(5)");
    }
}

} // namespace
