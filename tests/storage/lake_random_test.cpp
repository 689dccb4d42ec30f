// Lakes against the model, on random files and random sequences of operations.
#include <paramdb/storage/lake.h>

#include "../support/temp_dir.h"
#include "lake_model.h"
#include "lake_support.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>

using namespace std::string_literals;
using namespace std::string_view_literals;
using lake_model::Written;
using lake_support::Difference;
using lake_support::Escaped;

namespace {

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(m_engine()) % limit; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    template <class Choices>
    auto const& Of(Choices const& choices) {
        return choices[Below(choices.size())];
    }

private:
    std::mt19937 m_engine;
};

constexpr std::array Pieces{"a"sv,    "b"sv,  "<T>"sv,  "a: "sv,  ":"sv,    "{"sv,    "}"sv,    "\""sv,
                            ";"sv,    " "sv,  "\t"sv,   "1 2"sv,  "\r"sv,   "\x85"sv, "\xA0"sv, "\xFF"sv,
                            "\x1A"sv, "\0"sv, "\xE4"sv, "\x1C"sv, "\v\f"sv, "x;y"sv,  "\"a\""sv};
constexpr std::array Openers{"a: {"sv, "b: {"sv, "a:{"sv, "{"sv, "  {\t"sv, ": {"sv, "\"a:\": {"sv};
constexpr std::array Closers{"}"sv, "\t}"sv, "} ; a"sv, "}x"sv, ": }"sv, "} \"x;\" ; y"sv};
constexpr std::array PlainLines{"a: 1"sv,      "b: 2"sv,  "a:"sv,   "1 2 3"sv,  "1 \"a: b\""sv,
                                "; note"sv,    ";"sv,     ""sv,     " \t"sv,    "b: x ; y"sv,
                                "a: { ; no"sv, "x } y"sv, "a: }"sv, "1 2 ; 3"sv};

std::string RandomLine(Random& random, int& depth) {
    std::string line;
    switch (random.Below(10)) {
    case 0:
        for (std::size_t count = random.Below(7); count > 0; --count)
            line += random.Of(Pieces);
        break;
    case 1:
        for (std::size_t count = random.Below(13); count > 0; --count)
            line += static_cast<char>(static_cast<unsigned char>(random.Below(256)));
        break;
    case 2:
    case 3:
    case 4:
        ++depth;
        line = random.Of(Openers);
        break;
    case 5:
    case 6:
    case 7:
        if (depth > 0 || random.OneIn(12)) {
            --depth;
            line = random.Of(Closers);
            break;
        }
        [[fallthrough]];
    default:
        line = random.Of(PlainLines);
    }
    return line;
}

std::string RandomFile(Random& random, std::size_t most_lines) {
    std::string text;
    int depth = 0;
    bool const carriage_returns = random.OneIn(4);
    for (std::size_t count = random.Below(most_lines + 1); count > 0; --count) {
        text += RandomLine(random, depth);
        if (count > 1 || !random.OneIn(3))
            text += carriage_returns ? "\r\n" : "\n";
    }
    return text;
}

std::wstring RandomText(Random& random) {
    static std::array const texts{L"1 2"s, L"{"s, L"}"s, L"} x"s, L""s, L"a: b"s, L"\xE4\xFF"s, L"; c"s};
    return random.OneIn(60) ? L"x\x20ACy" : random.Of(texts);
}

/// A lake, its model, and all that was done to them.
struct Pair {
    std::unique_ptr<CLake> lake = std::make_unique<CLake>();
    lake_model::Lake model;
    std::string story;
};

class Files {
public:
    CString Named(char8_t const* name) const { return test_support::WideName(m_folder / name); }
    void Read(Pair& pair, std::string const& text) const {
        test_support::WriteBytes(m_folder / u8"in.lake", text);
        EXPECT_TRUE(pair.lake->read(Named(u8"in.lake")));
        pair.model.Read(text);
        pair.story += "\nread\n" + Escaped(text) + "\nend of file";
    }
    std::string Write(Pair const& pair) const {
        Written const expected = pair.model.Write();
        Written const found = lake_support::WriteLake(*pair.lake, m_folder / u8"out.lake");
        if (found.throws != expected.throws)
            return expected.throws ? "write does not throw" : "write throws";
        return found.bytes == expected.bytes ? "" : "written: " + Escaped(found.bytes);
    }

private:
    test_support::TempDir m_folder;
};

