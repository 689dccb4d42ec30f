#include <paramdb/tables/table_type.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <tests/support/messages.h>
#include <vector>

namespace {

TEST(TableType, CopiesWhatFits) {
    struct {
        wchar_t const* source;
        std::size_t length;
        bool whole;
        std::wstring buffer; // as far as it was written, the end included
    } const cases[] = {
        {L"", 1, true, std::wstring(1, L'\0')},
        {L"", 5, true, std::wstring(1, L'\0')},
        {L"abc", 5, true, std::wstring(L"abc\0", 4)},
        {L"abc", 4, true, std::wstring(L"abc\0", 4)},
        {L"abc", 3, false, std::wstring(L"ab\0", 3)},
        {L"abc", 2, false, std::wstring(L"a\0", 2)},
        {L"abc", 1, false, std::wstring(1, L'\0')},
        {L"\x20AC \xE4", 2, false, std::wstring(L"\x20AC\0", 2)},
    };
    for (auto const& [source, length, whole, buffer] : cases) {
        SCOPED_TRACE(std::to_string(length));
        MessageLog messages;
        std::wstring target(8, L'#');
        EXPECT_EQ(TableType::strcopy(target.data(), source, length), whole);
        EXPECT_EQ(target, buffer + std::wstring(8 - buffer.size(), L'#'));
        std::vector<Message> expected;
        if (!whole)
            expected.push_back(
                {1, 1,
                 L"TableType::strcopy(): copy truncated because destination string with length " +
                     std::to_wstring(length) + L" can't take '" + source + L"'\n"});
        EXPECT_EQ(messages.Take(), expected);
    }
}

TEST(TableType, NothingToCopyOrNowhereToCopyTo) {
    MessageLog messages;
    wchar_t buffer[3] = {L'#', L'#', L'#'};
    EXPECT_FALSE(TableType::strcopy(nullptr, L"abc", 3));
    EXPECT_FALSE(TableType::strcopy(buffer, nullptr, 3));
    EXPECT_FALSE(TableType::strcopy(buffer, L"abc", 0));
    EXPECT_EQ(std::wstring(buffer, 3), L"###");
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST(TableType, AWholeTextFieldAndOneCharacterMore) {
    MessageLog messages;
    std::wstring target(200, L'#');
    std::wstring const longest(199, L'a');
    EXPECT_TRUE(TableType::strcopy(target.data(), longest.c_str(), 200));
    EXPECT_EQ(target, longest + L'\0');
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    std::wstring const longer = longest + L"b";
    EXPECT_FALSE(TableType::strcopy(target.data(), longer.c_str(), 200));
    EXPECT_EQ(target, longest + L'\0');
    EXPECT_EQ(
        messages.Take(),
        (std::vector<Message>{
            {1, 1,
             L"TableType::strcopy(): copy truncated because destination string with length 200 can't take '" +
                 longer + L"'\n"}}));
}

} // namespace
