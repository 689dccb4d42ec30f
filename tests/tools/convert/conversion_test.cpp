#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/white_space.h>

#include "tests/support/messages.h"
#include "tests/support/temp_dir.h"
#include "tests/tools/convert/form_told.h"
#include "tests/tools/convert/random_parameters.h"
#include "tools/convert/cell_text.h"
#include "tools/convert/conversion.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

using namespace paramdb::tools;
using form_told::PlaceOf;
namespace fs = std::filesystem;

namespace {

constexpr std::array AllKinds{FileKind::Lake, FileKind::Sea, FileKind::Json, FileKind::Csv};

// The source as reading it would give it.
ReadResult SourceOf(ParameterSet const& parameters) {
    ReadResult source;
    source.parameters = parameters;
    auto set = TableSetOf(parameters);
    source.tables = ReadTables(set);
    return source;
}

std::string Utf8(fs::path const& path) {
    std::u8string const name = path.u8string();
    return {name.begin(), name.end()};
}

} // namespace

TEST(ConversionTest, EveryKindKeepsRandomParameters) {
    std::size_t refused = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        MessageLog const unseen;
        ParameterSet const parameters = RandomParameters(seed).Set();
        for (FileKind const kind : AllKinds) {
            std::vector<std::string> faults;
            FormContent const content = WriteForm(kind, parameters, faults);
            if (!faults.empty()) {
                // What lines have no room for is told below.
                ASSERT_TRUE(kind == FileKind::Lake || kind == FileKind::Sea) << faults[0];
                ++refused;
                continue;
            }
            ReadResult const read = ReadForm(kind, content);
            ASSERT_TRUE(read.faults.empty()) << read.faults[0].text;
            ASSERT_TRUE(read.losses.empty()) << read.losses[0].finding.text;
            ASSERT_TRUE(read.parameters == parameters) << static_cast<int>(kind);
        }
    }
    EXPECT_LT(refused, 40U);
}

TEST(ConversionTest, TheLibraryLoadsTheSameFromEveryKind) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        MessageLog const unseen;
        RandomParameters random(seed);
        ParameterSet parameters;
        parameters.version[0] = 1;
        for (int count = 0; count < 3; ++count)
            random.AddTable(parameters, random.Number(paramdb::Catalogue().size()));
        ReadResult const source = SourceOf(parameters);
        for (FileKind const kind : AllKinds) {
            std::vector<std::string> faults;
            FormContent const content = WriteForm(kind, parameters, faults);
            ASSERT_TRUE(!faults.empty() || ReadsAs(kind, content, source));
        }
    }
}

TEST(ConversionTest, EveryKindKeepsTheExample) {
    std::string const bytes =
        test_support::ReadBytes(fs::path(PARAMDB_SOURCE_DIR) / "examples/gearbox/gearbox.lake");
    ReadResult const source = ReadForm(FileKind::Lake, bytes);
    ASSERT_TRUE(source.faults.empty());
    EXPECT_EQ(source.parameters.tables.size(), paramdb::Catalogue().size());
    for (FileKind const kind : AllKinds) {
        std::vector<std::string> faults;
        FormContent const content = WriteForm(kind, source.parameters, faults);
        EXPECT_TRUE(faults.empty());
        EXPECT_TRUE(ReadsAs(kind, content, source)) << static_cast<int>(kind);
    }
}

TEST(ConversionTest, EveryBitOfANumberIsKept) {
    RandomParameters random(7);
    ParameterSet parameters;
    for (std::size_t table = 0; table < paramdb::Catalogue().size(); ++table)
        for (auto const& column : ColumnsOf(paramdb::Catalogue()[table]))
            if (column.type != paramdb::FieldType::Int && column.type != paramdb::FieldType::Text &&
                parameters.tables[table].empty())
                for (int row = 0; row < 60; ++row)
                    parameters.tables[table].push_back(random.Row(table));
    std::erase_if(parameters.tables, [](auto const& table) { return table.second.empty(); });
    for (auto& [table, rows] : parameters.tables) // texts are told elsewhere
        for (auto& row : rows)
            for (auto& cell : row)
                if (std::holds_alternative<std::wstring>(cell))
                    cell = std::wstring(L"x");
    ASSERT_GT(parameters.RowCount(), 1000U);
    for (FileKind const kind : AllKinds) {
        std::vector<std::string> faults;
        FormContent const content = WriteForm(kind, parameters, faults);
        ASSERT_TRUE(faults.empty());
        ASSERT_TRUE(ReadForm(kind, content).parameters == parameters) << static_cast<int>(kind);
    }
}

