#include <paramdb/platform/core/line_end.h>
#include <paramdb/storage/lake.h>
#include <paramdb/tables/catalogue.h>

#include "tests/support/messages.h"
#include "tests/support/temp_dir.h"
#include "tests/tools/rewrite/layout_model.h"
#include "tests/tools/rewrite/random_lake.h"
#include "tools/rewrite/lake_proof.h"
#include "tools/rewrite/layout.h"
#include "tools/rewrite/row_layout.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

// Everything that reading a file into tables gives: messages and dumps.
std::vector<Message> Loaded(std::string const& bytes) {
    test_support::TempDir const folder;
    test_support::WriteBytes(folder / u8"a.lake", bytes);
    CLake lake(CString(test_support::WideName(folder / u8"a.lake")));
    MessageLog log;
    static CParamTables tables;
    for (paramdb::CatalogueEntry const& entry : paramdb::CatalogueEntries(tables)) {
        entry.table->ReadTable(lake);
        entry.table->DumpTable(0);
    }
    return log.Take();
}

} // namespace

TEST(LayoutTest, LinesOfEveryKind) {
    struct Case {
        std::string bytes;
        std::string text;
    };
    Case const cases[] = {
        {"", ""},
        {"\n  \n\t\n", "\n\n\n"},
        {";note\n  ;   note  \n;\n;;;;\n;; two\n", "; note\n; note\n;\n;;;;\n;; two\n"},
        {"key:value\nkey  :   a   b ; c\nempty :\n", "key: value\nkey: a   b ; c\nempty:\n"},
        {"k : {\n1   2\nj:{\n3\n}\n  };end\n", "k: {\n\t1   2\n\tj: {\n\t\t3\n\t}\n} ; end\n"},
        {"{\n}x  y\n", "{\n}x  y\n"},
        // A colon without a key.
        {":\n: 5\n: a:b\n: ; x\n: } ; y\n", "\n5\n: a:b\n: ; x\n: } ; y\n"},
        // The last line gets its end.
        {"k: 1", std::string("k: 1") + paramdb::LineEnd},
        {"k: 1\nj: 2", "k: 1\nj: 2\n"},
    };
    for (Case const& test : cases) {
        EXPECT_EQ(CanonicalLayout(test.bytes), test.text) << test.bytes;
        EXPECT_EQ(CanonicalLayout(test.text), test.text) << test.text;
    }
}

TEST(LayoutTest, RowsOfTables) {
    struct Case {
        std::string row;
        std::string text;
    };
    // group, result code and a third number, then two texts
    Case const cases[] = {
        {"1 2 3 a b", "1 2 3 a b"},
        {"1\t 2   3\xA0 \"a\"   b", "1 2 3 a b"},
        {"+1 -2 003 \"\" \"b c\"", "+1 -2 003 \"\" \"b c\""},
        {"1 2 3\"a\"b", "1 2 3 a b"},
        {"1-2+3a b", "1 -2 +3 a b"},
        {"1 2 3 \"a:b\" \"c;d\"", "1 2 3 \"a:b\" \"c;d\""},
        {"1 2 3 \"{\" \"}\"", "1 2 3 \"{\" \"}\""},
        // A text that the line ends gets its quote.
        {"1 2 3 \"a\" \"b c", "1 2 3 a \"b c\""},
        {"1 2 3 a\"b c\"d", "1 2 3 a\"b c\"d"},
        // Short rows stay short, and what is too much stays.
        {"1   2", "1 2"},
        {"1 2 3 a b   c  d", "1 2 3 a b c  d"},
        {"1 2 3 a b  ; c", "1 2 3 a b ; c"},
        // What cannot be read stays as it is.
        {"1   x 3 a b", "1   x 3 a b"},
        {"1   99999999999", "1   99999999999"},
        {"1 2 3   \"" + std::string(200, 'l') + "\"", "1 2 3   \"" + std::string(200, 'l') + "\""},
        {"1 2 3 \"" + std::string(195, 'l') + "\"", "1 2 3 " + std::string(195, 'l')},
        // A quote hides the colon behind it only as long as it stays.
        {"1 2 3 a\" b:c", "1 2 3 a\" b:c"},
        {": 1 2 3 a:b   c", "1 2 3 \"a:b\" c"},
    };
    for (Case const& test : cases) {
        std::string const text = "<TErrorGroup>: {\n\t" + test.text + "\n}\n";
        EXPECT_EQ(CanonicalLayout("<TErrorGroup>:{\n" + test.row + "\n}\n"), text) << test.row;
        EXPECT_EQ(CanonicalLayout(text), text) << test.row;
        // The same line is no row below another key, or deeper.
        for (std::string const key : {"<TErrorGroups>: {\n", "x: {\n<TErrorGroup>: {\n", "x: {\n{\n"}) {
            std::string const other = CanonicalLayout(key + test.row + "\n");
            EXPECT_NE(other.find(test.row + "\n"), std::string::npos) << key << other;
        }
    }
}

