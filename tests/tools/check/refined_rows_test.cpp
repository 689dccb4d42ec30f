#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

namespace {

class RefinedRowsTest : public CheckTest {};

} // namespace

TEST_F(RefinedRowsTest, Tables) {
    struct Case {
        std::string text;
        Texts findings;
    };
    auto const code = [](std::string const& place, std::string const& number) {
        return place + " P451 there is no result code " + number +
               ", which the load takes for 3, system error";
    };
    auto const signal = [](std::string const& place, std::string const& which, std::string const& table) {
        return place + " P450 signal " + which + " has no row in <" + table + ">, and the load ends";
    };
    auto const accumulation = [](std::string const& place, std::string const& number) {
        return place + " P452 there is no accumulation " + number + ", which the load takes for 0, none";
    };
    auto const decay = [](std::string const& place, std::string const& number) {
        return place + " P453 the decay " + number + " counts as infinite: the average is over all spectra";
    };
    std::string const limit =
        TableText("TInstrumentParam", {}) + TableText("TRelativeLimit", {"-1 -1 -1 -1 9 -1 1 1"});
    Case const cases[] = {
        // Signals.
        {TableText("TApplicationSignal", {"1 a", "2 b"}) +
             TableText("TAppSignalProperty", {"2 1 g 0 0 0", "1 1 g 0 0 0"}),
         {}},
        {TableText("TApplicationSignal", {"1 a", "2 b"}) +
             TableText("TAppSignalProperty", {"2 1 g 0 0 0", "3 1 g 0 0 0"}),
         {signal("2:1", "1", "TAppSignalProperty"), signal("7:1", "3", "TApplicationSignal")}},
        {TableText("TApplicationSignal", {"1 a", "2 b"}),
         {signal("2:1", "1 as every other", "TAppSignalProperty")}},
        {TableText("TAppSignalProperty", {"4 1 g 0 0 0"}), {signal("2:1", "4", "TApplicationSignal")}},
        // Result codes, also where the load does not come to them.
        {TableText("TErrorGroup", {"1 0 0 a b", "2 3 0 a b", "3 4 0 a b", "4 -1 0 a b"}),
         {code("4:3", "4"), code("5:3", "-1")}},
        {TableText("TErrorGroup", {"1 9 0 a b", "1 8 0 a b", "2 7"}), {code("2:3", "9"), code("4:3", "7")}},
        {TableText("TErrorGroup", {"1 4 0 a b"}) + limit,
         {code("2:3", "4"), "7:13 P308 there is no parameter 9, which ends the load"}},
        // Accumulations of today and of older data.
        {TableText("TIpSpectrum", {"1 -1 0 0 0", "2 -1 2 0 0", "3 -1 3 0 0", "4 -1 20 0 0", "5 -1 21 1000 0",
                                   "6 -1 22 0 0", "7 -1 1 0 0", "8 -1 -20 0 0", "9 -1 23 5 0"}),
         {accumulation("8:6", "1"), accumulation("9:6", "-20"), accumulation("10:6", "23")}},
        {TableText("TIpModSpectrogram", {"1 -1 4 0 0"}), {accumulation("2:6", "4")}},
        {TableText("TIpSgSection",
                   {"1 0 O1 -1 -1 -1 8", "2 0 O1 -1 -1 -1 9", "3 0 O1 -1 -1 -1 3", "4 0 O1 -1 -1 -1 99"}),
         {accumulation("2:17", "8")}},
        // Decays.
        {TableText("TIpSpectrum", {"1 -1 21 999.5 0", "2 -1 3 0 0", "3 -1 3 0.5 0", "4 -1 20 1 0",
                                   "5 -1 21 0 0", "6 -1 21 -3 0", "7 -1 3 1000 0"}) +
             TableText("TIpModSpectrogram", {"1 -1 21 1 0"}),
         {decay("2:9", "999.5"), decay("4:8", "0.5"), decay("6:9", "0"), decay("7:9", "-3"),
          decay("11:9", "1")}},
        // Triggers.
        {TableText("TTriggerParam", {"1 1 1 1 0 0 1 0.5 0 0 0 0 0", "1 1 4 1 0 0 1 0.5 0 0 0 0 0"}), {}},
        {TableText("TTriggerParam", {"1 1 0 1 0 0 1 0.5 0 0 0 0 0", "1 1 5 1 0 0 1 0 0 0 0 0 0",
                                     "1 2 1 1 0 0 1 -2 0 0 0 0 0"}),
         {"2:5 P460 a trigger has no dimension 0, and every query for this trigger fails",
          "3:5 P460 a trigger has no dimension 5, and every query for this trigger fails",
          "3:15 P461 the step 0 makes no cells", "4:15 P461 the step -2 makes no cells"}},
    };
    for (Case const& test : cases) {
        EXPECT_EQ(RuleFindings(test.text), test.findings) << test.text;
        // Each message of the load has its finding.
        for (std::string const& finding : Findings({test.text}, "1"))
            EXPECT_EQ(finding.find("the load reports"), std::string::npos) << finding;
    }
}
