#include "tests/tools/convert/form_told.h"
#include "tools/convert/forms.h"

#include <gtest/gtest.h>

using namespace form_told;

TEST(CsvFormTest, Writes) {
    Strings faults;
    FolderBytes const expected{
        {"TMode.csv", "mode,name\r\n1,Idle\r\n2,\"Warm, \"\"up\"\"\"\r\n"},
        {"TRotorSpeed.csv",
         "physical_mode,rotor,ratio,numerator,denominator\r\n1,2,0.1,3,4\r\n1,3,-0,-5,6\r\n"},
        {"values.csv",
         "key,value\r\n<DbDesign.CacheVersion>,216\r\n<DbDesign.CacheMinorVersion>,1\r\n"
         "<QLearn><FLearnArcName>,a b\r\n<QType><FBaseName>,\r\n<QType><FAliasName>,\xC3\xA4\r\n"},
    };
    FolderBytes files = WriteCsvForm(Sample(), faults);
    EXPECT_TRUE(files["TTrigger.csv"].ends_with("\r\n"));
    EXPECT_TRUE(files["TTrigger.csv"].starts_with("trigger,"));
    files.erase("TTrigger.csv");
    EXPECT_EQ(files, expected);
    EXPECT_EQ(faults, Strings());
}

TEST(CsvFormTest, ReadsColumnsInAnyOrder) {
    auto const result = ReadCsvForm({{"TMode.csv", "\xEF\xBB\xBFname,mode\n\"a\nb\",7\n,8"},
                                     {"values.csv", "key,value\n<DbDesign.CacheVersion>,216\n"}});
    EXPECT_EQ(Faults(result), Strings());
    EXPECT_EQ(Losses(result), Strings());
    EXPECT_EQ(RowsOf(result, L"<TMode>"), (Rows{{7, Text(L"a\nb")}, {8, Text(L"")}}));
    EXPECT_EQ(result.parameters.version[0], 216);
}

TEST(CsvFormTest, NamesFaultsAndWhatHasNoPlace) {
    struct Case {
        FolderBytes files;
        Strings faults;
        Strings losses;
    };
    Case const cases[] = {
        {{{"TMode.csv", ""}}, {"/TMode.csv:1 the line with the names of the columns is missing"}, {}},
        {{{"TMode.csv", "mode\n1\n"}}, {"/TMode.csv:1 the column name is missing"}, {}},
        {{{"TMode.csv", "mode,name,mode\n1,a,2\n"}}, {"/TMode.csv:1 the column mode stands there twice"}, {}},
        {{{"TMode.csv", "mode,name\n1,a\n2\n3,b,c\n"}},
         {"/TMode.csv:3 1 cell in place of 2", "/TMode.csv:4 3 cells in place of 2"},
         {}},
        {{{"TMode.csv", "mode,name\n1,\"a\nb\"\nx,c\n1.0,d\n"}},
         {"/TMode.csv:4 mode: no int: x", "/TMode.csv:5 mode: no int: 1.0"},
         {}},
        {{{"TMode.csv", "mode,name\n1,\xE4\n"}}, {"/TMode.csv:2 a byte that is no UTF-8: 0xE4"}, {}},
        {{{"TMode.csv", "mode,name\n1,\"a\n"}}, {"/TMode.csv:2 a cell without its closing quote"}, {}},
        {{{"TMode.csv", "mode,name\n1," + std::string(199, 'x') + "\n"}},
         {"/TMode.csv:2 name: a text of 199 characters; 198 are the most"},
         {}},
        {{{"values.csv", "value,key\n"}}, {"/values.csv:1 the columns are not key and value"}, {}},
        {{{"values.csv",
           "key,value\n<DbDesign.CacheVersion>,x\n<QType><FBaseName>,a\n<QType><FBaseName>,a\n"}},
         {"/values.csv:2 <DbDesign.CacheVersion>: no int: x",
          "/values.csv:4 <QType><FBaseName> stands here again"},
         {}},
        {{{"TMode.csv", "mode,note,name\n1,x,a\n"},
          {"TNone.csv", "x"},
          {"values.csv", "key,value\nother,5\n"}},
         {},
         {"u /TMode.csv <TMode> has no column note", "u /TNone.csv no table has this name",
          "u /values.csv:2 nothing reads the value of other"}},
    };
    for (Case const& test : cases) {
        auto const result = ReadCsvForm(test.files);
        EXPECT_EQ(Faults(result), test.faults);
        EXPECT_EQ(Losses(result), test.losses);
    }
    EXPECT_TRUE(IsCsvFile("values.csv"));
    EXPECT_TRUE(IsCsvFile("TMode.csv"));
    for (char const* const name : {"TNone.csv", "TMode.txt", "TMode", ".csv", "", "<TMode>.csv"})
        EXPECT_FALSE(IsCsvFile(name)) << name;
}
