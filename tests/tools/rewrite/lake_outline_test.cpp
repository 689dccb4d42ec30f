#include "tests/tools/rewrite/random_lake.h"
#include "tools/rewrite/lake_outline.h"
#include "tools/rewrite/lake_proof.h"

#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <vector>

using namespace paramdb::tools;

namespace {

char Letter(LineKind kind) {
    return "bcrnoCu"[static_cast<std::size_t>(kind)];
}

std::string Number(std::size_t line) {
    return line == NoLine ? "-" : std::to_string(line);
}

// "kind level parent closer superseded_by" of each line.
std::string Told(LakeOutline const& outline) {
    std::string text;
    for (OutlineLine const& line : outline.lines)
        text += std::string(1, Letter(line.kind)) + std::to_string(line.level) + ' ' + Number(line.parent) +
                ' ' + Number(line.closer) + ' ' + Number(line.superseded_by) + '\n';
    return text;
}

} // namespace

TEST(LakeOutlineTest, TellsKindsAndPlaces) {
    std::string const bytes = "; note\r\n" // 0
                              "\n"
                              "k: 1\n"
                              "<T>: {\n" // 3
                              "  1 2\n"
                              "\t{\n" // 5
                              "a: b\n"
                              "}\n"
                              "}x ; end\n" // 8
                              ": 7 a:b\n"
                              "}\n" // 10
                              "k: 2";
    auto const outline = OutlineOf(bytes);
    EXPECT_EQ(Told(outline), "c0 - - -\n"
                             "b0 - - -\n"
                             "n0 - - -\n"
                             "o0 - 8 -\n"
                             "r1 3 - -\n"
                             "o1 3 7 -\n"
                             "n2 5 - -\n"
                             "C1 3 - -\n"
                             "C0 - - -\n"
                             "r0 - - -\n"
                             "C0 - - -\n"
                             "u0 - - -\n");
    EXPECT_EQ(outline.stray, 10U);
    EXPECT_EQ(outline.unclosed, NoLine);
    EXPECT_EQ(outline.lines[0].bytes, "; note\r\n");
    EXPECT_EQ(outline.lines[11].bytes, "k: 2");
    EXPECT_EQ(outline.lines[9].parts.value, "7 a:b");
    EXPECT_EQ(outline.Next(3), 9U);
    EXPECT_EQ(outline.Next(4), 5U);
    EXPECT_EQ(outline.End(3), 8U);
    EXPECT_EQ(outline.End(NoLine), 12U);
}

TEST(LakeOutlineTest, TellsWhatIsSuperseded) {
    struct Case {
        std::string bytes;
        std::vector<std::size_t> by; // of each line
    };
    auto const none = NoLine;
    Case const cases[] = {
        {"k: 1\nk: 2\nk: 3\n", {none, 0, 0}},
        {"k: {\n1\n}\nk: {\n2\n}\n", {3, 3, 3, none, none, none}},
        {"k: {\n}\nk: {\n}\nk: {\n}\n", {2, 2, 4, 4, none, none}},
        // A plain line first: it gives the value, the last section the lines.
        {"k: 1\nk: {\n}\nk: {\n}\nk: 2\n", {none, 3, 3, none, none, 0}},
        // A section first: nobody sees the plain line.
        {"k: {\n}\nk: 1\nk: {\n}\n", {3, 3, 3, none, none}},
        {"k: {\n}\nk: 1\n", {none, none, 0}},
        // Only within one section, and not behind the end.
        {"k: {\nk: 1\nk: 2\n}\nj: {\nk: 3\n", {none, none, 1, none, none, none}},
        {"k: 1\n}\nk: 2\n", {none, none, none}},
        {"{\n1\n}\n{\n2\n}\n", {none, none, none, none, none, none}},
    };
    for (Case const& test : cases) {
        std::vector<std::size_t> by;
        for (OutlineLine const& line : OutlineOf(test.bytes).lines)
            by.push_back(line.superseded_by);
        EXPECT_EQ(by, test.by) << test.bytes;
    }
}

TEST(LakeOutlineTest, AnUnclosedSection) {
    auto const outline = OutlineOf("a: {\n}\nb: {\nc: {\n1\n");
    EXPECT_EQ(outline.unclosed, 2U);
    EXPECT_EQ(outline.lines[2].closer, NoLine);
    EXPECT_EQ(outline.Next(2), 5U);
    EXPECT_EQ(outline.End(3), 5U);
    EXPECT_EQ(OutlineOf("").lines.size(), 0U);
}

TEST(LakeOutlineTest, DeepNestingIsNoTrouble) {
    std::string bytes;
    for (int level = 0; level < 100000; ++level)
        bytes += "k: {\n";
    auto const outline = OutlineOf(bytes);
    EXPECT_EQ(outline.lines.back().level, 99999U);
    EXPECT_EQ(outline.unclosed, 0U);
}

// The library's own tree is the judge: lines that it reaches, with the brackets around them, are those that
// nothing supersedes.
TEST(LakeOutlineTest, AgreesWithTheTreeOnRandomLakes) {
    for (unsigned seed = 0; seed < 800; ++seed) {
        SCOPED_TRACE(seed);
        std::string const bytes = RandomLake(seed).Lines(40);
        auto const outline = OutlineOf(bytes);
        CLake lake;
        FillLake(lake, bytes);
        ASSERT_EQ(lake.size(), outline.lines.size() + 1);

        std::set<CLake::CNode const*> reached;
        std::vector<CLake::CNode const*> sections{&lake.root()};
        while (!sections.empty()) {
            CLake::CNode const& section = *sections.back();
            sections.pop_back();
            auto const reach = [&](CLake::CNode const& child) {
                reached.insert(&child);
                if (child.is_section())
                    sections.push_back(&child);
            };
            for (auto child = section.begin_unnamed(); child != section.end_unnamed(); ++child)
                reach(**child);
            for (auto child = section.begin_named(); child != section.end_named(); ++child)
                reach(*child->second);
            // The opener of the lines that it shows, which may be a later one.
            if (&section != &lake.root())
                reached.insert(&*std::prev(section.first_child()));
        }
        auto node = std::next(lake.begin());
        for (std::size_t line = 0; line < outline.lines.size(); ++line, ++node) {
            auto const& told = outline.lines[line];
            bool const is_end = told.kind == LineKind::Unread || line == outline.stray;
            ASSERT_EQ(node->level(), is_end ? -1 : static_cast<int>(told.level)) << line;
            if (told.kind == LineKind::Closer || told.kind == LineKind::Unread)
                continue;
            bool const is_reached = reached.contains(&*node);
            bool const replaced_opener = told.kind == LineKind::Opener && told.superseded_by != NoLine;
            // The first of several sections is the node of the key, although its lines are gone.
            ASSERT_TRUE(replaced_opener || is_reached == (told.superseded_by == NoLine))
                << line << ": " << told.bytes;
        }
    }
}