/// Looks up some keys and values in the section; empty if all answers are those of the model.
std::string LookUp(Pair& pair, std::size_t index) {
    CLake::CNode& node = lake_support::Node(*pair.lake, index);
    std::vector<int> const places = pair.model.Places();
    for (wchar_t const* const key : {L"a", L"b", L"A", L""}) {
        lake_model::Ref const ref = pair.model.Find(index, key);
        int const expected = ref < 0 ? ref : places[static_cast<std::size_t>(ref)];
        CLake::CNodeProxy const proxy = node[key];
        if (lake_support::IndexOf(*pair.lake, node.find(key)) != expected || proxy.position != node.find(key))
            return "find differs";
        if (proxy.key != key || proxy.reserved != 0 || proxy.collection != node.collection())
            return "the proxy differs";
    }
    for (wchar_t const* const text : {L"1 2", L"", L"{", L"}"})
        if (node.find_value(text) != pair.model.FindValue(index, text))
            return "find_value differs";
    return "";
}

void PushBack(Random& random, Pair& pair) {
    std::size_t const index = random.Below(pair.model.lines().size());
    lake_model::Line const& line = pair.model.lines()[index];
    if (!pair.model.IsIntact(index))
        return;
    std::wstring const text = RandomText(random);
    std::size_t const expected = line.unnamed.size();
    pair.story += "\npush_back " + std::to_string(index);
    EXPECT_EQ(lake_support::Node(*pair.lake, index).push_back(text), expected);
    pair.model.PushBack(index, text);
}

void ClearSection(Random& random, Pair& pair) {
    std::size_t const index = random.Below(pair.model.lines().size());
    if (!pair.model.IsIntact(index))
        return;
    pair.story += "\nclear_section " + std::to_string(index);
    lake_support::Node(*pair.lake, index).clear_section();
    pair.model.ClearSection(index);
}

void AssignText(Random& random, Pair& pair) {
    if (pair.model.lines().size() < 2)
        return;
    std::size_t const index = 1 + random.Below(pair.model.lines().size() - 1);
    std::wstring const text = RandomText(random);
    CLake::CNode& node = lake_support::Node(*pair.lake, index);
    pair.story += "\nassign text of " + std::to_string(index);
    if (random.OneIn(3)) {
        node.comment(text);
        pair.model.SetComment(index, text);
    } else if (random.OneIn(2)) {
        node.value(text);
        pair.model.SetValue(index, text);
    } else {
        node = text;
        pair.model.SetValue(index, text);
    }
}

void AssignAtTop(Random& random, Pair& pair) {
    static std::array const keys{L"a"s, L"b"s, L"c"s, L"<DbDesign.CacheVersion>"s};
    if (!pair.model.IsIntact(0))
        return;
    std::wstring const key = random.Of(keys);
    std::wstring const text = RandomText(random);
    pair.story += "\nassign at top";
    (*pair.lake)[key] = text;
    pair.model.AssignAtTop(key, text);
}

void CopyConstruct(Pair& pair, Pair const& source) {
    auto copy = std::make_unique<CLake>(*source.lake);
    EXPECT_TRUE(copy->filename().IsEmpty());
    lake_model::Lake model = lake_model::Lake::CopyOf(source.model);
    pair.story = source.story + "\ncopy";
    pair.lake = std::move(copy);
    pair.model = std::move(model);
}

void Assign(Pair& pair, Pair const& source) {
    CString const name = pair.lake->filename();
    *pair.lake = *source.lake;
    EXPECT_EQ(pair.lake->filename(), name);
    pair.model.Assign(source.model);
    if (&pair != &source)
        pair.story += "\nassign the other:" + source.story + "\nassigned";
}

