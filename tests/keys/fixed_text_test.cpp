#include <paramdb/keys/fixed_text.h>

#include <algorithm>
#include <compare>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace std::string_view_literals;

namespace {

std::wstring const Longest(199, L'x');

TEST(FixedText, StartsEmptyWithoutMemory) {
    CFixedText const text;
    EXPECT_EQ(text.view(), L""sv);
    EXPECT_EQ(text.c_str()[0], L'\0');
    EXPECT_EQ(text.HeapBytes(), 0U);
    EXPECT_EQ(text, CFixedText(nullptr));
    EXPECT_EQ(text, CFixedText(L""));
    EXPECT_EQ(CFixedText(L"").HeapBytes(), 0U);
    EXPECT_EQ(CFixedText(L""sv).HeapBytes(), 0U);
}

TEST(FixedText, EndsAtTheFirstZeroAndAt199Characters) {
    struct {
        std::wstring source;
        std::wstring text;
    } const cases[] = {
        {L"a", L"a"},
        {L"two words", L"two words"},
        {std::wstring(L"ab\0cd", 5), L"ab"},
        {std::wstring(L"\0cd", 3), L""},
        {std::wstring(1, L'\0'), L""},
        {std::wstring(198, L'y'), std::wstring(198, L'y')},
        {Longest, Longest},
        {Longest + L"y", Longest},
        {Longest + std::wstring(1000, L'z'), Longest},
        {Longest + std::wstring(1, L'\0'), Longest},
        {std::wstring(1000, L'\0'), L""},
        {L"\xFFFF\xD800\x20AC\x7F", L"\xFFFF\xD800\x20AC\x7F"},
    };
    for (auto const& [source, expected] : cases) {
        SCOPED_TRACE(source.size());
        CFixedText const text{std::wstring_view(source)};
        EXPECT_EQ(text.view(), expected);
        EXPECT_EQ(text.c_str()[expected.size()], L'\0');
        EXPECT_EQ(static_cast<wchar_t const*>(text), text.c_str());
        EXPECT_EQ(CFixedText(source.c_str()).view(), expected);
    }
}

TEST(FixedText, WidensCharactersOfAnotherType) {
    CFixedText text(L"before");
    text.Assign("a\xE4\0b"sv, [](char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); });
    EXPECT_EQ(text, L"a\xE4");
    std::string const many(300, 'q');
    text.Assign(std::string_view(many), [](char) { return L'r'; });
    EXPECT_EQ(text, std::wstring(199, L'r').c_str());
    text.Assign(""sv, [](char) { return L'r'; });
    EXPECT_EQ(text, L"");
}

TEST(FixedText, AnAssignmentUsesTheRoomThatIsThere) {
    CFixedText text(L"12345");
    wchar_t const* const place = text.c_str();
    EXPECT_EQ(text.HeapBytes(), 6 * sizeof(wchar_t));
    for (wchar_t const* const no_longer : {L"abcde", L"ab", L"", L"vwxyz"}) {
        CFixedText const source(no_longer);
        text = source;
        EXPECT_EQ(text, no_longer);
        EXPECT_EQ(text.c_str(), place);
        EXPECT_EQ(text.HeapBytes(), 6 * sizeof(wchar_t));
    }
    CFixedText const longer(L"123456");
    text = longer;
    EXPECT_EQ(text, L"123456");
    EXPECT_EQ(text.HeapBytes(), 7 * sizeof(wchar_t));
    CFixedText const full{std::wstring_view(Longest + Longest)};
    EXPECT_EQ(full.HeapBytes(), 200 * sizeof(wchar_t));
}

TEST(FixedText, RoomForAnyTextLastsForAllAssignments) {
    CFixedText text(L"abc");
    text.ReserveAll();
    EXPECT_EQ(text, L"");
    wchar_t const* const place = text.c_str();
    for (std::size_t const length : {std::size_t{1}, std::size_t{100}, std::size_t{199}, std::size_t{300}}) {
        std::string const source(length, 'x');
        text.Assign(std::string_view(source), [](char) { return L'x'; });
        EXPECT_EQ(text.view().size(), std::min(length, std::size_t{199}));
        EXPECT_EQ(text.c_str(), place);
    }
}

