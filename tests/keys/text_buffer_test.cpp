#include <paramdb/keys/text_buffer.h>

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace {

// What a buffer shows has an end, and both ways to it agree.
template <std::size_t Capacity>
void ExpectText(CTextBuffer<Capacity> const& buffer, std::wstring const& expected) {
    EXPECT_EQ(buffer.view(), expected);
    EXPECT_EQ(buffer.c_str()[expected.size()], L'\0');
    EXPECT_EQ(buffer.view().data(), buffer.c_str());
    EXPECT_EQ(buffer.IsEmpty(), expected.empty());
}

TEST(TextBuffer, IsEmptyAtFirst) {
    CTextBuffer<10> const buffer;
    ExpectText(buffer, L"");
    CTextBuffer<1> smallest;
    ExpectText(smallest, L"");
    smallest += L"text";
    smallest += 5;
    ExpectText(smallest, L"");
}

TEST(TextBuffer, TakesTextsAndNumbers) {
    CTextBuffer<100> buffer;
    buffer += L"line ";
    buffer += 17;
    buffer += std::wstring(L", \u00E4");
    buffer += std::wstring_view(L"\xD83D\xDE00x").substr(0, 2);
    ExpectText(buffer, L"line 17, \u00E4\xD83D\xDE00");
    (buffer += L"").AppendAscii(nullptr, nullptr) += L"!";
    ExpectText(buffer, L"line 17, \u00E4\xD83D\xDE00!");
}

TEST(TextBuffer, Numbers) {
    for (int const number :
         {0, 7, -1, 10, -10, 1234567890, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        CTextBuffer<12> buffer; // has room for the longest
        buffer += number;
        ExpectText(buffer, std::to_wstring(number));
    }
}

TEST(TextBuffer, AsciiCharacters) {
    CTextBuffer<6> buffer;
    std::string_view const text = "1e+08";
    buffer.AppendAscii(text.data(), text.data() + 3);
    ExpectText(buffer, L"1e+");
    buffer.AppendAscii(text.data() + 3, text.data() + 3);
    ExpectText(buffer, L"1e+");
    buffer.AppendAscii(text.data(), text.data() + text.size());
    ExpectText(buffer, L"1e+1e");
    buffer.AppendAscii(text.data(), text.data() + text.size());
    ExpectText(buffer, L"1e+1e");
}

TEST(TextBuffer, DropsWhatHasNoRoom) {
    CTextBuffer<5> buffer;
    buffer += L"abcd";
    ExpectText(buffer, L"abcd");
    buffer += L"e";
    ExpectText(buffer, L"abcd");
    buffer.Clear();
    buffer += L"abcde";
    ExpectText(buffer, L"abcd");
    buffer.Clear();
    buffer += L"abc";
    buffer += -123;
    ExpectText(buffer, L"abc-");
    buffer += L"";
    ExpectText(buffer, L"abc-");
}

TEST(TextBuffer, ClearLeavesNothing) {
    CTextBuffer<20> buffer;
    buffer += L"a long text";
    buffer.Clear();
    ExpectText(buffer, L"");
    buffer += L"b";
    ExpectText(buffer, L"b");
}

TEST(TextBuffer, TakesItsOwnText) {
    CTextBuffer<8> buffer;
    buffer += L"abc";
    buffer += buffer.view();
    ExpectText(buffer, L"abcabc");
    buffer += buffer.view();
    ExpectText(buffer, L"abcabca");
}

TEST(TextBuffer, CopiesAreOfTheirOwn) {
    CTextBuffer<20> buffer;
    buffer += L"one";
    CTextBuffer<20> copy = buffer;
    copy += L" two";
    ExpectText(buffer, L"one");
    ExpectText(copy, L"one two");
    buffer = copy;
    copy.Clear();
    ExpectText(buffer, L"one two");
}

TEST(TextBuffer, RandomPiecesAgainstAString) {
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        CTextBuffer<30> buffer;
        std::wstring model;
        for (int count = 0; count < 10; ++count) {
            std::size_t const length = random() % 12;
            switch (random() % 6) {
            case 0: {
                int const number = static_cast<std::int32_t>(random() >> random() % 32);
                buffer += number;
                model += std::to_wstring(number);
                break;
            }
            case 5: {
                std::wstring part(length, L'p');
                for (std::size_t unit = 0; unit < length; ++unit)
                    part[unit] = static_cast<wchar_t>(L'a' + unit);
                buffer.Append(part);
                model += part;
                break;
            }
            case 1:
                buffer += std::wstring(length, L'w');
                model += std::wstring(length, L'w');
                break;
            case 2: {
                std::string const ascii(length, 'a');
                buffer.AppendAscii(ascii.data(), ascii.data() + ascii.size());
                model += std::wstring(length, L'a');
                break;
            }
            case 3:
                buffer += std::wstring(length, L'\uFFFF').c_str();
                model += std::wstring(length, L'\uFFFF');
                break;
            default:
                if (random() % 4 != 0)
                    break;
                buffer.Clear();
                model.clear();
            }
            model.resize(std::min<std::size_t>(model.size(), 29));
            ExpectText(buffer, model);
        }
    }
}

} // namespace