// Each character by itself, at the front, in the middle and at the end of a text, alone and beside a blank.
TEST(ConversionTest, EveryCharacterIsKeptOrRefused) {
    std::size_t const table = PlaceOf(L"<TAuxStrings>");
    for (unsigned code = 1; code <= 0x10FF; code += code < 0x100 ? 1 : 101) {
        auto const unit = static_cast<wchar_t>(code);
        std::wstring const one(1, unit);
        for (std::wstring const& text :
             {one, one + L"ab", L"a" + one + L"b", L"ab" + one, L"a b" + one, one + L" ab", L"a:b" + one}) {
            ParameterSet parameters;
            parameters.version[0] = 1;
            parameters.texts[2] = text;
            parameters.tables[table] = {{text, std::wstring(L"v w")}, {std::wstring(L"n"), text}};
            bool const has_blank =
                std::any_of(text.begin(), text.end(), [](wchar_t c) { return paramdb::IsWhiteSpace(c); });
            bool const fits_sea = unit != L'"' || (text[0] != L'"' && !has_blank);
            // A bare quote in front of the quotes of the other text frees its blank alone, which does no
            // harm; a colon needs quotes of its own.
            bool const fits_lake = fits_sea && code <= 0xFF && unit != L'\n' &&
                                   (unit != L'"' || text.find(L':') == std::wstring::npos);
            for (FileKind const kind : AllKinds) {
                std::vector<std::string> faults;
                FormContent const content = WriteForm(kind, parameters, faults);
                bool const fits = kind == FileKind::Lake  ? fits_lake
                                  : kind == FileKind::Sea ? fits_sea
                                                          : true;
                ASSERT_EQ(faults.empty(), fits)
                    << code << " kind " << static_cast<int>(kind) << (faults.empty() ? "" : faults[0]);
                ASSERT_TRUE(!fits || ReadForm(kind, content).parameters == parameters)
                    << code << " kind " << static_cast<int>(kind);
            }
        }
    }
}

TEST(ConversionTest, WhatAKindCannotHoldIsNamed) {
    std::size_t const modes = PlaceOf(L"<TMode>");
    std::size_t const strings = PlaceOf(L"<TAuxStrings>");
    struct Case {
        std::wstring text;
        std::array<std::string, 4> faults; // by kind
    };
    std::string const quote = "no line can hold a quote at the start of a text or in one with blanks";
    Case const cases[] = {
        {L"\x20AC", {"the character U+20AC cannot be in a lake", "", "", ""}},
        {L"a\nb", {"the character U+000A cannot be in a lake", "", "", ""}},
        {L"\"a", {quote, quote, "", ""}},
        {L"a \"b", {quote, quote, "", ""}},
        {L"a\xD800",
         {"the character U+D800 cannot be in a lake", "", "the half character U+D800 cannot be in JSON",
          "the half character U+D800 cannot be in CSV"}},
        {L"\xDCFC",
         {"the character U+DCFC cannot be in a lake", "", "the half character U+DCFC cannot be in JSON",
          "the half character U+DCFC cannot be in CSV"}},
        {L"\xD83D\xDE00", {"the character U+D83D cannot be in a lake", "", "", ""}},
    };
    for (Case const& test : cases) {
        ParameterSet parameters;
        parameters.version[0] = 1;
        parameters.tables[modes] = {{1, std::wstring(L"idle")}, {2, test.text}};
        for (std::size_t kind = 0; kind < AllKinds.size(); ++kind) {
            std::vector<std::string> faults;
            FormContent const content = WriteForm(AllKinds[kind], parameters, faults);
            if (test.faults[kind].empty()) {
                ASSERT_TRUE(faults.empty()) << faults[0];
                EXPECT_TRUE(ReadForm(AllKinds[kind], content).parameters == parameters) << kind;
            } else {
                EXPECT_EQ(faults, std::vector<std::string>{"<TMode>, row 2, name: " + test.faults[kind]});
            }
        }
    }
    // Texts that leave no room for each other in a line, and quotes that free what stands between them.
    ParameterSet parameters;
    parameters.version[0] = 1;
    parameters.texts[3] = L"\"x";
    parameters.tables[strings] = {{std::wstring(100, L'a'), std::wstring(100, L'b')},
                                  {std::wstring(L"a\"b"), std::wstring(L"c:d")}};
    std::vector<std::string> faults;
    WriteForm(FileKind::Lake, parameters, faults);
    EXPECT_EQ(faults, (std::vector<std::string>{"alias_type: " + quote,
                                                "<TAuxStrings>, row 1: its texts are too long for one line",
                                                "<TAuxStrings>, row 2: no line reads as it"}));
    faults.clear();
    WriteForm(FileKind::Sea, parameters, faults);
    EXPECT_EQ(faults, std::vector<std::string>{"<TAuxStrings>, row 1: its texts are too long for one line"});
    parameters.tables.clear();
    parameters.texts[3] = L"\xDC00";
    for (FileKind const kind : {FileKind::Json, FileKind::Csv}) {
        faults.clear();
        WriteForm(kind, parameters, faults);
        EXPECT_EQ(faults, std::vector<std::string>{"alias_type: the half character U+DC00 cannot be in " +
                                                   std::string(kind == FileKind::Json ? "JSON" : "CSV")});
    }
}

