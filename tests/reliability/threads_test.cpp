// A loaded store in sixteen threads: every question, over parameters of every kind, gives what it gives to
// one.
#include <paramdb/query/param_instance.h>

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <tests/equality/questions.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t Threads = 16;

// All questions that change nothing, beginning with another topic for each start.
std::vector<std::string> AskAll(CQtParamInstance instance, std::size_t start) {
    constexpr std::size_t topics = 6;
    std::vector<std::string> answers(topics);
    for (std::size_t step = 0; step < topics; ++step) {
        std::size_t const topic = (step + start) % topics;
        equality::AnswerBook book;
        equality::Random random(5);
        switch (topic) {
        case 0:
            AskNames(instance, book);
            break;
        case 1:
            AskClassification(instance, book);
            break;
        case 2:
            AskRotors(instance, book);
            break;
        case 3:
            AskChannelsAndPolygons(instance, book);
            break;
        case 4:
            AskIntervals(instance, random, book);
            break;
        default:
            AskTriggers(instance, random, book);
        }
        answers[topic] = book.Text();
    }
    return answers;
}

// The lake and the table set are read in threads too, for they are const there.
std::string Sources() {
    std::string text;
    for (CLake::CNode const& line : static_cast<CLake const&>(CParameterLake::Lake()))
        text += paramdb::ToUtf8(line.key() + line.value() + line.comment()) + '\n';
    for (auto const& [tag, table] : ParamDb::CParameterTableSet::TableSet())
        text += paramdb::ToUtf8(tag) + std::to_string(table.size());
    return text;
}

class ReliabilityThreads : public LoadTest {};

TEST_F(ReliabilityThreads, SixteenAskAtOnce) {
    MessageLog messages;
    equality::Random random(1);
    FillLake(equality::RandomLake(random));
    CQtParamDistillery alone;
    alone.ReadTablesFromCandidateLake();
    auto const expected = AskAll(CQtParamInstance(&alone), 0);
    CQtParamDistillery shared;
    shared.ReadTablesFromCandidateLake();
    messages.Take();
    std::vector<std::vector<std::string>> answers(Threads);
    std::vector<std::string> sources(Threads);
    std::atomic<std::size_t> waiting = Threads;
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < Threads; ++thread)
        threads.emplace_back([&, thread] {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            answers[thread] = AskAll(CQtParamInstance(&shared), thread);
            sources[thread] = Sources();
        });
    for (std::thread& thread : threads)
        thread.join();
    std::string const source = Sources();
    for (std::size_t thread = 0; thread < Threads; ++thread) {
        for (std::size_t topic = 0; topic < expected.size(); ++topic)
            EXPECT_TRUE(answers[thread][topic] == expected[topic]) << thread << ", " << topic;
        EXPECT_TRUE(sources[thread] == source) << thread;
    }
    messages.Take(); // strcopy tells of long names, in whatever order
}

// Where a host loads between two rounds of questions, each round sees the load before it and nothing else.
TEST_F(ReliabilityThreads, LoadsBetweenRounds) {
    MessageLog const messages;
    CQtParamDistillery distillery;
    CQtParamInstance const instance(&distillery);
    for (int round = 1; round <= 20; ++round) {
        std::string const name = "mode" + std::to_string(round);
        FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n<TMode>: {\n" +
                 std::to_string(round) + ' ' + name + "\n}\n");
        ASSERT_TRUE(distillery.ReadTablesFromCandidateLake());
        std::wstring const wide(name.begin(), name.end());
        std::atomic<std::size_t> right = 0;
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < Threads; ++thread)
            threads.emplace_back([&] {
                right += instance.ModeId(wide.c_str()) == round && instance.ModeName(round) == wide &&
                                 instance.ModeId(L"mode0") == -1 && instance.Mode().size() == 1
                             ? 1u
                             : 0u;
            });
        for (std::thread& thread : threads)
            thread.join();
        ASSERT_EQ(right, Threads) << round;
    }
}

} // namespace
