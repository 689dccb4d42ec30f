#include <paramdb/platform/framework/cstring.h>

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <type_traits>

namespace {

TEST(CString, Construction) {
    EXPECT_EQ(CString(), L"");
    EXPECT_EQ(CString(nullptr), L"");
    EXPECT_EQ(CString(L"abc"), L"abc");
    EXPECT_EQ(CString(std::wstring(L"abc")), L"abc");
    EXPECT_EQ(CString(std::wstring_view(L"abcd", 2)), L"ab");
    EXPECT_EQ(CString(L"abcd", 3), L"abc");
    EXPECT_EQ(CString(L"abcd", -1), L"");
    EXPECT_EQ(CString(nullptr, 3), L"");
    EXPECT_EQ(CString(L'x', 3), L"xxx");
    EXPECT_EQ(CString(L'x', -3), L"");
    EXPECT_EQ(CString(L"a\0b", 3).GetLength(), 3);
    CString text = L"old";
    text = L"new";
    EXPECT_EQ(text, L"new");
    text = std::wstring(L"newer");
    EXPECT_EQ(text, L"newer");
    text = nullptr;
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, Access) {
    CString text = L"abc";
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_FALSE(text.IsEmpty());
    EXPECT_EQ(std::wstring(text.GetString()), L"abc");
    EXPECT_EQ(std::wstring(text), L"abc");
    EXPECT_EQ(text.GetAt(0), L'a');
    EXPECT_EQ(text.GetAt(2), L'c');
    EXPECT_EQ(text.GetAt(3), L'\0');
    EXPECT_EQ(text.GetAt(-1), L'\0');
    EXPECT_EQ(text[1], L'b');
    EXPECT_EQ(text[std::size_t{1}], L'b');
    EXPECT_EQ(text[long{-1}], L'\0');
    EXPECT_EQ(text[3u], L'\0');
    text.SetAt(1, L'x');
    text.SetAt(3, L'y');
    text.SetAt(-1, L'z');
    EXPECT_EQ(text, L"axc");
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, ComparisonWithEveryKindOfText) {
    CString const a = L"abc";
    std::wstring const standard = L"abc";
    wchar_t const* const pointer = L"abc";
    wchar_t array[] = L"abc";
    EXPECT_TRUE(a == CString(L"abc"));
    EXPECT_TRUE(a == pointer && pointer == a);
    EXPECT_TRUE(a == array && array == a);
    EXPECT_TRUE(a == L"abc" && L"abc" == a);
    EXPECT_TRUE(a == standard && standard == a);
    EXPECT_FALSE(a != pointer || a != standard || a != a);
    EXPECT_TRUE(a != L"abd" && L"abd" != a);
    EXPECT_TRUE(a < L"abd" && a < CString(L"abcd") && a < std::wstring(L"b"));
    EXPECT_TRUE(L"abb" < a && std::wstring(L"abb") < a);
    EXPECT_TRUE(a <= pointer && a >= standard && a > L"ab");
    EXPECT_TRUE(CString() == nullptr);
    EXPECT_FALSE(CString(L"a\0b", 3) == L"a");
    EXPECT_TRUE(CString(L"\uFFFF") > L"a"); // units are unsigned
    std::map<CString, int> const map{{L"b", 2}, {L"a", 1}};
    EXPECT_EQ(map.begin()->first, L"a");
    EXPECT_EQ(map.at(L"b"), 2);
}

TEST(CString, Compare) {
    EXPECT_EQ(CString(L"abc").Compare(L"abc"), 0);
    EXPECT_LT(CString(L"ab").Compare(L"abc"), 0);
    EXPECT_GT(CString(L"b").Compare(L"abc"), 0);
    EXPECT_EQ(CString().Compare(nullptr), 0);
    EXPECT_LT(CString(L"B").Compare(L"a"), 0);
    EXPECT_EQ(CString(L"\u00C4bC").CompareNoCase(L"\u00E4Bc"), 0);
    EXPECT_GT(CString(L"B").CompareNoCase(L"a"), 0);
    EXPECT_LT(CString(L"[").CompareNoCase(L"A"), 0); // both lower: '[' stands before 'a'
}

TEST(CString, Concatenation) {
    CString const a = L"a";
    EXPECT_EQ(a + a, L"aa");
    EXPECT_EQ(a + L"b", L"ab");
    EXPECT_EQ(L"b" + a, L"ba");
    EXPECT_EQ(a + std::wstring(L"c"), L"ac");
    EXPECT_EQ(std::wstring(L"c") + a, L"ca");
    EXPECT_EQ(a + L'd', L"ad");
    EXPECT_EQ(L'd' + a, L"da");
    EXPECT_EQ(a + static_cast<wchar_t const*>(nullptr), L"a");
    CString text;
    text += a;
    text += L"b";
    text += std::wstring(L"c");
    text += L'd';
    text += static_cast<wchar_t const*>(nullptr);
    text.Append(L"e");
    text.Append(nullptr);
    EXPECT_EQ(text, L"abcde");
    text += text;
    EXPECT_EQ(text, L"abcdeabcde");
    text.Append(text);
    EXPECT_EQ(text.GetLength(), 20);
}

TEST(CString, Parts) {
    CString const text = L"abcdef";
    EXPECT_EQ(text.Left(2), L"ab");
    EXPECT_EQ(text.Left(0), L"");
    EXPECT_EQ(text.Left(-1), L"");
    EXPECT_EQ(text.Left(99), L"abcdef");
    EXPECT_EQ(text.Right(2), L"ef");
    EXPECT_EQ(text.Right(-1), L"");
    EXPECT_EQ(text.Right(99), L"abcdef");
    EXPECT_EQ(text.Mid(2), L"cdef");
    EXPECT_EQ(text.Mid(-2), L"abcdef");
    EXPECT_EQ(text.Mid(6), L"");
    EXPECT_EQ(text.Mid(99), L"");
    EXPECT_EQ(text.Mid(1, 3), L"bcd");
    EXPECT_EQ(text.Mid(4, 9), L"ef");
    EXPECT_EQ(text.Mid(1, -1), L"");
    EXPECT_EQ(text.Mid(99, 1), L"");
}

TEST(CString, Search) {
    CString const text = L"abcabc";
    EXPECT_EQ(text.Find(L"bc"), 1);
    EXPECT_EQ(text.Find(L"bc", 2), 4);
    EXPECT_EQ(text.Find(L"bc", 5), -1);
    EXPECT_EQ(text.Find(L"x"), -1);
    EXPECT_EQ(text.Find(L"", 6), 6);
    EXPECT_EQ(text.Find(L"", 7), -1);
    EXPECT_EQ(text.Find(L"a", -1), -1);
    EXPECT_EQ(text.Find(nullptr), -1);
    EXPECT_EQ(text.Find(L'c'), 2);
    EXPECT_EQ(text.Find(L'c', 3), 5);
    EXPECT_EQ(text.Find(L'c', 6), -1);
    EXPECT_EQ(text.Find(L'c', -1), -1);
    EXPECT_EQ(text.ReverseFind(L'a'), 3);
    EXPECT_EQ(text.ReverseFind(L'x'), -1);
}

TEST(CString, Case) {
    struct Case {
        wchar_t const* lower;
        wchar_t const* upper;
    };
    Case const cases[] = {
        {L"abcxyz 09@[`{", L"ABCXYZ 09@[`{"},
        {L"\u00E4\u00F6\u00FC\u00E0\u00FE", L"\u00C4\u00D6\u00DC\u00C0\u00DE"},
        {L"\u00FF", L"\u0178"},
        {L"\u0101\u0159\u0161\u017E\u0151\u0171", L"\u0100\u0158\u0160\u017D\u0150\u0170"},
        {L"\u03B1\u03C9", L"\u0391\u03A9"},
        {L"\u0430\u044F\u0451", L"\u0410\u042F\u0401"},
        {L"\u00D7\u00F7\u00DF\u03C2\u4E2D",
         L"\u00D7\u00F7\u00DF\u03C2\u4E2D"}, // no letters, or no other case
    };
    for (Case const& c : cases) {
        EXPECT_EQ(CString(c.upper).MakeLower(), c.lower);
        EXPECT_EQ(CString(c.lower).MakeLower(), c.lower);
        EXPECT_EQ(CString(c.lower).MakeUpper(), c.upper);
        EXPECT_EQ(CString(c.upper).MakeUpper(), c.upper);
    }
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        CString const text(static_cast<wchar_t>(unit), 1);
        CString lower = text;
        CString upper = text;
        if (lower.MakeLower() != text) {
            EXPECT_EQ(lower.MakeUpper(), text) << unit;
        }
        if (upper.MakeUpper() != text) {
            EXPECT_EQ(upper.MakeLower(), text) << unit;
        }
    }
}

