#include <paramdb/platform/core/utf8.h>

#include "tests/tools/command_run.h"
#include "tests/tools/diff/lake_edits.h"
#include "tests/tools/drive_lake.h"
#include "tests/tools/sample_lake.h"
#include "tools/diff/snapshot.h"

#include <sstream>

using namespace paramdb::tools;

namespace {

class SnapshotTest : public CommandTest {
protected:
    std::optional<Snapshot> Take(std::vector<std::string> const& files) {
        std::ostringstream err;
        auto snapshot = LoadSnapshot(files, {}, err);
        m_err = err.str();
        return snapshot;
    }

    std::string m_err;
};

std::string NameOf(Snapshot const& snapshot, std::string_view kind, int id) {
    auto const name = snapshot.NameOf(*FindKind(kind), id);
    return name ? paramdb::ToUtf8(*name) : "none";
}

} // namespace

TEST_F(SnapshotTest, HoldsALoad) {
    std::string const name = File(u8"a.lake", SampleLake + "<QType><FBaseName>: \"TG 1\"\n");
    auto const snapshot = Take({name});
    ASSERT_TRUE(snapshot);
    EXPECT_EQ(m_err, "");
    EXPECT_EQ(snapshot->files, std::vector<std::string>{name});
    EXPECT_EQ(snapshot->major, 216);
    EXPECT_EQ(snapshot->minor, 1);
    EXPECT_EQ(snapshot->texts.base_type, L"TG 1");
    EXPECT_EQ(snapshot->texts.alias_type, L"");
    EXPECT_EQ(snapshot->tables.size(), paramdb::Catalogue().size());
    EXPECT_EQ(snapshot->RowCount(), 9U);
    ASSERT_TRUE(snapshot->answers);
    EXPECT_EQ(snapshot->answers->size(), AnswerTopics().size());
}

TEST_F(SnapshotTest, OutlivesTheNextLoad) {
    auto const snapshot = Take({File(u8"a.lake", SampleLake)});
    ASSERT_TRUE(Take({File(u8"b.lake", DriveLake)}));
    ASSERT_TRUE(snapshot);
    EXPECT_EQ(NameOf(*snapshot, "mode", 2), "Warm up");
    EXPECT_EQ(NameOf(*snapshot, "mode", 12), "none");
    EXPECT_EQ(snapshot->RowCount(), 9U);
}

TEST_F(SnapshotTest, KnowsNames) {
    auto const snapshot = Take({File(u8"a.lake", DriveLake)});
    ASSERT_TRUE(snapshot);
    struct Case {
        char const* kind;
        int id;
        char const* name;
    };
    for (Case const& sample : std::vector<Case>{{"mode", 11, "1. gear drive"},
                                                {"location", 90, "Driving wheel"},
                                                {"parameter", 7, "Mesh"},
                                                {"trigger", 2, "Speed and torque"},
                                                {"polygon", 5, "Level"},
                                                {"signal", 10, "Input speed"},
                                                {"signal", 11, "none"},
                                                {"mode", -1, "none"},
                                                {"physmode", 1, "none"}})
        EXPECT_EQ(NameOf(*snapshot, sample.kind, sample.id), sample.name) << sample.kind << sample.id;
}

TEST_F(SnapshotTest, TellsWhoseMessagesCame) {
    std::string const faulty = File(u8"faulty.lake", FaultyLake);
    std::string const customer = File(u8"customer.lake", "<TChannel>: {\nx\ny\n}\n");
    ASSERT_TRUE(Take({faulty}));
    std::string const end = "paramdb: " + faulty + ": loaded with 2 messages\n";
    ASSERT_GT(m_err.size(), end.size());
    EXPECT_EQ(m_err.substr(m_err.size() - end.size()), end);
    ASSERT_TRUE(Take({faulty, customer}));
    std::string const both = "paramdb: " + faulty + ", " + customer + ": loaded with 6 messages\n";
    EXPECT_EQ(m_err.substr(m_err.size() - both.size()), both);
}

TEST_F(SnapshotTest, AnIncompleteLoadHasNoAnswers) {
    std::string const name = File(u8"a.lake", Edited(DriveLake, "10 1 \"\" 0 0 0\n", "11 1 \"\" 0 0 0\n"));
    auto const snapshot = Take({name});
    ASSERT_TRUE(snapshot);
    EXPECT_FALSE(snapshot->answers);
    EXPECT_EQ(NameOf(*snapshot, "mode", 11), "1. gear drive");
    std::string const end = "paramdb: " + name + ": loaded, but what follows from the tables is missing\n";
    ASSERT_GT(m_err.size(), end.size());
    EXPECT_EQ(m_err.substr(m_err.size() - end.size()), end);
}

TEST_F(SnapshotTest, NoneWithoutALoad) {
    std::string const old = File(u8"old.lake", RefusedLake);
    EXPECT_FALSE(Take({old}));
    std::string const end = "paramdb: " + old + ": not loaded\n";
    EXPECT_EQ(m_err.substr(m_err.size() - end.size()), end);
    EXPECT_FALSE(Take({Name(u8"missing.lake")}));
    EXPECT_EQ(m_err.find("paramdb: " + Name(u8"missing.lake") + ": "), 0U);
}

TEST_F(SnapshotTest, FilesInOneText) {
    EXPECT_EQ(FileNames({"a.lake"}), "a.lake");
    EXPECT_EQ(FileNames({"a.lake", "b\n.lake"}), "a.lake, b\xEF\xBF\xBD.lake");
}
