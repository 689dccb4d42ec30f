#include "tests/support/temp_dir.h"
#include "tools/rewrite/file_bytes.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace paramdb::tools;

TEST(FileBytesTest, SaysWhyAFileIsNoParameterFile) {
    struct Case {
        std::string bytes;
        std::string fault;
    };
    Case const cases[] = {
        {"k: 1", ""},
        {"; x\n1 2\n\"a:b\" k:\n", ""},
        {"", "the file is empty"},
        {std::string("k: 1\n\0", 6), "no parameter file: it holds binary data"},
        {"1 2\n\"a: b\"\n; a: b\n: c\n", "no parameter file: none of its lines has a key"},
    };
    for (Case const& test : cases)
        EXPECT_EQ(ParameterFileFault(test.bytes), test.fault) << test.bytes;
}

TEST(FileBytesTest, ReadsAFile) {
    test_support::TempDir const folder;
    auto const name = (folder / u8"a.lake").string();
    for (std::size_t const size : {1U, 4096U, 1U << 20, (1U << 20) + 1}) {
        std::string const bytes = "k: " + std::string(size, 'x');
        test_support::WriteBytes(folder / u8"a.lake", bytes);
        std::ostringstream err;
        auto const read = ReadParameterFile(name, err);
        ASSERT_TRUE(read.has_value());
        EXPECT_TRUE(*read == bytes) << size;
        EXPECT_EQ(err.str(), "");
    }
}

TEST(FileBytesTest, TellsWhatCannotBeRead) {
    test_support::TempDir const folder;
    auto const name = (folder / u8"a.lake").string();
    std::string fault;
    EXPECT_EQ(ReadFileBytes(name, fault), std::nullopt);
    std::ostringstream err;
    EXPECT_EQ(ReadParameterFile(name, err), std::nullopt);
    EXPECT_EQ(err.str(), "paramdb: " + name + ": " + fault + "\n");
    EXPECT_NE(fault, "");
    err.str("");
    EXPECT_EQ(ReadParameterFile(folder.path().string(), err), std::nullopt);
    EXPECT_TRUE(err.str().starts_with("paramdb: " + folder.path().string() + ": ")) << err.str();
    err.str("");
    test_support::WriteBytes(folder / u8"a.lake", "");
    EXPECT_EQ(ReadParameterFile(name, err), std::nullopt);
    EXPECT_EQ(err.str(), "paramdb: " + name + ": the file is empty\n");
}

TEST(FileBytesTest, ShowsNames) {
    EXPECT_EQ(ShownName(""), "\"\"");
    EXPECT_EQ(ShownName("a b.lake"), "a b.lake");
    EXPECT_EQ(ShownName("a\x1B[2J"), "a\xEF\xBF\xBD[2J");
}
