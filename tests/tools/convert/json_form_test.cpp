#include "tests/tools/convert/form_told.h"
#include "tools/convert/forms.h"

#include <gtest/gtest.h>
#include <limits>

using namespace form_told;

TEST(JsonFormTest, Writes) {
    Strings faults;
    EXPECT_EQ(
        WriteJsonForm(Sample(), faults),
        "{\n"
        "  \"version\": {\n"
        "    \"major\": 216,\n"
        "    \"minor\": 1\n"
        "  },\n"
        "  \"texts\": {\n"
        "    \"learn_file\": \"a b\",\n"
        "    \"base_type\": \"\",\n"
        "    \"alias_type\": \"\xC3\xA4\"\n"
        "  },\n"
        "  \"tables\": {\n"
        "    \"<TMode>\": [\n"
        "      {\"mode\": 1, \"name\": \"Idle\"},\n"
        "      {\"mode\": 2, \"name\": \"Warm, \\\"up\\\"\"}\n"
        "    ],\n"
        "    \"<TTrigger>\": [],\n"
        "    \"<TRotorSpeed>\": [\n"
        "      {\"physical_mode\": 1, \"rotor\": 2, \"ratio\": 0.1, \"numerator\": 3, \"denominator\": 4},\n"
        "      {\"physical_mode\": 1, \"rotor\": 3, \"ratio\": -0.0, \"numerator\": -5, \"denominator\": 6}\n"
        "    ]\n"
        "  }\n"
        "}\n");
    EXPECT_EQ(WriteJsonForm({}, faults), "{\n}\n");
    EXPECT_EQ(faults, Strings());
}

TEST(JsonFormTest, NumbersThatOtherReadersWouldRound) {
    std::size_t const table = [] {
        for (auto const& description : paramdb::Catalogue())
            for (auto const& column : ColumnsOf(description))
                if (column.type == paramdb::FieldType::Int64)
                    return static_cast<std::size_t>(&description - paramdb::Catalogue().data());
        return std::size_t{0};
    }();
    auto const columns = ColumnsOf(paramdb::Catalogue()[table]);
    auto const text_of = [&](std::int64_t number) {
        ParameterSet parameters;
        RowFields const fields(paramdb::Catalogue()[table]);
        auto row = fields.Cells();
        std::string name;
        for (std::size_t column = 0; column < row.size(); ++column)
            if (columns[column].type == paramdb::FieldType::Int64) {
                row[column] = number;
                name = columns[column].name;
            }
        parameters.tables[table] = {row};
        Strings faults;
        std::string const json = WriteJsonForm(parameters, faults);
        EXPECT_TRUE(ReadJsonForm(json).parameters == parameters) << json;
        std::size_t const begin = json.find("\"" + name + "\": ") + name.size() + 4;
        return json.substr(begin, json.find_first_of(",}", begin) - begin);
    };
    EXPECT_EQ(text_of(9007199254740991), "9007199254740991");
    EXPECT_EQ(text_of(9007199254740992), "\"9007199254740992\"");
    EXPECT_EQ(text_of(-9007199254740991), "-9007199254740991");
    EXPECT_EQ(text_of(-9007199254740992), "\"-9007199254740992\"");
    EXPECT_EQ(text_of(std::numeric_limits<std::int64_t>::min()), "\"-9223372036854775808\"");
}

