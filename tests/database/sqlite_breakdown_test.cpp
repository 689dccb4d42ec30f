// SQLite files under bad conditions: locked, on a full disk, left by a killed process.
#include "tests/database/database_test.h"

#include <chrono>
#include <csignal>
#include <sched.h>
#include <sqlite3.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace ParamDb;
using namespace std::chrono_literals;

class SqliteBreakdown : public testing::Test {
protected:
    std::string File() const { return (m_folder / u8"bench.db").string(); }
    std::wstring Connection() const { return paramdb::FromUtf8("sqlite3:" + File() + "#a"); }

    // Ends the process within a child of fork.
    [[noreturn]] static void EndChild(bool is_good) {
        std::fflush(nullptr);
        _exit(is_good ? 0 : 1);
    }
    static int WaitFor(pid_t child) {
        int status = -1;
        waitpid(child, &status, 0);
        return status;
    }

    test_support::TempDir m_folder;
};

// What is there is whole: as many revisions as were finished, or one more whose end was not seen.
void ExpectWhole(std::wstring const& connection, CDbTableSet const& expected, std::size_t at_least,
                 std::size_t at_most) {
    auto const revisions = Revisions(connection);
    std::size_t const count = revisions ? revisions->size() : 0;
    EXPECT_GE(count, at_least);
    EXPECT_LE(count, at_most);
    for (std::size_t number = 1; number <= count; ++number) {
        CDbTableSet set;
        EXPECT_TRUE(ImportTables(connection + L"@" + std::to_wstring(number), set, {.strict = true}));
        EXPECT_EQ(Difference(set, expected), "");
    }
}

// Another one writes for longer than anybody waits.
TEST_F(SqliteBreakdown, LockedFile) {
    ASSERT_TRUE(ExportTables(SmallSet(), Connection()));
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    pid_t const holder = fork();
    if (holder == 0) {
        sqlite3* database = nullptr;
        bool const has_lock =
            sqlite3_open(File().c_str(), &database) == SQLITE_OK &&
            sqlite3_exec(database, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK;
        if (!has_lock || write(ready[1], "!", 1) != 1)
            EndChild(false);
        pause();
        EndChild(false);
    }
    close(ready[1]);
    char byte;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);

    MessageLog log;
    auto const start = std::chrono::steady_clock::now();
    EXPECT_FALSE(ExportTables(SmallSet(), Connection(), {.timeout = 1s}));
    CDbTableSet set;
    EXPECT_FALSE(ImportTables(Connection(), set, {.timeout = 1s}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    auto const messages = log.Take();
    ASSERT_EQ(messages.size(), 2u);
    std::wstring const reason = L"'sqlite3:" + paramdb::FromUtf8(File()) + L"' failed: database is locked\n";
    EXPECT_EQ(messages[0], (Message{8, 4, L"ParamDb::ExportTables(): Export to " + reason}));
    EXPECT_EQ(messages[1], (Message{8, 4, L"ParamDb::ImportTables(): Import from " + reason}));
    kill(holder, SIGKILL);
    WaitFor(holder);
    // Whoever waits long enough comes through.
    EXPECT_TRUE(ExportTables(SmallSet(), Connection()));
    ExpectWhole(Connection(), SmallSet(), 2, 2);
}

// The disk of the child is one of 600 kB where the system lets it have one; else its files end there.
TEST_F(SqliteBreakdown, FullDisk) {
    auto const set = LargeSet(L"<TLimSValue>", 30'000);
    pid_t const child = fork();
    if (child == 0) {
        bool const has_disk = unshare(CLONE_NEWNS) == 0 &&
                              mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                              mount("tmpfs", m_folder.path().c_str(), "tmpfs", 0, "size=600k") == 0;
        if (!has_disk) {
            std::signal(SIGXFSZ, SIG_IGN);
            rlimit const limit{600'000, 600'000};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        MessageLog log;
        bool is_good = ExportTables(SmallSet(), Connection()).has_value() && !ExportTables(set, Connection());
        auto const messages = log.Take();
        std::wstring const place =
            L"ParamDb::ExportTables(): Export to 'sqlite3:" + paramdb::FromUtf8(File()) + L"' failed: ";
        wchar_t const* const reason = has_disk ? L"database or disk is full\n" : L"disk I/O error\n";
        is_good = is_good && messages == std::vector<Message>{{8, 4, place + reason}};
        // What was there before is there, and the next one has room.
        is_good = is_good && ExportTables(SmallSet(), Connection()).has_value();
        ExpectWhole(Connection(), SmallSet(), 2, 2);
        EndChild(is_good && !HasFailure() && log.Take().empty());
    }
    EXPECT_EQ(WaitFor(child), 0);
}

TEST_F(SqliteBreakdown, KilledExporter) {
    auto const set = LargeSet(L"<TMode>", 4'000);
    ASSERT_TRUE(ExportTables(set, Connection()));
    auto const start = std::chrono::steady_clock::now();
    ASSERT_TRUE(ExportTables(set, Connection()));
    std::chrono::duration<double> const usual = std::chrono::steady_clock::now() - start;
    std::mt19937 random(3);
    std::size_t finished = 2;
    std::size_t killed = 0;
    for (int round = 0; round < 50 && killed < 8; ++round) {
        pid_t const child = fork();
        if (child == 0)
            EndChild(ExportTables(set, Connection()).has_value());
        std::this_thread::sleep_for(usual * (static_cast<double>(random() % 1000) / 1000));
        kill(child, SIGKILL);
        int const status = WaitFor(child);
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
            ++finished;
        else
            ++killed;
    }
    EXPECT_EQ(killed, 8u);
    ExpectWhole(Connection(), set, finished, finished + killed);
    EXPECT_TRUE(ExportTables(set, Connection()));
    EXPECT_EQ(test_support::RunSql("sqlite3:" + File(), "PRAGMA integrity_check"), "ok");
}

TEST_F(SqliteBreakdown, DamagedFile) {
    ASSERT_TRUE(ExportTables(LargeSet(L"<TMode>", 2'000), Connection()));
    std::string bytes = test_support::ReadBytes(File());
    MessageLog log;
    std::mt19937 random(5);
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        std::string damaged = bytes;
        for (int hit = 0; hit < 20; ++hit)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        if (round % 4 == 0)
            damaged.resize(random() % damaged.size());
        test_support::WriteBytes(File(), damaged);
        CDbTableSet set = SmallSet();
        auto const import = ImportTables(Connection(), set, {.strict = true});
        auto const messages = log.Take();
        if (import) {
            EXPECT_TRUE(messages.empty());
        } else {
            EXPECT_EQ(Difference(set, SmallSet()), "");
            ASSERT_FALSE(messages.empty());
            EXPECT_EQ(messages.back().style, 4);
        }
    }
}

} // namespace
