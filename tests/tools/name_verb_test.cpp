#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tests/tools/command_run.h"
#include "tests/tools/names_lake.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

using NameVerbTest = CommandTest;

std::string const GearboxFile = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";

} // namespace

TEST_F(NameVerbTest, TellsNames) {
    struct Case {
        char const* kind;
        char const* id;
        char const* name;
    };
    Case const cases[] = {
        {"mode", "11", "1. gear drive"},
        {"mode", " 3",
         "Pr\xC3\x9C"
         "fen"},
        {"instrument", "1001", "Spectral value"},
        {"instrument", "17", "(Instr. 17)"},
        {"channel", "+3", "Mix"},
        {"location", "6", "4"},
        {"parameter", "8", "Mesh H1"},
        {"signal", "10", "Input speed"},
        {"physmode", "1", "Gear 1"},
        {"type", "1", "Base"},
        {"bench", "1", "Bench 1"},
        {"job", "1", "Fast"},
        {"set", "1", "Unit A"},
        {"sensorgroup", "5", "Noise"},
        {"sensorconfig", "1", "Standard"},
        {"trigger", "1", "Speed"},
        {"unit", "2", "Hz"},
        {"measurement", "4", "Drag torque"},
        {"polygon", "5", "Limit"},
        {"procedure", "1", "Mean"},
        {"error", "11", "Too loud"},
        {"errorgroup", "1", "Bad"},
    };
    std::string const lake = File(u8"a.lake", NamesLake);
    for (Case const& test : cases) {
        auto const run = RunCommand({"name", lake, test.kind, test.id});
        EXPECT_EQ(run.code, 0) << test.kind;
        EXPECT_EQ(run.err, "") << test.kind;
        EXPECT_EQ(run.out, std::string(test.name) + '\n') << test.kind;
    }
}

TEST_F(NameVerbTest, OffersTheNearest) {
    std::string const lake = File(u8"a.lake", NamesLake);
    struct Case {
        std::vector<std::string> words;
        char const* message;
    };
    Case const cases[] = {
        {{"mode", "13"},
         "13: no such mode; did you mean 12 1. gear coast, 11 1. gear drive or 3 Pr\xC3\x9C"
         "fen?"},
        {{"mode", "20"}, "mode 20 has no name"},
        {{"mode", "2147483647"},
         "2147483647: no such mode; did you mean 30 Idle, 12 1. gear coast or 11 1. gear drive?"},
        {{"channel", "2"}, "2: no such channel; did you mean 1 Fix or 3 Mix?"},
        {{"channel", "-1"}, "-1: no such channel; did you mean 1 Fix or 3 Mix?"},
        {{"mode", "-1"},
         "-1: no such mode; did you mean 1 Idle, 2 Warm up or 3 Pr\xC3\x9C"
         "fen?"},
        {{"polygon", "4"}, "4: no such polygon; did you mean 5 Limit?"},
    };
    for (Case const& test : cases) {
        std::vector<std::string> arguments{"name", "--", lake};
        arguments.insert(arguments.end(), test.words.begin(), test.words.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 1) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, "paramdb: " + std::string(test.message) + '\n');
    }
    auto const empty = RunCommand({"name", File(u8"b.lake", SampleLake), "job", "1"});
    EXPECT_EQ(empty.code, 1);
    EXPECT_EQ(empty.err, "paramdb: 1: no such job\n");
}

