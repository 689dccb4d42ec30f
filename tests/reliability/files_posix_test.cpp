// Files that are none, or not for long: folders, pipes, sockets, devices, full disks, missing rights, odd
// names. Whoever reads them gets a clear answer, and whoever writes loses nothing.
#include <paramdb/platform/framework/cfile.h>
#include <paramdb/platform/framework/read_file.h>
#include <paramdb/platform/framework/replace_file.h>
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/dyn_tables.h>
#include <paramdb/storage/lake.h>

#include "tests/platform/temporary_folder.h"
#include "tests/tools/command_run.h"
#include "tools/rewrite/file_bytes.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <tests/support/child_process.h>
#include <thread>
#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#endif

namespace {

using paramdb::FromUtf8;
using paramdb::ToUtf8;
namespace fs = std::filesystem;

constexpr char Lines[] =
    "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n<TMode>: {\n1 idle\n}\n";

class OddFiles : public CommandTest {
protected:
    // A file of each kind that is no regular one and holds nothing to read, with the reason for that.
    struct Odd {
        std::string name;
        int code;
    };
    std::vector<Odd> OddOnes() {
        std::string const socket_name = Name(u8"socket");
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        EXPECT_LT(socket_name.size(), sizeof address.sun_path);
        std::strncpy(address.sun_path, socket_name.c_str(), sizeof address.sun_path - 1);
        int const end = socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(bind(end, reinterpret_cast<sockaddr const*>(&address), sizeof address), 0);
        close(end);
        fs::create_directory(fs::path(Name(u8"folder")));
        fs::create_symlink("loop", fs::path(Name(u8"loop")));
        return {{socket_name, ENXIO},
                {Name(u8"folder"), EISDIR},
                {Name(u8"loop"), ELOOP},
                {Name(u8"missing"), ENOENT},
                {Name(u8"missing/file"), ENOENT},
                {File(u8"file", Lines) + "/file", ENOTDIR},
                {Name(std::u8string(300, u8'n')), ENAMETOOLONG}};
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (auto const& entry : fs::directory_iterator(Folder()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    static std::string Bytes(std::string const& name) { return test_support::ReadBytes(fs::path(name)); }
};

TEST_F(OddFiles, AreNoneForTheLibrary) {
    for (Odd const& odd : OddOnes()) {
        SCOPED_TRACE(odd.name);
        std::wstring const name = FromUtf8(odd.name);
        CFile file;
        CFileException error;
        EXPECT_FALSE(file.Open(name.c_str(), CFile::modeRead, &error));
        EXPECT_EQ(error.Code(), odd.code);
        // A lake keeps the lines it has.
        CLake lake(FromUtf8(File(u8"good.lake", Lines)).c_str());
        EXPECT_TRUE(lake.read(name));
        EXPECT_EQ(lake.size(), 6U);
        EXPECT_TRUE(lake[L"<TMode>"].found() || lake.size() == 6U);
        // So does a sea, which takes a missing file as an empty one.
        CResourceSea sea;
        sea.LookupBool(2, L"key", true, 0);
        std::wstring reason;
        bool const is_missing = odd.code == ENOENT || odd.code == ENOTDIR;
        EXPECT_EQ(sea.Open(name, &reason), is_missing);
        EXPECT_EQ(reason, is_missing ? L"" : CFileException(odd.code).Text());
        EXPECT_EQ(sea.LookupGetBool(L"key", 0, false), !is_missing);
    }
}

TEST_F(OddFiles, AreNoneForTheCommand) {
    std::string const good = File(u8"good.lake", Lines);
    for (Odd const& odd : OddOnes()) {
        SCOPED_TRACE(odd.name);
        std::string const fault = "paramdb: " + odd.name + ": " + CFileException(odd.code).what() + '\n';
        for (std::vector<std::string> const& verb :
             std::vector<std::vector<std::string>>{{"load", odd.name},
                                                   {"load", good, odd.name},
                                                   {"tables", odd.name},
                                                   {"format", odd.name},
                                                   {"merge", good, odd.name, "-o", Name(u8"out.lake")},
                                                   {"report", odd.name, "-o", Name(u8"out.html")}}) {
            CommandRun const run = RunCommand(verb);
            EXPECT_EQ(run.code, 2) << verb.front();
            EXPECT_EQ(run.out, "") << verb.front();
            EXPECT_EQ(run.err, fault) << verb.front();
        }
    }
    EXPECT_FALSE(fs::exists(fs::path(Name(u8"out.lake"))));
    EXPECT_FALSE(fs::exists(fs::path(Name(u8"out.html"))));
}

TEST_F(OddFiles, TakeNothingThatIsWritten) {
    std::string const good = File(u8"good.lake", Lines);
    for (Odd const& odd : OddOnes()) {
        if (odd.code == ENOENT && odd.name == Name(u8"missing"))
            continue; // a new file
        SCOPED_TRACE(odd.name);
        auto const before = Names();
        std::wstring error;
        EXPECT_FALSE(paramdb::ReplaceFileWith(FromUtf8(odd.name), "x", error));
        EXPECT_EQ(error, CFileException(odd.code).Text());
        CommandRun const run = RunCommand({"merge", good, "-o", odd.name});
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "paramdb: " + odd.name + ": " +
                               (odd.code == EISDIR ? "is a folder" : CFileException(odd.code).what()) + '\n');
        EXPECT_EQ(Names(), before);
    }
}

// A pipe is read to its end, however slowly it comes, as by any other reader.
TEST_F(OddFiles, ASlowPipeIsWaitedFor) {
    std::string const pipe = Name(u8"pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    auto const in_pieces = [&](std::string const& bytes) {
        int const end = open(pipe.c_str(), O_WRONLY);
        for (char const byte : bytes) {
            EXPECT_EQ(write(end, &byte, 1), 1);
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        close(end);
    };
    {
        std::thread writer(in_pieces, std::string(Lines));
        CLake const lake(FromUtf8(pipe).c_str());
        writer.join();
        EXPECT_EQ(lake.size(), 6U);
    }
    {
        // One that leaves in the middle of a line has ended the file there.
        std::thread writer(in_pieces, std::string(Lines).substr(0, 66));
        CLake const lake(FromUtf8(pipe).c_str());
        writer.join();
        EXPECT_EQ(lake.size(), 4U);
        EXPECT_EQ(lake.root().named_size(), 2U);
    }
    {
        std::thread writer(in_pieces, std::string("list\t<TMode>\n\t1 idle\n"));
        CResourceSea sea;
        EXPECT_TRUE(sea.Open(FromUtf8(pipe)));
        writer.join();
        EXPECT_EQ(sea.Lists().size(), 1U);
    }
    {
        std::thread writer(in_pieces, std::string(Lines));
        CommandRun const run = RunCommand({"name", pipe, "mode", "1"});
        writer.join();
        EXPECT_EQ(run.out, "idle\n");
    }
}

// A file that has no end: its length is told as 10.
class EndlessFile : public CFile {
public:
    unsigned Read(void* buffer, unsigned count) override {
        std::memset(buffer, 'x', count);
        m_taken += count;
        return count;
    }
    std::int64_t GetLength() const override { return 10; }
    std::uint64_t Taken() const { return m_taken; }

private:
    std::uint64_t m_taken = 0;
};

TEST_F(OddFiles, WhatHasNoEndIsGivenUp) {
    EndlessFile endless;
    try {
        static_cast<void>(paramdb::ReadToEnd(endless));
        FAIL() << "read to the end";
    } catch (CFileException const& error) {
        EXPECT_EQ(error.Code(), EFBIG);
    }
    EXPECT_GT(endless.Taken(), paramdb::MostUnforeseenBytes);
    EXPECT_LE(endless.Taken(), paramdb::MostUnforeseenBytes + (1U << 17));
}

// The reader gives up in the middle of a line, of which nothing counts.
TEST_F(OddFiles, APipeWithoutEndGivesWholeLines) {
    std::string const pipe = Name(u8"pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string const text(5'000'011, 'x');
    auto const before = std::signal(SIGPIPE, SIG_IGN);
    std::thread writer([&pipe, line = text + '\n'] {
        int const end = open(pipe.c_str(), O_WRONLY);
        while (write(end, line.data(), line.size()) == static_cast<ssize_t>(line.size())) {
        }
        close(end);
    });
    CLake lake;
    EXPECT_FALSE(lake.read(FromUtf8(pipe).c_str()));
    writer.join();
    std::signal(SIGPIPE, before);
    EXPECT_EQ(lake.size(), 1 + paramdb::MostUnforeseenBytes / (text.size() + 1));
    EXPECT_EQ(std::prev(lake.end())->value_text().size(), text.size());
}

#ifdef __linux__
TEST_F(OddFiles, ADeviceWithoutEndGivesNoLines) {
    CLake lake;
    lake[L"k"] = L"1";
    EXPECT_FALSE(lake.read(L"/dev/zero"));
    EXPECT_TRUE(lake.empty());
    EXPECT_FALSE(lake[L"k"].found());
    CommandRun const run = RunCommand({"load", "/dev/zero"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "paramdb: /dev/zero: File too large\n");
}

TEST_F(OddFiles, AFileThatOpensButCannotBeReadGivesNoLines) {
    CLake lake;
    lake[L"k"] = L"1";
    EXPECT_FALSE(lake.read(L"/proc/self/mem")); // nothing lies at its beginning
    EXPECT_TRUE(lake.empty());
    EXPECT_FALSE(lake[L"k"].found());
}

TEST_F(OddFiles, ADeviceWithoutEndIsGivenUp) {
    CResourceSea sea;
    std::wstring reason;
    EXPECT_FALSE(sea.Open(L"/dev/zero", &reason));
    EXPECT_EQ(reason, CFileException(EFBIG).Text());
    CommandRun const run = RunCommand({"format", "/dev/zero"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "paramdb: /dev/zero: File too large\n");
    CommandRun const none = RunCommand({"load", "/dev/null"});
    EXPECT_EQ(none.code, 2);
    EXPECT_EQ(none.err, "paramdb: /dev/null: the file is empty\n");
}
#endif

// Another program empties the file and writes it anew, again and again: each reading gives lines of it.
TEST_F(OddFiles, ChangeWhileTheyAreRead) {
    std::string const name = File(u8"changing.lake", "");
    std::string all;
    for (int line = 0; line < 2000; ++line)
        all += "key of line: value of line\n";
    std::atomic<int> times = 0;
    std::atomic<bool> done = false;
    std::thread writer([&] {
        while (!done) {
            int const file = open(name.c_str(), O_WRONLY | O_TRUNC);
            for (std::size_t place = 0; place < all.size(); place += 4096)
                EXPECT_GT(write(file, all.data() + place, std::min<std::size_t>(4096, all.size() - place)),
                          0);
            close(file);
            ++times;
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    });
    CLake lake;
    int with_lines = 0;
    while (times < 100 || with_lines == 0) {
        bool const complete = lake.read(FromUtf8(name));
        EXPECT_TRUE(complete);
        EXPECT_LE(lake.size(), 2001U);
        std::size_t odd = 0;
        for (auto line = std::next(lake.begin()); line != lake.end(); ++line)
            odd += line->key() == L"key of line" && line->value() == L"value of line" ? 0U : 1U;
        EXPECT_LE(odd, 1U) << "only the last line may be cut";
        with_lines += lake.empty() ? 0 : 1;
    }
    done = true;
    writer.join();
}

TEST_F(OddFiles, RemovedWhileOpen) {
    std::string const name = File(u8"gone.lake", Lines);
    CFile file(FromUtf8(name).c_str(), CFile::modeRead);
    char first = 0;
    EXPECT_EQ(file.Read(&first, 1), 1U);
    fs::remove(fs::path(name));
    EXPECT_EQ(first + paramdb::ReadToEnd(file), Lines);
}

// Names are bytes here; some have no characters.
TEST_F(OddFiles, NamesOfAnyBytes) {
    std::string const name = Folder() + "/\xFF\xC3(\xE2\x82.lake";
    std::wstring error;
    ASSERT_TRUE(paramdb::ReplaceFileWith(FromUtf8(name), Lines, error));
    EXPECT_EQ(Bytes(name), Lines);
    CLake const lake(FromUtf8(name).c_str());
    EXPECT_EQ(lake.size(), 6U);
    CommandRun const run = RunCommand({"name", name, "mode", "1"});
    EXPECT_EQ(run.out, "idle\n");
    EXPECT_EQ(run.err, "");
    CommandRun const merge = RunCommand({"merge", name, "-o", name + "2"});
    EXPECT_EQ(merge.code, 0) << merge.err;
    EXPECT_EQ(Bytes(name + "2"), Lines);
    EXPECT_EQ(Names().size(), 2U);
}

TEST_F(OddFiles, WhatOneMayNotReadOrWrite) {
    std::string const secret = File(u8"secret.lake", Lines);
    std::string const fixed = File(u8"fixed.lake", Lines);
    std::string const folder = Name(u8"folder");
    fs::create_directory(fs::path(folder));
    test_support::WriteBytes(fs::path(folder) / "old.lake", Lines);
    chmod(Folder().c_str(), 0777);
    chmod(secret.c_str(), 0);
    chmod(fixed.c_str(), 0444);
    chmod((folder + "/old.lake").c_str(), 0666);
    chmod(folder.c_str(), 0555);
    std::string const denied = std::string(CFileException(EACCES).what());
    EXPECT_EQ(test_support::InChild([&]() -> std::string {
                  if (!test_support::BecomeNobody())
                      return "cannot become nobody";
                  std::string wrong;
                  auto const expect = [&](std::vector<std::string> const& verb, std::string const& name) {
                      CommandRun const run = RunCommand(verb);
                      if (run.code != 2 || run.err != "paramdb: " + name + ": " + denied + '\n')
                          wrong += verb.front() + ": " + std::to_string(run.code) + ' ' + run.err;
                  };
                  expect({"load", secret}, secret);
                  expect({"format", secret}, secret);
                  for (std::string const& target : {fixed, folder + "/new.lake", folder + "/old.lake"})
                      expect({"merge", fixed, "-o", target, "--force"}, target);
                  CLake lake(FromUtf8(fixed).c_str());
                  if (!lake.read(FromUtf8(secret)) || lake.size() != 6)
                      wrong += "the lake has lost its lines";
                  if (lake.write(FromUtf8(fixed)))
                      wrong += "the lake was written";
                  return wrong;
              }),
              "");
    chmod(folder.c_str(), 0755);
    EXPECT_EQ(Bytes(fixed), Lines);
    EXPECT_EQ(Bytes(folder + "/old.lake"), Lines);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

// What goes wrong when the folder takes no more bytes, and an old file of 2000 bytes is in it.
std::string WriteWithoutRoom(std::string const& folder, std::string const& big, std::string const& reason) {
    std::string wrong;
    std::string const old(2000, 'o');
    std::string const target = folder + "/old.lake";
    auto const expect_old = [&](std::string const& who) {
        if (test_support::ReadBytes(target) != old ||
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()) != 1)
            wrong += who + ": the old file is not as it was\n";
    };
    std::wstring error;
    if (paramdb::ReplaceFileWith(FromUtf8(target), std::string(300'000, 'n'), error) ||
        ToUtf8(error) != reason)
        wrong += "the writer: " + ToUtf8(error) + '\n';
    expect_old("the writer");
    for (std::vector<std::string> const& verb : std::vector<std::vector<std::string>>{
             {"merge", big, "-o", target},
             {"report", big, "-o", target},
             {"convert", big, target, "--to", "json", "--force", "--drop", "comments"}}) {
        CommandRun const run = RunCommand(verb);
        if (run.code != 2 || run.err != "paramdb: " + target + ": " + reason + '\n')
            wrong += verb.front() + ": " + std::to_string(run.code) + ' ' + run.err;
        expect_old(verb.front());
    }
    // Once it is the sea's own file, and once a file of records.
    CResourceSea sea;
    std::wstring sea_reason;
    sea.Open(FromUtf8(folder + "/new.sea"));
    sea.MakeList(L"list").assign(3000, std::wstring(100, L'x'));
    if (sea.Save(&sea_reason) || ToUtf8(sea_reason) != reason)
        wrong += "the sea: " + ToUtf8(sea_reason) + '\n';
    expect_old("the sea");
    try {
        CFile file(FromUtf8(target).c_str(), CFile::modeWrite);
        std::vector<char> record(300'000);
        int const size = static_cast<int>(record.size());
        void const* const field = record.data();
        DynTables::WriteToFile(file, &size, &field, 1);
        wrong += "the record was written\n";
    } catch (CFileException const& fault) {
        if (fault.what() != reason)
            wrong += std::string("the record: ") + fault.what() + '\n';
    }
    return wrong;
}

std::string BigLake() {
    std::string text = Lines;
    for (int row = 0; row < 20'000; ++row)
        text += "; a comment\n";
    return text + "<TChannel>: {\n" + [] {
        std::string rows;
        for (int row = 0; row < 10'000; ++row)
            rows += std::to_string(row) + " channel" + std::to_string(row) + '\n';
        return rows;
    }() + "}\n";
}

// A disk of 64 KB in place of the folder, which only this process sees; false where it may not.
bool MountSmallDisk([[maybe_unused]] std::string const& folder) {
#ifdef __linux__
    return unshare(CLONE_NEWNS) == 0 && mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
#else
    return false;
#endif
}

TEST_F(OddFiles, AFullDiskKeepsTheOldFile) {
    std::string const big = File(u8"big.lake", BigLake());
    std::string const folder = Name(u8"disk");
    fs::create_directory(fs::path(folder));
    auto const write_without_room = [&] {
        bool const has_disk = MountSmallDisk(folder);
        if (!has_disk) {
            std::signal(SIGXFSZ, SIG_IGN);
            rlimit const limits{65536, 65536};
            setrlimit(RLIMIT_FSIZE, &limits);
        }
        test_support::WriteBytes(fs::path(folder) / "old.lake", std::string(2000, 'o'));
        return WriteWithoutRoom(folder, big, CFileException(has_disk ? ENOSPC : EFBIG).what());
    };
    EXPECT_EQ(test_support::InChild(write_without_room), "");
}

} // namespace
