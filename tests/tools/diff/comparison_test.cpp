#include "tests/tools/command_run.h"
#include "tests/tools/diff/lake_edits.h"
#include "tests/tools/drive_lake.h"
#include "tools/diff/comparison.h"

#include <sstream>

using namespace paramdb::tools;

namespace {

class ComparisonTest : public CommandTest {
protected:
    // The differences in words: "minor_version", "<TMode> 1 0 0" (added, removed, changed), "rotors 0 0 1".
    std::vector<std::string> Words(std::string const& a, std::string const& b) {
        auto const left = Take(a);
        auto const right = Take(b);
        Comparison const comparison = Compare(left, right);
        std::vector<std::string> words;
        for (HeaderDifference const& difference : comparison.header)
            words.emplace_back(difference.name);
        for (TableDifference const& table : comparison.tables) {
            std::wstring_view const tag = paramdb::Catalogue()[table.place].tag;
            words.push_back(std::string(tag.begin(), tag.end()) + CountText(table.counts));
            EXPECT_EQ(table.counts.All(), table.rows.size());
        }
        for (TableDifference const& topic : comparison.answers)
            words.push_back(std::string(AnswerTopics()[topic.place].name) + CountText(topic.counts));
        EXPECT_EQ(comparison.IsEqual(), words.empty());
        m_limits = comparison.Limits();
        m_rows = comparison.Rows();
        return words;
    }

    Snapshot Take(std::string const& lake) {
        std::ostringstream err;
        return LoadSnapshot({File(u8"a.lake", lake)}, {}, err).value();
    }

    static std::string CountText(DifferenceCounts const& counts) {
        return " " + std::to_string(counts.added) + " " + std::to_string(counts.removed) + " " +
               std::to_string(counts.changed);
    }

    DifferenceCounts m_limits;
    DifferenceCounts m_rows;
};

using List = std::vector<std::string>;

// Also what follows when two edits are made one after the other, and undone.
struct Case {
    char const* name;
    char const* from;
    char const* to;
    List words;
};

std::string const Base =
    "<QLearn><FLearnArcName>: \"l.arc\"\n<QCalib><FCalibFileName>: \"c.cal\"\n<QType><FBaseName>: \"B\"\n"
    "<QType><FAliasName>: \"A\"\n<TSensorGroupList>: {\n1 901 1\n1 902 2\n}\n<TRelativeLimit>: {\n"
    "11 0 1 90 7 10 1 2\n}\n<TLimSValue>: {\n11 1001 1 90 7 10 1 2 3\n}\n<TChannelInheritance>: {\n3 -1 "
    "2\n}\n" +
    DriveLake;

} // namespace

TEST_F(ComparisonTest, FindsWhatDiffersAndWhatFollows) {
    for (Case const& sample : std::vector<Case>{
             {"nothing", "<TMode>", "<TMode>", {}},
             {"a version", "MinorVersion>: 1", "MinorVersion>: 2", {"minor_version"}},
             {"a text", "\"l.arc\"", "\"m.arc\"", {"learn_file"}},
             {"a type", "\"B\"", "\"b\"", {"base_type"}},
             {"a name", "\"Idle\"", "\"Rest\"", {"<TMode> 0 0 1"}},
             {"the order of rows", "1 901 1\n1 902 2\n", "1 902 2\n1 901 1\n", {}},
             {"one of several rows", "1 902 2\n", "1 902 3\n", {"<TSensorGroupList> 0 0 1"}},
             {"a mode more",
              "12 \"2. gear drive\"\n",
              "12 \"2. gear drive\"\n13 \"3.\"\n",
              {"<TMode> 1 0 0", "channels 1 0 0"}},
             {"a ratio",
              "1 2 -0.5 -1 2",
              "1 2 -0.25 -1 4",
              {"<TRotorSpeed> 0 0 1", "rotors 0 0 1", "gears 0 0 1", "intervals 0 0 1"}},
             {"a speed source",
              "1 1 1\n}\n<TRotorSpeedReference>",
              "1 1 2\n}\n<TRotorSpeedReference>",
              {"<TRotorSpeedSource> 0 0 1", "rotors 0 0 1", "gears 0 0 2", "intervals 0 0 1"}},
             {"teeth", "101 13\n", "101 14\n", {"<TBaseOrder> 0 0 1", "gears 0 0 2", "intervals 0 0 1"}},
             {"another gear",
              "1 90 101",
              "1 90 131",
              {"<TVirtual2PhysGear> 0 0 1", "gears 0 0 1", "intervals 0 0 1"}},
             {"a definition",
              "\"F100;F200\"",
              "\"F100;F300\"",
              {"<TIpSpectralValue> 0 0 1", "intervals 0 0 1"}},
             {"a longer definition",
              "\"F100;F200\"",
              "\"F100;F200;F300;F400\"",
              {"<TIpSpectralValue> 0 0 1", "intervals 1 0 0"}},
             {"a trigger of a parameter", "13 1 3 0.5", "13 2 3 0.5", {"<TIpRms> 0 0 1", "triggers 0 0 1"}},
             {"a field of a trigger",
              "11 1 1 2 10 0 100 10",
              "11 1 1 2 10 0 100 20",
              {"<TTriggerParam> 0 0 1", "trigger_fields 0 0 1"}},
             {"a point", "5 1000 68.5", "5 1000 69", {"<TIpPolygonValue> 0 0 1", "polygons 0 0 1"}},
             {"a point elsewhere",
              "5 1000 68.5",
              "5 1100 68.5",
              {"<TIpPolygonValue> 1 1 0", "polygons 0 0 1"}},
             {"a polygon no more",
              "12 10001 -1 -1 15 -1 6 0 3 8 0 0 0 0 0 0\n",
              "",
              {"<TIpTrackPolygon> 0 1 0", "expansions 0 1 0"}},
             {"a key more",
              "11 1001 3 200 9 10 0 0 0 0 0 0\n",
              "11 1001 3 200 9 10 0 0 0 0 0 0\n11 10001 1 131 15 10 0 0 0 0 0 0\n",
              {"<TIpParamAndStore> 1 0 0", "expansions 1 0 0"}},
             {"an interpretation",
              "11 10001 -1 -1 15 -1 5 0 3",
              "11 10001 -1 -1 15 -1 5 0 4",
              {"<TIpTrackPolygon> 0 0 1", "expansions 0 0 1"}},
             {"a place more",
              "12 10001 2 131 15 10 0 0 0 0 0 0\n",
              "12 10001 2 131 15 10 0 0 0 0 0 0\n12 1001 2 131 9 10 0 0 0 0 0 0\n",
              {"<TIpParamAndStore> 1 0 0", "intervals 1 0 0"}},
             {"a parent",
              "3 -1 2",
              "3 -1 1",
              {"<TChannelInheritance> 0 0 1", "channels 0 0 3", "intervals 0 0 1"}},
         }) {
        SCOPED_TRACE(sample.name);
        std::string const edited = Edited(Base, sample.from, sample.to);
        EXPECT_EQ(Words(Base, edited), sample.words);
        DifferenceCounts const there = m_rows;
        Words(edited, Base);
        EXPECT_EQ(CountText(m_rows), CountText({there.removed, there.added, there.changed}));
        EXPECT_EQ(m_limits.All(), 0U);
    }
}

