#include "tools/id_words.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

TEST(IdWords, ReadsIds) {
    struct Case {
        wchar_t const* text;
        std::optional<int> id;
    };
    Case const cases[] = {
        {L"11", 11},
        {L" -1 ", -1},
        {L"+5", 5},
        {L"2147483647", 2147483647},
        {L"-2147483648", -2147483647 - 1},
        {L"2147483648", std::nullopt},
        {L"", std::nullopt},
        {L"11a", std::nullopt},
        {L"1.5", std::nullopt},
        {L"1 1", std::nullopt},
        {L"0x10", std::nullopt},
        {L"\uFF11", std::nullopt},
    };
    for (Case const& test : cases)
        EXPECT_EQ(ReadId(test.text), test.id) << testing::PrintToString(std::wstring(test.text));
}

TEST(IdWords, UnknownKinds) {
    std::string const all =
        "; there are mode, instrument, channel, location, parameter, signal, physmode, type, "
        "bench, job, set, sensorgroup, sensorconfig, trigger, unit, measurement, polygon, "
        "procedure, error, errorgroup\n";
    EXPECT_EQ(UnknownKind("modes", "a.lake"), "modes: no such kind; did you mean mode?\n");
    EXPECT_EQ(UnknownKind("Sensor", "a.lake"),
              "Sensor: no such kind; did you mean sensorgroup or sensorconfig?\n");
    EXPECT_EQ(UnknownKind("xyzzyx", "a.lake"), "xyzzyx: no such kind" + all);
    EXPECT_EQ(UnknownKind("", "a.lake"), "\"\": no such kind" + all);
    EXPECT_EQ(UnknownKind("11", "mode"), "11: no such kind; the files stand before it\n");
}

TEST(IdWords, ShownWords) {
    EXPECT_EQ(ShownWord(L""), "\"\"");
    EXPECT_EQ(ShownWord(L"a\x1B[1m"), "a\xEF\xBF\xBD[1m");
}
