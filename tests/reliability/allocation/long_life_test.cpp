// A process that loads one file after the other, for years: memory goes up and down with the files and stays
// where it was.
//
// PARAMDB_LONG_LIFE_LOADS sets the number of loads; 10000 takes some minutes.
#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>

#include "failing_memory.h"
#include "quiet_sink.h"
#include "sanitized.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <tests/equality/questions.h>
#include <tests/support/sources.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t DifferentFiles = 20;

std::size_t Loads() {
    char const* const wanted = std::getenv("PARAMDB_LONG_LIFE_LOADS");
    std::size_t const loads = wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : 80;
    return std::max(loads, 3 * DifferentFiles);
}

// What of the process is in memory, in bytes; 0 where the system does not tell.
std::size_t ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

class LongLife : public LoadTest {
protected:
    // A load by way of a file, all questions, and now and then what a host does besides. The result stands
    // for all answers.
    std::size_t LoadAndAsk(std::size_t load, bool clears) const {
        std::size_t const number = load % DifferentFiles;
        equality::Random random(static_cast<std::uint32_t>(number + 1));
        test_support::WriteBytes(m_path, equality::RandomLake(random));
        CParameterLake::Lake().read(test_support::WideName(m_path));
        CQtParamInstance instance;
        equality::AnswerBook book;
        book.Tell("loaded", instance.ReadTablesFromCandidateLake());
        AskNames(instance, book);
        AskClassification(instance, book);
        AskRotors(instance, book);
        AskChannelsAndPolygons(instance, book);
        if (number % 5 == 1)
            instance.PurgeTables();
        if (number % 5 == 2)
            CQtParamServer::Object().Clear();
        if (number % 5 == 3)
            CParameterLake::Lake().merge(CParameterLake::Lake());
        if (clears)
            CParameterLake::Lake().clear();
        return std::hash<std::string>()(book.Text());
    }

private:
    test_support::TempDir m_folder;
    std::filesystem::path m_path = m_folder / u8"load.lake"; // one name, so that it takes the same each time
};

TEST_F(LongLife, MemoryStaysWhereItWas) {
    QuietSink const quiet;
    std::size_t const loads = Loads();
    std::vector<std::size_t> answers;
    std::vector<std::ptrdiff_t> held;
    answers.reserve(DifferentFiles); // they count too
    held.reserve(DifferentFiles);
    std::size_t resident = 0;
    for (std::size_t load = 0; load < loads; ++load) {
        std::size_t const answer = LoadAndAsk(load, true);
        std::size_t const round = load / DifferentFiles;
        // The first two rounds bring all that is kept for good: the tables' room for rows, texts of threads.
        if (round == 0)
            answers.push_back(answer);
        if (round == 1) {
            held.push_back(failing_memory::HeldBytes());
            resident = ResidentBytes();
        }
        if (round < 2)
            continue;
        ASSERT_EQ(answer, answers[load % DifferentFiles]) << load;
        ASSERT_EQ(failing_memory::HeldBytes() - held[load % DifferentFiles], 0) << load;
    }
    std::printf("%zu loads, %td bytes held, %zu MB resident\n", loads, held.back(), ResidentBytes() >> 20);
    EXPECT_TRUE(IsSanitized || ResidentBytes() <= resident + (std::size_t{32} << 20));
}

// A lake that reads one file over the other without being cleared scatters its lines in the memory it has,
// and needs a little more to tell them in their order; a quarter at most.
TEST_F(LongLife, ALakeThatIsNeverCleared) {
    QuietSink const quiet;
    std::size_t const loads = Loads();
    std::ptrdiff_t most = 0;
    for (std::size_t load = 0; load < loads; ++load) {
        LoadAndAsk(load, false);
        if (load < 2 * DifferentFiles)
            most = std::max(most, failing_memory::HeldBytes());
        else
            ASSERT_LE(failing_memory::HeldBytes(), most + most / 4) << load;
    }
}

} // namespace