TEST(CString, Trim) {
    CString const text = L" \t\r\n\u00A0a b\u3000 \u0085";
    EXPECT_EQ(CString(text).Trim(), L"a b");
    EXPECT_EQ(CString(text).TrimLeft(), L"a b\u3000 \u0085");
    EXPECT_EQ(CString(text).TrimRight(), L" \t\r\n\u00A0a b");
    EXPECT_EQ(CString(L" \t ").Trim(), L"");
    EXPECT_EQ(CString().Trim(), L"");
    EXPECT_EQ(CString(L"\u001A").Trim(), L"\u001A");
}

TEST(CString, TrimKnowsTheWhiteSpaceOfEverySystem) {
    struct {
        int first, last;
    } const ranges[] = {{0x09, 0x0D},     {0x20, 0x20},     {0x85, 0x85},     {0xA0, 0xA0},
                        {0x1680, 0x1680}, {0x2000, 0x200A}, {0x2028, 0x2029}, {0x202F, 0x202F},
                        {0x205F, 0x205F}, {0x3000, 0x3000}};
    for (int unit = 1; unit <= 0xFFFF; ++unit) {
        bool is_space = false;
        for (auto const& [first, last] : ranges)
            is_space = is_space || (first <= unit && unit <= last);
        CString const text(std::wstring(1, static_cast<wchar_t>(unit)).c_str());
        ASSERT_EQ(CString(text).Trim().IsEmpty(), is_space) << std::hex << unit;
        ASSERT_EQ(CString(text).TrimLeft().IsEmpty(), is_space) << std::hex << unit;
        ASSERT_EQ(CString(text).TrimRight().IsEmpty(), is_space) << std::hex << unit;
    }
}

