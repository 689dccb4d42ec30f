#include <paramdb/platform/core/utf8.h>

#include "tests/support/messages.h"
#include "tests/tools/command_run.h"
#include "tests/tools/diff/lake_edits.h"
#include "tests/tools/drive_lake.h"
#include "tools/diff/answers.h"
#include "tools/short_number.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

using namespace paramdb::tools;

namespace {

// The fields of each row with a bar between key and row.
std::vector<std::string> RowLines(RowTable const& table) {
    std::vector<std::string> lines;
    for (std::size_t row = 0; row < table.size(); ++row) {
        std::string line;
        for (std::size_t column = 0; column < table.columns().columns.size(); ++column) {
            line += column == 0 ? "" : column == table.columns().key_columns ? " | " : ", ";
            line += std::visit(
                []<class T>(T const& field) {
                    if constexpr (std::is_same_v<T, std::wstring_view>)
                        return paramdb::ToUtf8(field);
                    else if constexpr (std::is_floating_point_v<T>)
                        return ShortNumber(field);
                    else
                        return std::to_string(field);
                },
                table.Value(row, column));
        }
        lines.push_back(line);
    }
    return lines;
}

std::size_t PlaceOf(std::string_view topic) {
    auto const topics = AnswerTopics();
    return static_cast<std::size_t>(std::ranges::find(topics, topic, &AnswerTopic::name) - topics.begin());
}

using Expected = std::vector<std::string>;

class AnswersTest : public CommandTest {
protected:
    static Expected Answers(std::string const& lake, std::string_view topic,
                            AnswerOptions const& options = {}) {
        FillLake(lake);
        CQtParamInstance parameters;
        MessageLog const messages;
        EXPECT_TRUE(parameters.ReadTablesFromCandidateLake());
        return RowLines(CollectAnswers(parameters, options).at(PlaceOf(topic)));
    }
};

std::string const GridLake = Edited(
    DriveLake, "<TLocation>: {\n",
    "<TAutoModeParamOrder>: {\n0 10\n}\n<TAutoModeParam>: {\n10 0 1000 100 1 0 1 1 1 1\n}\n<TLocation>: {\n");

} // namespace

TEST_F(AnswersTest, TopicsHaveNamesAndPhrases) {
    std::vector<std::string_view> names;
    for (AnswerTopic const& topic : AnswerTopics()) {
        names.push_back(topic.name);
        EXPECT_FALSE(topic.title.empty());
        EXPECT_FALSE(topic.changed.one.empty());
        EXPECT_EQ(topic.added.one.empty(), topic.removed.one.empty());
        EXPECT_EQ(topic.added.one.empty(), topic.added.several.empty());
        EXPECT_LE(topic.columns.columns.size(), 32U);
        EXPECT_LT(topic.columns.key_columns, topic.columns.columns.size());
    }
    EXPECT_EQ(names, (std::vector<std::string_view>{"mode_layout", "virtual_modes", "channels", "rotors",
                                                    "gears", "intervals", "triggers", "trigger_fields",
                                                    "polygons", "expansions"}));
}

TEST_F(AnswersTest, LayoutOfModes) {
    EXPECT_EQ(Answers(DriveLake, "mode_layout"), (Expected{"1 | 0, 0, ", "11 | 0, 0, ", "12 | 0, 0, "}));
    std::string const grid = "signal 10: 0 to 1000 by 100, 4 bits, state";
    EXPECT_EQ(Answers(GridLake, "mode_layout"),
              (Expected{"1 | 6, 2, " + grid, "11 | 6, 2, " + grid, "12 | 6, 2, " + grid}));
}

TEST_F(AnswersTest, VirtualModes) {
    EXPECT_EQ(Answers(GridLake, "virtual_modes"), Expected{});
    // Interval 2 and state 0 in the top 6 bits below the sign.
    int const id = 11 + (3 << 2 << 25);
    std::string const lake = Edited(Edited(GridLake, "12 10001 2 131 15 10 0 0 0 0 0 0\n}\n",
                                           "12 10001 2 131 15 10 0 0 0 0 0 0\n" + std::to_string(id) +
                                               " 1003 1 1 13 10 0 0 0 0 0 0\n}\n"),
                                    "<TLocation>: {\n", "<TPhysMode>: {\n1 \"Gear 1\"\n}\n<TLocation>: {\n");
    EXPECT_EQ(Answers(lake, "virtual_modes"), Expected{std::to_string(id) + " | 11, 12, Gear 1-i\xC2\xB7"
                                                                            "250"});
}