TEST_F(NameVerbTest, GivesJson) {
    std::string const lake = File(u8"a.lake", NamesLake);
    auto const run = RunCommand({"name", "--format=json", lake, "location", "4"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(nlohmann::ordered_json::parse(run.out).dump(),
              R"({"kind":"location","id":4,"name":"Differential","is_there":true,"nearest":[]})");
    auto const miss = RunCommand({"name", lake, "channel", "2", "--format", "json"});
    EXPECT_EQ(miss.code, 1);
    EXPECT_EQ(nlohmann::ordered_json::parse(miss.out).dump(),
              R"({"kind":"channel","id":2,"name":null,"is_there":false,)"
              R"("nearest":[{"id":1,"name":"Fix"},{"id":3,"name":"Mix"}]})");
    auto const unnamed = RunCommand({"name", lake, "mode", "20", "--format", "json"});
    EXPECT_EQ(unnamed.code, 1);
    EXPECT_EQ(nlohmann::ordered_json::parse(unnamed.out).dump(),
              R"({"kind":"mode","id":20,"name":null,"is_there":true,"nearest":[]})");
}

TEST_F(NameVerbTest, NamesVirtualModes) {
    ASSERT_EQ(RunCommand({"name", GearboxFile, "mode", "11"}).out, "1. gear drive\n");
    CQtParamInstance const parameters;
    int const intervals[] = {3, 2};
    int const states[] = {3, 1};
    int const extension = parameters.VirtModeExtension(intervals, states);
    int const mode = parameters.VirtModeGenerateId(11, extension);
    ASSERT_TRUE(parameters.IsVirtualMode(mode));
    std::string const name = paramdb::ToUtf8(parameters.ModeName(mode));
    auto const run = RunCommand({"name", GearboxFile, "mode", std::to_string(mode)});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, name + '\n');
    EXPECT_NE(name, "");
    // Without its base mode it is none.
    int const baseless = parameters.VirtModeGenerateId(99, extension);
    auto const miss = RunCommand({"name", GearboxFile, "mode", std::to_string(baseless)});
    EXPECT_EQ(miss.code, 1);
    EXPECT_EQ(miss.err, "paramdb: " + std::to_string(baseless) +
                            ": no such mode; did you mean 100 Calibration, 92 R coast or 91 R drive?\n");
}

TEST_F(NameVerbTest, WrongArguments) {
    std::string const lake = File(u8"a.lake", NamesLake);
    struct Case {
        std::vector<std::string> words;
        std::string message;
    };
    Case const cases[] = {
        {{lake}, "paramdb: a KIND and an ID are required behind the files\n"},
        {{"mode", "11"}, "paramdb: a KIND and an ID are required behind the files\n"},
        {{lake, "Mode", "11"}, "paramdb: Mode: no such kind; did you mean mode?\n"},
        {{"mode", "11", lake}, "paramdb: 11: no such kind; the files stand before it\n"},
        {{lake, "mode", "x\n"},
         "paramdb: x\xEF\xBF\xBD: the ID is a number of 32 bits; `paramdb id` looks for a name\n"},
        {{lake, "mode", ""}, "paramdb: \"\": the ID is a number of 32 bits; `paramdb id` looks for a name\n"},
        {{lake, "mode", "2147483648"},
         "paramdb: 2147483648: the ID is a number of 32 bits; `paramdb id` looks for a name\n"},
        {{}, "FILE is required\nRun with --help for more information.\n"},
        {{lake, "mode", "1", "--format", "csv"},
         "--format: csv not in {text,json}\nRun with --help for more information.\n"},
    };
    for (Case const& test : cases) {
        std::vector<std::string> arguments{"name"};
        arguments.insert(arguments.end(), test.words.begin(), test.words.end());
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 2) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, test.message);
    }
    EXPECT_EQ(RunCommand({"name", File(u8"old.lake", RefusedLake), "mode", "1"}).code, 2);
    EXPECT_EQ(RunCommand({"name", Name(u8"none.lake"), "mode", "1"}).code, 2);
    EXPECT_EQ(RunCommand({"name", File(u8"faulty.lake", FaultyLake), "mode", "1"}).code, 1);
}

TEST_F(NameVerbTest, Help) {
    auto const run = RunCommand({"name", "--help"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.out.starts_with("Load parameter files and tell the name of an id\n"
                                    "Usage: paramdb name [OPTIONS] FILE... KIND ID\n"))
        << run.out;
}
