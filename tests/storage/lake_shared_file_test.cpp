// Lake files that other programs have open, and those in deep folders.
#include <paramdb/platform/core/line_end.h>
#include <paramdb/platform/framework/cfile.h>
#include <paramdb/storage/lake.h>

#include "lake_support.h"
#include "tests/support/deep_folder.h"
#include "tests/support/temp_dir.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

using test_support::ReadBytes;
using test_support::WideName;

namespace {

class LakeSharedFile : public testing::Test {
protected:
    static std::string Line(std::string const& text) { return text + paramdb::LineEnd; }

    test_support::TempDir folder;
    std::filesystem::path path = folder / u8"a.lake";
    std::wstring name = WideName(path);
};

TEST_F(LakeSharedFile, IsReadWhileAnotherProgramWritesIt) {
    std::ofstream writer(path, std::ios::binary);
    writer << "a: 1\n" << std::flush;
    CLake lake(name);
    EXPECT_EQ(lake[L"a"].text(), L"1");
    writer << "b: 2\n" << std::flush;
    EXPECT_TRUE(lake.read());
    EXPECT_EQ(lake[L"b"].text(), L"2");
    CFile exclusive(name.c_str(), CFile::modeReadWrite); // a host of this library, too
    EXPECT_TRUE(lake.read());
    EXPECT_EQ(lake.size(), 3u);
}

TEST_F(LakeSharedFile, IsWrittenWhileOthersHaveItOpen) {
    test_support::WriteBytes(path, "a: 1\nb: 2\n");
    CLake lake(name);
    std::ifstream reader(path, std::ios::binary);
    std::fstream writer(path, std::ios::in | std::ios::out | std::ios::binary);
    lake[L"a"] = L"changed";
    EXPECT_TRUE(lake.write());
    EXPECT_EQ(ReadBytes(path), Line("a: changed") + Line("b: 2"));
    std::string line;
    EXPECT_TRUE(std::getline(reader, line)); // emptied and written in place, not replaced
    EXPECT_EQ(line + '\n', Line("a: changed"));
    EXPECT_TRUE(writer.write("b", 1).flush());
    EXPECT_EQ(ReadBytes(path), Line("b: changed") + Line("b: 2"));
}

TEST_F(LakeSharedFile, MayLieInADeepFolder) {
    test_support::DeepFolder const deep(folder);
    std::filesystem::path const deep_path = deep.path() / u8"deep.lake";
    test_support::WriteBytes(path, "k: value\n");
    CLake const lake(name);
    EXPECT_TRUE(lake.write(WideName(deep_path)));
    EXPECT_EQ(ReadBytes(test_support::AnyLength(deep_path)), Line("k: value"));
    CLake again(WideName(deep_path));
    EXPECT_EQ(again[L"k"].text(), L"value");
    EXPECT_TRUE(std::filesystem::remove(test_support::AnyLength(deep_path)));
}

} // namespace
