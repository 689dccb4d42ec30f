#include <paramdb/query/param_instance.h>

#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"
#include "tools/check/class_tables.h"
#include "tools/table_names.h"

#include <map>
#include <random>

using namespace paramdb::tools;

namespace {

class ParameterRowsTest : public CheckTest {};

} // namespace

TEST_F(ParameterRowsTest, ClassTablesAreThoseOfTheCatalogue) {
    int last = 0;
    for (check::ClassTable const& table : check::ClassTables()) {
        SCOPED_TRACE(table.instrument);
        EXPECT_LT(last, table.instrument);
        last = table.instrument;
        auto const* const description = FindTable(table.table);
        ASSERT_NE(description, nullptr);
        EXPECT_TRUE(description->instrument_class == -1 || description->instrument_class == table.instrument);
        EXPECT_EQ(check::ClassTableOf(table.instrument), &table);
    }
    std::size_t families = 0;
    for (auto const& description : paramdb::Catalogue())
        if (description.instrument_class != -1) {
            ++families;
            auto const* const table = check::ClassTableOf(description.instrument_class);
            ASSERT_NE(table, nullptr);
            EXPECT_EQ(FindTable(table->table), &description);
        }
    EXPECT_EQ(families, 22U);
    EXPECT_EQ(check::ClassTableOf(0), nullptr);
    EXPECT_EQ(check::ClassTableOf(10001), nullptr);
    EXPECT_EQ(check::ClassTableOf(99999), nullptr);
}

TEST_F(ParameterRowsTest, Rows) {
    struct Case {
        std::string text;
        Texts findings;
    };
    std::string const spectra = TableText("TInstrument", {"1001 Value", "2500 Spectrum", "2800 Deviation"}) +
                                TableText("TTrigger", {"3 Time 0"});
    Case const cases[] = {
        // Without any table of settings nothing is told.
        {TableText("TInstrumentParam", {"1 2500 a 0 0 0", "2 10001 b 0 0 0", "3 9000 c 0 0 0"}), {}},
        {TableText("TInstrumentParam", {"1 2500 a 0 0 0", "2 10001 b 0 0 0", "3 9000 c 0 0 0"}) +
             TableText("TIpTrackPolygon", {}),
         {
             "10:1 P305 the parameter has no row in <TIpSpectrum>, so it has no settings and no trigger",
             "11:1 P305 the parameter has no row in <TIpTrackPolygon>, so it has no settings",
         }},
        {TableText("TInstrumentParam", {"2 10001 b 0 0 0"}) +
             TableText("TIpTrackPolygon", {"-1 -1 -1 -1 2 -1 -1 0 3 2 0 1 0 1 0 0"}),
         {}},
        {TableText("TInstrumentParam", {"2 10001 b 0 0 0"}) +
             TableText("TIpTrackPolygon", {"-1 -1 -1 -1 -1 -1 -1 0 3 2 0 1 0 1 0 0"}),
         {}},
        {TableText("TInstrumentParam", {"1 2500 a 0 0 0", "2 2500 b 0 0 0", "4 2500 c 0 0 0"}) +
             TableText("TIpSpectrum", {"2 3 0 0 0", "3 -1 0 0 0"}),
         {"10:1 P306 the parameter has no row in <TIpSpectrum> and takes the trigger of the next one there: "
          "3 "
          "Time",
          "12:1 P305 the parameter has no row in <TIpSpectrum>, so it has no settings and no trigger",
          "16:1 P302 <TInstrumentParam> has no parameter 3, so nothing asks for this row"}},
        {TableText("TInstrumentParam", {"1 2500 a 0 0 0", "3 2500 c 0 0 0"}) +
             TableText("TIpSpectrum", {"3 -1 0 0 0"}),
         {"10:1 P306 the parameter has no row in <TIpSpectrum> and takes the trigger of the next one there: "
          "none"}},
        // The load looks for no trigger of these instruments.
        {TableText("TInstrumentParam", {"1 2800 a 0 0 0", "2 2800 b 0 0 0"}) +
             TableText("TIpSpectralDev", {"2 -1 0 0 0 0 0"}),
         {"10:1 P305 the parameter has no row in <TIpSpectralDev>, so it has no settings"}},
        {TableText("TInstrumentParam", {"1 2500 a 0 0 0", "2 2800 b 0 0 0", "3 9000 c 0 0 0"}) +
             TableText("TIpSpectrum", {"1 3 0 0 0", "2 3 0 0 0", "3 3 0 0 0"}) +
             TableText("TIpSpectralDev", {"2 -1 0 0 0 0 0"}),
         {"16:1 P307 the parameter is one of instrument 2800 Deviation, which has nothing to do with "
          "<TIpSpectrum>",
          "17:1 P307 the parameter is one of instrument 9000, which has nothing to do with <TIpSpectrum>"}},
    };
    for (Case const& test : cases) {
        Texts found = RuleFindings(spectra + test.text);
        // Instruments without a name are another rule's.
        std::erase_if(found,
                      [](std::string const& finding) { return finding.find(" P301 ") != std::string::npos; });
        EXPECT_EQ(found, test.findings) << test.text;
    }
}