TEST(CString, Replace) {
    CString text = L"aXbXXc";
    EXPECT_EQ(text.Replace(L"X", L"--"), 3);
    EXPECT_EQ(text, L"a--b----c");
    EXPECT_EQ(text.Replace(L"--", nullptr), 3);
    EXPECT_EQ(text, L"abc");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Replace(nullptr, L"x"), 0);
    EXPECT_EQ(text.Replace(L"abc", text + text), 1);
    EXPECT_EQ(text, L"abcabc");
    EXPECT_EQ(text.Replace(text, text), 1);
    EXPECT_EQ(text.Replace(L'b', L'B'), 2);
    EXPECT_EQ(text, L"aBcaBc");
    EXPECT_EQ(text.Replace(L'x', L'y'), 0);
}

TEST(CString, Format) {
    CString text = L"7";
    text.Format(L"%s: %s (#%d)", L"label", text.GetString(), -1);
    EXPECT_EQ(text, L"label: 7 (#-1)");
    text.AppendFormat(L"%c%s", L'!', text.GetString());
    EXPECT_EQ(text, L"label: 7 (#-1)!label: 7 (#-1)");
    text.Format(L"");
    EXPECT_TRUE(text.IsEmpty());
}

template <class Stream>
concept Streamable = requires(Stream& stream, CString const& text) {
    stream << text;
};

TEST(CString, NoStreamTakesThePointer) {
    static_assert(!Streamable<std::ostream>);
    static_assert(!Streamable<std::wostream>);
}

} // namespace
