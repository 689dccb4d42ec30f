#include <paramdb/platform/framework/format_text.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

std::wstring Text(wchar_t const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::wstring text = paramdb::FormatTextV(format, arguments);
    va_end(arguments);
    return text;
}

TEST(FormatText, PlainText) {
    EXPECT_EQ(Text(nullptr), L"");
    EXPECT_EQ(Text(L""), L"");
    EXPECT_EQ(Text(L"abc\u20AC"), L"abc\u20AC");
    EXPECT_EQ(Text(L"100%%"), L"100%");
}

TEST(FormatText, Texts) {
    EXPECT_EQ(Text(L"<%s>", L"wide"), L"<wide>");
    EXPECT_EQ(Text(L"<%ls>", L"wide"), L"<wide>");
    EXPECT_EQ(Text(L"<%ws>", L"wide"), L"<wide>");
    EXPECT_EQ(Text(L"<%s>", L"\xDC80\u20AC"), L"<\xDC80\u20AC>");
    EXPECT_EQ(Text(L"<%6s|%-6s>", L"ab", L"cd"), L"<    ab|cd    >");
    EXPECT_EQ(Text(L"<%.2s>", L"abc"), L"<ab>");
    EXPECT_EQ(Text(L"<%.*s>", 1, L"abc"), L"<a>");
    EXPECT_EQ(Text(L"<%.*s>", -1, L"abc"), L"<abc>");
    EXPECT_EQ(Text(L"<%s>", static_cast<wchar_t const*>(nullptr)), L"<(null)>");
    wchar_t const unterminated[2] = {L'x', L'y'};
    EXPECT_EQ(Text(L"<%.2s>", unterminated), L"<xy>");
    EXPECT_EQ(Text(L"%c%3c%-3c|", L'a', L'b', L'c'), L"a  bc  |");
    EXPECT_EQ(Text(L"%c", 0).size(), 1u);
}

TEST(FormatText, Integers) {
    EXPECT_EQ(Text(L"%d %i %u", -5, 7, 4000000000u), L"-5 7 4000000000");
    EXPECT_EQ(Text(L"%d", std::numeric_limits<int>::min()), L"-2147483648");
    EXPECT_EQ(Text(L"%ld %lu", std::int32_t{-3}, std::uint32_t{3}), L"-3 3");
    EXPECT_EQ(
        Text(L"%lld %I64d", std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()),
        L"-9223372036854775808 9223372036854775807");
    EXPECT_EQ(Text(L"%llu %I64u", ~0ull, 1ull), L"18446744073709551615 1");
    EXPECT_EQ(Text(L"%zu %td %jd", std::size_t{7}, std::ptrdiff_t{-7}, std::intmax_t{-8}), L"7 -7 -8");
    EXPECT_EQ(Text(L"%zd %tu %zx", std::ptrdiff_t{-7}, std::size_t{8}, std::size_t{255}), L"-7 8 ff");
    EXPECT_EQ(Text(L"%zu", std::numeric_limits<std::size_t>::max()),
              std::to_wstring(std::numeric_limits<std::size_t>::max()));
    EXPECT_EQ(Text(L"%I32d", -9), L"-9");
    EXPECT_EQ(Text(L"%hhd %hd %hhu %hu", 257, 65537, 257, 65537), L"1 1 1 1");
    EXPECT_EQ(Text(L"%x %X %o %#x %#X %#o %#x", 255u, 255u, 8u, 255u, 255u, 8u, 0u),
              L"ff FF 10 0xff 0XFF 010 0");
    EXPECT_EQ(Text(L"%5d|%-5d|%05d|%+d|% d", 42, 42, -42, 42, 42), L"   42|42   |-0042|+42| 42");
    EXPECT_EQ(Text(L"%*d|%*d", 5, 42, -5, 42), L"   42|42   ");
    EXPECT_EQ(Text(L"%.3d|%6.3d|%06.3d|%.0d|%.*d", 7, 7, 7, 0, -1, 0), L"007|   007|   007||0");
    EXPECT_EQ(Text(L"%-05d|", 42), L"42   |");
    EXPECT_EQ(Text(L"%-*d|%-*d|%*d|", 5, 42, -5, 42, 0, 42), L"42   |42   |42|");
    EXPECT_EQ(Text(L"%.0d|%.0u|%.0x|%.0o|%.0d", 0, 0u, 0u, 0u, 7), L"||||7");
    EXPECT_EQ(Text(L"%#.0o|%#o|%#.3o|%#.1o|%#.0x", 0u, 0u, 8u, 8u, 0u), L"0|0|010|010|");
    EXPECT_EQ(Text(L"%s %d %s", L"a", 1, L"b"), L"a 1 b");
}

