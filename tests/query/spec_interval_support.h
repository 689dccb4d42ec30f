// What tests of spectral intervals share: a drive whose speeds can be set, and random numbers.
#pragma once

#include <paramdb/query/spec_interval.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <random>
#include <tests/distillery/own_distillery.h>
#include <tests/support/extremes.h>
#include <tuple>

namespace spec_interval_support {

using Entry = QVSpecIntervalEntry;
using Position = QVSpecIntervalEntry::Definition;
using Interval = CQtSpecInterval::IndexInterval;

constexpr float Smallest = std::numeric_limits<float>::denorm_min();
constexpr unsigned int HighestLine = std::numeric_limits<unsigned int>::max();

// The same bits, or both no number.
inline bool Same(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right) ||
           (std::isnan(left) && std::isnan(right));
}

inline Position MakePosition(float frequency, float order, float harmonic, float modulation, int lines,
                             int domain) {
    Position position;
    position.tuple() = std::tie(frequency, order, harmonic, modulation, lines, domain);
    return position;
}

// A mode with two rotors, of which the second has gears; speeds and base order can be set.
class Drive {
public:
    static constexpr int Mode = 4;
    static constexpr int Generating = 100;
    static constexpr int Measured = 200;

    Drive() {
        own.AddMode(Mode, L"mode", 1);
        own.tables().RotorSpeed.insert({{1, Generating}, QVRotorSpeeds(1, 1, 1)});
        own.tables().RotorSpeed.insert({{1, Measured}, QVRotorSpeeds(1, 1, 1)});
        own.tables().BaseOrder.insert({Measured, QVBaseOrder(1)});
        own.AddParameter(0, 1000, 0, 1000, 100, 0);
        EXPECT_TRUE(own.Build());
    }

    void Set(double generating, double measured, float base_order) {
        Speed(Generating) = generating;
        Speed(Measured) = measured;
        own.tables().BaseOrder.find(Measured)->second.get<"base_order">() = base_order;
    }
    void Set(double ratio, float base_order) { Set(1, ratio, base_order); }
    CQtSpecInterval Loaded() {
        CQtSpecInterval calculation(own.instance());
        calculation.LoadTransformParams(Mode, Generating, Measured);
        return calculation;
    }

    OwnDistillery own;

private:
    double& Speed(int rotor) { return own.tables().RotorSpeed.find({1, rotor})->second.get<"ratio">(); }
};

class RandomNumbers {
public:
    explicit RandomNumbers(std::uint32_t seed) : m_engine(seed) {}

    unsigned int Below(unsigned int limit) { return static_cast<unsigned int>(m_engine() % limit); }
    // Mostly ordinary, with zeros, the limits and arbitrary bits among them.
    float Float() {
        constexpr float specials[] = {-0.0f,    NotANumber, Infinite, -Infinite,
                                      Smallest, -Smallest,  3e38f,    -3e38f};
        switch (Below(12)) {
        case 0:
            return specials[Below(std::size(specials))];
        case 1:
            return std::bit_cast<float>(static_cast<std::uint32_t>(m_engine()));
        case 2:
        case 3:
        case 4:
        case 5:
            return 0;
        case 6:
            return -Ordinary();
        default:
            return Ordinary();
        }
    }
    float Ordinary() { return static_cast<float>(Below(4000)) / 8.0f * (Below(2) == 0 ? 1.0f : 1.1f); }
    int Int() {
        constexpr int specials[] = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                                    16777217};
        return Below(20) == 0 ? specials[Below(3)] : static_cast<int>(Below(7)) - 3;
    }
    Position AnyPosition() {
        int const domain = static_cast<int>(Below(4));
        bool const plain = Below(2) == 0; // one of the kinds that definitions give
        float const frequency = plain && (domain & 1) == 0 ? 0 : Float();
        float const order = plain && (domain & 2) == 0 ? 0 : Float();
        float const harmonic = plain && domain != 2 ? 0 : Float();
        float const modulation = plain && domain != 2 ? 0 : Float();
        return MakePosition(frequency, order, harmonic, modulation, Below(3) == 0 ? Int() : 0, domain);
    }

private:
    std::mt19937 m_engine;
};

} // namespace spec_interval_support
