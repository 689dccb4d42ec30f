// A server that dies, sleeps, says nothing or has no room while it is worked with.
#include "tests/database/database_test.h"

#include <arpa/inet.h>
#include <chrono>
#include <csignal>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace ParamDb;
using namespace std::chrono_literals;
using test_support::PostgresServer;

class ServerBreakdown : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(m_log.Take(), std::vector<Message>()); }

    std::wstring Connection() const { return m_database.Connection("#a"); }

    // Each revision that can be seen is whole, and there are as many as told.
    void ExpectWhole(CDbTableSet const& expected, std::size_t at_least, std::size_t at_most) {
        auto const revisions = Revisions(Connection());
        std::size_t const count = revisions ? revisions->size() : 0;
        EXPECT_GE(count, at_least);
        EXPECT_LE(count, at_most);
        for (std::size_t number = 1; number <= count; ++number) {
            CDbTableSet set;
            EXPECT_TRUE(ImportTables(Connection() + L"@" + std::to_wstring(revisions->at(number - 1).number),
                                     set, {.strict = true}));
            EXPECT_EQ(Difference(set, expected), "");
        }
        // No row of what is not there.
        EXPECT_EQ(m_database.Run("SELECT count(*) FROM \"TMode\" WHERE revision_id NOT IN (SELECT id FROM "
                                 "paramdb_revision)"),
                  "0");
    }

    // The one message of a failure: its beginning and what stands behind it.
    std::string TakeFailure(std::wstring const& beginning) {
        auto const messages = m_log.Take();
        EXPECT_EQ(messages.size(), 1u);
        if (messages.empty())
            return {};
        EXPECT_EQ(messages.back().style, 4);
        EXPECT_TRUE(messages.back().text.starts_with(beginning)) << paramdb::ToUtf8(messages.back().text);
        return paramdb::ToUtf8(
            messages.back().text.substr(std::min(beginning.size(), messages.back().text.size())));
    }
    std::size_t TakeFailures(std::wstring const& beginning) {
        auto const messages = m_log.Take();
        for (Message const& message : messages)
            EXPECT_TRUE(message.style == 4 && message.text.starts_with(beginning))
                << paramdb::ToUtf8(message.text);
        return messages.size();
    }
    std::wstring ImportFailed() const {
        return L"ParamDb::ImportTables(): Import from '" + m_database.Connection() + L"' failed: ";
    }
    std::wstring ExportFailed() const {
        return L"ParamDb::ExportTables(): Export to '" + m_database.Connection() + L"' failed: ";
    }

    PostgresServer& server() { return PostgresServer::Object(); }

    // A socket that listens at some port of the loopback interface.
    static int Listen() {
        int const socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(socket, 5), 0);
        return socket;
    }
    static std::string PortOf(int socket) {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        EXPECT_EQ(getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
        return std::to_string(ntohs(address.sin_port));
    }

    // Does something to the server at a random moment of an action, again and again, until it has failed in
    // time twice. The action answers whether it came through.
    template <class Action, class Hit>
    void Disturb(std::uint32_t seed, Action action, Hit hit) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        auto const start = std::chrono::steady_clock::now();
        ASSERT_TRUE(action());
        std::chrono::duration<double> const usual = std::chrono::steady_clock::now() - start;
        std::mt19937 random(seed);
        int failed = 0;
        for (int round = 0; round < 30 && failed < 2; ++round) {
            std::thread hitter([&, wait = usual * (static_cast<double>(random() % 1000) / 1000)] {
                std::this_thread::sleep_for(wait);
                hit();
            });
            bool const is_good = action();
            hitter.join();
            server().Start();
            failed += is_good ? 0 : 1;
        }
        EXPECT_EQ(failed, 2);
    }

    MessageLog m_log;
    Database m_database{Kind::Postgres};
};

