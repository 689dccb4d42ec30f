#include <paramdb/platform/core/line_end.h>

#include "tests/support/messages.h"
#include "tests/tools/convert/form_told.h"
#include "tools/convert/forms.h"

#include <gtest/gtest.h>

using namespace form_told;

TEST(SeaFormTest, ReadsAndNamesWhatHasNoPlace) {
    MessageLog const unseen;
    auto const result = ReadSeaForm("# one\n"
                                    "list\t<TMode>\n"
                                    "\t1 \"a b\" more\n"
                                    "\tx\n"
                                    "\t2 a\\0b\n"
                                    "\t3 \\u20AC\\n\n"
                                    "nonsense\n"
                                    "\tlost\n"
                                    "list\t<TNone>\n"
                                    "\t1\n"
                                    "# two\n"
                                    "value\t<DbDesign.CacheVersion>\t0\t215\n"
                                    "value\t<DbDesign.CacheVersion>\t0\t216\n"
                                    "value\t<DbDesign.CacheMinorVersion>\t0\tx\n"
                                    "value\t<QType><FBaseName>\t0\ta b\n"
                                    "value\t<QType><FBaseName>\t1\tc\n"
                                    "value\tother\t0\td\n");
    EXPECT_EQ(Faults(result), Strings());
    EXPECT_EQ(Losses(result), (Strings{
                                  "f :7 the line makes no sense",
                                  "f :8 the line makes no sense",
                                  "s  a value that is given again further down is passed over",
                                  "c :1 2 comments, the first of them here",
                                  "e  <TMode>, line 1: the end of the row is not read: more",
                                  "f  <TMode>, line 2: the row cannot be read",
                                  "f  <TMode>, line 3: the row cannot be read",
                                  "u  no table has the list <TNone>",
                                  "f  the value <DbDesign.CacheMinorVersion> 0 is no number: x",
                                  "u  nothing reads the value <QType><FBaseName> 1",
                                  "u  nothing reads the value other 0",
                              }));
    EXPECT_TRUE(result.has_partial_rows);
    EXPECT_EQ(result.parameters.version[0], 216);
    EXPECT_EQ(result.parameters.texts[2], L"a b");
    EXPECT_EQ(RowsOf(result, L"<TMode>"), (Rows{{1, Text(L"a b")}, {3, Text(L"\x20AC")}}));
}

TEST(SeaFormTest, Writes) {
    Strings faults;
    auto parameters = Sample();
    parameters.tables[PlaceOf(L"<TMode>")][1] = {2, Text(L"\x20AC\n")};
    std::string const end = paramdb::LineEnd;
    EXPECT_EQ(WriteSeaForm(parameters, faults),
              "list\t<TMode>" + end + "\t1 Idle" + end + "\t2 \"\xE2\x82\xAC\\n\"" + end +
                  "list\t<TRotorSpeed>" + end + "\t1 2 0.1 3 4" + end + "\t1 3 -0 -5 6" + end +
                  "list\t<TTrigger>" + end + "value\t<DbDesign.CacheMinorVersion>\t0\t1" + end +
                  "value\t<DbDesign.CacheVersion>\t0\t216" + end + "value\t<QLearn><FLearnArcName>\t0\ta b" +
                  end + "value\t<QType><FAliasName>\t0\t\xC3\xA4" + end + "value\t<QType><FBaseName>\t0\t" +
                  end);
    EXPECT_EQ(faults, Strings());
}
