#include <paramdb/platform/core/line_end.h>
#include <paramdb/storage/lake.h>

#include "tests/tools/rewrite/random_lake.h"
#include "tools/rewrite/lake_outline.h"
#include "tools/rewrite/lake_proof.h"
#include "tools/rewrite/merging.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace paramdb::tools;

namespace {

std::vector<MergeInput> Inputs(std::vector<std::string> const& texts) {
    std::vector<MergeInput> inputs;
    for (std::string const& text : texts)
        inputs.push_back({std::string(1, static_cast<char>('a' + inputs.size())), text});
    return inputs;
}

std::string Joined(std::vector<std::string> const& texts, MergeLines lines = MergeLines::All) {
    return MergeFiles(Inputs(texts), lines).bytes;
}

// All that lookups find in a section, told by the library's own nodes.
std::string Told(CLake::CNode const& section) {
    std::string text;
    auto const tell = [&](CLake::CNode const& child) {
        for (std::wstring const& part : {child.key(), child.value(), child.comment()})
            text += std::string(part.begin(), part.end()) + "|";
        text += child.is_section() ? "{\n" + Told(child) + "}\n" : "\n";
    };
    for (auto child = section.begin_named(); child != section.end_named(); ++child)
        tell(*child->second);
    for (auto child = section.begin_unnamed(); child != section.end_unnamed(); ++child)
        tell(**child);
    return text;
}

// What lookups find after the library has merged the texts.
std::string MergedTold(std::vector<std::string> const& texts) {
    CLake lake;
    for (std::string const& text : texts) {
        CLake other;
        FillLake(&text == &texts.front() ? lake : other, text);
        if (&text != &texts.front())
            lake.merge(other);
    }
    return Told(lake.root());
}

} // namespace

TEST(MergingTest, PutsFilesBehindOneAnother) {
    EXPECT_EQ(Joined({"a: 1\n"}), "a: 1\n");
    EXPECT_EQ(Joined({" a :1 \n", "\tb:2"}), " a :1 \n\n\tb:2");
    EXPECT_EQ(Joined({"a: 1", "b: 2\n", "c: 3"}),
              std::string("a: 1") + paramdb::LineEnd + paramdb::LineEnd + "b: 2\n\nc: 3");
    EXPECT_EQ(Joined({"a: 1\r\nb: 2", "c: 3\n"}), "a: 1\r\nb: 2\r\n\r\nc: 3\n");
    EXPECT_EQ(MergeFiles(Inputs({"a: 1\n", "b: 2"}), MergeLines::All).lines, 3U);
}

TEST(MergingTest, LeavesOutWhatIsSuperseded) {
    std::string const first = "; one\nk: 1\n<T>: {\n1 a\n; in it\n}\n<U>: {\n5\n}\n";
    std::string const second = "k : 2\n; two\n<T>: {\r\n2  b\r\n} ; T\r\n";
    EXPECT_EQ(Joined({first, second}, MergeLines::WithoutSuperseded),
              "; one\nk: 1\n<U>: {\n5\n}\n\n; two\n<T>: {\r\n2  b\r\n} ; T\r\n");
    auto const merged = MergeFiles(Inputs({first, second}), MergeLines::WithoutSuperseded);
    EXPECT_EQ(merged.left_out, 5U);
    EXPECT_EQ(merged.lines, 10U);
    auto const all = MergeFiles(Inputs({first, second}), MergeLines::All);
    EXPECT_EQ(all.left_out, 0U);
    EXPECT_EQ(all.bytes, first + "\n" + second);
}

