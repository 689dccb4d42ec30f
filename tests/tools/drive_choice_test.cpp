#include <paramdb/query/param_instance.h>

#include "tests/support/sources.h"
#include "tests/tools/drive_lake.h"
#include "tools/drive_choice.h"

using namespace paramdb::tools;

namespace {

class DriveChoiceTest : public LoadTest {
protected:
    DriveChoiceTest() {
        FillLake(DriveLake);
        CQtParamInstance().ReadTablesFromCandidateLake();
    }
    CQtParamInstance const m_parameters;
};

struct Choice {
    char const* what;
    DriveOptions options;
    DriveQuestion question;
    int mode;
    char const* mode_reason;
    int rotor;
    char const* rotor_reason;
    int gear;
    char const* gear_reason;
};

} // namespace

TEST_F(DriveChoiceTest, ChoosesWhatFits) {
    char const* const reference = "its base order reference";
    for (Choice const& sample : std::vector<Choice>{
             {"a synchronous channel",
              {},
              {.parameter = 7, .gear = 90, .trigger = 1},
              11,
              "chosen among its modes",
              1,
              "that of its channel 1 Sync",
              90,
              reference},
             {"a mixed channel",
              {},
              {.parameter = 8, .gear = 131, .trigger = 2},
              11,
              "chosen among its modes",
              1,
              "the speed source of its channel 2 Mix",
              131,
              reference},
             {"a fixed channel", {}, {.parameter = 9}, 11, "chosen among its modes", -1, "", -1, ""},
             {"not measured",
              {},
              {.parameter = 10, .gear = 1, .trigger = 1},
              11,
              "chosen among all modes",
              1,
              "the speed source of the gear",
              1,
              reference},
             {"nothing asked", {}, {}, 11, "chosen among all modes", -1, "", -1, ""},
             {"a given mode",
              {.mode = 12},
              {.parameter = 8, .gear = 131},
              12,
              "",
              1,
              "the speed source of its channel 2 Mix",
              131,
              reference},
             {"a mode in which it is not measured",
              {.mode = 1},
              {.parameter = 7, .gear = 90},
              1,
              "",
              -1,
              "",
              90,
              reference},
             {"a mode that there is not", {.mode = 99}, {.gear = 90}, 99, "", -1, "", 90, reference},
             {"a given gear",
              {.gear = 131},
              {},
              11,
              "chosen among all modes",
              1,
              "the speed source of the gear",
              131,
              ""},
             {"a given rotor", {.rotor = 2}, {}, 11, "chosen among all modes", 2, "", 2, "the rotor itself"},
             {"all given",
              {.mode = 12, .rotor = 2, .gear = 1},
              {.parameter = 7, .gear = 90},
              12,
              "",
              2,
              "",
              1,
              ""},
             {"ids without use",
              {.rotor = -5, .gear = 2147483647},
              {},
              11,
              "chosen among all modes",
              -5,
              "",
              2147483647,
              ""},
         }) {
        SCOPED_TRACE(sample.what);
        Drive const drive = ChooseDrive(m_parameters, sample.options, sample.question);
        EXPECT_EQ(drive.mode.id.id, sample.mode);
        EXPECT_EQ(drive.mode.reason, sample.mode_reason);
        EXPECT_EQ(drive.rotor.id.id, sample.rotor);
        EXPECT_EQ(drive.rotor.reason, sample.rotor_reason);
        EXPECT_EQ(drive.gear.id.id, sample.gear);
        EXPECT_EQ(drive.gear.reason, sample.gear_reason);
    }
}

// The gear counts more than the trigger, the trigger more than that there are rotors.
TEST_F(DriveChoiceTest, TheModeIsWhereMostHolds) {
    auto const mode = [this](DriveQuestion const& question) {
        return ChooseDrive(m_parameters, {}, question).mode.id;
    };
    EXPECT_EQ(mode({.gear = 131, .trigger = 1}).id, 11);
    EXPECT_EQ(mode({.gear = 77, .trigger = 1}).id, 11); // no such gear
    EXPECT_EQ(mode({}).name, L"1. gear drive");
    FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n<TMode>: {\n5 \"A\"\n6 \"B\"\n"
             "7 \"C\"\n}\n<TModeProperty>: {\n6 1 0 0 0\n7 2 0 0 0\n}\n<TTriggerParam>: {\n"
             "5 1 1 2 10 0 1 1 0 0 0 0 0\n}\n<TRotorSpeed>: {\n1 3 1 1 1\n2 1 1 1 1\n}\n"
             "<TBaseOrder>: {\n1 9\n}\n");
    ASSERT_TRUE(CQtParamInstance().ReadTablesFromCandidateLake());
    EXPECT_EQ(mode({.gear = 1, .trigger = 1}).id, 7);
    EXPECT_EQ(mode({.gear = 4, .trigger = 1}).id, 5);
    EXPECT_EQ(mode({.gear = 4, .trigger = 2}).id, 6);
    CQtParamInstance().PurgeTables();
    EXPECT_EQ(mode({}).id, -1);
}

TEST_F(DriveChoiceTest, FindsTheReferenceOfAParameter) {
    EXPECT_EQ(BaseOrderReference(m_parameters, 7), 90);
    EXPECT_EQ(BaseOrderReference(m_parameters, 8), 131);
    EXPECT_EQ(BaseOrderReference(m_parameters, 9), -1);
    EXPECT_EQ(BaseOrderReference(m_parameters, 13), -1);
    EXPECT_EQ(BaseOrderReference(m_parameters, -1), -1);
}

TEST_F(DriveChoiceTest, FindsTheRotorOfAGear) {
    EXPECT_EQ(RotorOfGear(m_parameters, 11, 90), 1); // through gear 101
    EXPECT_EQ(RotorOfGear(m_parameters, 11, 131), 2);
    EXPECT_EQ(RotorOfGear(m_parameters, 11, 2), 2);   // is one
    EXPECT_EQ(RotorOfGear(m_parameters, 12, 90), 90); // stands for itself where nothing is known
    EXPECT_EQ(RotorOfGear(m_parameters, 11, -1), -1);
    EXPECT_EQ(RotorOfGear(m_parameters, -1, 90), -1);
}
