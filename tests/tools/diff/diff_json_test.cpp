#include "tests/tools/command_run.h"
#include "tests/tools/diff/lake_edits.h"
#include "tests/tools/drive_lake.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

class DiffJsonTest : public CommandTest {
protected:
    Json Diff(std::string const& a, std::string const& b, std::vector<std::string> const& options = {}) {
        std::vector<std::string> arguments{"diff", File(u8"a.lake", a), File(u8"b.lake", b), "--format",
                                           "json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        auto const run = RunCommand(arguments);
        m_out = run.out;
        Json document = Json::parse(run.out);
        EXPECT_EQ(run.code, document["equal"].get<bool>() ? 0 : 1);
        return document;
    }

    std::string m_out;
};

void ExpectJson(Json const& found, char const* expected) {
    EXPECT_EQ(found.dump(), Json::parse(expected).dump());
}

} // namespace

TEST_F(DiffJsonTest, NoDifference) {
    Json const document = Diff(SampleLake, SampleLake);
    EXPECT_EQ(m_out, "{\n"
                     "  \"a\": {\"files\":[" +
                         Json(Name(u8"a.lake")).dump() +
                         "],\"version\":{\"major\":216,\"minor\":1},\"rows\":9},\n"
                         "  \"b\": {\"files\":[" +
                         Json(Name(u8"b.lake")).dump() +
                         "],\"version\":{\"major\":216,\"minor\":1},\"rows\":9},\n"
                         "  \"equal\": true,\n"
                         "  \"summary\": {\"tables\":0,\"added\":0,\"removed\":0,\"changed\":0},\n"
                         "  \"header\": [],\n"
                         "  \"tables\": [],\n"
                         "  \"consequences\": {\n"
                         "    \"speed\": 50.0,\n"
                         "    \"line_distance\": null,\n"
                         "    \"limits\": {\"added\":0,\"removed\":0,\"changed\":0},\n"
                         "    \"topics\": []\n"
                         "  }\n"
                         "}\n");
}

TEST_F(DiffJsonTest, GivesRows) {
    std::string b = Edited(SampleLake, "\t2 \"Warm up\"\n", "\t12 \"1. gear coast\"\n");
    b = Edited(b, "\t1 1 0.1 1 10\n", "\t1 1 nan 1 10\n");
    b = Edited(b, "MinorVersion>: 1", "MinorVersion>: 2") + "<QType><FBaseName>: \"TG 1\"\n";
    b += "<TTriggerParam>: {\n11 2 1 2 10 0 100 10 0 0 0 0 0\n}\n";
    Json const document = Diff(SampleLake, b);
    EXPECT_EQ(document["equal"], false);
    ExpectJson(document["summary"], R"({"tables": 3, "added": 2, "removed": 1, "changed": 1})");
    ExpectJson(document["header"], R"([{"name": "minor_version", "a": 1, "b": 2},
                                       {"name": "base_type", "a": "", "b": "TG 1"}])");
    ASSERT_EQ(document["tables"].size(), 3U);
    ExpectJson(document["tables"][0], R"({
        "tag": "<TMode>", "rows_a": 4, "rows_b": 4, "counts": {"added": 1, "removed": 1, "changed": 0},
        "added": [{"key": {"mode": 12}, "row": {"name": "1. gear coast"}, "names": {"mode": "1. gear coast"}}],
        "removed": [{"key": {"mode": 2}, "row": {"name": "Warm up"}, "names": {"mode": "Warm up"}}],
        "changed": []})");
    ExpectJson(document["tables"][1], R"({
        "tag": "<TRotorSpeed>", "rows_a": 3, "rows_b": 3, "counts": {"added": 0, "removed": 0, "changed": 1},
        "added": [], "removed": [],
        "changed": [{"key": {"physical_mode": 1, "rotor": 1}, "names": {},
                     "changes": [{"column": "ratio", "a": 0.1, "b": "nan", "name_a": null, "name_b": null}]}]})");
    ExpectJson(document["tables"][2]["added"][0], R"({
        "key": {"mode": 11, "trigger": 2, "dimension": 1},
        "row": {"kind": 2, "value_2": 10, "start": 0.0, "stop": 100.0, "step": 10.0, "value_6": 0.0,
                "value_7": 0, "value_8": 0, "value_9": 0, "value_10": 0},
        "names": {"mode": "1. gear drive"}})");
}

