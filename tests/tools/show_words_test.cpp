#include "tests/tools/command_run.h"
#include "tools/show_words.h"

using namespace paramdb::tools;

namespace {

using Words = std::vector<std::string>;

// Works in a folder of its own, so that words can be names of files there.
class ShowWordsTest : public CommandTest {
protected:
    ShowWordsTest() : m_before(std::filesystem::current_path()) {
        File(u8"a.lake", "k: v\n");
        File(u8"b.lake", "k: v\n");
        std::filesystem::current_path(Folder());
    }
    ~ShowWordsTest() override { std::filesystem::current_path(m_before); }

    // "a.lake b.lake | <TMode> | 11", or what is wrong.
    static std::string Split(Words const& words) {
        auto const split = SplitShowWords(words);
        if (auto const* const fault = std::get_if<std::string>(&split))
            return *fault;
        auto const& result = std::get<ShowWords>(split);
        std::string text;
        for (std::string const& file : result.files)
            text.append(file).append(" ");
        text.append("| ").append(TagOf(*result.table));
        return result.key ? text.append(" | ").append(*result.key) : text;
    }

private:
    std::filesystem::path m_before;
};

} // namespace

TEST_F(ShowWordsTest, FilesTagAndKey) {
    EXPECT_EQ(Split({"a.lake", "Mode"}), "a.lake | <TMode>");
    EXPECT_EQ(Split({"a.lake", "<TMode>"}), "a.lake | <TMode>");
    EXPECT_EQ(Split({"a.lake", "TMode", "11"}), "a.lake | <TMode> | 11");
    EXPECT_EQ(Split({"a.lake", "b.lake", "Mode", ""}), "a.lake b.lake | <TMode> | ");
    EXPECT_EQ(Split({"a.lake", "b.lake", "a.lake", "Mode", "a.lake"}),
              "a.lake b.lake a.lake | <TMode> | a.lake");
}

TEST_F(ShowWordsTest, AKeyMayBeTheNameOfATable) {
    EXPECT_EQ(Split({"a.lake", "AuxStrings", "Mode"}), "a.lake | <TAuxStrings> | Mode");
}

TEST_F(ShowWordsTest, FilesNeedNotExist) {
    EXPECT_EQ(Split({"missing.lake", "Mode"}), "missing.lake | <TMode>");
    EXPECT_EQ(Split({"a.lake", "missing.lake", "Mode", "1"}), "a.lake missing.lake | <TMode> | 1");
    EXPECT_EQ(Split({"Mode", "Trigger"}), "Mode | <TTrigger>");
}

TEST_F(ShowWordsTest, AFileWithTheNameOfATable) {
    File(u8"Mode", "k: v\n");
    EXPECT_EQ(Split({"a.lake", "Mode", "Trigger"}), "a.lake Mode | <TTrigger>");
    EXPECT_EQ(Split({"a.lake", "Mode", "TMode", "1"}), "a.lake Mode | <TMode> | 1");
    EXPECT_EQ(Split({"a.lake", "Mode"}), "a.lake | <TMode>");
    EXPECT_EQ(Split({"a.lake", "Mode", "1"}), "a.lake | <TMode> | 1");
    EXPECT_EQ(Split({"Mode", "Mode"}), "Mode | <TMode>");
    EXPECT_EQ(Split({"Mode"}), "the TAG of a table is required behind the files\n");
}

TEST_F(ShowWordsTest, AFolderIsNoFile) {
    std::filesystem::create_directory("Mode");
    EXPECT_EQ(Split({"a.lake", "Mode", "Trigger"}), "a.lake | <TMode> | Trigger");
}

TEST_F(ShowWordsTest, WordsThatAreWrong) {
    EXPECT_EQ(Split({}), "a FILE is required\n");
    EXPECT_EQ(Split({"Mode"}), "a FILE is required before the TAG\n");
    EXPECT_EQ(Split({"a.lake"}), "the TAG of a table is required behind the files\n");
    EXPECT_EQ(Split({"missing.lake"}), "the TAG of a table is required behind the files\n");
    EXPECT_EQ(Split({"a.lake", "b.lake"}), "the TAG of a table is required behind the files\n");
    EXPECT_EQ(Split({"a.lake", "Moode"}), "Moode: neither a file nor a table; did you mean <TMode>?\n");
    EXPECT_EQ(Split({"a.lake", "b.lake", "Moode", "11"}),
              "Moode: neither a file nor a table; did you mean <TMode>?\n");
    EXPECT_EQ(Split({"a.lake", "Mode", "1", "2"}), "2: not expected behind the KEY\n");
    EXPECT_EQ(Split({"a.lake", "Mode", "1", "\x1B", "3"}), "\xEF\xBF\xBD: not expected behind the KEY\n");
}
