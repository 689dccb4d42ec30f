#include <paramdb/storage/parameter_lake.h>

#include "lake_support.h"

#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

TEST(ParameterLake, IsOneLakeInEveryThread) {
    CLake* found[4] = {};
    std::vector<std::thread> threads;
    for (CLake*& lake : found)
        threads.emplace_back([&lake] { lake = &CParameterLake::Lake(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::set<CLake*>(std::begin(found), std::end(found)),
              std::set<CLake*>{&CParameterLake::Lake()});
}

TEST(ParameterLake, KeepsWhatItIsFilledWith) {
    CParameterLake::Lake().clear();
    EXPECT_TRUE(CParameterLake::Lake().empty());
    lake_support::ReadText(CParameterLake::Lake(), "a: 1\n");
    CLake other;
    lake_support::ReadText(other, "a: 2\nb: 3\n");
    CParameterLake::Lake().merge(other);
    EXPECT_EQ(CParameterLake::Lake()[L"a"].text(), L"1");
    EXPECT_EQ(CParameterLake::Lake()[L"b"].text(), L"3");
    EXPECT_EQ(CParameterLake::Lake().size(), 5U);
    CParameterLake::Lake().clear();
    EXPECT_TRUE(CParameterLake::Lake().empty());
}
