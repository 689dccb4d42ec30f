#include "tests/support/postgres.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <libpq-fe.h>
#include <memory>
#include <pwd.h>
#include <random>
#include <sqlite3.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace test_support {
namespace {

using namespace std::chrono_literals;

// The programs of the server, found when the tests were configured.
std::string const Programs = PARAMDB_POSTGRES_DIR;

// Root becomes another user: the server does not run as root.
void BecomeServerUser() {
    if (geteuid() != 0)
        return;
    passwd const* const user = getpwnam("postgres");
    if (user == nullptr || setgid(user->pw_gid) != 0 || setuid(user->pw_uid) != 0)
        _exit(126);
}

// Starts a program of the server, which ends when this process does. A size of 0 stands for no limit.
pid_t Spawn(std::vector<std::string> words, std::string const& log, std::uint64_t largest_file) {
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t const parent = getpid();
    pid_t const child = fork();
    if (child != 0)
        return child;
    rlimit limit{};
    if (largest_file > 0 && getrlimit(RLIMIT_FSIZE, &limit) == 0) {
        limit.rlim_cur = std::min<rlim_t>(largest_file, limit.rlim_max);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    BecomeServerUser();
    setsid();
    prctl(PR_SET_PDEATHSIG, SIGKILL); // behind the change of the user, which would undo it
    int const file = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    int const nothing = open("/dev/null", O_RDONLY);
    if (getppid() != parent || file < 0 || nothing < 0 || chdir("/") != 0)
        _exit(125);
    dup2(nothing, STDIN_FILENO);
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    execv(arguments.front(), arguments.data());
    _exit(127);
}

struct Close {
    void operator()(PGconn* connection) const { PQfinish(connection); }
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};

std::string Address(int port, std::string const& database) {
    return "host=127.0.0.1 port=" + std::to_string(port) + " user=postgres dbname=" + database;
}

std::string RunPostgres(std::string const& options, std::string const& statements) {
    std::unique_ptr<PGconn, Close> const connection(PQconnectdb(options.c_str()));
    if (PQstatus(connection.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(connection.get()));
    PGresult* const result = PQexec(connection.get(), statements.c_str());
    auto const status = PQresultStatus(result);
    std::string const value =
        status == PGRES_TUPLES_OK && PQntuples(result) > 0 ? PQgetvalue(result, 0, 0) : "";
    PQclear(result);
    if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK)
        throw std::runtime_error(PQerrorMessage(connection.get()));
    return value;
}

std::string RunSqlite(std::string const& file, std::string const& statements) {
    sqlite3* opened = nullptr;
    int result = sqlite3_open(file.c_str(), &opened);
    std::unique_ptr<sqlite3, Close> const database(opened);
    std::string value;
    auto const take = [](void* target, int count, char** values, char**) {
        if (count > 0 && values[0] != nullptr)
            *static_cast<std::string*>(target) = values[0];
        return 0;
    };
    sqlite3_busy_timeout(opened, 5000);
    if (result == SQLITE_OK)
        result = sqlite3_exec(opened, statements.c_str(), take, &value, nullptr);
    if (result != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(opened));
    return value;
}

} // namespace

int FreePort() {
    int const socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    bool const is_good = socket >= 0 && bind(socket, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                         getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    close(socket);
    if (!is_good)
        throw std::runtime_error("no free port");
    return ntohs(address.sin_port);
}

std::string RunSql(std::string const& connection, std::string const& statements) {
    std::size_t const colon = connection.find(':');
    std::string const rest = connection.substr(colon + 1, connection.find('#') - colon - 1);
    return connection.starts_with("sqlite3:") ? RunSqlite(rest, statements) : RunPostgres(rest, statements);
}

PostgresServer& PostgresServer::Object() {
    static PostgresServer server;
    return server;
}

PostgresServer::PostgresServer() : m_port(FreePort()) {
    std::string name = (std::filesystem::temp_directory_path() / "paramdb-postgres-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no folder for the server");
    m_folder = name;
    if (geteuid() == 0) {
        passwd const* const user = getpwnam("postgres");
        if (user == nullptr || chown(m_folder.c_str(), user->pw_uid, user->pw_gid) != 0)
            throw std::runtime_error("there is no user for the server");
    }
    pid_t const init = Spawn({Programs + "/initdb", "-D", m_folder + "/data", "-A", "trust", "-U", "postgres",
                              "-E", "UTF8", "--locale=C", "--no-sync", "--wal-segsize=1"},
                             m_folder + "/log", 0);
    int status = -1;
    waitpid(init, &status, 0);
    if (status != 0)
        throw std::runtime_error("initdb failed");
    Start();
}

PostgresServer::~PostgresServer() {
    Kill();
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

void PostgresServer::Start(std::uint64_t largest_file) {
    m_process = Spawn({Programs + "/postgres", "-D", m_folder + "/data", "-c", "listen_addresses=127.0.0.1",
                       "-c", "port=" + std::to_string(m_port), "-c", "unix_socket_directories=", "-c",
                       "fsync=off", "-c", "full_page_writes=off", "-c", "max_connections=40"},
                      m_folder + "/log", largest_file);
    auto const deadline = std::chrono::steady_clock::now() + 30s;
    while (PQping(Address(m_port, "postgres").c_str()) != PQPING_OK) {
        if (waitpid(m_process, nullptr, WNOHANG) != 0 || std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error("the server does not start");
        std::this_thread::sleep_for(20ms);
    }
}

std::string PostgresServer::NewDatabase() {
    std::string const name = "test" + std::to_string(++m_databases);
    RunPostgres(Address(m_port, "postgres"), "CREATE DATABASE " + name);
    return "postgresql:" + Address(m_port, name);
}

// The server and all that it has started.
std::vector<pid_t> PostgresServer::Processes() const {
    std::vector<pid_t> processes{m_process};
    std::string const process = std::to_string(m_process);
    std::ifstream children("/proc/" + process + "/task/" + process + "/children");
    for (pid_t child = 0; children >> child;)
        processes.push_back(child);
    return processes;
}

// SIGQUIT makes the server end at once all that runs, and itself, without writing anything down.
void PostgresServer::Kill() {
    if (m_process <= 0)
        return;
    Continue();
    kill(m_process, SIGQUIT);
    waitpid(m_process, nullptr, 0);
    m_process = -1;
}

// The system would end the server with this program, but what it has started would sleep on. So another
// process waits for the end of this one, or for the server to be woken up.
void PostgresServer::Stop() {
    int ends[2];
    if (m_waker > 0 || pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("the server cannot be sent to sleep");
    kill(m_process, SIGSTOP); // starts nothing from now on
    auto const processes = Processes();
    m_waker = fork();
    if (m_waker == 0) {
        setsid();
        close(ends[1]);
        char byte;
        while (read(ends[0], &byte, 1) < 0 && errno == EINTR) {
        }
        for (pid_t const process : processes)
            kill(process, SIGCONT);
        _exit(0);
    }
    close(ends[0]);
    m_waker_pipe = ends[1];
    for (pid_t const process : processes)
        kill(process, SIGSTOP);
}

void PostgresServer::Continue() {
    if (m_waker <= 0)
        return;
    close(m_waker_pipe);
    waitpid(m_waker, nullptr, 0);
    m_waker = -1;
}

} // namespace test_support