TEST(FormatText, Floats) {
    EXPECT_EQ(Text(L"%f", 0.1), L"0.100000");
    EXPECT_EQ(Text(L"%f", -1234567.0), L"-1234567.000000");
    EXPECT_EQ(Text(L"%.2f %.0f %.*f", 2.675, 0.5, 1, 0.25), L"2.67 0 0.2");
    EXPECT_EQ(Text(L"%8.2f|%-8.2f|%08.2f|%+.1f|% .1f", 3.14159, 3.14159, -3.14159, 1.0, 1.0),
              L"    3.14|3.14    |-0003.14|+1.0| 1.0");
    EXPECT_EQ(Text(L"%e %E", 12345.678, 0.00012), L"1.234568e+04 1.200000E-04");
    EXPECT_EQ(Text(L"%g %g %g %G", 0.0001, 0.00001, 1e6, 1e-10), L"0.0001 1e-05 1e+06 1E-10");
    EXPECT_EQ(Text(L"%f %f", -0.0, 0.0), L"-0.000000 0.000000");
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Text(L"%f %5.1f %05f %G %f", infinity, -infinity, infinity, infinity,
                   std::numeric_limits<double>::quiet_NaN()),
              L"inf  -inf   inf INF nan");
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Text(L"%F %E %G %F", nan, nan, nan, -infinity), L"NAN NAN NAN -INF");
    EXPECT_EQ(Text(L"%F %.2F", 0.5, -2.125), L"0.500000 -2.12");
    EXPECT_EQ(Text(L"%f", std::numeric_limits<double>::max()).size(), 316u);
    EXPECT_EQ(Text(L"%.400f", 1.0).size(), 402u);
}

TEST(FormatText, AgreesWithTheCLibraryOnRandomNumbers) {
    std::string const before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "C");
    std::mt19937_64 random(2);
    struct Case {
        wchar_t const* wide;
        char const* narrow;
    };
    Case const cases[] = {
        {L"%f", "%f"}, {L"%.3f", "%.3f"},     {L"%12.1f", "%12.1f"},   {L"%-12.0e|", "%-12.0e|"},
        {L"%g", "%g"}, {L"%+.10g", "%+.10g"}, {L"%020.3e", "%020.3e"}, {L"% G", "% G"}};
    for (int round = 0; round < 2000; ++round) {
        double const sign = random() % 2 ? 1.0 : -1.0;
        double const value =
            sign * std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 200) - 164);
        for (Case const& c : cases) {
            char expected[400];
            std::snprintf(expected, sizeof expected, c.narrow, value);
            std::string const narrow = expected;
            ASSERT_EQ(Text(c.wide, value), std::wstring(narrow.begin(), narrow.end()))
                << c.narrow << ' ' << value;
        }
        auto const number = static_cast<int>(random());
        char expected[80];
        std::snprintf(expected, sizeof expected, "%d|%015d|%-15d|%+.12d|%x|%#o", number, number, number,
                      number, static_cast<unsigned>(number), static_cast<unsigned>(number));
        std::string const narrow = expected;
        ASSERT_EQ(Text(L"%d|%015d|%-15d|%+.12d|%x|%#o", number, number, number, number,
                       static_cast<unsigned>(number), static_cast<unsigned>(number)),
                  std::wstring(narrow.begin(), narrow.end()));
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(FormatText, LocaleHasNoSay) {
    std::string const before = std::setlocale(LC_ALL, nullptr);
    for (char const* const name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name))
            break;
    }
    EXPECT_EQ(Text(L"%.1f %d %s", 1234.5, 1234, L"\u00E4"), L"1234.5 1234 \u00E4");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(FormatText, LongTexts) {
    std::wstring const text(100000, L'x');
    EXPECT_EQ(Text(L"%s%s", text.c_str(), text.c_str()).size(), 200000u);
    EXPECT_EQ(Text(L"%100000d", 1).size(), 100000u);
    EXPECT_EQ(Text(L"%*d", std::numeric_limits<int>::min(), 1).size(), 1000000u);
    EXPECT_EQ(Text(L"%99999999999999d", 1).size(), 1000000u);
}

TEST(FormatText, Pointers) {
    std::wstring const text = Text(L"%p", reinterpret_cast<void*>(std::uintptr_t{0xABC}));
    EXPECT_EQ(text, std::wstring(2 * sizeof(void*) - 3, L'0') + L"ABC");
    EXPECT_EQ(Text(L"%#p", reinterpret_cast<void*>(std::uintptr_t{0xABC})), text);
}

TEST(FormatText, FromAnUnknownConversionOnTheFormatIsCopied) {
    EXPECT_EQ(Text(L"%d %y %d", 1, 2, 3), L"1 %y %d");
    EXPECT_EQ(Text(L"50%"), L"50%");
    EXPECT_EQ(Text(L"50%5.2l"), L"50%5.2l");
    EXPECT_EQ(Text(L"%n", nullptr), L"%n");
    EXPECT_EQ(Text(L"%I"), L"%I");
}

} // namespace
