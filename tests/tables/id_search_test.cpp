#include <paramdb/keys/index_keys.h>
#include <paramdb/tables/id_search.h>
#include <paramdb/tables/unique_vector_map.h>

#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <tests/support/extremes.h>
#include <vector>

namespace {

using Table = CDbUniqueMap<QIdx1, int>;

Table TableOf(std::vector<int> const& ids) {
    Table table;
    for (int const id : ids)
        table.insert({id, 0});
    return table;
}

TEST(IdSearch, AnEmptyTableHasNoRow) {
    Table const table;
    EXPECT_EQ(paramdb::FindById(table, 0), table.end());
}

TEST(IdSearch, FewRows) {
    for (std::vector<int> const& ids : std::vector<std::vector<int>>{{0},
                                                                     {-1},
                                                                     {Lowest},
                                                                     {Highest},
                                                                     {Lowest, Highest},
                                                                     {Lowest, 0, Highest},
                                                                     {1, 2, 3},
                                                                     {1, 2, 1000000}}) {
        Table const table = TableOf(ids);
        for (int const id :
             {Lowest, Lowest + 1, -2, -1, 0, 1, 2, 3, 4, 999999, 1000000, Highest - 1, Highest})
            EXPECT_EQ(paramdb::FindById(table, id), table.find(id)) << id;
    }
}

// Even ids, all of a range, some with gaps, lumps with deserts between, and anything at all.
TEST(IdSearch, AgreesWithHalving) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        auto const below = [&random](unsigned limit) { return static_cast<int>(random() % limit); };
        int const kind = below(5);
        std::int64_t id = below(2) != 0 ? Lowest : -below(1000);
        Table table;
        for (int rows = below(300); rows > 0 && id <= Highest; --rows) {
            table.insert({static_cast<int>(id), rows});
            if (kind == 0)
                id += 2;
            else if (kind == 1)
                id += 1 + below(5);
            else if (kind == 2)
                id += 1;
            else if (kind == 3)
                id += below(20) == 0 ? 100'000'000 : 1;
            else
                id += 1 + static_cast<std::int64_t>(random() >> below(32));
        }
        for (auto const& [key, row] : table)
            for (int const offset : {-1, 0, 1})
                if (std::int64_t{key[0]} + offset >= Lowest && std::int64_t{key[0]} + offset <= Highest) {
                    ASSERT_EQ(paramdb::FindById(table, key[0] + offset), table.find(key[0] + offset))
                        << key[0] << " and " << offset;
                }
        for (int i = 0; i < 50; ++i) {
            auto const any = static_cast<int>(random());
            ASSERT_EQ(paramdb::FindById(table, any), table.find(any)) << any;
        }
    }
}

} // namespace