TEST(ConversionTest, TheLongestTextsHaveTheirLine) {
    for (std::wstring const end : {L"", L" b", L"\xE4"}) {
        for (std::size_t size = 190; size <= LongestText; ++size) {
            ParameterSet parameters;
            parameters.version[0] = 1;
            std::wstring const text = std::wstring(size - end.size(), L'a') + end;
            parameters.tables[PlaceOf(L"<TMode>")] = {{1, text}};
            parameters.tables[PlaceOf(L"<TModeTranslate>")] = {{text, 5}};
            for (FileKind const kind : AllKinds) {
                MessageLog const unseen;
                std::vector<std::string> faults;
                FormContent const content = WriteForm(kind, parameters, faults);
                bool const is_line = kind == FileKind::Lake || kind == FileKind::Sea;
                // Behind a number there is room for all; in front of one it takes two characters.
                std::size_t const quotes = end == L" b" ? 2 : 0;
                std::size_t const room_before_number = LongestText - 2 - quotes;
                std::size_t const room = LongestText - (quotes > 0 ? 1 : 0);
                std::vector<std::string> expected;
                if (is_line && size > room)
                    expected.push_back("<TMode>, row 1: its texts are too long for one line");
                if (is_line && size > room_before_number)
                    expected.push_back("<TModeTranslate>, row 1: its texts are too long for one line");
                EXPECT_EQ(faults, expected) << size << " " << static_cast<int>(kind);
                EXPECT_TRUE(!faults.empty() || ReadForm(kind, content).parameters == parameters) << size;
            }
        }
    }
}

TEST(ConversionTest, TheProofSeesEveryDifference) {
    std::string const bytes = "<DbDesign.CacheVersion>: 216\n<TMode>: {\n\t1 idle\n\t1 again\n}\n";
    ReadResult const source = ReadForm(FileKind::Lake, bytes);
    ASSERT_TRUE(source.faults.empty() && source.losses.empty());
    EXPECT_TRUE(ReadsAs(FileKind::Lake, bytes, source));
    EXPECT_TRUE(ReadsAs(FileKind::Sea,
                        "list\t<TMode>\n\t1 idle\n\t1 again\nvalue\t<DbDesign.CacheVersion>\t0\t216\n",
                        source));
    for (std::string const other :
         {"<DbDesign.CacheVersion>: 217\n<TMode>: {\n\t1 idle\n\t1 again\n}\n",
          "<DbDesign.CacheVersion>: 216\n<TMode>: {\n\t1 idle\n}\n",
          "<DbDesign.CacheVersion>: 216\n<TMode>: {\n\t1 again\n\t1 idle\n}\n",
          "; x\n<DbDesign.CacheVersion>: 216\n<TMode>: {\n\t1 idle\n\t1 again\n}\n", ""})
        EXPECT_FALSE(ReadsAs(FileKind::Lake, other, source)) << other;
}

