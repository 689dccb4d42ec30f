#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/cfile.h>

#include "tests/tools/command_run.h"
#include "tools/sources.h"

#include <cerrno>

using paramdb::tools::IsFile;
using paramdb::tools::ReadSources;
using paramdb::tools::SourceFile;

namespace {

class SourcesTest : public CommandTest {
protected:
    // Reads and returns what went to the error stream; the result stays in m_sources.
    std::string Read(std::vector<std::string> const& files) {
        std::ostringstream err;
        m_sources = ReadSources(files, err);
        return err.str();
    }

    // Reads a file alone that has to be refused, and returns the reason given.
    std::string ReasonFor(std::string const& name) {
        std::string const message = Read({name});
        EXPECT_FALSE(m_sources.has_value());
        EXPECT_TRUE(CParameterLake::Lake().empty());
        std::string const start = "paramdb: " + name + ": ";
        EXPECT_TRUE(message.starts_with(start) && message.ends_with('\n')) << message;
        return message.substr(start.size(), message.size() - start.size() - 1);
    }

    std::optional<paramdb::tools::Sources> m_sources;
};

// What the system says.
std::string ReasonOf(int code) {
    return paramdb::ToUtf8(CFileException(code).Text());
}

#ifdef _WIN32
constexpr int Missing = 2;
constexpr int FolderMissing = 3;
constexpr int IsFolder = 5; // access denied
constexpr int FileAsFolder = 3;
#else
constexpr int Missing = ENOENT;
constexpr int FolderMissing = ENOENT;
constexpr int IsFolder = EISDIR;
constexpr int FileAsFolder = ENOTDIR;
#endif

} // namespace

TEST_F(SourcesTest, CountsEachFileAndMergesInOrder) {
    std::string const base = File(u8"base.lake", "; a comment\n<A>: 1\n<T>: {\n1 2\n}\n\n<U>: {\n1\n}\n");
    std::string const later = File(u8"later.lake", "<A>: 2\n<B>: 3\r\n<T>: {\n  <N>: {\n  }\n7 8\n9 9\n}");
    EXPECT_EQ(Read({base, later}), "");
    ASSERT_TRUE(m_sources.has_value());
    EXPECT_GT(m_sources->seconds, 0);
    ASSERT_EQ(m_sources->files.size(), 2U);
    SourceFile const& first = m_sources->files[0];
    EXPECT_EQ(first.name, base);
    EXPECT_EQ(first.bytes, 44U);
    EXPECT_EQ(first.lines, 9U);
    EXPECT_EQ(first.sections, 2U);
    SourceFile const& second = m_sources->files[1];
    EXPECT_EQ(second.name, later);
    EXPECT_EQ(second.bytes, 44U);
    EXPECT_EQ(second.lines, 8U);
    EXPECT_EQ(second.sections, 2U);

    CLake const& lake = CParameterLake::Lake();
    EXPECT_EQ(lake.size(), 1U + 9U + 1U + 8U); // two roots
    EXPECT_EQ(lake[L"<A>"].text(), L"1");
    EXPECT_EQ(lake[L"<B>"].text(), L"3");
    auto const table = lake[L"<T>"].position;
    ASSERT_EQ(table->unnamed_size(), 2U);
    EXPECT_EQ((*table->begin_unnamed())->value(), L"7 8");
    EXPECT_EQ(lake[L"<U>"].position->unnamed_size(), 1U);
}

TEST_F(SourcesTest, StartsFromAnEmptyLake) {
    FillLake("<Old>: 1\n");
    EXPECT_EQ(Read({File(u8"new.lake", "<New>: 1\n")}), "");
    EXPECT_FALSE(CParameterLake::Lake()[L"<Old>"].found());
    EXPECT_TRUE(CParameterLake::Lake()[L"<New>"].found());
}

