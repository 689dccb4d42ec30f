// Lakes that run out of memory at each request in turn: what is left can be looked at, cleared and read
// again.
#include <paramdb/storage/lake.h>
#include <paramdb/storage/line_origins.h>

#include "failing_memory.h"
#include "sample_lakes.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <tests/platform/temporary_folder.h>
#include <tests/storage/lake_support.h>

namespace {

using failing_memory::Ending;
using failing_memory::RefuseEach;

class LakeAllocations : public testing::Test {
protected:
    LakeAllocations() {
        TemporaryFolder::Write(m_name, SampleLake);
        TemporaryFolder::Write(m_other, OtherLake);
    }

    // A lake that a failure has been through does all that a new one does.
    void ExpectUsable(CLake& lake) const {
        lake.merge(lake);
        lake[L"added"] = L"1";
        lake.clear();
        ASSERT_TRUE(lake.empty());
        ASSERT_TRUE(lake.read(m_name));
        ASSERT_EQ(Told(lake), Told(CLake(m_name)));
    }
    static std::vector<std::wstring> Told(CLake const& lake) {
        std::vector<std::wstring> told = lake_support::Lines(lake);
        if (auto const modes = lake[L"<TMode>"]; modes.found())
            for (auto row = modes.position->begin_unnamed(); row != modes.position->end_unnamed(); ++row)
                told.push_back((*row)->value());
        for (auto const& child : {lake.root().begin_named(), lake.root().end_named()})
            told.push_back(child == lake.root().end_named() ? L"end" : child->first);
        return told;
    }
    static std::size_t OpenFiles() {
        std::filesystem::directory_iterator const files("/proc/self/fd");
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    TemporaryFolder m_folder;
    std::wstring m_name = m_folder.Name(L"a name of more than fifteen characters.lake");
    std::wstring m_other = m_folder.Name(L"another name of more than fifteen characters.lake");
};

TEST_F(LakeAllocations, ReadingALake) {
    std::unique_ptr<CLake> lake;
    std::size_t const files = OpenFiles();
    for (bool const is_full : {false, true}) {
        SCOPED_TRACE(is_full);
        std::size_t const requests = RefuseEach(
            [&] { lake = is_full ? std::make_unique<CLake>(m_other.c_str()) : std::make_unique<CLake>(); },
            [&] { lake->read(m_name); },
            [&](std::size_t number, Ending const& ending) {
                ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                ASSERT_EQ(OpenFiles(), files) << number;
                Told(*lake);
                if (!ending.refused) {
                    ASSERT_EQ(Told(*lake), Told(CLake(m_name)));
                }
                ExpectUsable(*lake);
            });
        EXPECT_GT(requests, 10U);
    }
}

TEST_F(LakeAllocations, CopyingAndMergingLakes) {
    using Change = void (*)(CLake & lake, CLake & other);
    Change const changes[] = {
        [](CLake& lake, CLake& other) { lake.merge(other); },
        [](CLake& lake, CLake& other) { lake = other; },
        [](CLake& lake, CLake&) { lake.merge(lake); },
        [](CLake& lake, CLake& other) { lake = CLake(other); },
        [](CLake& lake, CLake&) { lake.clear(); },
    };
    CLake other(m_other);
    auto const told_by_other = Told(other);
    for (std::size_t change = 0; change < std::size(changes); ++change) {
        SCOPED_TRACE(change);
        CLake expected(m_name);
        changes[change](expected, other);
        std::unique_ptr<CLake> lake;
        RefuseEach([&] { lake = std::make_unique<CLake>(m_name.c_str()); },
                   [&] { changes[change](*lake, other); },
                   [&](std::size_t number, Ending const& ending) {
                       ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                       ASSERT_EQ(Told(other), told_by_other) << number;
                       Told(*lake);
                       if (!ending.refused) {
                           ASSERT_EQ(Told(*lake), Told(expected)) << number;
                       }
                       ExpectUsable(*lake);
                   });
    }
}

TEST_F(LakeAllocations, ChangingALake) {
    std::unique_ptr<CLake> lake;
    RefuseEach([&] { lake = std::make_unique<CLake>(m_name.c_str()); },
               [&] {
                   (*lake)[L"<TMode>"].position->push_back(L"4 a row of more than fifteen characters");
                   (*lake)[L"a key of more than fifteen characters"] = L"another value, as long as that";
                   (*lake)[L"a new key of more than fifteen characters"] = L"1";
                   (*lake)[L"a new key of more than fifteen characters"].position->push_back(L"row");
                   lake->root().value(L"a value of more than fifteen characters");
                   lake->root().comment(L"a comment of more than fifteen characters");
                   (*lake)[L"<TMode>"].position->clear_section();
                   paramdb::LineOrigins const origins(*lake);
               },
               [&](std::size_t number, Ending const& ending) {
                   ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                   Told(*lake);
                   ExpectUsable(*lake);
               });
}

TEST_F(LakeAllocations, QuestionsToALake) {
    CLake const lake(m_name);
    auto const expected = Told(lake);
    std::unique_ptr<CLake> fresh;
    std::int32_t version = 0;
    RefuseEach([&] { fresh = std::make_unique<CLake>(m_name.c_str()); },
               [&] {
                   version = (*fresh)[L"<DbDesign.CacheVersion>"].number();
                   for (CLake::CNode const& node : *fresh)
                       static_cast<void>(node.key());
               },
               [&](std::size_t number, Ending const& ending) {
                   ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                   if (!ending.refused) {
                       ASSERT_EQ(version, 216);
                   }
                   ASSERT_EQ(Told(*fresh), expected) << number;
               });
}

// write() empties the file first; whoever needs the old one takes ReplaceFileWith, as below.
TEST_F(LakeAllocations, WritingALake) {
    CLake const lake(m_name);
    lake.write(m_other);
    std::string const expected = TemporaryFolder::Read(m_other);
    std::size_t const files = OpenFiles();
    RefuseEach([] {}, [&] { lake.write(m_other); },
               [&](std::size_t number, Ending const& ending) {
                   ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                   ASSERT_EQ(OpenFiles(), files) << number;
                   ASSERT_TRUE(lake.write(m_other));
                   ASSERT_EQ(TemporaryFolder::Read(m_other), expected) << number;
               });
}

} // namespace