TEST_F(ServerBreakdown, DiesWhileImporting) {
    auto const set = LargeSet(L"<TMode>", 15'000);
    ASSERT_TRUE(ExportTables(set, Connection()));
    auto const import = [&] {
        CDbTableSet back = SmallSet();
        bool const is_good = ImportTables(Connection(), back).has_value();
        EXPECT_EQ(Difference(back, is_good ? set : SmallSet()), "");
        EXPECT_EQ(TakeFailures(ImportFailed()), is_good ? 0u : 1u);
        return is_good;
    };
    Disturb(8, import, [this] { server().Kill(); });
    ExpectWhole(set, 1, 1);
}

TEST_F(ServerBreakdown, DiesWhileExporting) {
    auto const set = LargeSet(L"<TMode>", 6'000);
    ASSERT_TRUE(ExportTables(SmallSet(), m_database.Connection("#first"))); // makes the tables
    std::size_t finished = 0;
    std::size_t failed = 0;
    auto const write = [&] {
        bool const is_good = ExportTables(set, Connection()).has_value();
        EXPECT_EQ(TakeFailures(ExportFailed()), is_good ? 0u : 1u);
        ++(is_good ? finished : failed);
        return is_good;
    };
    Disturb(9, write, [this] { server().Kill(); });
    // The server may have kept what it could not say any more.
    ExpectWhole(set, finished, finished + failed);
    EXPECT_TRUE(ExportTables(set, Connection()));
}

TEST_F(ServerBreakdown, KilledExporter) {
    auto const set = LargeSet(L"<TMode>", 6'000);
    ASSERT_TRUE(ExportTables(set, Connection()));
    auto const start = std::chrono::steady_clock::now();
    ASSERT_TRUE(ExportTables(set, Connection()));
    std::chrono::duration<double> const usual = std::chrono::steady_clock::now() - start;
    std::mt19937 random(10);
    std::size_t finished = 2;
    std::size_t killed = 0;
    for (int round = 0; round < 30 && killed < 4; ++round) {
        pid_t const child = fork();
        if (child == 0)
            _exit(ExportTables(set, Connection()) ? 0 : 1);
        std::this_thread::sleep_for(usual * (static_cast<double>(random() % 1000) / 1000));
        kill(child, SIGKILL);
        int status = -1;
        waitpid(child, &status, 0);
        ++(WIFEXITED(status) && WEXITSTATUS(status) == 0 ? finished : killed);
    }
    EXPECT_EQ(killed, 4u);
    ExpectWhole(set, finished, finished + killed);
}

// A server that is asleep keeps its connections and answers nothing.
TEST_F(ServerBreakdown, FallsAsleep) {
    auto const set = LargeSet(L"<TMode>", 6'000);
    ASSERT_TRUE(ExportTables(set, Connection()));
    auto const start = std::chrono::steady_clock::now();
    for (int round = 0; round < 2; ++round) {
        std::thread stopper([&] {
            std::this_thread::sleep_for(30ms);
            server().Stop();
        });
        bool const is_import = round == 0;
        CDbTableSet back;
        bool const is_good = is_import ? ImportTables(Connection(), back, {.timeout = 1s}).has_value()
                                       : ExportTables(set, Connection(), {.timeout = 1s}).has_value();
        stopper.join();
        server().Continue();
        if (is_good)
            continue;
        // Either the connection was there already or not.
        std::string const reason = TakeFailure(is_import ? ImportFailed() : ExportFailed());
        EXPECT_TRUE(reason == "no answer within 3 s\n" || reason.ends_with("timeout expired\n")) << reason;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
    std::this_thread::sleep_for(200ms); // what was under way ends
    ExpectWhole(set, 1, 2);
}

// Somebody holds what the export needs for longer than it waits.
TEST_F(ServerBreakdown, Locked) {
    ASSERT_TRUE(ExportTables(SmallSet(), Connection()));
    std::thread holder([&] { m_database.Run("BEGIN; LOCK TABLE \"TMode\"; SELECT pg_sleep(2.5); COMMIT"); });
    std::this_thread::sleep_for(300ms);
    CDbTableSet set;
    EXPECT_FALSE(ImportTables(Connection(), set, {.timeout = 1s}));
    EXPECT_EQ(TakeFailure(ImportFailed()), "canceling statement due to lock timeout\n");
    holder.join();
    EXPECT_TRUE(ImportTables(Connection(), set));
}

// A port where somebody listens and says nothing.
TEST_F(ServerBreakdown, Silent) {
    int const listener = Listen();
    std::string const port = PortOf(listener);
    std::wstring const connection =
        paramdb::FromUtf8("postgresql:host=127.0.0.1 user=x dbname=x port=" + port);
    auto const start = std::chrono::steady_clock::now();
    CDbTableSet set = SmallSet();
    EXPECT_FALSE(ImportTables(connection + L"#a", set, {.timeout = 2s}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    EXPECT_EQ(TakeFailure(L"ParamDb::ImportTables(): Import from '" + connection + L"' failed: "),
              "connection to server at \"127.0.0.1\", port " + port + " failed: timeout expired\n");
    EXPECT_EQ(Difference(set, SmallSet()), "");
    close(listener);
}

// Somebody who lets in and then says nothing any more.
TEST_F(ServerBreakdown, SilentOnceInside) {
    int const listener = Listen();
    std::string const port = PortOf(listener);
    int client = -1;
    std::thread greeter([listener, &client] {
        client = accept(listener, nullptr, nullptr);
        char question[1024];
        EXPECT_GT(read(client, question, sizeof question), 0);
        // "Nobody asks for a password" and "ready".
        constexpr char answer[] = {'R', 0, 0, 0, 8, 0, 0, 0, 0, 'Z', 0, 0, 0, 5, 'I'};
        EXPECT_EQ(write(client, answer, sizeof answer), static_cast<ssize_t>(sizeof answer));
    });
    std::wstring const connection = paramdb::FromUtf8(
        "postgresql:host=127.0.0.1 user=x dbname=x sslmode=disable gssencmode=disable port=" + port);
    auto const start = std::chrono::steady_clock::now();
    EXPECT_FALSE(ExportTables(SmallSet(), connection + L"#a", {.timeout = 1s}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 15s);
    EXPECT_EQ(TakeFailure(L"ParamDb::ExportTables(): Export to '" + connection + L"' failed: "),
              "no answer within 6 s\n");
    greeter.join();
    close(client); // which ends the connection that was given up, too
    close(listener);
}

TEST_F(ServerBreakdown, WrongDatabaseAndUser) {
    std::string const place = m_database.Place();
    CDbTableSet set;
    auto const nowhere = paramdb::FromUtf8(place + "x");
    EXPECT_FALSE(ImportTables(nowhere, set));
    std::string const reason =
        TakeFailure(L"ParamDb::ImportTables(): Import from '" + nowhere + L"' failed: ");
    EXPECT_TRUE(reason.ends_with("does not exist\n")) << reason;
    EXPECT_FALSE(ImportTables(L"postgresql:nonsense=1", set));
    EXPECT_EQ(TakeFailure(L"ParamDb::ImportTables(): Import from 'postgresql:nonsense=1' failed: "),
              "invalid connection option \"nonsense\"\n");
}

// No file of the server has more than 3 MB, as if its disk were full.
TEST_F(ServerBreakdown, FullDisk) {
    ASSERT_TRUE(ExportTables(SmallSet(), Connection()));
    server().Kill();
    server().Start(3'000'000);
    EXPECT_FALSE(ExportTables(LargeSet(L"<TMode>", 80'000), Connection()));
    std::string const reason = TakeFailure(ExportFailed());
    EXPECT_TRUE(reason.starts_with("could not extend file \"base/")) << reason;
    EXPECT_TRUE(reason.ends_with("HINT: Check free disk space\n")) << reason;
    server().Kill();
    server().Start();
    ExpectWhole(SmallSet(), 1, 1);
    EXPECT_TRUE(ExportTables(SmallSet(), Connection()));
}

// Eight at once, on a new database and on one that is there, to one set and to several.
class ManyExporters : public testing::TestWithParam<Kind> {};

TEST_P(ManyExporters, EachHasItsRevision) {
    Database const database(GetParam());
    auto const set = LargeSet(L"<TMode>", 300);
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        std::vector<pid_t> children;
        for (int exporter = 0; exporter < 8; ++exporter) {
            pid_t const child = fork();
            if (child == 0) {
                auto const name = exporter < 6 ? L"#same" : L"#other";
                auto const written =
                    ExportTables(set, database.Connection() + name, {.timeout = std::chrono::seconds(60)});
                _exit(written ? 0 : 1);
            }
            children.push_back(child);
        }
        for (pid_t const child : children) {
            int status = -1;
            waitpid(child, &status, 0);
            EXPECT_EQ(status, 0);
        }
    }
    for (auto const& [name, count] : {std::pair(L"same", 12), std::pair(L"other", 4)}) {
        auto const revisions = Revisions(database.Connection() + L"#" + name);
        ASSERT_TRUE(revisions);
        ASSERT_EQ(revisions->size(), static_cast<std::size_t>(count));
        for (int number = 1; number <= count; ++number) {
            EXPECT_EQ(revisions->at(static_cast<std::size_t>(number - 1)).number, number);
            CDbTableSet back;
            EXPECT_TRUE(ImportTables(database.Connection() + L"#" + name + L"@" + std::to_wstring(number),
                                     back, {.strict = true}));
            EXPECT_EQ(Difference(back, set), "");
        }
    }
}

PARAMDB_BOTH_KINDS(ManyExporters);

} // namespace
