#include "tools/convert/csv_text.h"

#include <gtest/gtest.h>
#include <random>

using namespace paramdb::tools;
using Cells = std::vector<std::string>;

TEST(CsvTextTest, ReadsRecords) {
    struct Case {
        std::string text;
        std::vector<CsvRecord> records;
    };
    Case const cases[] = {
        {"", {}},
        {"a,b\r\nc,d\r\n", {{1, {"a", "b"}}, {2, {"c", "d"}}}},
        {"a,b\nc,d", {{1, {"a", "b"}}, {2, {"c", "d"}}}},
        {",\n\n\"\"", {{1, {"", ""}}, {2, {""}}, {3, {""}}}},
        {"\"a,\"\"b\"\"\r\nc\",d\n e \n", {{1, {"a,\"b\"\r\nc", "d"}}, {3, {" e "}}}},
        {"a\rb\n", {{1, {"a\rb"}}}},
        {"a,", {{1, {"a", ""}}}},
    };
    for (Case const& test : cases) {
        CsvFault fault;
        EXPECT_EQ(ReadCsv(test.text, fault), test.records) << test.text;
        EXPECT_EQ(fault.line, 0U) << fault.text;
    }
}

TEST(CsvTextTest, TellsFaults) {
    struct Case {
        std::string text;
        std::size_t line;
        std::string fault;
    };
    Case const cases[] = {
        {"a\nb\"c\n", 2, "a quote inside a cell without quotes"},
        {"\"a\nb\"c\n", 2, "something behind the closing quote of a cell"},
        {"\"a\" ,b\n", 1, "something behind the closing quote of a cell"},
        {"a\nb,\"c\nd\n", 2, "a cell without its closing quote"},
        {"\"", 1, "a cell without its closing quote"},
    };
    for (Case const& test : cases) {
        CsvFault fault;
        EXPECT_TRUE(ReadCsv(test.text, fault).empty());
        EXPECT_EQ(fault.line, test.line) << test.text;
        EXPECT_EQ(fault.text, test.fault) << test.text;
    }
}

TEST(CsvTextTest, WritesQuotesWhereTheyAreNeeded) {
    std::string text;
    AppendCsv(text, {"a", "b c", "", " d"});
    AppendCsv(text, {"a,b", "\"", "c\n", "d\r"});
    AppendCsv(text, {""});
    EXPECT_EQ(text, "a,b c,, d\r\n\"a,b\",\"\"\"\",\"c\n\",\"d\r\"\r\n\"\"\r\n");
}

TEST(CsvTextTest, RandomRecordsReadBack) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string text;
        std::vector<Cells> written;
        for (auto record = random() % 5; record > 0; --record) {
            Cells cells(random() % 4 + 1);
            for (std::string& cell : cells)
                for (auto size = random() % 4; size > 0; --size)
                    cell += "a,\"\r\n \xE4;"[random() % 8];
            AppendCsv(text, cells);
            written.push_back(cells);
        }
        CsvFault fault;
        std::vector<Cells> read;
        for (CsvRecord const& record : ReadCsv(text, fault))
            read.push_back(record.cells);
        ASSERT_EQ(read, written) << text << fault.text;
    }
}
