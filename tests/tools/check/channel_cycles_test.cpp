#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace {

class ChannelCyclesTest : public CheckTest {};

// What the load reports of circles, as it does.
std::set<std::string> Reported(paramdb::tools::check::CheckContext const& context) {
    std::set<std::string> cycles;
    for (auto const& message : context.Messages()) {
        std::string const text = paramdb::ToUtf8(message.text);
        if (text.find("cyclic channel inheritance") != std::string::npos)
            cycles.insert(text);
    }
    return cycles;
}

} // namespace

TEST_F(ChannelCyclesTest, Cycles) {
    struct Case {
        std::vector<std::string> rows;
        Texts findings;
    };
    std::string const names = TableText("TMode", {"1 Idle", "2 Drive"}) +
                              TableText("TChannel", {"1 a", "2 b", "3 c", "4 d", "5 e"});
    Case const cases[] = {
        {{"1 -1 2", "2 -1 3", "3 -1 -1"}, {}},
        {{"1 -1 1"}, {"13:6 P401 channel 1 a inherits from itself: 1 -> 1"}},
        {{"3 -1 2", "2 -1 5", "5 -1 3", "1 -1 2"},
         {"14:6 P401 channel 2 b inherits from itself: 2 -> 5 -> 3 -> 2"}},
        {{"1 -1 2", "3 -1 4", "2 -1 1", "4 -1 3"},
         {"13:6 P401 channel 1 a inherits from itself: 1 -> 2 -> 1",
          "14:6 P401 channel 3 c inherits from itself: 3 -> 4 -> 3"}},
        // A mode with a way out, and one that closes the circle.
        {{"1 -1 2", "2 -1 3", "3 2 1"},
         {"13:6 P401 channel 1 a inherits from itself in mode 2 Drive: 1 -> 2 -> 3 -> 1"}},
        {{"1 -1 2", "2 -1 1", "2 1 -1"}, {"13:6 P401 channel 1 a inherits from itself: 1 -> 2 -> 1"}},
        {{"1 1 2", "2 1 1", "1 2 2", "2 2 1"},
         {"13:5 P401 channel 1 a inherits from itself in mode 1 Idle: 1 -> 2 -> 1"}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(RuleFindings(names + TableText("TChannelInheritance", test.rows)), test.findings);
}

// Each circle that can be walked into, by walking from everywhere in every mode.
TEST_F(ChannelCyclesTest, RandomTables) {
    std::size_t told = 0;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::map<std::pair<int, int>, int> parents; // channel, mode
        std::vector<std::string> rows;
        for (int row = 0; row < 9; ++row) {
            int const channel = static_cast<int>(random() % 6U) + 1;
            int const mode = random() % 2U == 0 ? -1 : static_cast<int>(random() % 2U) + 1;
            int const parent = static_cast<int>(random() % 7U);
            if (parents.try_emplace({channel, mode}, parent == 0 ? -1 : parent).second)
                rows.push_back(std::to_string(channel) + ' ' + std::to_string(mode) + ' ' +
                               std::to_string(parent == 0 ? -1 : parent));
        }
        std::set<std::vector<int>> expected;
        for (int const mode : {-1, 1, 2}) {
            for (int start = 1; start <= 6; ++start) {
                std::vector<int> line;
                int channel = start;
                while (channel != -1 && std::find(line.begin(), line.end(), channel) == line.end()) {
                    line.push_back(channel);
                    auto parent = parents.find({channel, mode});
                    if (parent == parents.end())
                        parent = parents.find({channel, -1});
                    channel = parent == parents.end() ? -1 : parent->second;
                }
                if (channel == -1)
                    continue;
                line.erase(line.begin(), std::find(line.begin(), line.end(), channel));
                std::rotate(line.begin(), std::min_element(line.begin(), line.end()), line.end());
                expected.insert(line);
            }
        }
        Texts const files{LakeVersion + TableText("TMode", {"1 Idle", "2 Drive", "3 Coast"}) +
                          TableText("TChannel", {"1 a", "2 b", "3 c", "4 d", "5 e", "6 f"}) +
                          TableText("TChannelInheritance", rows)};
        using namespace paramdb::tools::check;
        CheckContext const& context = Context(files);
        FindingList list;
        RunRules(context, list);
        std::set<std::string> cycles;
        for (Finding const& finding : list.Take()) {
            EXPECT_NE(finding.code->code, "P191") << finding.message;
            if (finding.code->code == "P401")
                cycles.insert(finding.message.substr(finding.message.rfind(": ") + 2));
        }
        std::set<std::string> wanted;
        for (std::vector<int> const& cycle : expected) {
            std::string text;
            for (int const channel : cycle)
                text += std::to_string(channel) + " -> ";
            wanted.insert(text + std::to_string(cycle.front()));
        }
        EXPECT_EQ(cycles, wanted);
        EXPECT_GE(cycles.size(), Reported(context).size());
        told += cycles.size();
    }
    EXPECT_GT(told, 100U);
}
