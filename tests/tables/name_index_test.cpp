#include <paramdb/tables/name_index.h>

#include <cstddef>
#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <tests/support/extremes.h>
#include <vector>

namespace {

TEST(NameIndex, WithoutRowsNothingIsFound) {
    paramdb::NameIndex index;
    EXPECT_EQ(index.Id(L""), -1);
    EXPECT_EQ(index.Id(L"idle"), -1);
    for (int const id : {-1, 0, 1, Lowest, Highest}) {
        EXPECT_EQ(index.Name(id), nullptr);
        EXPECT_EQ(index.NameText(id).data(), nullptr);
    }
    index.Clear();
    EXPECT_EQ(index.Id(L""), -1);
    EXPECT_EQ(index.Name(0), nullptr);
}

TEST(NameIndex, BothDirectionsForEveryLengthAndId) {
    // Names of every length, each a beginning of the next.
    std::wstring const longest(300, L'n');
    std::vector<std::wstring> names;
    for (std::size_t length = 0; length <= longest.size(); ++length)
        names.push_back(longest.substr(0, length));
    auto const id_of = [](std::size_t place) {
        return place % 2 == 0 ? -static_cast<int>(place) : static_cast<int>(place);
    };
    paramdb::NameIndex index;
    for (std::size_t place = 0; place < names.size(); ++place) {
        EXPECT_EQ(index.Id(names[place]), -1) << place;
        index.Add(id_of(place), names[place]);
    }
    for (std::size_t place = 0; place < names.size(); ++place) {
        EXPECT_EQ(index.Id(std::wstring(names[place])), id_of(place));
        EXPECT_EQ(index.Name(id_of(place)), names[place].c_str());
        EXPECT_EQ(index.NameText(id_of(place)).data(), names[place].c_str());
        EXPECT_EQ(index.NameText(id_of(place)), names[place]);
    }
    EXPECT_EQ(index.Name(301), nullptr);
    EXPECT_EQ(index.Name(-301), nullptr);
}

TEST(NameIndex, NamesThatDifferInOneUnit) {
    // The units at the ends of the range, and those that equal others in their lower half.
    constexpr wchar_t units[] = {L'\x1', L'a', L'A', L'\x61', L'\xFF', L'\x161', L'\x8000', L'\xFFFF'};
    std::deque<std::wstring> names;
    std::map<std::wstring, int> model;
    paramdb::NameIndex index;
    for (std::size_t length = 1; length < 14; ++length)
        for (std::size_t place = 0; place < length; ++place)
            for (wchar_t const unit : units) {
                std::wstring& name = names.emplace_back(length, L'a');
                name[place] = unit;
                int const id = static_cast<int>(names.size());
                index.Add(id, name);
                model.try_emplace(name, id);
            }
    for (std::wstring const& name : names)
        EXPECT_EQ(index.Id(name), model.at(name));
}

TEST(NameIndex, TheFirstOfANameStaysAndEachIdKeepsItsOwn) {
    std::wstring const first = L"same";
    std::wstring const second = L"same";
    paramdb::NameIndex index;
    index.Add(9, first);
    index.Add(1, second);
    EXPECT_EQ(index.Id(L"same"), 9);
    EXPECT_EQ(index.Name(9), first.c_str());
    EXPECT_EQ(index.Name(1), second.c_str());
}

TEST(NameIndex, ClearForgetsAllAndTakesNewRows) {
    paramdb::NameIndex index;
    for (int round = 0; round < 3; ++round) {
        for (int id = 0; id < 40; ++id)
            index.Add(id, id % 2 == 0 ? L"even" : L"odd");
        EXPECT_EQ(index.Id(L"odd"), 1);
        index.Clear();
        EXPECT_EQ(index.Id(L"odd"), -1);
        EXPECT_EQ(index.Id(L"even"), -1);
        for (int id = 0; id < 40; ++id)
            EXPECT_EQ(index.Name(id), nullptr);
    }
}

// Ids whose bits are unlike those of any other case: steps of every power of two, and both ends.
TEST(NameIndex, IdsInStepsOfPowersOfTwo) {
    for (int bit = 0; bit < 31; ++bit) {
        paramdb::NameIndex index;
        std::map<int, std::wstring> names;
        for (unsigned int step = 0; step < 64; ++step) {
            int const id = static_cast<int>((step << bit) - 5u);
            if (auto const [row, is_new] = names.try_emplace(id, std::to_wstring(id)); is_new)
                index.Add(id, row->second);
        }
        for (auto const& [id, name] : names) {
            EXPECT_EQ(index.Name(id), name.c_str());
            EXPECT_EQ(index.Id(name), id);
            for (unsigned int const other : {1u, 0x8000'0000u}) {
                int const neighbour = static_cast<int>(static_cast<unsigned int>(id) ^ other);
                EXPECT_EQ(index.Name(neighbour) != nullptr, names.contains(neighbour));
            }
        }
    }
}

TEST(NameIndex, RandomRowsAgainstMaps) {
    for (unsigned int seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        auto const ids = 1 + random() % 3000;
        auto const texts = 1 + random() % 3000;
        auto const any_id = [&] { return static_cast<int>(random() % ids) - 20; };
        auto const any_name = [&] { return L"n" + std::to_wstring(random() % texts); };
        paramdb::NameIndex index;
        std::map<int, std::wstring> names;
        std::map<std::wstring, int> first_ids;
        for (unsigned int step = 0; step < 3000; ++step) {
            if (random() % 2000 == 0) {
                index.Clear();
                names.clear();
                first_ids.clear();
            }
            int const id = any_id();
            if (auto const [row, is_new] = names.try_emplace(id, any_name()); is_new) {
                index.Add(id, row->second);
                first_ids.try_emplace(row->second, id);
            }
            int const sought_id = any_id();
            auto const by_id = names.find(sought_id);
            ASSERT_EQ(index.Name(sought_id), by_id != names.end() ? by_id->second.c_str() : nullptr);
            ASSERT_EQ(index.NameText(sought_id).data(), index.Name(sought_id));
            ASSERT_EQ(index.NameText(sought_id), by_id != names.end() ? by_id->second : L"");
            std::wstring const sought_name = any_name();
            auto const by_name = first_ids.find(sought_name);
            ASSERT_EQ(index.Id(sought_name), by_name != first_ids.end() ? by_name->second : -1);
        }
    }
}

} // namespace