TEST_F(DiffJsonTest, GivesNamesOfBothSides) {
    std::string const b =
        Edited(Edited(DriveLake, "13 1 3 0.5", "13 2 9 0.5"), "2 \"Speed and torque\" 2", "2 \"Both\" 2");
    ExpectJson(Diff(DriveLake, b)["tables"][1]["changed"], R"([
        {"key": {"parameter": 13}, "names": {"parameter": "Level"}, "changes": [
            {"column": "trigger", "a": 1, "b": 2, "name_a": "Speed", "name_b": "Both"},
            {"column": "calculation", "a": 3, "b": 9, "name_a": "Average", "name_b": null}]}])");
}

TEST_F(DiffJsonTest, GivesWhatFollows) {
    std::string const b = Edited(Edited(DriveLake, "\"F100;F200\"", "\"H1;H2\""),
                                 "1 1 1\n}\n<TRotorSpeedReference>", "1 1 -1\n}\n<TRotorSpeedReference>");
    Json const consequences = Diff(DriveLake, b, {"--rpm", "600", "-d", "2"})["consequences"];
    EXPECT_EQ(consequences["speed"], 10.0);
    EXPECT_EQ(consequences["line_distance"], 2.0);
    Json const& topics = consequences["topics"];
    ASSERT_EQ(topics.size(), 3U);
    ExpectJson(topics[0], R"({
        "name": "rotors", "rows_a": 4, "rows_b": 4, "counts": {"added": 0, "removed": 0, "changed": 1},
        "added": [], "removed": [],
        "changed": [{"key": {"physical_mode": 1, "rotor": 1}, "names": {"rotor": "Input shaft"}, "changes": [
            {"column": "ratio", "a": 1.0, "b": 0.0, "name_a": null, "name_b": null},
            {"column": "fraction", "a": "1/1", "b": null, "name_a": null, "name_b": null},
            {"column": "speed_source", "a": 1, "b": null, "name_a": "Input shaft", "name_b": null},
            {"column": "kind", "a": "source", "b": null, "name_a": null, "name_b": null},
            {"column": "signal", "a": 10, "b": null, "name_a": "Input speed", "name_b": null}]}]})");
    EXPECT_EQ(topics[1]["name"], "gears");
    EXPECT_EQ(topics[2]["name"], "intervals");
    ExpectJson(topics[2]["changed"].back(), R"({
        "key": {"parameter": 10, "mode": 11, "interval": 1},
        "names": {"parameter": "Ghost", "mode": "1. gear drive"}, "changes": [
            {"column": "rotor", "a": 1, "b": null, "name_a": "Input shaft", "name_b": null},
            {"column": "lower_hz", "a": 60.0, "b": null, "name_a": null, "name_b": null},
            {"column": "upper_hz", "a": 70.0, "b": null, "name_a": null, "name_b": null},
            {"column": "fault", "a": null, "b": "an order beside a frequency, but the gear has no speed relative to the rotor",
             "name_a": null, "name_b": null}]})");
}

TEST_F(DiffJsonTest, WithoutAnswersNothingFollows) {
    Json const document = Diff(DriveLake, Edited(DriveLake, "10 1 \"\" 0 0 0\n", "11 1 \"\" 0 0 0\n"));
    EXPECT_TRUE(document["consequences"].is_null());
    EXPECT_EQ(document["summary"]["tables"], 1);
}

// Text that is hard to write down, and every row whatever the limit.
TEST_F(DiffJsonTest, GivesAllRowsAndAllCharacters) {
    std::string rows = "<TChannel>: {\n";
    for (int id = 1; id <= 200; ++id)
        rows += std::to_string(id) + " \"\\ \x01 \xE4\"\n";
    Json const document = Diff(SampleLake, SampleLake + rows + "}\n", {"--limit", "3"});
    Json const& added = document["tables"][0]["added"];
    ASSERT_EQ(added.size(), 200U);
    for (int id = 1; id <= 200; ++id) {
        EXPECT_EQ(added[static_cast<std::size_t>(id - 1)]["key"]["channel"], id);
        EXPECT_EQ(added[static_cast<std::size_t>(id - 1)]["row"]["name"], "\\ \x01 \xC3\xA4");
    }
}
