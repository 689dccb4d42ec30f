#include <paramdb/keys/q_clavis.h>

#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <string>

namespace {

std::wstring Streamed(QClavis const& clavis) {
    std::wostringstream stream;
    stream << clavis;
    return stream.str();
}

TEST(QClavis, Streaming) {
    struct {
        QClavis clavis;
        wchar_t const* text;
    } const cases[] = {
        {QClavis(), L"-1 -1 -1 -1 -1 -1"},
        {QClavis(1, 2, 3, 4, 5, 6), L"1 2 3 4 5 6"},
        {QClavis(0, -20, 300, -4000, 50000, 0), L"0 -20 300 -4000 50000 0"},
        {QClavis(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), -1, 0, 1, -1),
         L"-2147483648 2147483647 -1 0 1 -1"},
    };
    for (auto const& [clavis, text] : cases)
        EXPECT_EQ(Streamed(clavis), text);
}

TEST(QClavis, StreamingGivesTheStreamBack) {
    std::wostringstream stream;
    stream << L"<" << QClavis(1, 2, 3, 4, 5, 6) << L">" << QClavis() << L"\n";
    EXPECT_EQ(stream.str(), L"<1 2 3 4 5 6>-1 -1 -1 -1 -1 -1\n");
}

TEST(QClavis, ElementsFollowTheClavisOrder) {
    QClavis const clavis(10, 11, 12, 13, 14, 15);
    EXPECT_EQ(clavis[Clavis::qMode], 10);
    EXPECT_EQ(clavis[Clavis::qInstrument], 11);
    EXPECT_EQ(clavis[Clavis::qChannel], 12);
    EXPECT_EQ(clavis[Clavis::qLocation], 13);
    EXPECT_EQ(clavis[Clavis::qInstrParam], 14);
    EXPECT_EQ(clavis[Clavis::qSignal], 15);
}

TEST(QClavis, ToAndFromASignalClavis) {
    int const elements[] = {10, -1, 12, 13, -14, 15};
    CClavis const plain(elements);
    QClavis const clavis(plain);
    EXPECT_EQ(clavis, QClavis(10, -1, 12, 13, -14, 15));
    EXPECT_EQ(clavis.ToClavis(), plain);
    EXPECT_EQ(QClavis().ToClavis(), CClavis());
    EXPECT_EQ(QClavis(CClavis()), QClavis());
}

TEST(QClavis, AnElementNotSetComesFirst) {
    EXPECT_LT(QClavis(-1, 9, 9, 9, 9, 9), QClavis(0, 0, 0, 0, 0, 0));
    EXPECT_LT(QClavis(3, 9, 9, 9, 9, -1), QClavis(3, 9, 9, 9, 9, 0));
    EXPECT_LT(QClavis(3, 9, -1, 9, 9, 9), QClavis(3, 9, 0, -1, -1, -1));
    EXPECT_LT(QClavis(-2, 0, 0, 0, 0, 0), QClavis());
}

} // namespace