void Merge(Pair& pair, Pair& source) {
    if (pair.model.lines().size() + source.model.lines().size() > 200)
        return;
    pair.story += &pair == &source ? "\nmerge self" : "\nmerge the other:" + source.story + "\nmerged";
    pair.lake->merge(*source.lake);
    pair.model.Merge(source.model);
}

std::string Step(Random& random, Files const& files, std::array<Pair, 2>& pairs) {
    Pair& pair = pairs[random.Below(2)];
    Pair& other = &pair == &pairs[0] ? pairs[1] : pairs[0];
    switch (random.Below(16)) {
    case 0:
    case 1:
        files.Read(pair, RandomFile(random, 20));
        break;
    case 2:
        pair.story += "\nread a missing file";
        EXPECT_TRUE(pair.lake->read(files.Named(u8"missing.lake")));
        pair.model.ReadMissing();
        break;
    case 3:
    case 4:
        Merge(pair, other);
        break;
    case 5:
        Merge(pair, pair);
        break;
    case 6:
        CopyConstruct(pair, random.OneIn(2) ? pair : other);
        break;
    case 7:
        Assign(pair, random.OneIn(6) ? pair : other);
        break;
    case 8:
    case 9:
    case 10:
        PushBack(random, pair);
        break;
    case 11:
        if (random.OneIn(3)) {
            pair.story += "\nclear";
            pair.lake->clear();
            pair.model.Clear();
        }
        break;
    case 12:
        ClearSection(random, pair);
        break;
    case 13:
        AssignText(random, pair);
        break;
    case 14:
        AssignAtTop(random, pair);
        break;
    default:
        return files.Write(pair);
    }
    return "";
}

// Every round makes files, which cost much more on Windows.
constexpr unsigned Rounds(unsigned count) {
#ifdef _WIN32
    return count / 20;
#else
    return count;
#endif
}

} // namespace

TEST(LakeRandom, FilesReadAsTheModelReadsThem) {
    Files const files;
    Pair pair;
    for (unsigned seed = 1; seed <= Rounds(20000); ++seed) {
        Random random(seed);
        pair.story = "seed " + std::to_string(seed);
        files.Read(pair, RandomFile(random, 60));
        ASSERT_EQ(Difference(*pair.lake, pair.model, random.OneIn(4)), "") << pair.story;
        std::size_t const section = random.Below(pair.model.lines().size());
        ASSERT_EQ(LookUp(pair, section), "") << pair.story << "\nnode " << section;
    }
}

TEST(LakeRandom, WrittenFilesAreThoseOfTheModelAndReadBack) {
    Files const files;
    Pair pair;
    for (unsigned seed = 1; seed <= Rounds(4000); ++seed) {
        Random random(seed);
        pair.story = "seed " + std::to_string(seed);
        files.Read(pair, RandomFile(random, 60));
        ASSERT_EQ(files.Write(pair), "") << pair.story;
        files.Read(pair, pair.model.Write().bytes);
        ASSERT_EQ(Difference(*pair.lake, pair.model, false), "") << pair.story;
    }
}

TEST(LakeRandom, OperationsLeaveWhatTheyLeaveInTheModel) {
    Files const files;
    for (unsigned seed = 1; seed <= Rounds(3000); ++seed) {
        Random random(seed);
        std::array<Pair, 2> pairs;
        for (Pair& pair : pairs)
            files.Read(pair, RandomFile(random, 20));
        for (int step = 0; step < 24; ++step) {
            std::string const fault = Step(random, files, pairs);
            for (Pair& pair : pairs) {
                ASSERT_EQ(fault, "") << "seed " << seed << pair.story;
                ASSERT_EQ(Difference(*pair.lake, pair.model, random.OneIn(8)), "")
                    << "seed " << seed << pair.story;
                std::size_t const section = random.Below(pair.model.lines().size());
                if (pair.model.IsIntact(section)) {
                    ASSERT_EQ(LookUp(pair, section), "") << "seed " << seed << pair.story;
                }
            }
        }
    }
}
