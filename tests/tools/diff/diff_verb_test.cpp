#include "tests/tools/command_run.h"
#include "tests/tools/diff/lake_edits.h"
#include "tests/tools/drive_lake.h"
#include "tests/tools/sample_lake.h"

namespace {

class DiffVerbTest : public CommandTest {
protected:
    // What comes behind the two lines with the names of the files.
    std::string Diff(std::string const& a, std::string const& b,
                     std::vector<std::string> const& options = {}) {
        std::vector<std::string> arguments{"diff", File(u8"a.lake", a), File(u8"b.lake", b)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        auto const run = RunCommand(arguments);
        std::string const head = "A  " + Name(u8"a.lake") + "\nB  " + Name(u8"b.lake") + "\n\n";
        EXPECT_EQ(run.out.substr(0, head.size()), head);
        EXPECT_EQ(run.err, "");
        m_code = run.code;
        return run.out.substr(std::min(head.size(), run.out.size()));
    }

    int m_code = -1;
};

// A table of names with that many rows.
std::string Channels(int count, std::string const& name) {
    std::string text = "<TChannel>: {\n";
    for (int id = 1; id <= count; ++id)
        text += std::to_string(id) + " \"" + name + std::to_string(id) + "\"\n";
    return text + "}\n";
}

} // namespace

TEST_F(DiffVerbTest, NoDifference) {
    EXPECT_EQ(Diff(SampleLake, SampleLake), "No difference: 103 tables with 9 rows\n");
    EXPECT_EQ(m_code, 0);
    EXPECT_EQ(Diff(SampleLake, SampleLake + "<TLocation>: {\n}\n; the end\n\n"),
              "No difference: 103 tables with 9 rows\n");
    EXPECT_EQ(m_code, 0);
}

TEST_F(DiffVerbTest, ShowsRowsInKeyOrder) {
    std::string const b =
        Edited(Edited(Edited(SampleLake, "\t2 \"Warm up\"\n", "\t12 \"1. gear coast\"\n\t4 \"Stop\"\n"),
                      "\t1 2 0.2826086956521739 13 46\n", "\t1 2 0.25 1 4\n"),
               "\"a, b\"", "\"a; b\"");
    EXPECT_EQ(Diff(SampleLake, b), "5 rows differ in 3 of 103 tables: 2 changed, 2 added, 1 removed\n"
                                   "\n"
                                   "Table          Rows in A  Rows in B  Changed  Added  Removed\n"
                                   "<TMode>                4          5        0      2        1\n"
                                   "<TRotorSpeed>          3          3        1      0        0\n"
                                   "<TAuxStrings>          2          2        1      0        0\n"
                                   "\n"
                                   "<TMode>\n"
                                   "  - mode 2: name \"Warm up\"\n"
                                   "  + mode 4: name \"Stop\"\n"
                                   "  + mode 12: name \"1. gear coast\"\n"
                                   "\n"
                                   "<TRotorSpeed>\n"
                                   "  ~ physical_mode 1, rotor 2: ratio 0.2826086956521739 -> 0.25, "
                                   "numerator 13 -> 1, denominator 46 -> 4\n"
                                   "\n"
                                   "<TAuxStrings>\n"
                                   "  ~ name \"Report/Footer\": value_1 \"a, b\" -> \"a; b\"\n");
    EXPECT_EQ(m_code, 1);
}

TEST_F(DiffVerbTest, ShowsNamesBesideIds) {
    std::string b = Edited(DriveLake, "2 \"Output shaft\"", "2 \"Second shaft\"");
    b = Edited(b, "1 2 1\n2 2 1\n", "1 2 2\n2 2 1\n");
    b = Edited(b, "13 1 3 0.5", "13 2 4 0.25");
    b = Edited(b, "90 1 1\n101", "101");
    EXPECT_EQ(
        Diff(DriveLake, b),
        "4 rows differ in 4 of 103 tables: 3 changed, 1 removed\n"
        "  1 rotor changes its ratio or speed source\n"
        "  2 gears change their orders\n"
        "  1 spectral interval moves\n"
        "  1 parameter takes another trigger\n"
        "\n"
        "Table                   Rows in A  Rows in B  Changed  Added  Removed\n"
        "<TLocation>                     5          5        1      0        0\n"
        "<TRotorSpeedReference>          2          2        1      0        0\n"
        "<TOrderSource2Rotor>            4          3        0      0        1\n"
        "<TIpRms>                        1          1        1      0        0\n"
        "\n"
        "<TLocation>\n"
        "  ~ location 2: name \"Output shaft\" -> \"Second shaft\"\n"
        "\n"
        "<TRotorSpeedReference>\n"
        "  ~ physical_mode 1, rotor 2 \"Second shaft\": referred_id 1 \"Input shaft\" -> 2 \"Second shaft\"\n"
        "\n"
        "<TOrderSource2Rotor>\n"
        "  - order_source 90 \"Driving wheel\", physical_mode 1: rotor 1 \"Input shaft\"\n"
        "\n"
        "<TIpRms>\n"
        "  ~ parameter 13 \"Level\": trigger 1 \"Speed\" -> 2 \"Speed and torque\", "
        "calculation 3 \"Average\" -> 4 \"Log. average / RMS\",\n"
        "      averaging_constant 0.5 -> 0.25\n"
        "\n"
        "What follows, with rotors at 50 Hz\n"
        "\n"
        "Rotors\n"
        "  ~ physical_mode 1, rotor 2 \"Second shaft\": ratio -0.5 -> 1, fraction -1/2 -> 1/1,\n"
        "      speed_source 1 \"Input shaft\" -> 2 \"Second shaft\", signal 10 \"Input speed\" -> none\n"
        "\n"
        "Gears and order sources\n"
        "  ~ physical_mode 1, gear 90 \"Driving wheel\": rotor 1 \"Input shaft\" -> 90 \"Driving wheel\", "
        "ratio 1 -> 0\n"
        "  ~ physical_mode 1, gear 131 \"Pinion\": ratio -0.5 -> 1\n"
        "\n"
        "Spectral intervals\n"
        "  ~ parameter 8 \"Pinion track\", mode 11 \"1. gear drive\", interval 1: "
        "rotor 1 \"Input shaft\" -> 2 \"Second shaft\",\n"
        "      lower 8.25 -> 16.5, upper 8.75 -> 17.5, lower_hz 412.5 -> 825, upper_hz 437.5 -> 875\n"
        "\n"
        "Triggers of parameters\n"
        "  ~ parameter 13 \"Level\": trigger 1 \"Speed\" -> 2 \"Speed and torque\"\n");
}

TEST_F(DiffVerbTest, ShowsWhatStandsBeforeTheTables) {
    std::string const a = SampleLake + "<QType><FBaseName>: \"TG 1\"\n";
    std::string const b =
        Edited(SampleLake, "MinorVersion>: 1", "MinorVersion>: 7") + "<QCalib><FCalibFileName>: s.cal\n";
    EXPECT_EQ(Diff(a, b), "No row differs, but what stands before the tables\n"
                          "\n"
                          "Before the tables  A       B\n"
                          "minor version      1       7\n"
                          "calib file         \"\"      \"s.cal\"\n"
                          "base type          \"TG 1\"  \"\"\n");
    EXPECT_EQ(m_code, 1);
}

TEST_F(DiffVerbTest, PutsTheSameChangeOfSeveralRowsTogether) {
    std::string const a =
        SampleLake + "<TSpeedSource>: {\n1 10\n2 10\n3 11\n4 10\n}\n<TApplicationSignal>: {\n10 \"One\"\n}\n"
                     "<TAppSignalProperty>: {\n10 1 \"\" 0 0 0\n}\n";
    std::string const b = Edited(a, "1 10\n2 10\n3 11\n4 10\n", "1 12\n2 12\n3 12\n4 12\n5 12\n");
    EXPECT_EQ(Diff(a, b), "5 rows differ in 1 of 103 tables: 4 changed, 1 added\n"
                          "\n"
                          "Table           Rows in A  Rows in B  Changed  Added  Removed\n"
                          "<TSpeedSource>          4          5        4      1        0\n"
                          "\n"
                          "<TSpeedSource>\n"
                          "  ~ several rows: referred_id 10 \"One\" -> 12\n"
                          "        speed_source 1\n"
                          "        speed_source 2\n"
                          "        speed_source 4\n"
                          "  ~ speed_source 3: referred_id 11 -> 12\n"
                          "  + speed_source 5: referred_id 12\n");
}

TEST_F(DiffVerbTest, LimitsTheRowsOfATable) {
    std::string const none = SampleLake;
    std::string const many = SampleLake + Channels(60, "c");
    std::string const head = "60 rows differ in 1 of 103 tables: 60 added\n"
                             "\n"
                             "Table       Rows in A  Rows in B  Changed  Added  Removed\n"
                             "<TChannel>          0         60        0     60        0\n"
                             "\n"
                             "<TChannel>\n";
    auto const rows = [](int count) {
        std::string text;
        for (int id = 1; id <= count; ++id)
            text += "  + channel " + std::to_string(id) + ": name \"c" + std::to_string(id) + "\"\n";
        return text;
    };
    EXPECT_EQ(Diff(none, many), head + rows(50) + "  ... 10 more; --limit 0 shows all\n");
    EXPECT_EQ(Diff(none, many, {"--limit", "2"}), head + rows(2) + "  ... 58 more; --limit 0 shows all\n");
    EXPECT_EQ(Diff(none, many, {"-n", "60"}), head + rows(60));
    EXPECT_EQ(Diff(none, many, {"-n0"}), head + rows(60));
    std::string const names = Diff(many, SampleLake + Channels(60, "d"), {"-n", "1"});
    EXPECT_EQ(names.substr(names.find("\n<TChannel>\n")),
              "\n<TChannel>\n  ~ channel 1: name \"c1\" -> \"d1\"\n  ... 59 more; --limit 0 shows all\n");
}

TEST_F(DiffVerbTest, BreaksLongLines) {
    std::string const text(80, 'x');
    std::string const a = SampleLake + "<TExternalName>: {\n1 \"" + text + "\"\n}\n";
    std::string const b = SampleLake + "<TExternalName>: {\n1 \"" + text + "y\"\n}\n";
    std::string const out = Diff(a, b);
    EXPECT_EQ(out.substr(out.find("\n  ~")),
              "\n  ~ parameter 1: name \"" + text + "\"\n      -> \"" + text + "y\"\n");
}

TEST_F(DiffVerbTest, PlacesIntervals) {
    std::string const b = Edited(DriveLake, "\"F100;F200\"", "\"O1;O3\"");
    auto const intervals = [&](std::vector<std::string> const& options) {
        std::string const out = Diff(DriveLake, b, options);
        return out.substr(out.find("\nWhat follows"));
    };
    std::string const line = "\n"
                             "Spectral intervals\n"
                             "  ~ parameter 9 \"Band\", mode 11 \"1. gear drive\", interval 1: "
                             "from 100 Hz -> order 1, to 200 Hz -> order 3,\n"
                             "      unit Hz -> orders, lower none -> 1, upper none -> 3, ";
    EXPECT_EQ(intervals({}),
              "\nWhat follows, with rotors at 50 Hz\n" + line + "lower_hz 100 -> 50, upper_hz 200 -> 150\n");
    EXPECT_EQ(intervals({"--speed", "20"}),
              "\nWhat follows, with rotors at 20 Hz\n" + line + "lower_hz 100 -> 20, upper_hz 200 -> 60\n");
    EXPECT_EQ(intervals({"--rpm=6000"}),
              "\nWhat follows, with rotors at 100 Hz\n" + line + "upper_hz 200 -> 300\n");
}

TEST_F(DiffVerbTest, TakesLinesIntoAccount) {
    std::string const b = Edited(DriveLake, "\"H1-L2;H1+L2\"", "\"H1-L2;H1+L4\"");
    std::string const out = Diff(DriveLake, b, {"--line-distance", "0.5"});
    EXPECT_EQ(out.substr(out.find("\nSpectral intervals")),
              "\n"
              "Spectral intervals\n"
              "  ~ parameter 7 \"Mesh\", mode 11 \"1. gear drive\", interval 1: "
              "to 1 x base order + 2 lines -> 1 x base order + 4 lines,\n"
              "      upper 14 -> 15, upper_hz 700 -> 750\n");
}

TEST_F(DiffVerbTest, SaysWhenWhatFollowsIsMissing) {
    std::string const a = File(u8"a.lake", DriveLake);
    std::string const b = File(u8"b.lake", Edited(DriveLake, "10 1 \"\" 0 0 0\n", "11 1 \"\" 0 0 0\n"));
    auto const run = RunCommand({"diff", a, b});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(
        run.out.find(
            "\n2 rows differ in 1 of 103 tables: 1 added, 1 removed\n"
            "  What follows from the tables is not compared, since B does not load completely; rows that "
            "a load corrects may differ for that alone\n"),
        std::string::npos)
        << run.out;
    auto const same = RunCommand({"diff", b, b});
    EXPECT_EQ(same.code, 0);
}

TEST_F(DiffVerbTest, MergesFiles) {
    std::string const base = File(u8"base.lake", SampleLake);
    std::string const customer = File(u8"customer.lake", "<TMode>: {\n1 \"Leerlauf\"\n}\n");
    std::string const other =
        File(u8"other.lake", "<TMode>: {\n1 \"Leerlauf\"\n}\n<TChannel>: {\n1 \"A\"\n}\n");
    auto const run = RunCommand({"diff", base + "," + customer, base + "," + other});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "A  " + base + ", " + customer + "\nB  " + base + ", " + other +
                           "\n\n"
                           "1 row differs in 1 of 103 tables: 1 added\n"
                           "\n"
                           "Table       Rows in A  Rows in B  Changed  Added  Removed\n"
                           "<TChannel>          0          1        0      1        0\n"
                           "\n"
                           "<TChannel>\n"
                           "  + channel 1: name \"A\"\n");
    EXPECT_EQ(RunCommand({"diff", base, base + "," + base}).code, 0);

