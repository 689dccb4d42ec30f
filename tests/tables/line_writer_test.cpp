#include <paramdb/keys/index_keys.h>
#include <paramdb/tables/line_writer.h>
#include <paramdb/tables/row.h>

#include "reader_cases.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

using paramdb::AppendField;
using paramdb::AppendFields;
using paramdb::ConstField;

namespace {

template <class T>
std::wstring Written(T const& value) {
    std::wstring line;
    AppendField(line, ConstField(value));
    return line;
}

// What a wide stream of the classic locale prints. Some leave out the sign of what is no number.
template <class T>
std::wstring Streamed(T const& value) {
    if constexpr (std::is_floating_point_v<T>)
        if (std::isnan(value))
            return std::signbit(value) ? L"-nan" : L"nan";
    std::wostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

} // namespace

void reader_cases::CheckWrittenFields() {
    EXPECT_EQ(Written<std::int32_t>(0), L"0");
    EXPECT_EQ(Written<std::int32_t>(-1), L"-1");
    EXPECT_EQ(Written<std::int32_t>(2147483647), L"2147483647");
    EXPECT_EQ(Written<std::int32_t>(-2147483647 - 1), L"-2147483648");
    EXPECT_EQ(Written<std::uint32_t>(4294967295U), L"4294967295");
    EXPECT_EQ(Written(std::numeric_limits<std::int64_t>::min()), L"-9223372036854775808");
    EXPECT_EQ(Written(std::numeric_limits<std::int64_t>::max()), L"9223372036854775807");
    struct {
        double value;
        wchar_t const* text;
    } const cases[] = {
        {0.0, L"0"},
        {-0.0, L"-0"},
        {1.0, L"1"},
        {0.5, L"0.5"},
        {-2.25, L"-2.25"},
        {100000.0, L"100000"},
        {999999.0, L"999999"},
        {999999.5, L"1e+06"},
        {1000000.0, L"1e+06"},
        {1234567.0, L"1.23457e+06"},
        {123456.5, L"123456"},
        {123457.5, L"123458"},
        {0.0001, L"0.0001"},
        {0.00001, L"1e-05"},
        {0.000123456789, L"0.000123457"},
        {1.0 / 3.0, L"0.333333"},
        {2.0 / 3.0, L"0.666667"},
        {3.5, L"3.5"},
        {1e10, L"1e+10"},
        {std::numeric_limits<double>::infinity(), L"inf"},
        {-std::numeric_limits<double>::infinity(), L"-inf"},
        {std::numeric_limits<double>::quiet_NaN(), L"nan"},
    };
    for (auto const& [value, text] : cases) {
        SCOPED_TRACE(value);
        EXPECT_EQ(Written(value), text);
        EXPECT_EQ(Written(static_cast<float>(value)), text);
    }
    EXPECT_EQ(Written(1e300), L"1e+300");
    EXPECT_EQ(Written(1.5e-300), L"1.5e-300");
    EXPECT_EQ(Written(std::numeric_limits<float>::max()), L"3.40282e+38");
    EXPECT_EQ(Written(std::numeric_limits<float>::denorm_min()), L"1.4013e-45");
}

namespace {

TEST(LineWriter, Numbers) {
    reader_cases::CheckWrittenFields();
}

TEST(LineWriter, TextsAsTheyAre) {
    for (wchar_t const* const text :
         {L"", L"a", L"two words", L" \t", L"\"quoted\"", L"a\"b", L"\x20AC\xE4", L"line\nend"})
        EXPECT_EQ(Written(CFixedText(text)), text);
    EXPECT_EQ(Written(CFixedText(std::wstring_view(L"ab\0c", 4))), L"ab");
}

TEST(LineWriter, RandomNumbersAsAStreamPrintsThem) {
    std::mt19937_64 random(31);
    for (int round = 0; round < 30000; ++round) {
        std::uint64_t const bits = random();
        double number;
        std::memcpy(&number, &bits, sizeof number);
        float narrow;
        std::memcpy(&narrow, &bits, sizeof narrow);
        double const common = static_cast<double>(static_cast<std::int32_t>(bits)) / 1000.0;
        ASSERT_EQ(Written(number), Streamed(number));
        ASSERT_EQ(Written(narrow), Streamed(narrow));
        ASSERT_EQ(Written(common), Streamed(common));
        ASSERT_EQ(Written(static_cast<std::int32_t>(bits)), Streamed(static_cast<std::int32_t>(bits)));
        ASSERT_EQ(Written(static_cast<std::uint32_t>(bits)), Streamed(static_cast<std::uint32_t>(bits)));
        ASSERT_EQ(Written(static_cast<std::int64_t>(bits)), Streamed(static_cast<std::int64_t>(bits)));
    }
}

TEST(LineWriter, FieldsAreSeparatedByOneBlank) {
    std::wstring line = L"> ";
    AppendFields(line, {});
    EXPECT_EQ(line, L"> ");
    AppendFields(line, paramdb::ConstFields(QIdx1(5)));
    EXPECT_EQ(line, L"> 5");
    line += L'|';
    AppendFields(line, paramdb::ConstFields(QIdx3(1, -1, 300)));
    EXPECT_EQ(line, L"> 5|1 -1 300");

    using AllKinds =
        QVRow<QText<"a">, QFloat<"b">, QText<"c">, QDouble<"d">, QUnsigned<"e">, QInt64<"f">, QText<"g">>;
    line.clear();
    AppendFields(line, paramdb::ConstFields(AllKinds(L"", 0.1F, L"x y", -1e-7, 4294967295U, -5, L"")));
    EXPECT_EQ(line, L" 0.1 x y -1e-07 4294967295 -5 ");
}

} // namespace