TEST_F(SourcesTest, TakesASmallLake) {
    for (std::string const content : {"k:", "k: v", "; c\nk: {\n}", "\xE4: \xFF\n", "}\nk: v\n"}) {
        EXPECT_EQ(Read({File(u8"small.lake", content)}), "") << content;
        EXPECT_TRUE(m_sources.has_value()) << content;
    }
}

TEST_F(SourcesTest, RefusesWhatIsNoLake) {
    using namespace std::string_literals;
    struct Case {
        std::string content;
        std::string reason;
    };
    std::string const empty = "the file is empty";
    std::string const binary = "no parameter file: it holds binary data";
    std::string const keyless = "no parameter file: none of its lines has a key";
    Case const cases[] = {
        {"", empty},
        {"\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\1: \0\0\0\1"s, binary},
        {"<A>: 1\n\0"s, binary},
        {"<A>: 1\n<B\0>: 1\n"s, binary},
        {"<A>: 1\n} ; \0\n"s, binary},
        {"\xFF\xFE<\0A\0>\0:\0"s, binary}, // UTF-16
        {"\n", keyless},
        {"  \t\r\n\n", keyless},
        {"just some words\nin two lines\n", keyless},
        {"; comment\n{\n1 2 3\n}\n", keyless},
        {"\"quoted: no key\"\n", keyless},
    };
    for (Case const& test : cases)
        EXPECT_EQ(ReasonFor(File(u8"other.lake", test.content)), test.reason) << test.content;
}

TEST_F(SourcesTest, NamesTheReasonOfTheSystem) {
    EXPECT_EQ(ReasonFor(Name(u8"missing.lake")), ReasonOf(Missing));
    EXPECT_EQ(ReasonFor(Name(u8"missing/file.lake")), ReasonOf(FolderMissing));
    EXPECT_EQ(ReasonFor(Folder()), ReasonOf(IsFolder));
    EXPECT_EQ(ReasonFor(File(u8"file.lake", "k: v\n") + "/x"), ReasonOf(FileAsFolder));
}

TEST_F(SourcesTest, DoesNotTakeAnEmptyNameForTheLastFile) {
    EXPECT_EQ(Read({File(u8"a.lake", "k: v\n")}), "");
    std::string const reason = ReasonOf(Missing);
    EXPECT_EQ(Read({""}), "paramdb: \"\": " + reason + "\n");
    EXPECT_FALSE(m_sources.has_value());
}

TEST_F(SourcesTest, ReportsEveryFaultyFileAndLoadsNone) {
    std::string const good = File(u8"good.lake", "k: v\n");
    std::string const missing = Name(u8"missing.lake");
    std::string const empty = File(u8"empty.lake", "");
    std::string const words = File(u8"words.txt", "words\n");
    EXPECT_EQ(Read({good, missing, empty, good, words}),
              "paramdb: " + missing + ": " + ReasonOf(Missing) + "\n" + "paramdb: " + empty +
                  ": the file is empty\n" + "paramdb: " + words +
                  ": no parameter file: none of its lines has a key\n");
    EXPECT_FALSE(m_sources.has_value());
    EXPECT_TRUE(CParameterLake::Lake().empty());
}

TEST_F(SourcesTest, MergesAFileWithItself) {
    std::string const name = File(u8"twice.lake", "k: v\n<T>: {\n1\n}\n");
    EXPECT_EQ(Read({name, name}), "");
    EXPECT_EQ(CParameterLake::Lake().size(), 10U);
    EXPECT_EQ(CParameterLake::Lake()[L"<T>"].position->unnamed_size(), 1U);
}

TEST_F(SourcesTest, TellsFilesFromOtherNames) {
    EXPECT_TRUE(IsFile(File(u8"Pr\u00FCfstand.lake", "")));
    EXPECT_FALSE(IsFile(Name(u8"missing.lake")));
    EXPECT_FALSE(IsFile(Folder()));
    EXPECT_FALSE(IsFile(""));
    EXPECT_FALSE(IsFile("<TMode>"));
}
