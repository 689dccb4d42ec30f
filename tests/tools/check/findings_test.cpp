// The folder of faulty files: one for each code, CODE.lake, with what a check prints, CODE.txt. A code about
// several files has CODE.second.lake, which is merged behind the first. The texts are made, and then looked
// at, in the folder with
//     (paramdb check P204*.lake; echo "exit $?") > P204.txt
#include <paramdb/platform/core/utf8.h>

#include "tests/tools/command_run.h"
#include "tools/check/codes.h"
#include "tools/check/findings_document.h"

#include <algorithm>
#include <filesystem>
#include <set>

using namespace paramdb::tools::check;

namespace {

std::filesystem::path const Folder = std::filesystem::path(PARAMDB_SOURCE_DIR) / "tests" / "findings";

// The files of a code as arguments, in their order.
std::vector<std::string> FilesOf(std::string const& code) {
    std::vector<std::string> files;
    for (char const* const end : {".lake", ".second.lake"})
        if (std::filesystem::path const path = Folder / (code + end); exists(path))
            files.push_back(path.generic_string());
    return files;
}

// What a check prints, with the bare names of the files.
std::string CheckedText(std::vector<std::string> const& files) {
    std::vector<std::string> arguments{"check"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    auto const run = RunCommand(arguments);
    EXPECT_EQ(run.err, "");
    std::string text = run.out;
    std::string const folder = Folder.generic_string() + '/';
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at))
        text.erase(at, folder.size());
    return text + "exit " + std::to_string(run.code) + '\n';
}

std::string Latin1(std::string_view utf8) {
    std::string bytes;
    for (wchar_t const unit : paramdb::FromUtf8(utf8))
        bytes += static_cast<char>(static_cast<unsigned long>(unit) & 0xFFU);
    return bytes;
}

// Whether the lines stand in the text; three dots at the end of one are the rest of it.
bool HoldsLines(std::string const& text, std::string const& lines) {
    std::size_t const dots = lines.find("...\n");
    return text.find(dots == std::string::npos ? lines : lines.substr(0, dots)) != std::string::npos;
}

class FindingsTest : public LoadTest {};

} // namespace

TEST_F(FindingsTest, EveryCodeHasAFaultyFileWithItsFinding) {
    for (Code const& code : Codes()) {
        std::string const name(code.code);
        SCOPED_TRACE(name);
        auto const files = FilesOf(name);
        ASSERT_FALSE(files.empty());
        std::string const text = CheckedText(files);
        EXPECT_EQ(text, test_support::ReadBytes(Folder / (name + ".txt")));
        std::string const begin = std::string(SeverityWord(code.severity)) + ' ' + name + ' ';
        EXPECT_NE(text.find(begin), std::string::npos);
    }
}

TEST_F(FindingsTest, TheFolderHoldsNothingElse) {
    std::set<std::string> expected;
    for (Code const& code : Codes())
        for (char const* const end : {".lake", ".second.lake", ".txt"})
            expected.insert(std::string(code.code) + end);
    for (auto const& entry : std::filesystem::directory_iterator(Folder))
        EXPECT_TRUE(expected.contains(entry.path().filename().string())) << entry.path();
}

TEST_F(FindingsTest, TheExamplesStandInTheFaultyFiles) {
    for (Code const& code : Codes()) {
        std::string const example(code.example);
        bool found = false;
        for (std::string const& file : FilesOf(std::string(code.code))) {
            std::string const text = test_support::ReadBytes(file);
            found = found || HoldsLines(text, example) || HoldsLines(text, Latin1(example));
        }
        EXPECT_TRUE(found) << code.code << '\n' << example;
    }
}

TEST_F(FindingsTest, TheDocumentTellsOfAllCodes) {
    auto const run = RunCommand({"check", "--explain", "all"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, FindingsDocument());
    EXPECT_EQ(FindingsDocument(),
              test_support::ReadBytes(std::filesystem::path(PARAMDB_SOURCE_DIR) / "docs" / "findings.md"))
        << "to be made anew: paramdb check --explain all > docs/findings.md";
}

TEST_F(FindingsTest, CodesAreInOrderAndWhole) {
    std::string_view last;
    std::set<std::string_view> names;
    for (Code const& code : Codes()) {
        SCOPED_TRACE(std::string(code.code));
        EXPECT_LT(last, code.code);
        last = code.code;
        EXPECT_EQ(code.code.size(), 4U);
        EXPECT_TRUE(names.insert(code.name).second);
        EXPECT_EQ(code.name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"),
                  std::string_view::npos);
        EXPECT_FALSE(code.title.ends_with('.'));
        EXPECT_TRUE(code.explanation.ends_with('.'));
        EXPECT_TRUE(code.example.ends_with('\n'));
        EXPECT_TRUE(code.remedy.ends_with('.') || code.remedy.ends_with('`'));
        EXPECT_EQ(FindCode(code.code), &code);
        EXPECT_EQ(FindCode(code.name), &code);
    }
    EXPECT_EQ(FindCode("p201"), FindCode("P201"));
    EXPECT_EQ(FindCode("P000"), nullptr);
}

TEST_F(FindingsTest, EveryFindingHasAHint) {
    for (Code const& code : Codes()) {
        std::string const text = test_support::ReadBytes(Folder / (std::string(code.code) + ".txt"));
        std::size_t findings = 0;
        for (char const* const word : {": error P", ": warning P", ": note P"})
            for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
                ++findings;
        std::size_t hints = 0;
        for (std::size_t at = text.find("\n  hint: "); at != std::string::npos;
             at = text.find("\n  hint: ", at + 1))
            ++hints;
        EXPECT_EQ(findings, hints) << code.code;
    }
}

TEST_F(FindingsTest, TheExampleGearboxHasNone) {
    std::string const folder = PARAMDB_SOURCE_DIR "/examples/gearbox/";
    for (char const* const name : {"gearbox.lake", "customer.lake"}) {
        auto const run = RunCommand({"check", "--strict", folder + name});
        EXPECT_EQ(run.code, 0);
        EXPECT_TRUE(run.out.starts_with("No findings in 1 file with ")) << run.out;
        EXPECT_EQ(run.err, "");
    }
}