TEST(FixedText, CopiesAreIndependent) {
    CFixedText first(L"first");
    CFixedText second(first);
    second = CFixedText(L"second");
    EXPECT_EQ(first, L"first");
    EXPECT_EQ(second, L"second");
    first = second;
    second = CFixedText();
    EXPECT_EQ(first, L"second");
    EXPECT_EQ(second, L"");
    EXPECT_EQ(CFixedText(CFixedText()), L"");
}

TEST(FixedText, MovesTakeTheTextAlong) {
    CFixedText source(L"text");
    wchar_t const* const place = source.c_str();
    CFixedText target(std::move(source));
    EXPECT_EQ(target.c_str(), place);
    CFixedText next;
    next = std::move(target);
    EXPECT_EQ(next.c_str(), place);
    EXPECT_EQ(next, L"text");
}

TEST(FixedText, MovesTakeTheRoomAlong) {
    CFixedText small(L"ab");
    CFixedText large(L"0123456789");
    wchar_t const* const place = large.c_str();
    small = std::move(large);
    EXPECT_EQ(small.HeapBytes(), 11 * sizeof(wchar_t));
    CFixedText const other(L"abcdefghij");
    small = other;
    EXPECT_EQ(small, L"abcdefghij");
    EXPECT_EQ(small.c_str(), place);

    CFixedText const taken(std::move(small));
    EXPECT_EQ(taken.HeapBytes(), 11 * sizeof(wchar_t));
    small = CFixedText();
    EXPECT_EQ(small.HeapBytes(), 0U);
    EXPECT_EQ(small, L"");
}

TEST(FixedText, AssigningATextToItselfOrFromItself) {
    CFixedText text(L"abcdef");
    CFixedText& alias = text;
    text = alias;
    EXPECT_EQ(text, L"abcdef");
    text = std::move(alias);
    EXPECT_EQ(text, L"abcdef");
    text.Assign(text.view().substr(2), [](wchar_t character) { return character; });
    EXPECT_EQ(text, L"cdef");
    text.Assign(text.view(), [](wchar_t character) { return character; });
    EXPECT_EQ(text, L"cdef");
    CFixedText empty;
    CFixedText& other_alias = empty;
    empty = other_alias;
    EXPECT_EQ(empty, L"");
}

TEST(FixedText, OrderIsThatOfUnsignedCodeUnits) {
    // Ascending; a text comes behind each of its beginnings.
    std::vector<std::wstring> const ascending{
        L"",       L"\x01",   L" ",      L"A",         L"A ",     L"AA",     L"Aa",
        L"B",      L"Z",      L"a",      L"aa",        L"\x7F",   L"\x80",   L"\xC4",
        L"\xE4",   L"\xFF",   L"\x0100", L"\x20AC",    L"\x7FFF", L"\x8000", L"\xD83D\xDE00",
        L"\xE000", L"\xFFFE", L"\xFFFF", L"\xFFFF\x01"};
    for (std::size_t left = 0; left < ascending.size(); ++left)
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            SCOPED_TRACE(std::to_string(left) + " and " + std::to_string(right));
            CFixedText const a{std::wstring_view(ascending[left])};
            CFixedText const b{std::wstring_view(ascending[right])};
            EXPECT_EQ(a <=> b, left <=> right);
            EXPECT_EQ(a < b, left < right);
            EXPECT_EQ(a == b, left == right);
            EXPECT_EQ(a == ascending[right].c_str(), left == right);
        }
}

TEST(FixedText, CharactersBehindTheEndDoNotCompare) {
    CFixedText text(L"abc");
    CFixedText const shorter(L"ab");
    text = shorter;
    EXPECT_EQ(text, shorter);
    EXPECT_EQ(text <=> shorter, std::strong_ordering::equal);
    EXPECT_EQ(CFixedText(L"ab\0c"sv), CFixedText(L"ab\0d"sv));
    EXPECT_EQ(CFixedText{std::wstring_view(Longest + L"a")}, CFixedText{std::wstring_view(Longest + L"b")});
}

} // namespace
