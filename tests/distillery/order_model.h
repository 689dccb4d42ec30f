// A plain model of order definitions, against which the library is compared on made-up texts, and a source of
// such texts.
#pragma once

#include <paramdb/distillery/spec_interval_entry.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

struct OrderPosition {
    float frequency = 0;
    float order = 0;
    float harmonic = 0;
    float modulation = 0;
    int lines = 0;
    int domain = 0;

    OrderPosition() = default;
    OrderPosition(float f, float o, float h, float m, int l, int d)
        : frequency(f), order(o), harmonic(h), modulation(m), lines(l), domain(d) {}
    explicit OrderPosition(QVSpecIntervalEntry::Definition const& from)
        : OrderPosition(from.frequency(), from.order(), from.harmonic(), from.modulation(), from.lines(),
                        from.domain()) {}

    // Equal to the sign of a zero; all NaNs are equal.
    friend bool operator==(OrderPosition const& left, OrderPosition const& right);
    friend std::ostream& operator<<(std::ostream& out, OrderPosition const& position);
};

struct OrderList {
    bool is_bad = false;
    std::vector<OrderPosition> positions;
};

// What a definition means with room for that many positions.
OrderList ModelOfOrders(std::wstring const& text, std::size_t room);

// Texts of definitions.
class OrderTexts {
public:
    explicit OrderTexts(std::uint32_t seed) : m_random(seed) {}

    // One made by the rules, one of these with a few characters changed, and one of random characters.
    std::wstring Valid();
    std::wstring Mutated();
    std::wstring Random();
    // Any of them.
    std::wstring Any();

    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned long>(limit)); }

private:
    std::wstring Number();
    std::wstring Term(bool series);
    wchar_t Character();

    std::mt19937 m_random;
};