TEST(ConversionTest, NamesTellTheKind) {
    test_support::TempDir const folder;
    fs::create_directory(folder / u8"dir.lake");
    struct Case {
        std::string name;
        std::optional<FileKind> kind;
    };
    Case const cases[] = {
        {"no/a.lake", FileKind::Lake},   {"no/A.LAKE", FileKind::Lake},
        {"no/a.sea", FileKind::Sea},     {"no/a.json", FileKind::Json},
        {"no/a.b.json", FileKind::Json}, {"no/a.csv", FileKind::Csv},
        {"no/", FileKind::Csv},          {"no/a", std::nullopt},
        {"no/a.txt", std::nullopt},      {"", FileKind::Csv},
        {"no/.lake", std::nullopt},      {Utf8(folder / u8"dir.lake"), FileKind::Csv},
    };
    for (Case const& test : cases)
        EXPECT_EQ(KindOfName(test.name), test.kind) << test.name;
}

TEST(ConversionTest, AFolderIsReplacedAsAWhole) {
    test_support::TempDir const folder;
    std::string const target = Utf8(folder / u8"tables");
    std::ostringstream err;
    auto const may = [&](bool may_replace, std::string const& name) {
        err.str("");
        bool const result = MayWriteFolder(name, {Utf8(folder / u8"in.lake")}, may_replace, err);
        EXPECT_EQ(result, err.str().empty());
        return err.str();
    };
    EXPECT_EQ(may(false, target), "");
    EXPECT_TRUE(WriteContent(target + "/", FolderBytes{{"TMode.csv", "a"}, {"values.csv", "b"}}, err));
    EXPECT_EQ(may(false, target),
              "paramdb: " + target + ": is not empty; --force replaces the tables in it\n");
    EXPECT_EQ(may(true, target), "");
    EXPECT_TRUE(WriteContent(target, FolderBytes{{"TTrigger.csv", "c"}}, err));
    EXPECT_EQ(err.str(), "");
    std::vector<std::string> names;
    for (auto const& entry : fs::recursive_directory_iterator(folder.path()))
        names.push_back(Utf8(entry.path().filename()));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"TTrigger.csv", "tables"}));
    EXPECT_EQ(test_support::ReadBytes(folder / u8"tables/TTrigger.csv"), "c");

    test_support::WriteBytes(folder / u8"tables/notes.txt", "x");
    EXPECT_EQ(may(true, target), "paramdb: " + target + ": holds something else than tables: notes.txt\n");
    EXPECT_EQ(may(true, target + "/notes.txt"), "paramdb: " + target + "/notes.txt: is no folder\n");
    EXPECT_EQ(may(true, ""), "paramdb: \"\": no name of a folder\n");
    err.str("");
    EXPECT_FALSE(WriteContent(target + "/none/tables", FolderBytes{{"TMode.csv", "a"}}, err));
    EXPECT_TRUE(err.str().starts_with("paramdb: " + target + "/none/tables: ")) << err.str();
}

TEST(ConversionTest, ContentThatCannotBeReadIsTold) {
    test_support::TempDir const folder;
    test_support::WriteBytes(folder / u8"a.csv", "x");
    test_support::WriteBytes(folder / u8"b.txt", "x");
    std::ostringstream err;
    auto const files = ReadContent(FileKind::Csv, Utf8(folder.path()), err);
    ASSERT_TRUE(files.has_value());
    EXPECT_EQ(std::get<FolderBytes>(*files), (FolderBytes{{"a.csv", "x"}}));
    EXPECT_EQ(err.str(), "");
    std::string const file = Utf8(folder / u8"a.csv");
    EXPECT_EQ(ReadContent(FileKind::Csv, file, err), std::nullopt);
    EXPECT_EQ(err.str(),
              "paramdb: " + file + ": is no folder, and CSV is a folder with a file for each table\n");
    for (FileKind const kind : {FileKind::Csv, FileKind::Json}) {
        err.str("");
        std::string const missing = Utf8(folder / u8"missing");
        EXPECT_EQ(ReadContent(kind, missing, err), std::nullopt);
        EXPECT_TRUE(err.str().starts_with("paramdb: " + missing + ": ")) << err.str();
    }
}
