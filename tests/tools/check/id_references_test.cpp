#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace {

class IdReferencesTest : public CheckTest {};

std::string const Names = TableText("TInstrument", {"1001 Value", "2500 Spectrum"}) +
                          TableText("TInstrumentParam", {"5 2500 Raw 0 0 0", "7 1001 Mesh 0 0 0"}) +
                          TableText("TTrigger", {"1 Speed 0", "3 Time 0"});
// The lines of the above.
constexpr int NamesLines = 12;

std::string At(int line, std::string const& text) {
    return std::to_string(NamesLines + line) + ':' + text;
}

} // namespace

TEST_F(IdReferencesTest, References) {
    struct Case {
        std::string text;
        Texts findings;
    };
    Case const cases[] = {
        {TableText("TIpSpectralValue", {"7 1 -1 6 O1 2500 5"}) + TableText("TIpSpectrum", {"5 3 20 0 0"}),
         {}},
        // -1 is no reference.
        {TableText("TIpSpectralValue", {"7 -1 -1 6 O1 -1 -1"}) + TableText("TIpSpectrum", {"5 -1 20 0 0"}),
         {}},
        {TableText("TIpSpectralValue", {"7 2 -1 6 O1 2500 6"}) + TableText("TIpSpectrum", {"5 0 20 0 0"}),
         {At(2, "3 P301 trigger refers to 2, which <TTrigger> does not have"),
          At(2, "18 P301 source_parameter refers to 6, which <TInstrumentParam> does not have"),
          At(5, "3 P301 trigger refers to 0, which <TTrigger> does not have")}},
        {TableText("TIpSpectralValue", {"7 2147483647 -1 6 O1 2501 5"}) +
             TableText("TIpSpectrum", {"5 -2147483648 20 0 0"}),
         {At(2, "3 P301 trigger refers to 2147483647, which <TTrigger> does not have"),
          At(2, "22 P301 source_instrument refers to 2501, which <TInstrument> does not have"),
          At(2, "22 P304 parameter 5 Raw belongs to instrument 2500 Spectrum, not to 2501"),
          At(5, "3 P301 trigger refers to -2147483648, which <TTrigger> does not have")}},
        // Nothing is known of the channels and modes of these keys.
        {TableText("TLimSValue", {"9 1001 9 9 7 9 1 0 1"}), {}},
        {TableText("TMode", {}) + TableText("TLimSValue", {"9 1001 9 9 7 9 1 0 1"}),
         {At(4, "1 P302 <TMode> has no mode 9, so nothing asks for this row")}},
        {TableText("TMode", {"1 a", "3 b"}) +
             TableText("TLimSValue", {"1 1001 -1 -1 8 -1 1 0 1", "2 1001 -1 -1 7 -1 1 0 1",
                                      "2 1001 -1 -1 8 -1 1 0 1", "4 1001 -1 -1 7 -1 1 0 1"}),
         {At(6, "14 P302 <TInstrumentParam> has no parameter 8, so nothing asks for this row nor for 1 other "
                "row "
                "of the table"),
          At(7,
             "1 P302 <TMode> has no mode 2, so nothing asks for this row nor for 1 other row of the table"),
          At(9, "1 P302 <TMode> has no mode 4, so nothing asks for this row")}},
        // Rotors are told once in all tables.
        {TableText("TLocation", {"1 Shaft"}) + TableText("TBaseOrder", {"1 1", "2 1", "-1 1"}) +
             TableText("TGearDiameter", {"2 1", "3 1"}),
         {At(6, "1 P303 gear 2 has no name in <TLocation>"),
          At(11, "1 P303 gear 3 has no name in <TLocation>")}},
        // Polygons are points; one by two points needs none.
        {TableText("TIpPolygon", {"1 0 a"}) + TableText("TIpPolygonValue", {"1 0 0", "1 1 0"}) +
             TableText("TIpTrackPolygon",
                       {"-1 -1 -1 -1 7 -1 1 0 3 5 0 0 0 0 0 0", "-1 -1 -1 1 7 -1 2 0 3 5 0 0 0 0 0 0",
                        "-1 -1 -1 2 7 -1 2 0 3 5 0 1 0 1 0 0"}),
         {At(10, "17 P301 polygon refers to 2, which <TIpPolygonValue> does not have")}},
        // Speed sources have a table of their own.
        {TableText("TSpeedSource", {"1 10"}) + TableText("TRotorSpeedSource", {"1 1 1", "1 2 2", "1 3 -1"}),
         {At(6, "5 P301 referred_id refers to 2, which <TSpeedSource> does not have")}},
        // The load writes the instruments of relative limits.
        {TableText("TRelativeLimit", {"-1 9 -1 -1 7 -1 1 1"}), {}},
        {TableText("TLimSValue",
                   {"1 2500 -1 -1 7 -1 1 0 1", "1 1001 -1 -1 5 -1 1 0 1", "2 2500 -1 -1 7 -1 1 0 1"}),
         {At(2,
             "3 P304 parameter 7 Mesh belongs to instrument 1001 Value, not to 2500, here and in 1 other row "
             "of the table"),
          At(3, "3 P304 parameter 5 Raw belongs to instrument 2500 Spectrum, not to 1001")}},
    };
    for (Case const& test : cases) {
        Texts found = Findings({Names + test.text}, "3");
        for (std::string& finding : found)
            finding.erase(0, 2);
        // Parameters without settings are another rule's.
        std::erase_if(found,
                      [](std::string const& finding) { return finding.find(" P305 ") != std::string::npos; });
        EXPECT_EQ(found, test.findings) << test.text;
    }
}

