// The readers and printers once more where the decimal point is a comma and digits are grouped.
#include "reader_cases.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <tests/support/comma_locale.h>

namespace {

TEST(Locale, ReadersAndPrintersDoNotMindCommas) {
    test_support::CommaLocale const commas;
    std::wostringstream stream;
    stream << 1234.5;
    ASSERT_EQ(stream.str(), L"1.234,5");
    if (commas.HasCLocale()) {
        char text[16];
        std::snprintf(text, sizeof text, "%.1f", 0.5);
        ASSERT_STREQ(text, "0,5");
        ASSERT_EQ(std::strtod("0,5", nullptr), 0.5);
    }
    reader_cases::CheckIntegerTexts();
    reader_cases::CheckFloatTexts();
    reader_cases::CheckLineFields();
    reader_cases::CheckWrittenFields();
    reader_cases::CheckDumpCounters();
}

} // namespace
