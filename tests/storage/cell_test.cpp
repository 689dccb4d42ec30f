#include <paramdb/storage/cell.h>

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

using ParamDb::cell_t;

namespace {

constexpr std::int32_t Lowest32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t Lowest64 = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t Highest64 = std::numeric_limits<std::int64_t>::max();
constexpr std::uint64_t AllBits64 = std::numeric_limits<std::uint64_t>::max();
constexpr float Infinity = std::numeric_limits<float>::infinity();
float const NaN = std::nanf("");

template <class Integer>
struct Fit {
    cell_t cell;
    std::optional<Integer> result; // none: std::bad_variant_access
};

template <class Integer>
void Check(std::vector<Fit<Integer>> const& cases) {
    for (std::size_t index = 0; index < cases.size(); ++index) {
        SCOPED_TRACE("case " + std::to_string(index));
        if (cases[index].result.has_value())
            EXPECT_EQ(ParamDb::ToInteger<Integer>(cases[index].cell), *cases[index].result);
        else
            EXPECT_THROW(ParamDb::ToInteger<Integer>(cases[index].cell), std::bad_variant_access);
    }
}

} // namespace

TEST(Cell, TheAlternativesHaveTheirOrder) {
    cell_t const cells[] = {std::int32_t{1},   std::uint32_t{1}, std::int64_t{1}, std::uint64_t{1}, 1.0F, 1.0,
                            std::wstring(L"1")};
    for (std::size_t index = 0; index < std::variant_size_v<cell_t>; ++index)
        EXPECT_EQ(cells[index].index(), index);
    EXPECT_EQ(cell_t().index(), 0U);
    EXPECT_EQ(std::get<std::int32_t>(cell_t()), 0);
}

TEST(Cell, ToAnInt) {
    Check<std::int32_t>({
        {std::int32_t{5}, 5},
        {std::int32_t{-1}, -1},
        {Lowest32, Lowest32},
        {std::uint32_t{5}, 5},
        {std::uint32_t{4294967295U}, -1},
        {std::uint32_t{2147483648U}, Lowest32},
        {std::int64_t{2147483647}, 2147483647},
        {std::int64_t{2147483648}, {}},
        {std::int64_t{-1}, -1},
        {std::int64_t{Lowest32}, Lowest32},
        {std::int64_t{-2147483649}, {}},
        {std::int64_t{4294967296}, {}},
        {std::int64_t{4294967295}, {}},
        {std::uint64_t{2147483647}, 2147483647},
        {std::uint64_t{2147483648}, {}},
        {std::uint64_t{4294967295}, {}},
        {AllBits64, -1},
        {AllBits64 - 0x7FFFFFFF, Lowest32},
        {AllBits64 - 0x80000000, {}},
        {2.0F, 2},
        {-2.0F, -2},
        {2.5F, {}},
        {-0.0F, 0},
        {2147483520.0F, 2147483520},
        {2147483648.0F, {}},
        {-2147483648.0F, Lowest32},
        {Infinity, {}},
        {-Infinity, {}},
        {NaN, {}},
        {2.0, 2},
        {2.5, {}},
        {0.0, 0},
        {1e-300, {}},
        {2147483647.0, 2147483647},
        {2147483648.0, {}},
        {-2147483648.0, Lowest32},
        {-2147483649.0, {}},
        {4294967296.0, {}},
        {9223372036854775808.0, {}},
        {1e300, {}},
        {-1e300, {}},
        {double{NaN}, {}},
        {std::wstring(L"2"), {}},
        {std::wstring(), {}},
    });
}

TEST(Cell, ToAnUnsignedInt) {
    Check<std::uint32_t>({
        {std::int32_t{5}, 5U},
        {std::int32_t{-1}, 4294967295U},
        {std::uint32_t{4294967295U}, 4294967295U},
        {std::int64_t{4294967295}, 4294967295U},
        {std::int64_t{4294967296}, {}},
        {std::int64_t{-1}, {}},
        {std::uint64_t{4294967295}, 4294967295U},
        {AllBits64, {}},
        {3.0F, 3U},
        {-1.0F, {}},
        {0.5F, {}},
        {4294967296.0F, {}},
        {4294967295.0, 4294967295U},
        {4294967296.0, {}},
        {-1.0, {}},
        {double{NaN}, {}},
        {std::wstring(L"1"), {}},
    });
}

TEST(Cell, ToA64BitInteger) {
    Check<std::int64_t>({
        {std::int32_t{-1}, -1},
        {std::uint32_t{4294967295U}, 4294967295},
        {Lowest64, Lowest64},
        {Highest64, Highest64},
        {std::uint64_t{5}, 5},
        {AllBits64, -1},
        {16777216.0F, 16777216},
        {0.5F, {}},
        {9223372036854775808.0F, {}},
        {-9223372036854775808.0F, Lowest64},
        {9007199254740992.0, 9007199254740992},
        {9223372036854774784.0, 9223372036854774784},
        {9223372036854775808.0, {}},
        {-9223372036854775808.0, Lowest64},
        {double{Infinity}, {}},
        {double{NaN}, {}},
        {std::wstring(L"1"), {}},
    });
}

TEST(Cell, ToAFloatingValue) {
    struct FloatCase {
        cell_t cell;
        double as_double;
        float as_float;
    };
    FloatCase const cases[] = {
        {std::int32_t{-7}, -7.0, -7.0F},
        {std::int32_t{16777217}, 16777217.0, 16777216.0F},
        {std::uint32_t{4294967295U}, 4294967295.0, 4294967296.0F},
        {std::int64_t{-9007199254740993}, -9007199254740992.0, -9007199254740992.0F},
        {AllBits64, 18446744073709551616.0, 18446744073709551616.0F},
        {0.1F, 0.100000001490116119384765625, 0.1F},
        {0.1, 0.1, 0.1F},
        {double{Infinity}, std::numeric_limits<double>::infinity(), Infinity},
    };
    for (FloatCase const& test : cases) {
        EXPECT_EQ(ParamDb::ToFloat<double>(test.cell), test.as_double);
        EXPECT_EQ(ParamDb::ToFloat<float>(test.cell), test.as_float);
    }
    EXPECT_TRUE(std::isnan(ParamDb::ToFloat<float>(double{NaN})));
    EXPECT_THROW(ParamDb::ToFloat<float>(std::wstring(L"1")), std::bad_variant_access);
    EXPECT_THROW(ParamDb::ToFloat<double>(std::wstring(L"1")), std::bad_variant_access);
}

TEST(Cell, ToAText) {
    cell_t const text = std::wstring(L"a \x20AC");
    EXPECT_EQ(ParamDb::ToText(text), L"a \x20AC");
    EXPECT_EQ(&ParamDb::ToText(text), &std::get<std::wstring>(text));
    for (cell_t const& cell : {cell_t(std::int32_t{1}), cell_t(std::uint64_t{1}), cell_t(1.0F), cell_t(1.0)})
        EXPECT_THROW(ParamDb::ToText(cell), std::bad_variant_access);
}
