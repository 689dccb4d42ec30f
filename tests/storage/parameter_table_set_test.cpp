#include <paramdb/storage/parameter_table_set.h>

#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <thread>
#include <vector>

using ParamDb::CDbTableSet;
using ParamDb::CParameterTableSet;

TEST(ParameterTableSet, IsOneSetInEveryThread) {
    CDbTableSet* found[4] = {};
    std::vector<std::thread> threads;
    for (CDbTableSet*& set : found)
        threads.emplace_back([&set] { set = &CParameterTableSet::TableSet(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::set<CDbTableSet*>(std::begin(found), std::end(found)),
              std::set<CDbTableSet*>{&CParameterTableSet::TableSet()});
}

TEST(ParameterTableSet, KeepsWhatItIsFilledWith) {
    CParameterTableSet::TableSet().clear();
    CParameterTableSet::TableSet()[L"<DbDesign.CacheVersion>"] = {{std::int32_t{216}}};
    EXPECT_EQ(CParameterTableSet::TableSet().size(), 1U);
    EXPECT_EQ(CParameterTableSet::TableSet().at(L"<DbDesign.CacheVersion>").to_long(), 216);
    CParameterTableSet::TableSet().clear();
    EXPECT_TRUE(CParameterTableSet::TableSet().empty());
}
