#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

namespace {

class DriveTrainTest : public CheckTest {};

} // namespace

TEST_F(DriveTrainTest, Tables) {
    struct Case {
        std::string text;
        Texts findings;
    };
    Case const cases[] = {
        // Base orders go by physical gears.
        {TableText("TBaseOrder", {"1 1", "101 13"}) +
             TableText("TVirtual2PhysGear", {"1 90 101", "2 90 102"}) +
             TableText("TOrderSource2Rotor", {"1 1 1", "1 2 1", "90 1 1", "90 2 1", "90 3 1"}),
         {"13:1 P410 order source 90, which is gear 102 there, has no base order in physical mode 2, so the "
          "load "
          "leaves it out",
          "14:1 P410 order source 90 has no base order in physical mode 3, so the load leaves it out"}},
        {TableText("TOrderSource2Rotor", {"1 1 1"}), {}},
        {TableText("TBaseOrder", {}) + TableText("TOrderSource2Rotor", {"1 1 1"}),
         {"4:1 P410 order source 1 has no base order in physical mode 1, so the load leaves it out"}},
        // A ratio may stand under the physical gear or under the number itself.
        {TableText("TRotorSpeed", {"1 1 1 1 1", "1 2 0.5 1 2"}) + TableText("TVirtual2PhysGear", {"1 90 2"}) +
             TableText("TOrderSource2Rotor", {"91 1 1", "92 1 3", "93 1 90", "94 1 3", "95 -1 3", "96 1 -1"}),
         {"10:6 P411 rotor 3 has no ratio in physical mode 1, so every ratio to it is 0"}},
        {TableText("TRotorSpeed", {"1 1 1 1 1"}) +
             TableText("TRotorSpeedSource", {"1 1 1", "2 1 1", "1 2 4", "1 5 -1"}) +
             TableText("TRotorSpeedReference", {"1 2 1", "1 1 4"}),
         {"6:3 P411 rotor 1 has no ratio in physical mode 2, so every ratio to it is 0",
          "7:3 P411 rotor 2 has no ratio in physical mode 1, so every ratio to it is 0",
          "7:5 P411 rotor 4 has no ratio in physical mode 1, so every ratio to it is 0",
          "8:3 P411 rotor 5 has no ratio in physical mode 1, so every ratio to it is 0"}},
        {TableText("TRotorSpeedSource", {"1 1 1"}) + TableText("TRotorSpeedReference", {"1 2 1"}) +
             TableText("TOrderSource2Rotor", {"1 1 1", "2 1 2", "3 1 3", "4 1 3", "1 2 1"}),
         {"10:5 P412 rotor 3 has no speed source in physical mode 1",
          "12:5 P412 rotor 1 has no speed source in physical mode 2"}},
        {TableText("TRotorSpeed", {"1 1 0.33333 1 3", "1 2 0.333 1 3", "1 3 0 0 0", "1 4 -0.5 -1 2",
                                   "1 5 0.5 -1 2", "1 6 7 0 0", "1 7 0 1 2"}),
         {"3:5 P414 the ratio is 0.333, but 1/3 is 0.3333333333333333",
          "4:5 P413 the ratio is 0, so every ratio to this rotor is 0 as well",
          "6:5 P414 the ratio is 0.5, but -1/2 is -0.5",
          "8:5 P413 the ratio is 0, so every ratio to this rotor is 0 as well"}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(RuleFindings(test.text), test.findings) << test.text;
}
