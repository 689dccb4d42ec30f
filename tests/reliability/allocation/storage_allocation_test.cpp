// Table sets, seas and files that run out of memory at each request in turn.
#include <paramdb/platform/core/tl_malloc.h>
#include <paramdb/platform/framework/cfile.h>
#include <paramdb/platform/framework/read_file.h>
#include <paramdb/platform/framework/replace_file.h>
#include <paramdb/platform/sea/resource_list.h>
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/storage/dyn_tables.h>

#include "failing_memory.h"
#include "quiet_sink.h"
#include "sample_lakes.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <tests/platform/temporary_folder.h>

namespace {

using failing_memory::Ending;
using failing_memory::RefuseEach;

class StorageAllocations : public testing::Test {
protected:
    StorageAllocations() {
        TemporaryFolder::Write(m_name, SampleLake);
        TemporaryFolder::Write(m_other, OtherLake);
    }

    static std::size_t OpenFiles() {
        std::filesystem::directory_iterator const files("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    TemporaryFolder m_folder;
    std::wstring m_name = m_folder.Name(L"a name of more than fifteen characters.lake");
    std::wstring m_other = m_folder.Name(L"another name of more than fifteen characters.lake");
};

TEST_F(StorageAllocations, ARegionOfBlocksGoesBackWithTheLastOne) {
    tl_free(tl_malloc(1'000'000)); // the list of regions stays
    std::ptrdiff_t const before = failing_memory::HeldBytes();
    void* const first = tl_malloc(1'000'000);
    void* const second = tl_malloc(1'000'000);
    tl_free(first);
    EXPECT_GT(failing_memory::HeldBytes(), before);
    tl_free(second);
    EXPECT_EQ(failing_memory::HeldBytes(), before);
}

TEST_F(StorageAllocations, ReplacingAFile) {
    std::size_t const files = OpenFiles();
    std::size_t const names = m_folder.Count();
    std::wstring error;
    for (std::wstring const& target : {m_name, m_folder.Name(L"no folder of that name/file.lake")}) {
        bool written = false;
        std::size_t const requests =
            RefuseEach([&] { TemporaryFolder::Write(m_name, SampleLake); },
                       [&] { written = paramdb::ReplaceFileWith(target, OtherLake, error); },
                       [&](std::size_t number, Ending const& ending) {
                           ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                           ASSERT_EQ(OpenFiles(), files) << number;
                           ASSERT_EQ(m_folder.Count(), names) << number;
                           ASSERT_EQ(TemporaryFolder::Read(m_name),
                                     !ending.refused && target == m_name ? OtherLake : SampleLake)
                               << number;
                           if (!ending.refused) {
                               ASSERT_EQ(written, target == m_name);
                           }
                       });
        EXPECT_GT(requests, 3U);
    }
}

TEST_F(StorageAllocations, ReadingAFile) {
    std::size_t const files = OpenFiles();
    std::string bytes;
    CFileException error;
    bool missing = false;
    RefuseEach([] {},
               [&] {
                   CFile file(m_name.c_str(), CFile::modeRead);
                   bytes = paramdb::ReadToEnd(file);
                   CFile none;
                   missing = none.Open(L"no file of that name is here", CFile::modeRead, &error);
               },
               [&](std::size_t number, Ending const& ending) {
                   ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                   ASSERT_EQ(OpenFiles(), files) << number;
                   if (!ending.refused) {
                       ASSERT_EQ(bytes, SampleLake);
                       ASSERT_TRUE(error.IsNotFound());
                       ASSERT_FALSE(missing);
                   }
               });
}

TEST_F(StorageAllocations, Seas) {
    QuietSink const quiet;
    std::size_t const files = OpenFiles();
    std::wstring const name = m_folder.Name(L"a sea with a name of some length.sea");
    auto const fill = [](CResourceSea& sea) {
        CResourceList list(sea, L"<TMode> with more than fifteen characters");
        list.RemoveAll();
        list.AddLineTail().SetSeaLine(L"1 \"a line of more than fifteen characters\"");
        list.AddLineTail().SetSeaLine(L"2 \u00E4\u20AC");
        sea.LookupBool(2, L"a key of more than fifteen characters", true, 3);
    };
    CResourceSea whole;
    ASSERT_TRUE(whole.Open(name));
    fill(whole);
    ASSERT_TRUE(whole.Save());
    std::string const bytes = TemporaryFolder::Read(name);
    TemporaryFolder::Write(m_other, bytes + "nonsense\n");
    std::unique_ptr<CResourceSea> sea;
    std::size_t const requests = RefuseEach(
        [&] {
            sea = std::make_unique<CResourceSea>();
            sea->LookupBool(2, L"before", true, 0);
        },
        [&] {
            sea->Open(m_other);
            fill(*sea);
            sea->Open(name);
            fill(*sea);
            sea->Save();
        },
        [&](std::size_t number, Ending const& ending) {
            ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
            ASSERT_EQ(OpenFiles(), files) << number;
            ASSERT_EQ(TemporaryFolder::Read(name), bytes) << number;
            // Content and file go together: none of the sea's own states is a mixture.
            ASSERT_EQ(sea->LookupGetBool(L"before", 0, false), sea->FileName().empty()) << number;
            ASSERT_TRUE(sea->Open(name));
            fill(*sea);
            ASSERT_EQ(sea->Lists(), whole.Lists()) << number;
            ASSERT_EQ(sea->Values(), whole.Values()) << number;
        });
    EXPECT_GT(requests, 20U);
}

TEST_F(StorageAllocations, TableSets) {
    auto const fill = [](ParamDb::CDbTableSet& set) {
        ParamDb::CDbTable& table = set[L"a table of more than fifteen characters"];
        table.emplace_back().emplace_back(1);
        table.back().back() = std::wstring(L"a text of more than fifteen characters");
        table.emplace_back().emplace_back(2.5);
        set[L"<DbDesign.CacheVersion>"].emplace_back().emplace_back(216);
    };
    ParamDb::CDbTableSet whole;
    fill(whole);
    std::unique_ptr<ParamDb::CDbTableSet> set;
    std::wstring text;
    RefuseEach(
        [&] {
            set = std::make_unique<ParamDb::CDbTableSet>();
            (*set)[L"<DbDesign.CacheVersion>"].emplace_back().emplace_back(1);
        },
        [&] {
            ParamDb::CDbTableSet other;
            fill(other);
            set->merge(other);
            text = ParamDb::CDbTable::to_wstring(
                set->find(L"a table of more than fifteen characters")->second[0]);
        },
        [&](std::size_t number, Ending const& ending) {
            ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
            ASSERT_EQ(set->find(L"<DbDesign.CacheVersion>")->second.to_long(), 1) << number;
            set->clear();
            fill(*set);
            ASSERT_EQ(set->size(), whole.size());
            ASSERT_EQ(set->find(L"a table of more than fifteen characters")->second.size(), 2U);
        });
}

TEST_F(StorageAllocations, DynamicTables) {
    std::wstring const name = m_folder.Name(L"a file with a name of some length.dyn");
    wchar_t text[300] = L"text";
    int number_field = 7;
    int const sizes[] = {4, -200};
    void* fields[] = {&number_field, text};
    bool read = false;
    RefuseEach([] {},
               [&] {
                   DynTables::QtTableHeader header;
                   DynTables::FillHeader(header, 2, 3, 4, 5);
                   CFile out(name.c_str(), CFile::modeCreate | CFile::modeWrite);
                   DynTables::WriteToFile(out, header);
                   DynTables::WriteToFile(out, sizes, fields, 2);
                   out.Close();
                   CFile in(name.c_str(), CFile::modeRead);
                   read =
                       DynTables::ReadFromFile(in, header) && DynTables::ReadFromFile(in, sizes, fields, 2);
               },
               [&](std::size_t number, Ending const& ending) {
                   ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                   if (!ending.refused) {
                       ASSERT_TRUE(read);
                   }
                   ASSERT_EQ(number_field, 7);
                   ASSERT_STREQ(text, L"text");
               });
}

} // namespace
