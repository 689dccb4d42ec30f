#include "tests/tools/command_run.h"
#include "tests/tools/diff/lake_edits.h"
#include "tests/tools/diff/reformatted_lake.h"
#include "tests/tools/drive_lake.h"

#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <set>

namespace {

using DiffRandomTest = CommandTest;
using Json = nlohmann::ordered_json;

// A row as it stands in a file.
struct Line {
    std::string key;
    std::vector<std::string> fields;
};

// How a table is made, what its columns are, and whether a key may come again.
struct Table {
    char const* tag;
    std::vector<char const*> columns; // behind the key
    std::string (*key)(std::mt19937& random);
    std::string (*field)(std::mt19937& random);
    bool has_unique_keys;
};

std::string Digit(std::mt19937& random) {
    return std::to_string(random() % 6);
}
std::string Pair(std::mt19937& random) {
    return Digit(random) + " " + std::to_string(static_cast<int>(random() % 4) - 1);
}
std::string Key(std::mt19937& random) {
    return "1 2 3 4 " + Pair(random);
}
std::string Word(std::mt19937& random) {
    static char const* const words[] = {"\"\"", "\"a\"", "\"b c\"", "\"B\"", "\"a:b\""};
    return words[random() % 5];
}
std::string Decimal(std::mt19937& random) {
    static char const* const numbers[] = {"0", "0.5", "-1", "1e6", "0.1"};
    return numbers[random() % 5];
}

// In the order of loads.
std::vector<Table> const Tables{
    {"<TLocation>", {"name"}, Digit, Word, true},
    {"<TGearDiameter>", {"diameter"}, Digit, Decimal, true},
    {"<TRotorSpeedReference>", {"referred_id"}, Pair, Digit, true},
    {"<TSensorGroupList>", {"value_1", "value_2"}, Digit, Digit, false},
    {"<TLimCValue>", {"value_1", "value_2", "value_3", "value_4", "value_5"}, Key, Digit, true},
    {"<TLimArea>", {"value_1", "value_2", "value_3"}, Key, Digit, true},
    {"<TAuxStrings>", {"value_1"}, Word, Word, true},
};

using Lines = std::vector<Line>;

Lines RandomLines(Table const& table, std::mt19937& random) {
    Lines lines;
    for (auto count = random() % 8; count > 0; --count) {
        Line line{table.key(random), {}};
        for (std::size_t field = 0; field < table.columns.size(); ++field)
            line.fields.push_back(table.field(random));
        lines.push_back(line);
    }
    return lines;
}

std::string TextOf(std::vector<Lines> const& tables) {
    std::string text = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";
    for (std::size_t table = 0; table < tables.size(); ++table) {
        text += std::string(Tables[table].tag) + ": {\n";
        for (Line const& line : tables[table]) {
            text += line.key;
            for (std::string const& field : line.fields)
                text += " " + field;
            text += "\n";
        }
        text += "}\n";
    }
    return text;
}

// What a load keeps: key to rows, of one key the first or all.
std::map<std::string, std::multiset<std::vector<std::string>>> Kept(Table const& table, Lines const& lines) {
    std::map<std::string, std::multiset<std::vector<std::string>>> kept;
    for (Line const& line : lines) {
        auto& rows = kept[line.key];
        if (rows.empty() || !table.has_unique_keys)
            rows.insert(line.fields);
    }
    return kept;
}

// A change, a row of A, a row of B and the columns, as words.
using Change = std::string;

std::multiset<Change> ChangesOf(Table const& table, Lines const& a, Lines const& b) {
    auto left = Kept(table, a);
    auto right = Kept(table, b);
    std::set<std::string> keys;
    for (auto const* const side : {&left, &right})
        for (auto const& [key, rows] : *side)
            keys.insert(key);
    std::multiset<Change> changes;
    for (std::string const& key : keys) {
        auto in_a = left[key];
        auto in_b = right[key];
        for (auto const& row : left[key]) {
            auto const same = in_b.find(row);
            if (same != in_b.end()) {
                in_b.erase(same);
                in_a.erase(in_a.find(row));
            }
        }
        if (in_a.size() == 1 && in_b.size() == 1) {
            Change change = key + ":";
            for (std::size_t column = 0; column < table.columns.size(); ++column) {
                std::string const& from = (*in_a.begin())[column];
                std::string const& to = (*in_b.begin())[column];
                if (from != to)
                    change += std::string(" ") + table.columns[column] + " " + from + ">" + to;
            }
            changes.insert(change);
            continue;
        }
        for (auto const& [sign, rows] : {std::pair('-', &in_a), std::pair('+', &in_b)}) {
            for (auto const& row : *rows) {
                Change change = sign + key + ":";
                for (std::string const& field : row)
                    change += " " + field;
                changes.insert(change);
            }
        }
    }
    return changes;
}

// A value of the report as it stands in the files of this test.
std::string Shown(Json const& value) {
    if (value.is_string())
        return value.dump();
    double const number = value.get<double>();
    if (number == 1e6)
        return "1e6";
    return number == static_cast<int>(number) ? std::to_string(static_cast<int>(number)) : value.dump();
}

std::string Joined(Json const& fields) {
    std::string text;
    for (auto const& field : fields)
        text.append(text.empty() ? "" : " ").append(Shown(field));
    return text;
}

std::multiset<Change> Found(Json const& table) {
    std::multiset<Change> changes;
    for (auto const& [name, sign] : {std::pair("added", "+"), std::pair("removed", "-")})
        for (auto const& row : table[name])
            changes.insert(sign + Joined(row["key"]) + ": " + Joined(row["row"]));
    for (auto const& row : table["changed"]) {
        Change change = Joined(row["key"]) + ":";
        for (auto const& entry : row["changes"])
            change +=
                " " + entry["column"].get<std::string>() + " " + Shown(entry["a"]) + ">" + Shown(entry["b"]);
        changes.insert(change);
    }
    return changes;
}

Json TableOf(Json const& report, char const* tag) {
    for (auto const& table : report["tables"])
        if (table["tag"] == tag)
            return table;
    return {{"added", Json::array()}, {"removed", Json::array()}, {"changed", Json::array()}};
}

} // namespace