TEST_F(ParameterRowsTest, RelativeLimits) {
    std::string const parameters = TableText("TInstrumentParam", {"5 2500 Raw 0 0 0", "7 1001 Mesh 0 0 0"});
    struct Case {
        std::vector<std::string> rows;
        Texts findings;
    };
    Case const cases[] = {
        {{"-1 -1 -1 -1 5 -1 1 2", "-1 9 -1 -1 7 -1 1 2"}, {}},
        {{"-1 -1 -1 -1 5 -1 1 2", "-1 0 -1 -1 6 -1 1 2", "-1 1 -1 -1 8 -1 1 2"},
         {"7:12 P308 there is no parameter 6, which ends the load",
          "8:12 P308 there is no parameter 8, which ends the load"}},
        {{"1 -1 -1 -1 -1 -1 1 2", "1 -1 -1 -1 -1 -1 1 2"},
         {"6:12 P308 there is no parameter -1, which ends the load"}},
        {{"1 -1 -1 -1 6", "x"}, {"6:12 P308 there is no parameter 6, which ends the load"}},
    };
    for (Case const& test : cases) {
        Texts const found = RuleFindings(parameters + TableText("TRelativeLimit", test.rows));
        EXPECT_EQ(found, test.findings);
    }
    EXPECT_EQ(RuleFindings(TableText("TRelativeLimit", {"-1 -1 -1 -1 6 -1 1 2"})), Texts());
}

// What is told of triggers against what the library answers.
TEST_F(ParameterRowsTest, RandomTriggers) {
    std::size_t borrowed = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        auto const one_of = [&](unsigned count) { return random() % count == 0; };
        std::map<int, int> own; // parameter to trigger
        std::vector<std::string> parameters;
        std::vector<std::string> rows;
        std::vector<int> ids;
        for (int parameter = 1; parameter <= 25; ++parameter) {
            if (!one_of(3)) {
                parameters.push_back(std::to_string(parameter) + " 2003 p 0 0 0");
                ids.push_back(parameter);
            }
            if (!one_of(2)) {
                own[parameter] = static_cast<int>(random() % 4U) + 1;
                rows.push_back(std::to_string(parameter) + ' ' + std::to_string(own[parameter]) + " 1");
            }
        }
        Texts const found =
            RuleFindings(TableText("TInstrument", {"2003 Rms"}) +
                         TableText("TTrigger", {"1 a 0", "2 b 0", "3 c 0", "4 d 0"}) +
                         TableText("TInstrumentParam", parameters) + TableText("TIpRmsTrack", rows));
        CQtParamInstance const instance;
        for (std::size_t place = 0; place < ids.size(); ++place) {
            std::string const begin = std::to_string(11 + place) + ":1 P30";
            Texts told;
            for (std::string const& finding : found)
                if (finding.starts_with(begin))
                    told.push_back(finding.substr(begin.size()));
            int const trigger = instance.TriggerId(ids[place]);
            if (own.contains(ids[place])) {
                EXPECT_EQ(told, Texts());
                EXPECT_EQ(trigger, own[ids[place]]);
            } else if (trigger == -1) {
                EXPECT_EQ(
                    told,
                    Texts{
                        "5 the parameter has no row in <TIpRmsTrack>, so it has no settings and no trigger"});
            } else {
                ++borrowed;
                EXPECT_EQ(
                    told,
                    Texts{"6 the parameter has no row in <TIpRmsTrack> and takes the trigger of the next "
                          "one there: " +
                          std::to_string(trigger) + ' ' + "0abcd"[trigger]});
            }
        }
    }
    EXPECT_GT(borrowed, 100U);
}