TEST_F(IdReferencesTest, HintsNameTheNearest) {
    struct Case {
        std::string text;
        std::string hint;
    };
    Case const cases[] = {
        {TableText("TTrigger", {"1 Speed 0", "4 Time 0", "9 Torque 0", "12 \"\" 0", "70 Angle 0"}) +
             TableText("TIpSpectrum", {"5 11 20 0 0"}),
         "did you mean 9 Torque, 4 Time or 1 Speed?"},
        {TableText("TTrigger", {}) + TableText("TIpSpectrum", {"5 11 20 0 0"}), "add the row to <TTrigger>"},
        {TableText("TTrigger", {"9 \"\" 0", "12 \"\" 0"}) + TableText("TIpSpectrum", {"5 11 20 0 0"}),
         "did you mean 12?"},
        {TableText("TTrigger", {"9 \"\" 0", "13 \"\" 0"}) + TableText("TIpSpectrum", {"5 11 20 0 0"}),
         "did you mean 9?"},
        {TableText("TIpPolygonValue", {"3 0 0", "3 1 0"}) + TableText("TIpCurvePolygon", {"1 3 0 -1 5 0 0"}) +
             TableText("TIpPolygon", {"3 0 Edge", "4 0 None"}),
         "did you mean 3 Edge?"},
    };
    for (Case const& test : cases) {
        auto const run = RunCommand({"check", File(u8"hint.lake", LakeVersion + test.text)});
        EXPECT_NE(run.out.find(" P301 "), std::string::npos) << run.out;
        EXPECT_NE(run.out.find("  hint: " + test.hint + '\n'), std::string::npos) << run.out;
    }
}

// A virtual mode is as good as its base mode.
TEST_F(IdReferencesTest, VirtualModes) {
    // Bits 27 to 30 are the field of the one parameter.
    std::string const grid =
        TableText("TApplicationSignal", {"10 Speed"}) + TableText("TAppSignalProperty", {"10 3 rpm 0 7 0"}) +
        TableText("TAutoModeParamOrder", {"0 10"}) +
        TableText("TAutoModeParam", {"10 0 1000 100 1 0 1 0 1 1"}) + TableText("TMode", {"1 Idle"});
    std::string const good = std::to_string((3 << 27) + 1);
    std::string const bad = std::to_string((3 << 27) + 2);
    EXPECT_EQ(RuleFindings(grid + TableText("TModeProperty", {"1 0 0 0 0", good + " 0 0 0 0"})), Texts());
    EXPECT_EQ(RuleFindings(grid + TableText("TModeProperty", {"1 0 0 0 0", bad + " 0 0 0 0"})),
              (Texts{"18:1 P302 <TMode> has no mode " + bad + ", so nothing asks for this row"}));
}

// All columns of these tables against plain sets.
TEST_F(IdReferencesTest, RandomTables) {
    std::size_t told = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        auto const below = [&](int limit) {
            return static_cast<int>(random() % static_cast<unsigned>(limit));
        };
        // Ids from -1 to 9, of which each kind has some.
        std::map<std::string, std::set<int>> ids;
        std::string text;
        for (char const* const tag :
             {"TMode", "TInstrument", "TChannel", "TLocation", "TApplicationSignal"}) {
            std::vector<std::string> rows;
            for (int id = 0; id < 10; ++id)
                if (below(5) > 0) {
                    rows.push_back(std::to_string(id) + " n" + std::to_string(id));
                    ids[tag].insert(id);
                }
            text += TableText(tag, rows);
        }
        std::vector<std::string> rows;
        std::set<std::vector<int>> keys;
        int const line = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
        constexpr char const* columns[] = {"TMode", "TInstrument",       "TChannel", "TLocation",
                                           "",      "TApplicationSignal"};
        constexpr char const* words[] = {"mode", "instrument", "channel", "location", "", "signal"};
        std::vector<std::vector<int>> in_file;
        for (int row = 0; row < 30; ++row) {
            std::vector<int> key;
            for (int element = 0; element < 6; ++element)
                key.push_back(below(11) - 1);
            if (!keys.insert(key).second)
                continue;
            in_file.push_back(key);
            std::string row_text;
            for (int const element : key)
                row_text += std::to_string(element) + ' ';
            rows.push_back(row_text + "1 0 1");
        }
        text += TableText("TLimSValue", rows);

        // The first row in key order, and how many there are, for each wrong element.
        std::map<std::pair<std::size_t, int>, std::pair<std::vector<int>, int>> wrong;
        for (std::vector<int> const& key : keys) {
            for (std::size_t element = 0; element < 6; ++element) {
                if (element == 4 || key[element] == -1 || ids[columns[element]].contains(key[element]))
                    continue;
                auto& entry = wrong.try_emplace({element, key[element]}, key, 0).first->second;
                ++entry.second;
            }
        }
        Texts expected;
        for (auto const& [which, where] : wrong) {
            auto const place = std::find(in_file.begin(), in_file.end(), where.first) - in_file.begin();
            std::size_t column = 1;
            for (std::size_t element = 0; element < which.first; ++element)
                column += std::to_string(where.first[element]).size() + 1;
            expected.push_back(
                std::to_string(line + 1 + static_cast<int>(place)) + ':' + std::to_string(column) +
                " P302 <" + columns[which.first] + "> has no " + words[which.first] + ' ' +
                std::to_string(which.second) + ", so nothing asks for this row" +
                (where.second == 1 ? ""
                                   : " nor for " + std::to_string(where.second - 1) + " other row" +
                                         (where.second == 2 ? "" : "s") + " of the table"));
        }
        Texts found = Findings({text}, "3");
        for (std::string& finding : found)
            finding.erase(0, 2);
        std::sort(expected.begin(), expected.end());
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, expected);
        told += expected.size();
    }
    EXPECT_GT(told, 200U);
}
