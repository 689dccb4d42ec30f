// Random data of modes and auto mode parameters, filled into a distillery and a model alike.
#pragma once

#include "mode_model.h"
#include "own_distillery.h"

#include <random>
#include <string>

class ModeWorld {
public:
    OwnDistillery own;
    ModeModel model;

    // Makes new data; the rest of the world follows from the seed.
    explicit ModeWorld(std::uint32_t seed) : m_random(seed) {}
    void Renew();
    // Builds both; false if the library and the model disagree whether there is room.
    bool Build(bool& combines);

    // The data in words, for a failure.
    std::wstring Describe() const;

    // A number below the limit, and one of several.
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned long>(limit)); }
    template <std::size_t Size, class T>
    T Pick(T const (&values)[Size]) {
        return values[m_random() % Size];
    }
    int AnyInt() { return static_cast<int>(static_cast<std::uint32_t>(m_random())); }
    // An id that is likely to be of interest.
    int AnyId();
    // One for each parameter; `wild` lets them be any number.
    std::vector<int> Intervals(bool wild);
    std::vector<int> States(bool wild);

private:
    void AddModes();
    void AddParams();
    void AddNaming();

    std::mt19937 m_random;
};
