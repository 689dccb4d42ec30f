// Random data of rotors and gears, filled into a distillery and a model alike.
#pragma once

#include "own_distillery.h"
#include "rotor_model.h"

#include <random>
#include <string>

class RotorWorld {
public:
    OwnDistillery own;
    RotorModel model;

    explicit RotorWorld(std::uint32_t seed) : m_random(seed) {}
    // Makes new data and builds what is derived from it.
    void Renew();
    // The data in words, for a failure.
    std::string Describe() const;

    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned long>(limit)); }
    bool Chance() { return Below(2) == 0; }
    // A small number, seldom one at the limits.
    int AnyId();
    int AnyMode() { return Below(4) - 1; }

private:
    std::mt19937 m_random;
};
