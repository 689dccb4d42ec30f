#include <paramdb/database/cells.h>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace paramdb;
using namespace paramdb::database;
using ParamDb::cell_t;
using ParamDb::row_t;

// What a value becomes: its cell, or the words of its fault.
struct Result {
    row_t row;
    ColumnFaults faults;

    std::string Text(FieldType type) const {
        EXPECT_EQ(row.size(), 1u);
        if (faults.empty())
            return std::to_string(row.front().index()) + ":" + CellText(row.front());
        EXPECT_EQ(faults.size(), 1u);
        EXPECT_EQ(faults.front().column, 0u);
        return FaultText(faults.front(), type);
    }
};

using enum FieldType;

TEST(Cells, Integers) {
    struct Case {
        FieldType type;
        std::int64_t value;
        char const* text;
    };
    Case const cases[] = {
        {Int, -2147483648, "0:-2147483648"},
        {Int, 2147483647, "0:2147483647"},
        {Int, 2147483648, "2147483648 is out of range for int"},
        {Int, std::numeric_limits<std::int64_t>::min(), "-9223372036854775808 is out of range for int"},
        {Unsigned, 4294967295, "1:4294967295"},
        {Unsigned, 4294967296, "4294967296 is out of range for unsigned int"},
        {Unsigned, -1, "-1 is out of range for unsigned int"},
        {Int64, std::numeric_limits<std::int64_t>::min(), "2:-9223372036854775808"},
        {Float, 3, "4:3"},
        {Double, 9007199254740993, "5:9007199254740992"},
        {Text, 7, "7 where text is wanted"},
    };
    for (Case const& test : cases) {
        Result result;
        AddInteger(result.row, test.type, test.value, result.faults);
        EXPECT_EQ(result.Text(test.type), test.text);
    }
}

TEST(Cells, Reals) {
    double const infinity = std::numeric_limits<double>::infinity();
    struct Case {
        FieldType type;
        double value;
        char const* text;
    };
    Case const cases[] = {
        {Int, 5.0, "0:5"},
        {Int, -2147483649.0, "-2147483649 is out of range for int"},
        {Int, 2.5, "2.5 is no whole number"},
        {Int, infinity, "inf is out of range for int"},
        {Int, std::nan(""), "nan is no whole number"},
        {Int64, -0x1p63, "2:-9223372036854775808"},
        {Int64, 0x1p63, "9223372036854775808 is out of range for int64"},
        {Unsigned, -0.0, "1:0"},
        {Float, 0.1, "4:0.1"},
        {Float, 0x1.fffffefffffffp127, "4:3.4028235e+38"},
        {Float, 0x1.ffffffp127, "3.4028235677973366e+38 is out of range for float"},
        {Float, -1e300, "-1e+300 is out of range for float"},
        {Float, infinity, "4:inf"},
        {Float, 1e-60, "4:0"},
        {Double, -infinity, "5:-inf"},
        {Double, 5e-324, "5:5e-324"},
        {Text, 0.5, "0.5 where text is wanted"},
    };
    for (Case const& test : cases) {
        Result result;
        AddReal(result.row, test.type, test.value, result.faults);
        EXPECT_EQ(result.Text(test.type), test.text);
    }
}

TEST(Cells, TextsAndWhatIsNone) {
    struct Case {
        FieldType type;
        std::string value;
        std::string text;
    };
    Case const cases[] = {
        {Text, "", "6:"},
        {Text, "a b", "6:a b"},
        {Text, std::string(198, 'x'), "6:" + std::string(198, 'x')},
        {Text, std::string(199, 'x'), "a text of 199 characters where 198 fit"},
        {Text, "\xFF", "the text is no UTF-8"},
        {Int, "5", "the text '5' where int is wanted"},
        {Double, std::string(50, 'x'), "the text '" + std::string(40, 'x') + "...' where double is wanted"},
        // Nothing is cut in the middle of a character.
        {Float,
         std::string(39, 'x') + "\xC3\xBC"
                                "y",
         "the text '" + std::string(39, 'x') + "...' where float is wanted"},
    };
    for (Case const& test : cases) {
        Result result;
        AddText(result.row, test.type, test.value, result.faults);
        EXPECT_EQ(result.Text(test.type), test.text);
    }
    for (FieldType const type : {Int, Unsigned, Int64, Float, Double, Text}) {
        Result null;
        AddNull(null.row, type, null.faults);
        EXPECT_TRUE(null.Text(type).starts_with("NULL where "));
        Result bytes;
        AddForeign(bytes.row, type, bytes.faults);
        EXPECT_TRUE(bytes.Text(type).starts_with("bytes where "));
    }
}

TEST(Cells, NumbersThatComeAsText) {
    struct Case {
        FieldType type;
        char const* value;
        char const* text;
    };
    Case const cases[] = {
        {Int, "-2147483648", "0:-2147483648"},
        {Int, "2147483648", "2147483648 is out of range for int"},
        {Int, "2.0", "0:2"},
        {Int, "2.5", "2.5 is no whole number"},
        {Int, "", "the text '' where int is wanted"},
        {Int, "5x", "the text '5x' where int is wanted"},
        {Unsigned, "-1", "-1 is out of range for unsigned int"},
        {Unsigned, "4294967295", "1:4294967295"},
        {Int64, "9223372036854775808", "9223372036854775808 is out of range for int64"},
        {Float, "Infinity", "4:inf"},
        {Float, "-Infinity", "4:-inf"},
        {Float, "1e-45", "4:1e-45"},
        {Float, "1e39", "1e39 is out of range for float"},
        {Double, "4.9406564584124654e-324", "5:5e-324"},
        {Double, "1,5", "the text '1,5' where double is wanted"},
        {Text, "1", "6:1"},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.value);
        Result result;
        AddParsed(result.row, test.type, test.value, result.faults);
        EXPECT_EQ(result.Text(test.type), test.text);
    }
}

TEST(Cells, Keys) {
    row_t const key{std::int32_t{5}, 1.5f, -0.0f, std::wstring(L"\xFC")};
    EXPECT_EQ(KeyText(key), "5/1.5/0/\xC3\xBC");
    EXPECT_EQ(KeyText(std::span<cell_t const>()), "");
}

} // namespace