    // What is merged into both hides differences.
    std::string const changed = File(u8"changed.lake", Edited(SampleLake, "\"Idle\"", "\"Rest\""));
    EXPECT_EQ(RunCommand({"diff", base, changed}).code, 1);
    EXPECT_EQ(RunCommand({"diff", base, changed, "--with", customer, "-w", changed}).code, 0);
    EXPECT_EQ(RunCommand({"diff", base, changed, "--with", File(u8"channel.lake", Channels(1, "c"))}).code,
              1);
    auto const hidden = RunCommand({"diff", "--with", customer, base, changed});
    EXPECT_EQ(hidden.code, 0);
    EXPECT_EQ(hidden.out.substr(0, 3 + base.size() + 2 + customer.size() + 1),
              "A  " + base + ", " + customer + "\n");

    // A name with a comma is a name if there is such a file.
    std::string const comma = File(u8"a,b.lake", SampleLake);
    EXPECT_EQ(RunCommand({"diff", base, comma}).code, 0);
}

TEST_F(DiffVerbTest, WithoutALoadNothingIsCompared) {
    std::string const good = File(u8"a.lake", SampleLake);
    std::string const old = File(u8"old.lake", RefusedLake);
    std::string const missing = Name(u8"missing.lake");
    struct Case {
        std::vector<std::string> arguments;
        std::string fault; // stands in what is told
    };
    for (Case const& sample : std::vector<Case>{
             {{"diff"}, "A is required"},
             {{"diff", good}, "B is required"},
             {{"diff", good, good, good}, "argument was not expected"},
             {{"diff", good, missing}, "paramdb: " + missing + ": "},
             {{"diff", missing, good}, "paramdb: " + missing + ": "},
             {{"diff", good + ",", good}, "paramdb: \"\": "},
             {{"diff", good, good + "," + missing}, "paramdb: " + missing + ": "},
             {{"diff", "", good}, "paramdb: \"\": "},
             {{"diff", old, good}, "paramdb: " + old + ": not loaded\n"},
             {{"diff", good, old}, "paramdb: " + old + ": not loaded\n"},
             {{"diff", good, good, "--with", missing}, "paramdb: " + missing + ": "},
             {{"diff", good, good, "--format", "xml"}, "--format"},
             {{"diff", good, good, "--limit", "-1"}, "-1 is no whole number from 0 on"},
             {{"diff", good, good, "--speed", "fast"}, "fast is no number"},
             {{"diff", good, good, "--speed", "1", "--rpm", "60"}, "excludes"},
         }) {
        SCOPED_TRACE(testing::PrintToString(sample.arguments));
        auto const run = RunCommand(sample.arguments);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err.find(sample.fault), std::string::npos) << run.err;
    }
    // Both are looked at.
    auto const run = RunCommand({"diff", missing, old});
    EXPECT_NE(run.err.find(missing), std::string::npos);
    EXPECT_NE(run.err.find(old), std::string::npos);
}

TEST_F(DiffVerbTest, ComparesTheExample) {
    std::string const folder = PARAMDB_SOURCE_DIR "/examples/gearbox/";
    auto const run =
        RunCommand({"diff", folder + "gearbox.lake", folder + "gearbox.lake," + folder + "customer.lake"});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.out.find("\n1 214 rows differ in 6 of 103 tables: 152 changed, 30 added, 1 032 removed\n"
                           "  108 limits move, 1 032 limits are gone\n\n"),
              std::string::npos);
    EXPECT_NE(run.out.find("\n  ~ mode 3: name \"Shifting\" -> \"Schaltpr\xC3\xBC"
                           "fung\"\n"),
              std::string::npos);
}
