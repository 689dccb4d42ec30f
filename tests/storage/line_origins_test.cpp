#include <paramdb/storage/line_origins.h>

#include "lake_support.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <tests/support/temp_dir.h>
#include <vector>

using paramdb::LineOrigin;
using paramdb::LineOrigins;

namespace {

class LineOriginsTest : public testing::Test {
protected:
    // A file with this text, and its name.
    std::wstring File(std::u8string_view name, std::string_view text) {
        test_support::WriteBytes(m_folder / name, text);
        return test_support::WideName(m_folder / name);
    }

private:
    test_support::TempDir m_folder;
};

// "file:line:column" of every line behind the root; "-" for one that comes from no file.
std::vector<std::string> Origins(CLake const& lake) {
    LineOrigins const origins(lake);
    std::vector<std::string> texts;
    for (auto line = std::next(lake.begin()); line != lake.end(); ++line) {
        auto const origin = origins.Find(*line);
        texts.push_back(origin ? std::to_string(origin->file) + ':' + std::to_string(origin->line) + ':' +
                                     std::to_string(origin->column)
                               : "-");
    }
    return texts;
}

using Places = std::vector<std::string>;

} // namespace

TEST_F(LineOriginsTest, LinesOfAFile) {
    CLake const lake(File(u8"a.lake", "a: 1\n\tb : {\r\n\n  1 2\n} ; c\n; d\n \t \n\te").c_str());
    EXPECT_EQ(Origins(lake),
              (Places{"0:1:1", "0:2:2", "0:3:1", "0:4:3", "0:5:1", "0:6:1", "0:7:4", "0:8:2"}));
    LineOrigins const origins(lake);
    ASSERT_EQ(origins.Files().size(), 1U);
    LineOrigins::File const& file = origins.Files().front();
    EXPECT_EQ(file.name, lake.filename().GetString());
    EXPECT_EQ(file.line_begins, (std::vector<std::size_t>{0, 5, 13, 14, 20, 26, 30, 34}));
    EXPECT_EQ(file.Line(1), "a: 1");
    EXPECT_EQ(file.Line(2), "\tb : {");
    EXPECT_EQ(file.Line(3), "");
    EXPECT_EQ(file.Line(8), "\te");
    std::string_view const row = "1 2";
    EXPECT_EQ(file.bytes.substr(16, 3), row);
    EXPECT_EQ(origins.Find(file.bytes.data() + 18), (LineOrigin{0, 4, 5}));
    EXPECT_EQ(origins.Find(row.data()), std::nullopt);
    EXPECT_EQ(origins.Find(lake.root()), std::nullopt);
    EXPECT_EQ(origins.Find(CLake::CNode()), std::nullopt);
}

TEST_F(LineOriginsTest, BytesOfNoFile) {
    char const elsewhere = 'x';
    {
        CLake const empty(File(u8"empty.lake", "").c_str());
        LineOrigins const origins(empty);
        EXPECT_EQ(origins.Find(&elsewhere), std::nullopt);
        EXPECT_EQ(Origins(empty), Places{});
    }
    CLake const lake(File(u8"one.lake", "a: 1").c_str());
    LineOrigins const origins(lake);
    std::string_view const bytes = origins.Files().front().bytes;
    EXPECT_EQ(origins.Find(bytes.data()), (LineOrigin{0, 1, 1}));
    EXPECT_EQ(origins.Find(bytes.data() + bytes.size()), (LineOrigin{0, 1, 5})); // the end is a part of it
    EXPECT_EQ(origins.Find(&elsewhere), std::nullopt);
    std::string const on_heap(100, 'x');
    EXPECT_EQ(origins.Find(on_heap.data()), std::nullopt);
}

