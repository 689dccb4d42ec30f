#include <paramdb/platform/sea/sea_base.h>

#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

TEST(SeaBase, OneSeaForAllThreads) {
    std::vector<CResourceSea*> seas(8);
    std::vector<std::thread> threads;
    for (CResourceSea*& sea : seas)
        threads.emplace_back([&sea] { sea = &CSeaBase::MessagesSea(); });
    for (std::thread& thread : threads)
        thread.join();
    for (CResourceSea* const sea : seas)
        EXPECT_EQ(sea, &CSeaBase::MessagesSea());
}

} // namespace