TEST_F(DiffRandomTest, AgreesWithAModel) {
    for (unsigned int seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<Lines> a;
        std::vector<Lines> b;
        for (Table const& table : Tables) {
            a.push_back(RandomLines(table, random));
            b.push_back(random() % 4 == 0 ? a.back() : RandomLines(table, random));
        }
        std::string const left = File(u8"a.lake", TextOf(a));
        std::string const right = File(u8"b.lake", TextOf(b));
        auto const run = RunCommand({"diff", left, right, "--format", "json"});
        ASSERT_EQ(run.err, "");
        Json const report = Json::parse(run.out);
        Json const back = Json::parse(RunCommand({"diff", right, left, "--format", "json"}).out);
        std::size_t differing = 0;
        for (std::size_t table = 0; table < Tables.size(); ++table) {
            SCOPED_TRACE(Tables[table].tag);
            auto const expected = ChangesOf(Tables[table], a[table], b[table]);
            EXPECT_EQ(Found(TableOf(report, Tables[table].tag)), expected);
            EXPECT_EQ(Found(TableOf(back, Tables[table].tag)), ChangesOf(Tables[table], b[table], a[table]));
            differing += expected.empty() ? 0 : 1;
        }
        EXPECT_EQ(report["summary"]["tables"], differing);
        EXPECT_EQ(report["summary"]["added"], back["summary"]["removed"]);
        EXPECT_EQ(report["summary"]["changed"], back["summary"]["changed"]);
        EXPECT_EQ(run.code, differing == 0 ? 0 : 1);

        // The text tells the same numbers.
        std::string const text = RunCommand({"diff", left, right, "--limit", "0"}).out;
        auto const count = [&text](std::string const& part) {
            std::size_t found = 0;
            for (std::size_t place = text.find(part); place != text.npos; place = text.find(part, place + 1))
                ++found;
            return found;
        };
        EXPECT_EQ(count("\n  + "), report["summary"]["added"]);
        EXPECT_EQ(count("\n  - "), report["summary"]["removed"]);
        std::size_t const all = report["summary"]["added"].get<std::size_t>() +
                                report["summary"]["removed"].get<std::size_t>() +
                                report["summary"]["changed"].get<std::size_t>();
        EXPECT_EQ(count("\n" + std::to_string(all) + (all == 1 ? " row differs in " : " rows differ in ")),
                  differing == 0 ? 0U : 1U);
    }
}

TEST_F(DiffRandomTest, AnotherFormIsNoDifference) {
    std::string const name = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";
    std::string const lake = test_support::ReadBytes(name);
    for (unsigned int seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string const other = ReformattedLake(lake, random);
        EXPECT_NE(other, lake);
        std::string const file = File(u8"other.lake", other);
        auto const run = RunCommand({"diff", name, file});
        EXPECT_EQ(run.code, 0) << run.out;
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.out, "A  " + name + "\nB  " + file + "\n\nNo difference: 103 tables with 5 907 rows\n");
    }
}

// The form does not hide a difference.
TEST_F(DiffRandomTest, ADifferenceShowsInAnyForm) {
    std::string const a = File(u8"a.lake", DriveLake);
    std::string const b = File(u8"b.lake", Edited(DriveLake, "101 13\n", "101 14\n"));
    auto const rest = [](std::string const& out) { return out.substr(out.find("\n\n")); };
    std::string const expected = rest(RunCommand({"diff", a, b}).out);
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string const left = File(u8"c.lake", ReformattedLake(test_support::ReadBytes(a), random));
        std::string const right = File(u8"d.lake", ReformattedLake(test_support::ReadBytes(b), random));
        auto const run = RunCommand({"diff", left, right});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(rest(run.out), expected);
    }
}
