#include <paramdb/keys/index_keys.h>
#include <paramdb/tables/unique_tree_map.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory_resource>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using TreeMap = CUniqueTreeMap<int, std::string>;

TEST(UniqueTreeMap, LivesInOnePool) {
    EXPECT_EQ(&paramdb::TreeMemory(), &paramdb::TreeMemory());
    EXPECT_EQ(TreeMap().get_allocator().resource(), &paramdb::TreeMemory());
    EXPECT_EQ((CUniqueTreeMap<QIdx1, QIdxName>().get_allocator().resource()), &paramdb::TreeMemory());
    EXPECT_TRUE(
        (std::is_base_of_v<std::map<int, std::string, std::less<int>,
                                    std::pmr::polymorphic_allocator<std::pair<int const, std::string>>>,
                           TreeMap>));
}

TEST(UniqueTreeMap, ThePoolServesEverySizeAndAlignment) {
    std::pmr::memory_resource& pool = paramdb::TreeMemory();
    EXPECT_TRUE(pool.is_equal(pool));
    EXPECT_FALSE(pool.is_equal(*std::pmr::new_delete_resource()));
    struct Piece {
        void* memory;
        std::size_t size;
        std::size_t alignment;
    };
    std::vector<Piece> pieces;
    for (std::size_t const alignment : {1u, 8u, 16u, 64u})
        for (std::size_t size = 1; size < 400; size += 7) {
            void* const memory = pool.allocate(size, alignment);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignment, 0u);
            std::memset(memory, 0xA5, size);
            pieces.push_back({memory, size, alignment});
        }
    for (Piece const& piece : pieces) {
        auto const* const bytes = static_cast<unsigned char const*>(piece.memory);
        EXPECT_TRUE(std::all_of(bytes, bytes + piece.size, [](unsigned char byte) { return byte == 0xA5; }));
        pool.deallocate(piece.memory, piece.size, piece.alignment);
    }
}

TEST(UniqueTreeMap, TheFirstRowOfAKeyStays) {
    TreeMap map;
    for (auto const& [key, row] :
         std::vector<std::pair<int, std::string>>{{3, "c"}, {1, "a"}, {2, "b"}, {1, "d"}})
        map.insert({key, row});
    EXPECT_EQ((std::vector<std::pair<int, std::string>>(map.begin(), map.end())),
              (std::vector<std::pair<int, std::string>>{{1, "a"}, {2, "b"}, {3, "c"}}));
    EXPECT_EQ(map.find(4), map.end());
}

TEST(UniqueTreeMap, RowsStayWhereTheyAre) {
    CUniqueTreeMap<QIdx1, QIdxName> map;
    std::vector<QIdxName const*> places;
    for (int id = 0; id < 1000; id += 2)
        places.push_back(&map.emplace(QIdx1(id), QIdxName(std::to_wstring(id).c_str())).first->second);
    for (int id = 1; id < 1000; id += 2)
        map.emplace(QIdx1(id), QIdxName(L"between"));
    for (int id = 1; id < 1000; id += 4)
        map.erase(QIdx1(id));
    for (int id = 0; id < 1000; id += 2) {
        EXPECT_EQ(&map.at(QIdx1(id)), places[static_cast<std::size_t>(id / 2)]);
        EXPECT_EQ(map.at(QIdx1(id)).name().view(), std::to_wstring(id));
    }
}

TEST(UniqueTreeMap, SeveralTreesShareThePool) {
    std::mt19937 random(4);
    TreeMap maps[3];
    std::map<int, std::string> models[3];
    for (int step = 0; step < 20000; ++step) {
        std::size_t const which = random() % 3;
        int const key = static_cast<int>(random() % 200);
        switch (random() % 8) {
        case 0:
            ASSERT_EQ(maps[which].erase(key), models[which].erase(key));
            break;
        case 1:
            if (random() % 50 == 0) {
                maps[which].clear();
                models[which].clear();
            }
            break;
        default:
            ASSERT_EQ(maps[which].insert({key, std::to_string(step)}).second,
                      models[which].insert({key, std::to_string(step)}).second);
        }
    }
    for (std::size_t which = 0; which < 3; ++which)
        EXPECT_TRUE(
            std::equal(maps[which].begin(), maps[which].end(), models[which].begin(), models[which].end()));
}

} // namespace
