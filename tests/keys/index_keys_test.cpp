#include <paramdb/keys/index_keys.h>
#include <paramdb/keys/q_clavis.h>

#include <array>
#include <cmath>
#include <compare>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <tests/support/extremes.h>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

// The keys of integers, by their number of elements.
template <class Key>
class IntegerKey : public testing::Test {
protected:
    using Elements = std::array<int, Key::size()>;
    static Key Of(Elements const& elements) { return std::make_from_tuple<Key>(elements); }
};

using IntegerKeys = testing::Types<QIdx1, QIdx2, QIdx3, QIdx4, QIdx5, QIdx6, QClavis>;
TYPED_TEST_SUITE(IntegerKey, IntegerKeys, );

TYPED_TEST(IntegerKey, StartsWithMinusOneEverywhere) {
    typename TestFixture::Elements expected;
    expected.fill(-1);
    TypeParam const key;
    EXPECT_EQ(key.elements(), expected);
    EXPECT_EQ(key, TypeParam());
    EXPECT_FALSE(std::less<TypeParam>()(key, TypeParam()));
    EXPECT_TRUE((std::is_base_of_v<QValueBase, TypeParam>));
}

TYPED_TEST(IntegerKey, HoldsItsElementsInOrder) {
    typename TestFixture::Elements elements;
    for (std::size_t index = 0; index < elements.size(); ++index)
        elements[index] = 10 + static_cast<int>(index);
    TypeParam key = this->Of(elements);
    EXPECT_EQ(key.elements(), elements);
    TypeParam const copy(key);
    for (std::size_t index = 0; index < elements.size(); ++index) {
        EXPECT_EQ(std::as_const(key)[index], elements[index]);
        key[index] = -7;
    }
    EXPECT_EQ(copy.elements(), elements);
    std::apply([](auto&... fields) { ((fields = 3), ...); }, key.tuple());
    for (int const element : key.elements())
        EXPECT_EQ(element, 3);
    key = copy;
    EXPECT_EQ(key, copy);
    TypeParam& alias = key;
    key = alias;
    EXPECT_EQ(key, copy);
}

TYPED_TEST(IntegerKey, TheFirstDifferenceDecides) {
    // Ascending values of one element.
    constexpr int values[] = {Lowest, -2, -1, 0, 1, 5, Highest};
    for (std::size_t place = 0; place < TypeParam::size(); ++place)
        for (int const left : values)
            for (int const right : values) {
                typename TestFixture::Elements a{};
                typename TestFixture::Elements b{};
                a[place] = left;
                b[place] = right;
                // What stands behind the difference says the contrary.
                for (std::size_t behind = place + 1; left != right && behind < a.size(); ++behind) {
                    a[behind] = left < right ? Highest : Lowest;
                    b[behind] = left < right ? Lowest : Highest;
                }
                TypeParam const first = this->Of(a);
                TypeParam const second = this->Of(b);
                EXPECT_EQ(std::less<TypeParam>()(first, second), left < right) << left << ' ' << right;
                EXPECT_EQ(first == second, left == right) << left << ' ' << right;
                EXPECT_EQ(first <=> second, left <=> right) << left << ' ' << right;
            }
}

TYPED_TEST(IntegerKey, ComparesAsAnArrayDoes) {
    std::mt19937 random(11);
    typename TestFixture::Elements a;
    typename TestFixture::Elements b;
    for (int round = 0; round < 5000; ++round) {
        for (std::size_t index = 0; index < a.size(); ++index) {
            a[index] = static_cast<int>(random() % 3) - 1;
            b[index] = random() % 4 == 0 ? static_cast<int>(random() % 3) - 1 : a[index];
        }
        EXPECT_EQ(this->Of(a) <=> this->Of(b), a <=> b);
        EXPECT_EQ(this->Of(a) == this->Of(b), a == b);
    }
}

TEST(IndexKeys, ElementsOfAPair) {
    EXPECT_LT(QIdx2(1, 5), QIdx2(2, 0));
    EXPECT_LT(QIdx2(1, -1), QIdx2(1, 0));
    EXPECT_EQ(QIdx2(5, -1)[0], 5);
    EXPECT_EQ(QIdx2(5, -1)[1], -1);
}

TEST(IndexKeys, NumberAndPositionStartUnsetAtZero) {
    QIdxIF const key;
    EXPECT_EQ(key.number(), -1);
    EXPECT_EQ(key.position(), 0.0F);
    EXPECT_FALSE(std::signbit(key.position()));
    EXPECT_EQ(key, QIdxIF(-1, 0.0F));
    EXPECT_FALSE(std::less<QIdxIF>()(key, QIdxIF()));
}

