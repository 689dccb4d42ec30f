#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

class ShowVerbTest : public CommandTest {
protected:
    // Runs the verb over the sample with these words and options behind it.
    CommandRun Show(std::vector<std::string> const& words) {
        std::vector<std::string> arguments{"show", m_sample};
        arguments.insert(arguments.end(), words.begin(), words.end());
        return RunCommand(arguments);
    }

    // The same, where all is well.
    std::string Shown(std::vector<std::string> const& words) {
        auto const run = Show(words);
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "");
        return run.out;
    }

private:
    std::string m_sample = File(u8"sample.lake", SampleLake);
};

std::string const ModesShown = "mode | name\n"
                               "   1 | Idle\n"
                               "   2 | Warm up\n"
                               "   3 | Pr\xC3\xBC"
                               "fen\n"
                               "  11 | 1. gear drive\n";
std::string const Mode2 = "mode | name\n"
                          "   2 | Warm up\n";

} // namespace

TEST_F(ShowVerbTest, PrintsATable) {
    for (std::string const tag : {"<TMode>", "TMode", "Mode"})
        EXPECT_EQ(Shown({tag}), ModesShown);
    EXPECT_EQ(Shown({"RotorSpeed"}), "physical_mode  rotor |              ratio  numerator  denominator\n"
                                     "            1      1 |                0.1          1           10\n"
                                     "            1      2 | 0.2826086956521739         13           46\n"
                                     "            2      1 |                inf          1            1\n");
}

TEST_F(ShowVerbTest, PrintsTheRowsOfAKey) {
    EXPECT_EQ(Shown({"Mode", "2"}), Mode2);
    EXPECT_EQ(Shown({"Mode", ""}), ModesShown);
    EXPECT_EQ(Shown({"Mode", "*"}), ModesShown);
    EXPECT_EQ(Shown({"Mode", "..10"}), ModesShown.substr(0, ModesShown.find("  11")));
    EXPECT_EQ(Shown({"RotorSpeed", "*/2", "--format=csv"}),
              "physical_mode,rotor,ratio,numerator,denominator\r\n1,2,0.2826086956521739,13,46\r\n");
    EXPECT_EQ(Shown({"AuxStrings", "Report/T*", "--format", "csv"}),
              "name,value_1\r\n\"Report/Title, long\",Gearbox\r\n");
}

TEST_F(ShowVerbTest, AKeyMayBeginWithAMinus) {
    std::string const lake = SampleLake + "<TBaseOrder>: {\n-1 0.5\n2 1\n}\n";
    std::string const name = File(u8"minus.lake", lake);
    for (auto const& arguments :
         std::vector<std::vector<std::string>>{{"show", name, "BaseOrder", "-1"},
                                               {"show", name, "BaseOrder", "-3..-1"},
                                               {"show", "--", name, "BaseOrder", "-1"}}) {
        auto const run = RunCommand(arguments);
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.out, "gear | base_order\n  -1 |        0.5\n") << run.err;
    }
}

TEST_F(ShowVerbTest, OptionsInPlaceOfWords) {
    EXPECT_EQ(Shown({"--table", "Mode"}), ModesShown);
    EXPECT_EQ(Shown({"-t", "<TMode>", "-k", "2"}), Mode2);
    EXPECT_EQ(Shown({"Mode", "--key", "2"}), Mode2);
    auto const twice = Show({"Mode", "2", "-k", "2"});
    EXPECT_EQ(twice.code, 2);
    EXPECT_EQ(twice.err, "paramdb: the KEY is given twice\n");
    auto const wrong = Show({"-t", "Moode"});
    EXPECT_EQ(wrong.code, 2);
    EXPECT_EQ(wrong.err, "paramdb: Moode: no such table; did you mean <TMode>?\n");
}

TEST_F(ShowVerbTest, SeveralFiles) {
    std::string const later = File(u8"later.lake", "<TMode>: {\n2 \"Later\"\n}\n");
    EXPECT_EQ(Shown({later, "Mode"}), "mode | name\n   2 | Later\n");
    EXPECT_EQ(Shown({later, "-t", "Mode"}), "mode | name\n   2 | Later\n");
}

TEST_F(ShowVerbTest, PrintsJson) {
    EXPECT_EQ(
        Shown({"RotorSpeed", "--format", "json"}),
        "[\n"
        "  {\"physical_mode\": 1, \"rotor\": 1, \"ratio\": 0.1, \"numerator\": 1, \"denominator\": 10},\n"
        "  {\"physical_mode\": 1, \"rotor\": 2, \"ratio\": 0.2826086956521739, \"numerator\": 13, "
        "\"denominator\": 46},\n"
        "  {\"physical_mode\": 2, \"rotor\": 1, \"ratio\": \"inf\", \"numerator\": 1, \"denominator\": 1}\n"
        "]\n");
}

TEST_F(ShowVerbTest, NoMatchIsAFinding) {
    struct Case {
        std::string format;
        std::string out;
    };
    Case const cases[] = {{"text", ""}, {"json", "[]\n"}, {"csv", "mode,name\r\n"}};
    for (Case const& test : cases) {
        auto const run = Show({"Mode", "99..", "--format", test.format});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, test.out);
        EXPECT_EQ(run.err, "paramdb: <TMode>: no row has the key 99..\n");
    }
    auto const run = Show({"Trigger"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "paramdb: <TTrigger>: the table has no rows\n");
}

TEST_F(ShowVerbTest, WrongWords) {
    struct Case {
        std::vector<std::string> words;
        std::string message;
    };
    Case const cases[] = {
        {{}, "paramdb: the TAG of a table is required behind the files\n"},
        {{"Moode"}, "paramdb: Moode: neither a file nor a table; did you mean <TMode>?\n"},
        {{"Mode", "1", "2"}, "paramdb: 2: not expected behind the KEY\n"},
        {{"Mode", "1x"},
         "paramdb: key of <TMode>: not expected behind a number\n"
         "  1x\n"
         "   ^\n"
         "The key is mode\n"},
        {{"RotorSpeed", "1/2/3"},
         "paramdb: key of <TRotorSpeed>: the key has no more elements\n"
         "  1/2/3\n"
         "     ^\n"
         "The key is physical_mode/rotor\n"},
        {{"Mode", "--format", "xml"},
         "--format: xml not in {text,json,csv}\n"
         "Run with --help for more information.\n"},
    };
    for (Case const& test : cases) {
        auto const run = Show(test.words);
        EXPECT_EQ(run.code, 2) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, test.message);
    }
}

TEST_F(ShowVerbTest, FindingsAndRefusalsOfTheLoad) {
    auto const faulty = RunCommand({"show", File(u8"faulty.lake", FaultyLake), "Mode", "2"});
    EXPECT_EQ(faulty.code, 1);
    EXPECT_EQ(faulty.out, Mode2);
    EXPECT_NE(faulty.err.find("<TTrigger>"), std::string::npos) << faulty.err;
    auto const refused = RunCommand({"show", File(u8"old.lake", RefusedLake), "Mode", "--format=json"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_EQ(refused.out, "");
    auto const missing = RunCommand({"show", Name(u8"missing.lake"), "Mode"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.out, "");
    EXPECT_TRUE(missing.err.starts_with("paramdb: " + Name(u8"missing.lake") + ": ")) << missing.err;
}

TEST_F(ShowVerbTest, TheHelpTellsTheForm) {
    auto const run = RunCommand({"show", "--help"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("Usage: paramdb show [OPTIONS] FILE... TAG [KEY]\n"), std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("KEY chooses rows: "), std::string::npos) << run.out;
}