TEST_F(AnswersTest, Channels) {
    EXPECT_EQ(Answers(DriveLake, "channels"), Expected{});
    std::string const lake = Edited(DriveLake, "<TLocation>: {\n",
                                    "<TChannelInheritance>: {\n3 -1 2\n3 12 1\n2 11 1\n}\n<TLocation>: {\n");
    EXPECT_EQ(Answers(lake, "channels"),
              (Expected{"1, 3 | 2, 6", "11, 2 | 1, 3", "11, 3 | 1, 7", "12, 3 | 1, 5"}));
}

TEST_F(AnswersTest, Rotors) {
    EXPECT_EQ(Answers(DriveLake, "rotors"),
              (Expected{"1, 1 | 1, 1/1, 1, source, 10", "1, 2 | -0.5, -1/2, 1, reference, 10",
                        "2, 1 | 0, , -1, , -1", "2, 2 | 0.25, 1/4, 1, reference, 10"}));
    // Without a mode that has the physical mode nobody can ask.
    EXPECT_EQ(Answers(Edited(DriveLake, "12 2 0 0 0\n", ""), "rotors").size(), 2U);
    // A ratio without a fraction.
    EXPECT_EQ(Answers(Edited(DriveLake, "1 2 -0.5 -1 2\n", "1 2 -0.3 1 0\n"), "rotors")[1],
              "1, 2 | -0.3, , 1, reference, 10");
}

TEST_F(AnswersTest, Gears) {
    EXPECT_EQ(Answers(DriveLake, "gears"),
              (Expected{"1, 90 | 1, 101, 13, 1", "1, 101 | 1, 101, 13, 1", "1, 131 | 2, 131, 17, -0.5",
                        "2, 131 | 2, 131, 17, 0.25"}));
}

TEST_F(AnswersTest, Intervals) {
    EXPECT_EQ(Answers(DriveLake, "intervals"),
              (Expected{"7, 11, 1 | 1, 90, 1 x base order - 2 lines, 1 x base order + 2 lines, orders, 13, "
                        "13, 650, 650, ",
                        "8, 11, 1 | 1, 131, 1 x base order - 0.5 x modulation, 1 x base order + 0.5 x "
                        "modulation, orders, "
                        "8.25, 8.75, 412.5, 437.5, ",
                        "8, 12, 1 | 1, 131, 1 x base order - 0.5 x modulation, 1 x base order + 0.5 x "
                        "modulation, orders, "
                        "4.125, 4.375, 206.25, 218.75, ",
                        "9, 11, 1 | -1, -1, 100 Hz, 200 Hz, Hz, nan, nan, 100, 200, ",
                        "10, 11, 1 | 1, 1, 50 Hz + order 1, 50 Hz + order 2, Hz, nan, nan, 100, 150, "}));
}

TEST_F(AnswersTest, IntervalsTakeSpeedAndLines) {
    AnswerOptions const options{.speed = 10, .line_distance = 0.5f};
    auto const lines = Answers(DriveLake, "intervals", options);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(
        lines[0],
        "7, 11, 1 | 1, 90, 1 x base order - 2 lines, 1 x base order + 2 lines, orders, 12, 14, 120, 140, ");
    EXPECT_EQ(lines[4], "10, 11, 1 | 1, 1, 50 Hz + order 1, 50 Hz + order 2, Hz, nan, nan, 60, 70, ");
}

