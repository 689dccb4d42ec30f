// The first use of everything process-wide, by sixteen threads at once. That can be only once in the life of
// a process, so each round is a process of its own, which does nothing before.
//   paramdb_first_use [ROUNDS]
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/platform/sea/sea_base.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>
#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

constexpr std::size_t Threads = 16;

// What one thread met.
struct Meeting {
    std::array<void const*, 5> objects{};
    std::wstring instrument;
    std::wstring word;
    bool is_empty = false;

    bool operator==(Meeting const&) const = default;
};

// Each thread begins with another object.
Meeting Meet(std::size_t thread) {
    Meeting meeting;
    for (std::size_t step = 0; step < meeting.objects.size(); ++step) {
        std::size_t const object = (step + thread) % meeting.objects.size();
        switch (object) {
        case 0:
            meeting.objects[0] = &CQtParamServer::Object();
            break;
        case 1:
            meeting.objects[1] = &CParameterLake::Lake();
            break;
        case 2:
            meeting.objects[2] = &ParamDb::CParameterTableSet::TableSet();
            break;
        case 3:
            meeting.objects[3] = &CSeaBase::MessagesSea();
            break;
        default:
            meeting.objects[4] = &CQtParamInstance().Mode();
        }
    }
    CQtParamInstance const instance;
    meeting.instrument = instance.InstrumentName(7);
    meeting.word = Clavis::ElementName(Clavis::qMode, 1);
    meeting.is_empty = CParameterLake::Lake().empty() && ParamDb::CParameterTableSet::TableSet().empty() &&
                       !instance.Initialized() && !CQtParamInstance::ShowIdsInDialogs();
    PrWin::Output(8, 1, L"");
    return meeting;
}

// Whether all threads met the same.
bool MeetAtOnce() {
    std::vector<Meeting> meetings(Threads);
    std::atomic<std::size_t> waiting = Threads;
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < Threads; ++thread)
        threads.emplace_back([&, thread] {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            meetings[thread] = Meet(thread);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (Meeting const& meeting : meetings)
        if (meeting != meetings.front() || !meeting.is_empty || meeting.instrument != L"(Instr. 7)" ||
            meeting.word.empty())
            return false;
    return true;
}

#ifdef _WIN32
bool MeetInAProcess() {
    return MeetAtOnce();
}
#else
bool MeetInAProcess() {
    pid_t const child = fork();
    if (child == 0)
        std::exit(MeetAtOnce() ? 0 : 1);
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
#endif

} // namespace

int main(int count, char** arguments) {
    int const rounds = count > 1 ? std::atoi(arguments[1]) : 25;
    for (int round = 1; round <= rounds; ++round)
        if (!MeetInAProcess()) {
            std::fprintf(stderr, "round %d: the threads met different objects\n", round);
            return 1;
        }
    std::printf("%d rounds, %zu threads each\n", rounds, Threads);
    return 0;
}