TEST(LayoutTest, LineEndsAreThoseOfMostLines) {
    EXPECT_EQ(CanonicalLayout("a:1\r\nb:2\r\nc:3\n"), "a: 1\r\nb: 2\r\nc: 3\r\n");
    EXPECT_EQ(CanonicalLayout("a:1\nb:2\r\nc:3\n"), "a: 1\nb: 2\nc: 3\n");
    std::string const end = paramdb::LineEnd;
    EXPECT_EQ(CanonicalLayout("a:1\nb:2\r\n"), "a: 1" + end + "b: 2" + end);
}

TEST(LayoutTest, NothingChangesBehindTheEnd) {
    EXPECT_EQ(CanonicalLayout("  }  \n  k :  1  \n\t;x\n"), "}\n  k :  1  \n\t;x\n");
    EXPECT_EQ(CanonicalLayout("}\r\n  k  \r\r\n\n"), "}\r\n  k  \r\n\r\n");
}

TEST(LayoutTest, AgreesWithTheModelOnRandomLakes) {
    for (unsigned seed = 0; seed < 800; ++seed) {
        SCOPED_TRACE(seed);
        std::string const bytes = RandomLake(seed).Lines(30);
        std::string const text = CanonicalLayout(bytes);
        ASSERT_EQ(text, layout_model::Format(bytes)) << bytes;
        ASSERT_EQ(CanonicalLayout(text), text) << bytes;
    }
}

TEST(LayoutTest, ReadsAsBeforeOnRandomLakes) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        std::string const bytes = RandomLake(seed).Lines(60);
        std::string const text = CanonicalLayout(bytes);
        ASSERT_TRUE(IsSameButForLayout(bytes, text)) << bytes;
        ASSERT_EQ(Loaded(bytes), Loaded(text)) << bytes;
    }
}

TEST(LayoutTest, TheProofSeesEveryOtherChange) {
    std::string const bytes = "k: v\n; note\n<TMode>: {\n1 idle\n2 x y\n}\n<X>: {\n1 2\n}\n";
    ASSERT_TRUE(
        IsSameButForLayout(bytes, "k : v\n;note\n<TMode>:{\n1  \"idle\"\n2 x z\n}\n<X>: {\n1 2\n}\n"));
    for (std::string const other : {"k: w\n; note\n<TMode>: {\n1 idle\n2 x y\n}\n<X>: {\n1 2\n}\n",
                                    "j: v\n; note\n<TMode>: {\n1 idle\n2 x y\n}\n<X>: {\n1 2\n}\n",
                                    "k: v\n; nota\n<TMode>: {\n1 idle\n2 x y\n}\n<X>: {\n1 2\n}\n",
                                    "k: v\n; note\n<TMode>: {\n1 idol\n2 x y\n}\n<X>: {\n1 2\n}\n",
                                    "k: v\n; note\n<TMode>: {\n1 idle\n3 x y\n}\n<X>: {\n1 2\n}\n",
                                    "k: v\n; note\n<TMode>: {\n1 idle\n2 x y\n}\n<X>: {\n1  2\n}\n",
                                    "k: v\n; note\n<TMode>: {\n1 idle\n2 x y\n}\n<X>: {\n1 2\n",
                                    "k: v\n; note\n<TMode>: {\n1 idle\n2 x y\n}\n<X>: {\n1 2\n}\n\n", ""})
        EXPECT_FALSE(IsSameButForLayout(bytes, other)) << other;
}

TEST(LayoutTest, IndentsSoDeepAndNoDeeper) {
    auto const nested = [](std::size_t levels) {
        std::string text = "k: v\n";
        for (std::size_t level = 0; level < levels; ++level)
            text += "{\n";
        return text;
    };
    EXPECT_TRUE(HasLayout(""));
    EXPECT_TRUE(HasLayout(nested(MostLevels)));
    EXPECT_TRUE(HasLayout(nested(MostLevels) + "row\n"));
    EXPECT_TRUE(HasLayout(nested(MostLevels + 1)));
    EXPECT_FALSE(HasLayout(nested(MostLevels + 1) + "row\n"));
    EXPECT_FALSE(HasLayout(nested(1'000'000)));
}

TEST(LayoutTest, CountsChangedLines) {
    EXPECT_EQ(CountChangedLines("", ""), 0U);
    EXPECT_EQ(CountChangedLines("a:1\nb: 2\nc:3", "a: 1\nb: 2\nc: 3\n"), 2U);
}

TEST(LayoutTest, ARowWithoutATableLineIsNone) {
    MessageLog const unseen;
    RowLayout layout(paramdb::Catalogue()[0]);
    EXPECT_EQ(layout.Format("1   idle"), "1 idle");
    EXPECT_EQ(layout.Format("x"), std::nullopt);
    EXPECT_EQ(layout.Format("2"), "2");
}