// A band is the one that `paramdb interval` places.
TEST_F(AnswersTest, IntervalsAgreeWithTheVerb) {
    std::string const name = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";
    LoadTest::Reset();
    CParameterLake::Lake().read(paramdb::FromUtf8(name));
    CQtParamInstance parameters;
    ASSERT_TRUE(parameters.ReadTablesFromCandidateLake());
    RowTable const table = CollectAnswers(parameters, {.speed = 25})[PlaceOf("intervals")];
    ASSERT_GT(table.size(), 500U);
    std::size_t compared = 0;
    std::size_t next = 0;
    for (std::size_t row = 0; row < table.size(); ++row) {
        if (row < next)
            continue;
        next = row + 37; // each run of the command loads the file
        int const parameter = std::get<std::int32_t>(table.Value(row, 0));
        int const mode = std::get<std::int32_t>(table.Value(row, 1));
        auto const place = static_cast<std::size_t>(std::get<std::int32_t>(table.Value(row, 2)) - 1);
        SCOPED_TRACE(std::to_string(parameter) + " in " + std::to_string(mode));
        auto const run = RunCommand({"interval", name, "--parameter", std::to_string(parameter), "--mode",
                                     std::to_string(mode), "--speed", "25", "--format", "json"});
        auto const report = nlohmann::json::parse(run.out);
        auto const& band = report["intervals"].at(place);
        auto const id = [&report](char const* part) {
            return report[part].is_null() ? -1 : report[part]["id"].get<int>();
        };
        EXPECT_EQ(std::get<std::int32_t>(table.Value(row, 3)), id("rotor"));
        EXPECT_EQ(std::get<std::int32_t>(table.Value(row, 4)), id("gear"));
        auto const text = [&](std::size_t column) {
            return paramdb::ToUtf8(std::get<std::wstring_view>(table.Value(row, column)));
        };
        EXPECT_EQ(text(5), band["from"]);
        EXPECT_EQ(text(6), band["to"]);
        EXPECT_EQ(text(7), band["unit"]);
        EXPECT_EQ(text(12), band["fault"].is_null() ? "" : band["fault"]);
        bool const is_hz = band["unit"] == "Hz";
        auto const expect = [&](std::size_t column, nlohmann::json const& number) {
            float const found = std::get<float>(table.Value(row, column));
            EXPECT_EQ(number.is_null() ? "nan" : number.dump(),
                      std::isnan(found) ? "nan" : nlohmann::json(JsonNumber(found)).dump());
        };
        expect(8, is_hz ? nlohmann::json() : band["lower"]);
        expect(9, is_hz ? nlohmann::json() : band["upper"]);
        expect(10, is_hz ? band["lower"] : band["lower_hz"]);
        expect(11, is_hz ? band["upper"] : band["upper_hz"]);
        ++compared;
    }
    EXPECT_GT(compared, 10U);
}

// One that is measured nowhere has its bands where its gear turns.
TEST_F(AnswersTest, IntervalsWithoutAPlace) {
    std::string lake = Edited(DriveLake, "11 1001 1 90 7 10 0 0 0 0 0 0\n", "");
    auto const lines = Answers(lake, "intervals");
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(
        lines[0],
        "7, 11, 1 | 1, 90, 1 x base order - 2 lines, 1 x base order + 2 lines, orders, 13, 13, 650, 650, ");
    // Nor does it turn anywhere.
    lake = Edited(Edited(lake, "101 13\n", ""), "1 90 101\n", "");
    EXPECT_EQ(
        Answers(lake, "intervals")[0],
        "7, 1, 1 | -1, 90, 1 x base order - 2 lines, 1 x base order + 2 lines, orders, nan, nan, nan, nan, a "
        "harmonic, but the gear has no base order");
}

TEST_F(AnswersTest, Triggers) {
    EXPECT_EQ(Answers(DriveLake, "triggers"), (Expected{"7 | 1", "8 | 2", "9 | -1", "10 | 1", "12 | 3",
                                                        "13 | 1", "14 | 1", "15 | -1", "16 | -1"}));
    // One without a row takes that of the next.
    EXPECT_EQ(Answers(Edited(DriveLake, "7 1 90 6 \"H1-L2;H1+L2\" 2500 1001\n", ""), "triggers")[0],
              "7 | -1");
}

TEST_F(AnswersTest, TriggerFields) {
    EXPECT_EQ(Answers(DriveLake, "trigger_fields"),
              (Expected{"11, 1, 1 | 2, 0, 100, 10, raising", "11, 2, 1 | 2, 0, 100, 10, raising",
                        "11, 2, 2 | 1, -10, 10, 1, raising", "12, 1, 1 | 3, 0, 100, 10, falling"}));
}

TEST_F(AnswersTest, Polygons) {
    EXPECT_EQ(Answers(DriveLake, "polygons"), Expected{"5 | 1000, 68.5 | 2000, 70"});
    EXPECT_EQ(Answers(Edited(DriveLake, "5 2000 70\n", "5 2000 70\n-3 1 2\n5 -0.5 1\n"), "polygons"),
              (Expected{"-3 | 1, 2", "5 | -0.5, 1 | 1000, 68.5 | 2000, 70"}));
}

TEST_F(AnswersTest, Expansions) {
    EXPECT_EQ(Answers(DriveLake, "expansions"),
              (Expected{"11, 10001, 2, 131, 15, 10 | 3, 8, 5, ", "12, 10001, 2, 131, 15, 10 | 3, 8, 6, "}));
    // A definition of two points has no number of its own.
    std::string const lake = Edited(DriveLake, "12 10001 -1 -1 15 -1 6 0 3 8 0 0 0 0 0 0\n",
                                    "12 10001 -1 -1 15 -1 6 0 4 8 1.5 1 100 200 60 70\n");
    EXPECT_EQ(Answers(lake, "expansions")[1], "12, 10001, 2, 131, 15, 10 | 4, 8, -1, 100, 61.5 | 200, 71.5");
}