TEST(JsonFormTest, NamesFaults) {
    struct Case {
        std::string json;
        Strings faults;
    };
    std::string const mode = "{\"tables\": {\"<TMode>\": [";
    std::string const speed =
        "{\"tables\": {\"<TRotorSpeed>\": [{\"physical_mode\": 1, \"rotor\": 2, \"numerator\": 1, "
        "\"denominator\": 2, \"ratio\": ";
    Case const cases[] = {
        {"[]", {" no object"}},
        {"{\"version\": 5, \"texts\": [], \"tables\": null}",
         {" version: no object", " texts: no object", " tables: no object"}},
        {"{\"version\": {\"major\": \"216\", \"minor\": 1.5}}",
         {" version.major: no int: \"216\"", " version.minor: no int: 1.5"}},
        {"{\"texts\": {\"base_type\": 5, \"alias_type\": \"a\\u0000\"}}",
         {" texts.base_type: no text: 5", " texts.alias_type: a text with a zero in it"}},
        {"{\"tables\": {\"<TMode>\": {}}}", {" <TMode>: no array"}},
        {mode + "5, {\"mode\": 1}]}}", {" <TMode>, row 1: no object", " <TMode>, row 2, name: missing"}},
        {mode + "{\"mode\": 2147483648, \"name\": 1}, {\"mode\": -2147483649, \"name\": null}]}}",
         {" <TMode>, row 1, mode: no int: 2147483648", " <TMode>, row 1, name: no text: 1",
          " <TMode>, row 2, mode: no int: -2147483649", " <TMode>, row 2, name: no text: null"}},
        {mode + "{\"mode\": 1, \"name\": \"" + std::string(199, 'x') + "\"}]}}",
         {" <TMode>, row 1, name: a text of 199 characters; 198 are the most"}},
        {"{\"version\": {\"major\": {\"a\": [1, {}]}, \"minor\": [2]}, \"texts\": {\"base_type\": {}}}",
         {" version.major: no int: an object", " version.minor: no int: an array",
          " texts.base_type: no text: an object"}},
        {mode + "[1, {\"mode\": 2}], {\"mode\": [], \"name\": true}]}}",
         {" <TMode>, row 1: no object", " <TMode>, row 2, mode: no int: an array",
          " <TMode>, row 2, name: no text: true"}},
        {speed + "\"1.5\"}]}}", {" <TRotorSpeed>, row 1, ratio: no double: \"1.5\""}},
        {"{\"texts\": {\"base_type\": \"a\", \"base_type\": \"b\"}}",
         {" the member \"base_type\" stands twice in one object"}},
        {mode + "{\"mode\": 1, \"name\": \"a\", \"mode\": 2}]}}",
         {" the member \"mode\" stands twice in one object"}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(Faults(ReadJsonForm(test.json)), test.faults) << test.json;
    for (std::string const bad :
         {"", "{", "{\"version\": {\"major\": 1e999}}", "{\"texts\": {\"base_type\": \"\xE4\"}}",
          "{\"texts\": {\"base_type\": \"\\uD800\"}}"}) {
        auto const faults = Faults(ReadJsonForm(bad));
        ASSERT_EQ(faults.size(), 1U) << bad;
        EXPECT_EQ(faults[0].find("json.exception"), std::string::npos) << faults[0];
    }
    // The line is told.
    EXPECT_TRUE(Faults(ReadJsonForm("{\n  x}"))[0].starts_with(" parse error at line 2, column 3:"))
        << Faults(ReadJsonForm("{\n  x}"))[0];
}

TEST(JsonFormTest, NamesWhatHasNoPlaceAndReadsTheRest) {
    auto const result = ReadJsonForm(
        "{\"tables\": {\"TMode\": [], \"<TMode>\": [{\"name\": \"a\", \"mode\": 1, \"note\": 5}]},"
        " \"version\": {\"patch\": 1, \"major\": 216}, \"texts\": {\"other\": {\"tables\": {\"a\": 1, \"a\": "
        "2}}}, \"more\": [{\"tables\": 5}]}");
    EXPECT_EQ(Faults(result), Strings());
    EXPECT_EQ(Losses(result), (Strings{
                                  "u  nothing reads the member \"TMode\"",
                                  "u  nothing reads the member \"<TMode>, row 1, note\"",
                                  "u  nothing reads the member \"version.patch\"",
                                  "u  nothing reads the member \"texts.other\"",
                                  "u  nothing reads the member \"more\"",
                              }));
    EXPECT_EQ(RowsOf(result, L"<TMode>"), (Rows{{1, Text(L"a")}}));
    EXPECT_EQ(result.parameters.version[0], 216);
}
