#include <paramdb/storage/white_space.h>

#include <gtest/gtest.h>
#include <limits>
#include <set>

TEST(WhiteSpace, IsOneFixedSet) {
    std::set<unsigned long> const expected{0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,
                                           0xA0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                           0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x2028,
                                           0x2029, 0x202F, 0x205F, 0x3000};
    std::set<unsigned long> found;
    for (unsigned long code = 0; code <= 0xFFFF; ++code)
        if (paramdb::IsWhiteSpace(static_cast<wchar_t>(code)))
            found.insert(code);
    EXPECT_EQ(found, expected);
}

TEST(WhiteSpace, AByteIsTheCharacterOfItsNumber) {
    for (unsigned code = 0; code <= 0xFF; ++code)
        EXPECT_EQ(paramdb::IsWhiteSpace(static_cast<char>(static_cast<unsigned char>(code))),
                  paramdb::IsWhiteSpace(static_cast<wchar_t>(code)))
            << code;
}

TEST(WhiteSpace, NoCharacterOutsideSixteenBitsIsOne) {
    EXPECT_FALSE(paramdb::IsWhiteSpace(std::numeric_limits<wchar_t>::max()));
    if constexpr (sizeof(wchar_t) > 2) {
        EXPECT_FALSE(paramdb::IsWhiteSpace(std::numeric_limits<wchar_t>::min()));
        EXPECT_FALSE(paramdb::IsWhiteSpace(static_cast<wchar_t>(0x10020)));
    }
}

static_assert(paramdb::IsWhiteSpace(' ') && paramdb::IsWhiteSpace('\xA0') && !paramdb::IsWhiteSpace('x'));
static_assert(paramdb::IsWhiteSpace(L' ') && paramdb::IsWhiteSpace(L'\x3000') &&
              !paramdb::IsWhiteSpace(L'\0'));