TEST_F(ComparisonTest, GridOfModes) {
    std::string const grid =
        "<TAutoModeParamOrder>: {\n0 10\n}\n<TAutoModeParam>: {\n10 0 1000 100 1 0 1 1 1 1\n}\n";
    EXPECT_EQ(Words(Base, Base + grid),
              (List{"<TAutoModeParamOrder> 1 0 0", "<TAutoModeParam> 1 0 0", "mode_layout 0 0 3"}));
    EXPECT_EQ(Words(Base + grid, Base + Edited(grid, "100 1 0", "200 1 0")),
              (List{"<TAutoModeParam> 0 0 1", "mode_layout 0 0 3"}));
    // What the grid carries without a meaning.
    EXPECT_EQ(Words(Base + grid, Base + Edited(grid, "100 1 0", "100 2 0")), List{"<TAutoModeParam> 0 0 1"});
}

TEST_F(ComparisonTest, CountsLimits) {
    EXPECT_EQ(Words(Base, Edited(Base, "11 0 1 90 7 10 1 2\n", "11 0 1 90 7 10 1 3\n")),
              List{"<TRelativeLimit> 0 0 1"});
    EXPECT_EQ(CountText(m_limits), " 0 0 1");
    std::string const other = Edited(Edited(Base, "11 1001 1 90 7 10 1 2 3\n", "12 1001 1 90 7 10 1 2 3\n"),
                                     "11 0 1 90 7 10 1 2\n", "");
    EXPECT_EQ(Words(Base, other), (List{"<TLimSValue> 1 1 0", "<TRelativeLimit> 0 1 0"}));
    EXPECT_EQ(CountText(m_limits), " 1 2 0");
}

// A load corrects the instrument in keys of relative limits, so that two rows can come to one key, and keys
// lose their order.
TEST_F(ComparisonTest, KeysThatALoadCorrects) {
    std::string const rows = "11 0 1 90 7 10 1 2\n";
    std::string const a = Edited(Base, rows, "11 0 1 90 8 10 1 2\n11 5 1 90 7 10 3 4\n11 6 1 90 7 10 5 6\n");
    std::string const b = Edited(Base, rows, "11 9 1 90 7 10 3 4\n11 0 1 90 8 10 1 2\n11 8 1 90 7 10 5 6\n");
    EXPECT_EQ(Words(a, b), List{});
    EXPECT_EQ(Words(a, Edited(b, "10 5 6\n", "10 5 7\n")), List{"<TRelativeLimit> 0 0 1"});
    EXPECT_EQ(Words(a, Edited(b, "11 8 1 90 7 10 5 6\n", "")), List{"<TRelativeLimit> 0 1 0"});
}

TEST_F(ComparisonTest, WithoutAnswers) {
    std::string const faulty = Edited(Base, "10 1 \"\" 0 0 0\n", "11 1 \"\" 0 0 0\n");
    // The instrument in the key of the relative limit is not corrected on one side.
    EXPECT_EQ(Words(Base, faulty), (List{"<TAppSignalProperty> 1 1 0", "<TRelativeLimit> 1 1 0"}));
    EXPECT_EQ(Words(faulty, faulty), List{});
    Snapshot const a = Take(Base);
    Snapshot const b = Take(faulty);
    EXPECT_TRUE(Compare(a, a).has_answers);
    EXPECT_FALSE(Compare(a, b).has_answers);
    EXPECT_FALSE(Compare(b, a).has_answers);
}
