// Fields of a row from the cells of a table-set row.
#include <paramdb/tables/line_reader.h>
#include <paramdb/tables/line_writer.h>
#include <paramdb/tables/row.h>

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>
#include <tests/support/messages.h>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

using ParamDb::cell_t;
using paramdb::ReadCells;
using ParamDb::row_t;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

template <class Column>
void CheckField(std::vector<std::pair<cell_t, std::optional<std::wstring>>> const& cases,
                std::wstring const& before) {
    MessageLog messages;
    for (std::size_t index = 0; index < cases.size(); ++index) {
        auto const& [cell, expected] = cases[index];
        SCOPED_TRACE("case " + std::to_string(index) + ", alternative " + std::to_string(cell.index()));
        QVRow<Column> row;
        std::get<0>(row.tuple()) = static_cast<typename Column::type>(7);
        row_t const cells{cell};
        std::size_t taken = 99;
        if (expected) {
            EXPECT_TRUE(ReadCells(cells, paramdb::Fields(row), taken));
            EXPECT_EQ(taken, 1U);
        } else {
            EXPECT_THROW(ReadCells(cells, paramdb::Fields(row), taken), std::bad_variant_access);
            EXPECT_EQ(taken, 0U);
        }
        std::wstring written;
        paramdb::AppendFields(written, paramdb::ConstFields(row));
        EXPECT_EQ(written, expected.value_or(before));
    }
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST(CellReader, IntFields) {
    CheckField<QInt<"i">>(
        {
            {std::int32_t{-5}, L"-5"},
            {std::uint32_t{5}, L"5"},
            {std::uint32_t{4294967295U}, L"-1"},
            {std::int64_t{-2147483648}, L"-2147483648"},
            {std::int64_t{2147483648}, {}},
            {std::int64_t{4294967296}, {}},
            {std::uint64_t{2147483647}, L"2147483647"},
            {std::uint64_t{2147483648}, {}},
            {~std::uint64_t{0}, L"-1"},
            {2.0F, L"2"},
            {-2.5F, {}},
            {2147483648.0F, {}},
            {-0.0, L"0"},
            {2147483647.0, L"2147483647"},
            {0.5, {}},
            {1e300, {}},
            {Infinity, {}},
            {NaN, {}},
            {std::wstring(L"5"), {}},
            {std::wstring(), {}},
        },
        L"7");
}

TEST(CellReader, UnsignedFields) {
    CheckField<QUnsigned<"u">>(
        {
            {std::int32_t{-1}, L"4294967295"},
            {std::uint32_t{4294967295U}, L"4294967295"},
            {std::int64_t{4294967295}, L"4294967295"},
            {std::int64_t{-1}, {}},
            {std::uint64_t{4294967296}, {}},
            {3.0F, L"3"},
            {4294967295.0, L"4294967295"},
            {-1.0, {}},
            {4294967296.0, {}},
            {0.25F, {}},
            {NaN, {}},
            {std::wstring(L"5"), {}},
        },
        L"7");
}

TEST(CellReader, Fields64BitsWide) {
    CheckField<QInt64<"q">>(
        {
            {std::int32_t{-1}, L"-1"},
            {std::uint32_t{4294967295U}, L"4294967295"},
            {std::numeric_limits<std::int64_t>::min(), L"-9223372036854775808"},
            {std::uint64_t{9223372036854775807}, L"9223372036854775807"},
            {5e9F, L"5000000000"},
            {-9223372036854775808.0, L"-9223372036854775808"},
            {9223372036854775808.0, {}},
            {0.5, {}},
            {NaN, {}},
            {std::wstring(L"5"), {}},
        },
        L"7");
}

TEST(CellReader, FloatFields) {
    CheckField<QFloat<"f">>(
        {
            {std::int32_t{-3}, L"-3"},
            {std::uint32_t{4294967295U}, L"4.29497e+09"},
            {std::int64_t{1} << 62, L"4.61169e+18"},
            {~std::uint64_t{0}, L"1.84467e+19"},
            {0.25F, L"0.25"},
            {0.1, L"0.1"},
            {Infinity, L"inf"},
            {-Infinity, L"-inf"},
            {NaN, L"nan"},
            {1e-60, L"0"},
            {std::wstring(L"0.5"), {}},
        },
        L"7");
}

TEST(CellReader, DoubleFields) {
    CheckField<QDouble<"d">>(
        {
            {std::int32_t{-3}, L"-3"},
            {std::uint32_t{5}, L"5"},
            {std::int64_t{-5}, L"-5"},
            {std::uint64_t{6}, L"6"},
            {0.25F, L"0.25"},
            {1e300, L"1e+300"},
            {NaN, L"nan"},
            {std::wstring(L"0.5"), {}},
        },
        L"7");
}

struct TextOf {
    std::wstring text;
    bool good;
    std::wstring result;
};

TEST(CellReader, TextFields) {
    using TextRow = QVRow<QText<"t">>;
    for (auto const& [text, good, result] : std::vector<TextOf>{
             {L"", true, L""},
             {L"two words", true, L"two words"},
             {L" \"quoted\" ", true, L" \"quoted\" "},
             {L"\x20AC\n", true, L"\x20AC\n"},
             {std::wstring(L"ab\0c", 4), true, L"ab"},
             {std::wstring(198, L'a'), true, std::wstring(198, L'a')},
             {std::wstring(199, L'a'), false, L"before"},
             {std::wstring(5000, L'a'), false, L"before"},
             {std::wstring(199, L'\0'), false, L"before"},
         }) {
        SCOPED_TRACE(text.size());
        TextRow row(CFixedText(L"before"));
        std::size_t taken = 99;
        EXPECT_EQ(ReadCells(row_t{text}, paramdb::Fields(row), taken), good);
        EXPECT_EQ(taken, good ? 1U : 0U);
        EXPECT_EQ(row.get<"t">().view(), result);
    }
    for (cell_t const& cell : {cell_t(std::int32_t{1}), cell_t(std::uint32_t{1}), cell_t(std::int64_t{1}),
                               cell_t(std::uint64_t{1}), cell_t(1.0F), cell_t(1.0)}) {
        TextRow row(CFixedText(L"before"));
        std::size_t taken = 99;
        EXPECT_THROW(ReadCells(row_t{cell}, paramdb::Fields(row), taken), std::bad_variant_access);
        EXPECT_EQ(taken, 0U);
        EXPECT_EQ(row.get<"t">(), L"before");
    }
}

TEST(CellReader, CellsAreTakenInOrderUntilOneFails) {
    using Row = QVRow<QInt<"a">, QText<"b">, QInt<"c">, QFloat<"d">>;
    struct {
        row_t cells;
        std::size_t taken;
        int outcome; // 1 good, 0 false, -1 exception
        std::wstring row;
    } const cases[] = {
        {{1, L"x", 2, 0.5F}, 4, 1, L"1 x 2 0.5"},
        {{1, L"x", 2, 0.5F, L"more", 7}, 4, 1, L"1 x 2 0.5"},
        {{}, 0, 0, L"7 old 8 9"},
        {{1}, 1, 0, L"1 old 8 9"},
        {{1, L"x", 2}, 3, 0, L"1 x 2 9"},
        {{1, 2, 3, 4}, 1, -1, L"1 old 8 9"},
        {{1, L"x", L"y", 4}, 2, -1, L"1 x 8 9"},
        {{1, L"x", 2, L"0.5", 5}, 3, -1, L"1 x 2 9"},
        {{1, std::wstring(199, L'x'), L"y", 4}, 1, 0, L"1 old 8 9"},
        {{0.5, L"x", 2, 0.5F}, 0, -1, L"7 old 8 9"},
    };
    for (auto const& [cells, expected_taken, outcome, written] : cases) {
        Row row(7, CFixedText(L"old"), 8, 9.0F);
        std::size_t taken = 99;
        int result = -1;
        try {
            result = ReadCells(cells, paramdb::Fields(row), taken) ? 1 : 0;
        } catch (std::bad_variant_access const&) {
        }
        EXPECT_EQ(result, outcome);
        EXPECT_EQ(taken, expected_taken);
        std::wstring line;
        paramdb::AppendFields(line, paramdb::ConstFields(row));
        EXPECT_EQ(line, written);
    }
}

} // namespace
