#include <paramdb/distillery/order_interpreter.h>

#include "order_model.h"

#include <gtest/gtest.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>

namespace {

using Definition = QVSpecIntervalEntry::Definition;
using Positions = std::vector<OrderPosition>;

Positions Parse(wchar_t const* text, unsigned int room = 32) {
    std::vector<Definition> out(room);
    unsigned int const count = OrderInterpreter::GetSpecPositions(text, out.data(), room);
    EXPECT_LE(count, room);
    Positions positions;
    for (unsigned int place = 0; place < std::min(count, room); ++place)
        positions.emplace_back(out[place]);
    return positions;
}

Message SyntaxError(std::wstring const& text) {
    return {8, 3,
            L"OrderInterpreter::GetSpecPositions(): Syntax error in order definition '" + text +
                L"', treating it as empty.\n"};
}

class OrderInterpreterTest : public testing::Test {
protected:
    MessageLog messages;
};

TEST_F(OrderInterpreterTest, ADefinitionStartsAsZeroAndIsCleared) {
    Definition definition;
    EXPECT_EQ(OrderPosition(definition), OrderPosition());
    definition.frequency() = 1;
    definition.order() = 2;
    definition.harmonic() = 3;
    definition.modulation() = 4;
    definition.lines() = 5;
    definition.domain() = 3;
    EXPECT_EQ(OrderPosition(definition), OrderPosition(1, 2, 3, 4, 5, 3));
    EXPECT_EQ(definition.tuple(), std::tuple(1.0f, 2.0f, 3.0f, 4.0f, 5, 3));
    definition.clear();
    EXPECT_EQ(OrderPosition(definition), OrderPosition());
}

TEST_F(OrderInterpreterTest, NothingIsNoFault) {
    Definition out;
    out.order() = 7;
    for (wchar_t const* const text : {static_cast<wchar_t const*>(nullptr), L"", L" ", L"    "}) {
        EXPECT_EQ(OrderInterpreter::GetSpecPositions(text, &out, 1), 0u);
        EXPECT_EQ(out.order(), 7.0f);
    }
    EXPECT_EQ(OrderInterpreter::GetSpecPositions(L"O1", nullptr, 0), 0u) << "no room";
    EXPECT_EQ(OrderInterpreter::GetSpecPositions(L"HX", nullptr, 0), 0u);
    EXPECT_EQ(OrderInterpreter::GetSpecPositions(L"O1*2", nullptr, 0), 0u) << "not even looked at";
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

// Single positions: frequency, order, harmonic, modulation, lines, domain.
TEST_F(OrderInterpreterTest, GoodTerms) {
    struct Case {
        wchar_t const* text;
        OrderPosition position;
    };
    Case const cases[] = {
        {L"F100", {100, 0, 0, 0, 0, 1}},
        {L"O1", {0, 1, 0, 0, 0, 2}},
        {L"H3", {0, 0, 3, 0, 0, 2}},
        {L"M2", {0, 0, 0, 2, 0, 2}},
        {L"L3", {0, 0, 0, 0, 3, 0}},
        {L"F100+O1", {100, 1, 0, 0, 0, 3}},
        {L"O1-F100", {-100, 1, 0, 0, 0, 3}},
        {L"F100-L2", {100, 0, 0, 0, -2, 1}},
        {L"O1+L2", {0, 1, 0, 0, 2, 2}},
        {L"H1+M2-O3+L4", {0, -3, 1, 2, 4, 2}},
        {L"L4-O3+M2+H1", {0, -3, 1, 2, 4, 2}},
        {L"H1-M2", {0, 0, 1, -2, 0, 2}},
        // Signs before the first letter, and in front of a number.
        {L"+O1", {0, 1, 0, 0, 0, 2}},
        {L"-O1", {0, -1, 0, 0, 0, 2}},
        {L"--O1", {0, -1, 0, 0, 0, 2}},
        {L"O-1", {0, -1, 0, 0, 0, 2}},
        {L"O+1", {0, 1, 0, 0, 0, 2}},
        {L"-O-1", {0, 1, 0, 0, 0, 2}},
        {L"L-3", {0, 0, 0, 0, -3, 0}},
        {L"-L-3", {0, 0, 0, 0, 3, 0}},
        {L"-O0", {0, -0.0f, 0, 0, 0, 2}},
        {L"-L0", {0, 0, 0, 0, 0, 0}},
        // Blanks and commas.
        {L"O 1,5", {0, 1.5f, 0, 0, 0, 2}},
        {L" O 1 . 5 ", {0, 1.5f, 0, 0, 0, 2}},
        {L"O1 2", {0, 12, 0, 0, 0, 2}},
        {L"O1 , 5 + M 2", {0, 1.5f, 0, 2, 0, 2}},
        {L"O\t1", {0, 1, 0, 0, 0, 2}},
        {L"L\t\n7", {0, 0, 0, 0, 7, 0}},
        // Forms of numbers.
        {L"O.5", {0, 0.5f, 0, 0, 0, 2}},
        {L"O5.", {0, 5, 0, 0, 0, 2}},
        {L"O1e3", {0, 1000, 0, 0, 0, 2}},
        {L"O1E3", {0, 1000, 0, 0, 0, 2}},
        {L"O1e+2", {0, 100, 0, 0, 0, 2}},
        {L"O1e-2+M1", {0, 0.01f, 0, 1, 0, 2}},
        {L"O0x10", {0, 16, 0, 0, 0, 2}},
        {L"O0x1.8p3", {0, 12, 0, 0, 0, 2}},
        {L"O0.1", {0, 0.1f, 0, 0, 0, 2}},
        {L"O16777217", {0, 16777216, 0, 0, 0, 2}},
        {L"L010", {0, 0, 0, 0, 10, 0}},
        {L"Oinf", {0, Infinite, 0, 0, 0, 2}},
        {L"-Oinfinity", {0, -Infinite, 0, 0, 0, 2}},
        {L"Onan", {0, NotANumber, 0, 0, 0, 2}},
        // Too large, too small.
        {L"O1e39", {0, Infinite, 0, 0, 0, 2}},
        {L"-O1e39", {0, -Infinite, 0, 0, 0, 2}},
        {L"F1e999", {Infinite, 0, 0, 0, 0, 1}},
        {L"O1e-60", {0, 0, 0, 0, 0, 2}},
        {L"-O1e-999", {0, -0.0f, 0, 0, 0, 2}},
        {L"L2147483647", {0, 0, 0, 0, Highest, 0}},
        {L"L2147483648", {0, 0, 0, 0, Highest, 0}},
        {L"-L2147483648", {0, 0, 0, 0, -Highest, 0}},
        {L"L-2147483648", {0, 0, 0, 0, Lowest, 0}},
        {L"L-2147483649", {0, 0, 0, 0, Lowest, 0}},
        {L"-L-2147483647", {0, 0, 0, 0, Highest, 0}},
        {L"-L-2147483648", {0, 0, 0, 0, Highest, 0}},
        {L"L99999999999999999999", {0, 0, 0, 0, Highest, 0}},
        {L"-L99999999999999999999", {0, 0, 0, 0, -Highest, 0}},
        // No number at all is 0.
        {L"O", {0, 0, 0, 0, 0, 2}},
        {L"O+M2", {0, 0, 0, 2, 0, 2}},
        {L"L-", {0, 0, 0, 0, 0, 0}},
        {L"O--1", {0, 0, 0, 0, 0, 2}},
        {L"H+-1", {0, 0, 0, 0, 0, 2}},
        {L"-F", {-0.0f, 0, 0, 0, 0, 1}},
        // X for 1.
        {L"OX", {0, 1, 0, 0, 0, 2}},
        {L"-Ox+MX", {0, -1, 0, 1, 0, 2}},
        {L"FX-LX", {1, 0, 0, 0, -1, 1}},
        // Each letter counts once, and nothing else is looked at.
        {L"O1+O2", {0, 1, 0, 0, 0, 2}},
        {L"O1-O2*", {0, 1, 0, 0, 0, 2}},
        {L"H2+HX", {0, 0, 2, 0, 0, 2}},
        {L"abc", {}},
        {L"12", {}},
        {L"o1", {}},
        {L"*+O1", {0, 1, 0, 0, 0, 2}},
        {L"O1+abc*", {0, 1, 0, 0, 0, 2}},
        {L"O1++M2", {0, 1, 0, 2, 0, 2}},
        {L"\u00B5-M2", {0, 0, 0, -2, 0, 2}},
    };
    for (auto const& [text, position] : cases) {
        EXPECT_EQ(Parse(text), Positions{position}) << text;
        EXPECT_EQ(messages.Take(), std::vector<Message>()) << text;
    }
}

TEST_F(OrderInterpreterTest, BadTerms) {
    wchar_t const* const texts[] = {
        L"O1*2",        L"O1.2.3",  L"O1e",     L"O1e+M2",    L"OX2",     L"OXX",      L"HX1",
        L"LX.",         L"L1.5",    L"L1e3",    L"L0x10",     L"1O1",     L"*O1",      L"O1M2",
        L"O1 M2",       L"OM",      L"\tO1",    L"O1\t",      L"O1\t+M2", L"O*",       L"O,,5",
        L"F1+H2",       L"F100+M1", L"F100+H2", L"F+M",       L"H1+F2",   L"M1-F2",    L"F1+HX",
        L"F1+O2+M3+L4", L"OINF",    L"O0xF",    L"OINFINITY", L"O1+M2x",  L"O1/",      L"Ostart",
        L"O\u00B2",     L"F1+O2M",  L"O0x",     L"O1;M2*",    L"M2*;O1",  L"O1;F1+M2", L"*;*O1",
    };
    for (wchar_t const* const text : texts) {
        EXPECT_EQ(Parse(text), Positions()) << text;
        EXPECT_EQ(messages.Take(), std::vector{SyntaxError(text)}) << text;
    }
}

TEST_F(OrderInterpreterTest, TheMessageShowsTheTextAsGiven) {
    EXPECT_EQ(Parse(L" O 1,5 * ; %s"), Positions());
    EXPECT_EQ(messages.Take(), std::vector{SyntaxError(L" O 1,5 * ; %s")});
    std::wstring const long_text = L"O1*" + std::wstring(5000, L'2');
    EXPECT_EQ(Parse(long_text.c_str()), Positions());
    EXPECT_EQ(messages.Take(), std::vector{SyntaxError(long_text)});
}

TEST_F(OrderInterpreterTest, Lists) {
    OrderPosition const one(0, 1, 0, 0, 0, 2);
    OrderPosition const two(0, 2, 0, 0, 0, 2);
    OrderPosition const none;
    struct Case {
        wchar_t const* text;
        Positions positions;
    };
    Case const cases[] = {
        {L"O1;O2", {one, two}},
        {L"O1;O2;O1", {one, two, one}},
        {L"O1;", {one}},
        {L"O1; ", {one}},
        {L";O1", {none, one}},
        {L"O1;;O2", {one, none, two}},
        {L";", {none}},
        {L"; ;", {none, none}},
        {L"O1 ; ; O2 ;", {one, none, two}},
        {L"O1;;", {one, none}},
        {L"\t;O1", {none, one}},
        {L"H1-M2;H1+M2", {{0, 0, 1, -2, 0, 2}, {0, 0, 1, 2, 0, 2}}},
        {L"F100;O2+L3", {{100, 0, 0, 0, 0, 1}, {0, 2, 0, 0, 3, 2}}},
    };
    for (auto const& [text, positions] : cases)
        EXPECT_EQ(Parse(text), positions) << text;
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(OrderInterpreterTest, TheRoomEndsTheList) {
    OrderPosition const one(0, 1, 0, 0, 0, 2);
    EXPECT_EQ(Parse(L"O1;O1;O1", 2), (Positions{one, one}));
    EXPECT_EQ(Parse(L"O1;O1*", 1), Positions{one}) << "what finds no room is not read";
    EXPECT_EQ(Parse(L"HX;O1", 1), (Positions{{0, 0, 1, 0, 0, 2}}));
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    std::wstring many;
    for (int term = 0; term < 40; ++term)
        many += L"O1;";
    EXPECT_EQ(Parse(many.c_str()), Positions(32, one));
    EXPECT_EQ(Parse(many.c_str(), 100), Positions(40, one));
}

TEST_F(OrderInterpreterTest, Series) {
    struct Case {
        wchar_t const* text;
        unsigned int room;
        std::vector<float> harmonics;
    };
    Case const cases[] = {
        {L"HX", 0, {}},
        {L"HX", 1, {1}},
        {L"HX", 4, {1, 2, 3, 4}},
        {L"Hx", 3, {1, 2, 3}},
        {L"-HX", 3, {-1, 2, 3}},
        {L"HX;HX", 2, {1, 1}},
        {L"HX;HX", 3, {1, 1}},
        {L"HX;HX", 5, {1, 1, 2, 2}},
        {L"HX;HX;HX", 8, {1, 1, 1, 2, 2, 2}},
        {L"O1;HX", 4, {0, 1, 2, 3}},
        {L"O1;O2;HX;HX", 7, {0, 0, 1, 1, 2, 2}},
        {L"H5;HX", 3, {5, 1, 2}},
        {L"O1;HX;HX", 2, {0, 1}}, // only the first series term has room
        {L";HX", 3, {0, 1, 2}},
    };
    for (auto const& [text, room, harmonics] : cases) {
        std::vector<float> found;
        for (auto const& position : Parse(text, room))
            found.push_back(position.harmonic);
        EXPECT_EQ(found, harmonics) << text << " in " << room;
    }
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(OrderInterpreterTest, SeriesInTheUsualRoom) {
    auto const harmonics = Parse(L"HX");
    ASSERT_EQ(harmonics.size(), 32u);
    for (std::size_t place = 0; place < 32; ++place)
        EXPECT_EQ(harmonics[place], OrderPosition(0, 0, static_cast<float>(place + 1), 0, 0, 2));
    auto const bands = Parse(L"HX-M1-O2;HX+M1+L3");
    ASSERT_EQ(bands.size(), 32u);
    for (std::size_t place = 0; place < 32; place += 2) {
        auto const harmonic = static_cast<float>(place / 2 + 1);
        EXPECT_EQ(bands[place], OrderPosition(0, -2, harmonic, -1, 0, 2));
        EXPECT_EQ(bands[place + 1], OrderPosition(0, 0, harmonic, 1, 3, 2));
    }
    EXPECT_EQ(Parse(L"HX;HX;HX").size(), 30u);
    EXPECT_EQ(Parse(L"O1;HX;HX").size(), 31u);
}

TEST_F(OrderInterpreterTest, SeriesStandAtTheEnd) {
    for (wchar_t const* const text : {L"HX;O1", L"HX;H2", L"O1;HX;O1;HX", L"HX;;HX", L"HX;OX", L"HX; L1"}) {
        EXPECT_EQ(Parse(text), Positions()) << text;
        EXPECT_EQ(messages.Take(), std::vector{SyntaxError(text)}) << text;
    }
    EXPECT_EQ(Parse(L"HX;").size(), 32u);
}

TEST_F(OrderInterpreterTest, SameAsTheModelOnMadeUpTexts) {
    constexpr std::uint32_t seed = 5501;
    OrderTexts texts(seed);
    unsigned int good = 0;
    unsigned int bad = 0;
    for (int round = 0; round < 40000; ++round) {
        std::wstring const text = texts.Any();
        auto const room = texts.Below(4) > 0 ? 32u : static_cast<unsigned int>(texts.Below(40));
        SCOPED_TRACE(testing::Message()
                     << "seed " << seed << " round " << round << " room " << room << " '" << text << "'");
        auto const expected = ModelOfOrders(text, room);
        ASSERT_EQ(Parse(text.c_str(), room), expected.positions);
        ASSERT_EQ(messages.Take(), expected.is_bad ? std::vector{SyntaxError(text)} : std::vector<Message>());
        good += expected.positions.empty() ? 0 : 1;
        bad += expected.is_bad ? 1 : 0;
    }
    EXPECT_GT(good, 10000u) << "enough of the texts mean something";
    EXPECT_GT(bad, 10000u) << "enough of them do not";
}

} // namespace