TEST_F(LineOriginsTest, AfterMergingAndCopying) {
    CLake lake(File(u8"a.lake", "a: 1\nb: {\n1\n}\n").c_str());
    {
        CLake other(File(u8"b.lake", "; c\nb: {\n2\n}\n").c_str());
        lake.merge(other);
    }
    Places const merged{"0:1:1", "0:2:1", "0:3:1", "0:4:1", "-", "1:1:1", "1:2:1", "1:3:1", "1:4:1"};
    EXPECT_EQ(Origins(lake), merged);
    auto const row = *lake[L"b"].position->begin_unnamed();
    EXPECT_EQ(LineOrigins(lake).Find(*row), (LineOrigin{1, 3, 1}));
    lake.merge(lake);
    EXPECT_EQ(LineOrigins(lake).Files().size(), 2U);
    Places twice = merged;
    twice.push_back("-");
    twice.insert(twice.end(), merged.begin(), merged.end());
    EXPECT_EQ(Origins(lake), twice);

    CLake assigned;
    assigned = lake;
    EXPECT_EQ(Origins(assigned), twice);
    auto copy = std::make_unique<CLake>(lake);
    twice.insert(twice.begin(), "-");
    EXPECT_EQ(Origins(*copy), twice);
    LineOrigins const origins(*copy);
    copy.reset();
    lake.clear();
    EXPECT_EQ(origins.Files()[1].Line(1), "; c"); // keeps the bytes
}

TEST_F(LineOriginsTest, OneFileReadTwice) {
    std::wstring const name = File(u8"a.lake", "a: 1\n");
    CLake lake(name.c_str());
    CLake again(name.c_str());
    lake.merge(again);
    EXPECT_EQ(Origins(lake), (Places{"0:1:1", "-", "1:1:1"}));
}

TEST_F(LineOriginsTest, AfterChanges) {
    CLake lake(File(u8"a.lake", "a: 1\nb: {\n1\n}\n").c_str());
    EXPECT_EQ(lake[L"a"].position->key(), L"a"); // a wide copy changes nothing
    lake[L"a"] = L"changed";
    lake[L"new"] = L"1";
    lake[L"b"].position->push_back(L"2");
    LineOrigins const origins(lake);
    EXPECT_EQ(origins.Find(*lake[L"a"].position), (LineOrigin{0, 1, 1}));
    EXPECT_EQ(origins.Find(*lake[L"new"].position), std::nullopt);
    auto row = lake[L"b"].position->begin_unnamed();
    EXPECT_EQ(origins.Find(**row), (LineOrigin{0, 3, 1}));
    EXPECT_EQ(origins.Find(**++row), std::nullopt);

    lake.read(File(u8"b.lake", "x\n\ny: 1\n").c_str());
    EXPECT_EQ(Origins(lake), (Places{"0:1:1", "0:2:1", "0:3:1"}));
    EXPECT_EQ(LineOrigins(lake).Files().size(), 1U);
    lake.clear();
    EXPECT_TRUE(LineOrigins(lake).Files().empty());
    lake.read(File(u8"empty.lake", "").c_str());
    EXPECT_TRUE(Origins(lake).empty());
}

// Every line of lakes merged from random files stands where a count of the lines says, and the text that
// begins there is its own.
TEST_F(LineOriginsTest, AgreeWithACount) {
    std::vector<std::string> const pieces{"a: 1", "1 2", "",     " ",     "\t",  "{",
                                          "}",    "; c", "b: {", "} ; d", "\"x", "\r"};
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        CLake lake;
        std::vector<std::size_t> counts;
        for (std::size_t file = 0, files = 1 + random() % 3; file < files; ++file) {
            std::string text;
            std::size_t const lines = 1 + random() % 8;
            for (std::size_t line = 0; line < lines; ++line)
                text += std::string(random() % 3, ' ') + pieces[random() % pieces.size()] + "\n";
            if (random() % 2 == 0 && text.size() > 1 && text[text.size() - 2] != '\n')
                text.pop_back(); // the last line without its end
            std::wstring const name = File(u8"random.lake", text);
            CLake other(name.c_str());
            counts.push_back(other.size() - 1);
            if (file == 0)
                lake = other;
            else
                lake.merge(other);
        }
        LineOrigins const origins(lake);
        std::size_t file = 0;
        std::size_t line = 0;
        for (auto node = std::next(lake.begin()); node != lake.end(); ++node) {
            auto const origin = origins.Find(*node);
            if (line == counts[file]) {
                EXPECT_EQ(origin, std::nullopt);
                ++file;
                line = 0;
                continue;
            }
            ++line;
            ASSERT_TRUE(origin);
            EXPECT_EQ(origin->file, file);
            EXPECT_EQ(origin->line, line);
            auto const first = node->is_named() ? node->key() : node->value();
            auto const text = paramdb::LakeText(origins.Files()[file].Line(line)).wide();
            ASSERT_LE(origin->column, text.size() + 2);
            if (!first.empty()) {
                EXPECT_EQ(text.substr(origin->column - 1, first.size()), first);
            }
        }
    }
}