TEST(MergingTest, TellsWhereSectionsAndKeysComeFrom) {
    auto const merged = MergeFiles(
        Inputs({"k: 1\nj: 5\n<T>: {\n1 a\n\n}\n<U>: {\n5\n; c\n6\n}\nm: {\n}\n",
                "k: 1\n<T>: {\n}\nj: 6\nm: 7\nv: 8\n", "<T>: {\n2\n3\nx: y\n}\nj: 7\nk: 3\nv: {\n9\n}\n"}),
        MergeLines::All);
    std::vector<MergedSection> const sections{
        {"<T>", {{2, 1}, 2}, {{{0, 3}, 1}, {{1, 2}, 0}}},
        {"<U>", {{0, 7}, 2}, {}},
        {"m", {{0, 12}, 0}, {}},
        {"v", {{2, 8}, 1}, {}},
    };
    EXPECT_EQ(merged.sections, sections);
    std::vector<MergedKey> const keys{
        {"k", {{0, 1}, "1"}, {{{2, 7}, "3"}}},
        {"j", {{0, 2}, "5"}, {{{1, 4}, "6"}, {{2, 6}, "7"}}},
        {"m", {{0, 12}, "{"}, {{{1, 5}, "7"}}},
    };
    EXPECT_EQ(merged.keys, keys);
}

TEST(MergingTest, RefusesWhatWouldLoseTheRest) {
    struct Case {
        std::vector<std::string> texts;
        std::vector<std::string> faults;
    };
    std::string const stray = ": this line closes no section, so nothing behind it would be read";
    std::string const open = "is not closed, so what the next file holds would become a part of it";
    Case const cases[] = {
        {{"k: 1\n", "j: 2\n"}, {}},
        {{"k: 1\n}\n", "j: 2\n"}, {"a:2" + stray}},
        {{"j: 2\n", "k: 1\n}\n"}, {}},
        {{"j: 2\n", "k: 1\n}\n\n \n"}, {}},
        {{"j: 2\n", "k: 1\n}\n; x\n"}, {"b:2" + stray}},
        {{"k: {\n1\n", "{\n", "m: {\n"}, {"a:1: the section k " + open, "b:1: the section " + open}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(MergeFaults(Inputs(test.texts)), test.faults) << test.texts[0];
}

TEST(MergingTest, TheProofSeesWhatIsMissing) {
    auto const inputs = Inputs({"k: 1\n<T>: {\n1\n}\n", "<T>: {\n2\n}\n"});
    auto merged = MergeFiles(inputs, MergeLines::All);
    EXPECT_TRUE(IsMergeOf(merged, inputs));
    std::string const bytes = merged.bytes;
    for (std::string const other :
         {"k: 1\n<T>: {\n1\n}\n<T>: {\n2\n}\n", "k: 1\n<T>: {\n3\n}\n\n<T>: {\n2\n}\n",
          "k: 1\n<T>: {\n1\n}\n\n<T>: {\n2\n2\n}\n", ""}) {
        merged.bytes = other;
        EXPECT_FALSE(IsMergeOf(merged, inputs)) << other;
    }
    // Where lines were left out, only what is found counts.
    merged.left_out = 3;
    merged.bytes = "k: 1\n\n<T>: {\n2\n}\n";
    EXPECT_TRUE(IsMergeOf(merged, inputs));
    merged.bytes = "k: 1\n\n<T>: {\n3\n}\n";
    EXPECT_FALSE(IsMergeOf(merged, inputs));
}

TEST(MergingTest, LookupsFindWhatTheLibraryFindsOnRandomLakes) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(seed);
        RandomLake random(seed);
        std::vector<std::string> texts;
        for (std::size_t count = random.Number(3) + 1; count > 0; --count)
            texts.push_back(random.Lines(25) + "k: 1\n");
        auto const inputs = Inputs(texts);
        std::string const expected = MergedTold(texts);
        auto const all = MergeFiles(inputs, MergeLines::All);
        ASSERT_EQ(MergedTold({all.bytes}), expected);
        ASSERT_TRUE(IsMergeOf(all, inputs));
        auto const clean = MergeFiles(inputs, MergeLines::WithoutSuperseded);
        ASSERT_EQ(MergedTold({clean.bytes}), expected);
        ASSERT_TRUE(IsMergeOf(clean, inputs));
        ASSERT_EQ(clean.lines + clean.left_out, all.lines);
        // Nothing is left that could go.
        for (OutlineLine const& line : OutlineOf(clean.bytes).lines)
            ASSERT_EQ(line.superseded_by, NoLine) << line.bytes;
    }
}
