// A PostgreSQL server of its own on the loopback interface, for one test program.
//
// It runs as the user that the program has, or as `postgres` where that is root, which the server refuses.
// Its files lie in a folder that goes away with it. It ends with the program, also if that crashes, and also
// if it is asleep then.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace test_support {

class PostgresServer {
public:
    // The one of the program, started at the first call. Throws std::runtime_error if that fails.
    static PostgresServer& Object();

    PostgresServer(PostgresServer const&) = delete;
    PostgresServer& operator=(PostgresServer const&) = delete;

    // A connection to a new empty database.
    std::string NewDatabase();

    // Ends it at once, as a crash would, or sends it to sleep; starting again brings all that was committed.
    void Kill();
    // With a size no file of it has more bytes, as on a full disk.
    void Start(std::uint64_t largest_file = 0);
    void Stop();     // SIGSTOP for every process of it
    void Continue(); // SIGCONT

    int port() const { return m_port; }

private:
    PostgresServer();
    ~PostgresServer();

    std::vector<pid_t> Processes() const;

    std::string m_folder;
    int m_port;
    int m_databases = 0;
    pid_t m_process = -1;
    pid_t m_waker = -1; // a process that wakes the server up when this program ends
    int m_waker_pipe = -1;
};

// Runs statements at a PostgreSQL connection or a SQLite file behind the back of the library, and gives the
// first value of the last result, empty for none. Throws std::runtime_error.
std::string RunSql(std::string const& connection, std::string const& statements);

// A port of the loopback interface that nobody has.
int FreePort();

} // namespace test_support