TEST(IndexKeys, NumberThenPosition) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    std::vector<QIdxIF> const ascending{{Lowest, infinity},  {-1, 0.0F},   {0, -infinity}, {0, -1.5F},
                                        {0, -1e-45F},        {0, 0.0F},    {0, 1e-45F},    {0, 0.5F},
                                        {0, 0.50000006F},    {0, 3.4e38F}, {0, infinity},  {1, -infinity},
                                        {Highest, -infinity}};
    for (std::size_t left = 0; left < ascending.size(); ++left)
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            SCOPED_TRACE(std::to_string(left) + " and " + std::to_string(right));
            EXPECT_EQ(std::less<QIdxIF>()(ascending[left], ascending[right]), left < right);
            EXPECT_EQ(ascending[left] == ascending[right], left == right);
        }
    EXPECT_EQ(QIdxIF(2, -0.0F), QIdxIF(2, 0.0F));
    EXPECT_FALSE(std::less<QIdxIF>()(QIdxIF(2, -0.0F), QIdxIF(2, 0.0F)));
}

TEST(IndexKeys, APositionThatIsNoNumberIsNeverLess) {
    float const nan = std::nanf("");
    std::less<QIdxIF> const less;
    for (float const position : {-1.0F, 0.0F, std::numeric_limits<float>::infinity(), nan}) {
        EXPECT_FALSE(less(QIdxIF(3, nan), QIdxIF(3, position)));
        EXPECT_FALSE(less(QIdxIF(3, position), QIdxIF(3, nan)));
        EXPECT_FALSE(QIdxIF(3, nan) == QIdxIF(3, position));
    }
    EXPECT_EQ(QIdxIF(3, nan) <=> QIdxIF(3, nan), std::partial_ordering::unordered);
    // The number still decides where it differs.
    EXPECT_TRUE(less(QIdxIF(2, nan), QIdxIF(3, nan)));
    EXPECT_TRUE(less(QIdxIF(2, nan), QIdxIF(3, -5.0F)));
    EXPECT_FALSE(less(QIdxIF(4, nan), QIdxIF(3, nan)));
}

TEST(IndexKeys, FieldsOfNumberAndPosition) {
    QIdxIF key(1, 2.0F);
    QIdxIF const copy(key);
    key.tuple() = std::make_tuple(7, -0.25F);
    EXPECT_EQ(key.number(), 7);
    EXPECT_EQ(key.position(), -0.25F);
    EXPECT_EQ(copy, QIdxIF(1, 2.0F));
}

TEST(IndexKeys, Names) {
    EXPECT_EQ(QIdxName().name(), L"");
    EXPECT_EQ(QIdxName(), QIdxName(L""));
    EXPECT_FALSE(std::less<QIdxName>()(QIdxName(), QIdxName()));
    QIdxName name(L"idle");
    QIdxName const copy(name);
    name = QIdxName(L"run");
    EXPECT_EQ(copy.name(), L"idle");
    EXPECT_EQ(std::wstring(static_cast<wchar_t const*>(name)), L"run");
    std::get<0>(name.tuple()) = CFixedText(L"up");
    EXPECT_EQ(name.name(), L"up");
    QIdxName& alias = name;
    name = alias;
    EXPECT_EQ(name.name(), L"up");
}

TEST(IndexKeys, NamesAreCutAt199Characters) {
    std::wstring const longest(199, L'n');
    EXPECT_EQ(QIdxName(longest.c_str()).name().view(), longest);
    EXPECT_EQ(QIdxName((longest + L"o").c_str()).name().view(), longest);
    EXPECT_EQ(QIdxName((longest + L"o").c_str()), QIdxName((longest + L"p").c_str()));
    EXPECT_EQ(QIdxName(CFixedText(std::wstring_view(L"ab\0cd", 5))).name(), L"ab");
}

TEST(IndexKeys, NamesCompareByCodeUnit) {
    // In the order of a dictionary these would stand otherwise.
    std::vector<QIdxName> const ascending{L"",     L"-1",     L"10",           L"9",     L"B", L"Ba",
                                          L"a",    L"a b",    L"ab",           L"b",     L"z", L"\xE4",
                                          L"\xFF", L"\x20AC", L"\xD83D\xDE00", L"\xFFFD"};
    for (std::size_t left = 0; left < ascending.size(); ++left)
        for (std::size_t right = 0; right < ascending.size(); ++right) {
            SCOPED_TRACE(std::to_string(left) + " and " + std::to_string(right));
            EXPECT_EQ(std::less<QIdxName>()(ascending[left], ascending[right]), left < right);
            EXPECT_EQ(ascending[left] == ascending[right], left == right);
        }
}

} // namespace
