#include <paramdb/platform/core/line_end.h>

#include "tests/support/messages.h"
#include "tests/tools/convert/form_told.h"
#include "tools/convert/forms.h"

#include <gtest/gtest.h>

using namespace form_told;

TEST(LakeFormTest, ReadsValuesAndRows) {
    MessageLog const unseen;
    auto const result = ReadLakeForm("<DbDesign.CacheVersion>: 216\n"
                                     "<QType><FBaseName>: \"a b\"\n"
                                     "<QType><FAliasName>:\n"
                                     "\n"
                                     "<TMode>: {\n"
                                     "\t1 \"Idle\"\n"
                                     "\n"
                                     "\t2 Up\n"
                                     "\t2 Again\n"
                                     "\t3\n"
                                     "} ; <TMode>\n"
                                     "<TSensorGroupList>: {\n"
                                     "1 2\n"
                                     "\n"
                                     "}\n"
                                     "<TTrigger>: {\n"
                                     "\n"
                                     "}\n");
    EXPECT_EQ(Faults(result), Strings());
    EXPECT_EQ(Losses(result), Strings());
    auto const& parameters = result.parameters;
    EXPECT_EQ(parameters.version[0], 216);
    EXPECT_EQ(parameters.version[1], std::nullopt);
    EXPECT_EQ(parameters.texts,
              (std::array<std::optional<std::wstring>, 4>{std::nullopt, std::nullopt, L"a b", L""}));
    EXPECT_EQ(RowsOf(result, L"<TMode>"),
              (Rows{{1, Text(L"Idle")}, {2, Text(L"Up")}, {2, Text(L"Again")}, {3, Text(L"")}}));
    // Where keys may repeat, a blank line is a row; and so it is where it stands first.
    EXPECT_EQ(RowsOf(result, L"<TSensorGroupList>").size(), 2U);
    EXPECT_EQ(RowsOf(result, L"<TTrigger>").size(), 1U);
    EXPECT_EQ(parameters.RowCount(), 7U);
    EXPECT_FALSE(result.has_partial_rows);
}

TEST(LakeFormTest, NamesWhatHasNoPlace) {
    MessageLog const unseen;
    auto const result = ReadLakeForm("; one\n"                             // 1
                                     "<DbDesign.CacheVersion>: 216 beta\n" // 2
                                     "<DbDesign.CacheVersion>: 217\n"
                                     "<QType><FBaseName>: a b\n" // 4
                                     "lone row\n"
                                     "other: 5\n"           // 6
                                     "<TMode>: {\n1 a\n}\n" // 7
                                     "<TMode>: {\n"         // 10
                                     "; two\n"
                                     "1 Idle too much\n" // 12
                                     "x y\n"
                                     "2 a: b\n" // 14
                                     "{\n3 c\n}\n"
                                     "} ; three\n"                  // 18
                                     "<TNone>: {\n; unseen\n1\n}\n" // 19
                                     "{\n}\n"                       // 23
                                     "<TTrigger>: 5\n"              // 25
                                     "}\n"                          // 26
                                     "\n"
                                     "k: 1\n");
    EXPECT_EQ(Faults(result), Strings());
    EXPECT_EQ(Losses(result), (Strings{
                                  "s :3 the value of <DbDesign.CacheVersion> gives way to line 2",
                                  "u :5 the line stands in no section",
                                  "u :6 nothing reads the value of other",
                                  "s :7 the section <TMode> gives way to line 10",
                                  "e :12 <TMode> does not read the end of the row: too much",
                                  "f :13 <TMode> cannot read the row",
                                  "u :14 <TMode> does not read a line with a key: 2 a",
                                  "u :15 <TMode> does not read the section in it",
                                  "u :19 nothing reads the section <TNone>",
                                  "u :23 nothing reads a section without a key",
                                  "u :25 nothing reads the value of <TTrigger>",
                                  "u :27 nothing is read behind line 26, which closes no section",
                                  "e :2 the value of <DbDesign.CacheVersion>, 216 beta, is read as 216",
                                  "e :4 the value of <QType><FBaseName>, a b, is read as \"a\"",
                                  "c :1 3 comments, the first of them here",
                              }));
    EXPECT_EQ(result.losses.back().count, 3U);
    EXPECT_EQ(result.parameters.version[0], 216);
    EXPECT_EQ(result.parameters.texts[2], L"a");
    EXPECT_EQ(RowsOf(result, L"<TMode>").back(), (ParamDb::row_t{1, Text(L"Idle")}));
}

TEST(LakeFormTest, Faults) {
    EXPECT_EQ(Faults(ReadLakeForm("")), Strings{" the file is empty"});
    EXPECT_EQ(Faults(ReadLakeForm("1 2\n")), Strings{" no parameter file: none of its lines has a key"});
}

TEST(LakeFormTest, Writes) {
    Strings faults;
    auto parameters = Sample();
    parameters.tables[PlaceOf(L"<TMode>")][1] = {2, Text(L"Warm up")};
    std::string expected = "<DbDesign.CacheVersion>: 216\n"
                           "<DbDesign.CacheMinorVersion>: 1\n"
                           "\n"
                           "<QLearn><FLearnArcName>: \"a b\"\n"
                           "<QType><FBaseName>: \"\"\n"
                           "<QType><FAliasName>: \xE4\n"
                           "\n"
                           "<TMode>: {\n"
                           "\t1 Idle\n"
                           "\t2 \"Warm up\"\n"
                           "} ; <TMode>\n"
                           "\n"
                           "<TTrigger>: {\n"
                           "} ; <TTrigger>\n"
                           "\n"
                           "<TRotorSpeed>: {\n"
                           "\t1 2 0.1 3 4\n"
                           "\t1 3 -0 -5 6\n"
                           "} ; <TRotorSpeed>\n";
    for (std::size_t at = 0; (at = expected.find('\n', at)) != std::string::npos;
         at += sizeof paramdb::LineEnd - 1)
        expected.replace(at, 1, paramdb::LineEnd);
    EXPECT_EQ(WriteLakeForm(parameters, faults), expected);
    EXPECT_EQ(faults, Strings());
}
