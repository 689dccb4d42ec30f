#include "tests/tools/check/check_files.h"

namespace {

class LakeRulesTest : public CheckTest {};

std::string const Modes = "<TMode>: {\n\t1 \"Idle\"\n}\n";

} // namespace

TEST_F(LakeRulesTest, OneFile) {
    struct Case {
        std::string text;
        Texts findings;
    };
    Case const cases[] = {
        {Modes, {}},
        {"", {}},
        {"; a comment: with <TMode>: { and \"\n\n" + Modes, {}},
        {"\t<TMode>:{\n1 \"a: {\"\n  } ; closes\n", {}},
        // Sections.
        {"<TMode>: {\n\t1 \"Idle\"\n", {"0:1:1 P105 the section <TMode> is never closed"}},
        {"<TMode>: {\n<TChannel>: {\n}\n<TLocation>: {\n}\n",
         {"0:1:1 P105 the section <TMode> is never closed",
          "0:2:1 P106 the section <TChannel> stands inside of <TMode>, where nothing looks for it, and so "
          "does 1 section "
          "behind it"}},
        {"{\n1\n}\n", {"0:1:1 P107 the section has no key, so nothing looks for its rows"}},
        {"<TMode>: {\n\t1 \"Idle\"\n\t{\n\t}\n}\n",
         {"0:3:2 P106 the section without a key stands inside of <TMode>, where nothing looks for it",
          "0:3:2 P205 the row is left out: \"{\" is not a whole number of 32 bits, as the column mode takes "
          "it"}},
        {"}\n" + Modes + "}\n; end\n}\n",
         {"0:1:1 P108 the bracket closes nothing and ends the data: 5 lines behind it are never read",
          "0:5:1 P108 the bracket closes nothing", "0:7:1 P108 the bracket closes nothing"}},
        {Modes + "}\n<TModes>: 1\n",
         {"0:4:1 P108 the bracket closes nothing and ends the data: 1 line behind it is never read",
          "0:5:1 P112 nothing looks for the key <TModes>; did you mean <TMode>?"}},
        {"<TMode>: {\n}x\n", {"0:2:1 P109 the line closes the section, and what stands in it is not read"}},
        {"<TMode>: {\n}1 \"Idle\"\n\t2 \"Warm up\"\n}\n",
         {"0:2:1 P109 the line closes the section, and what stands in it is not read",
          "0:3:2 P113 the line stands outside of any section, where nothing reads it",
          "0:4:1 P108 the bracket closes nothing and ends the data"}},
        // Keys.
        {"<TMode>: {\n<x>: {\n}\n<y>: 1\n}\n",
         {"0:2:1 P106 the section <x> stands inside of <TMode>, where nothing looks for it",
          "0:4:4 P201 the colon makes a key of this line, so that <TMode> has no such row"}},
        {"<tmode>: {\n}\n", {"0:1:1 P111 no table has the tag <tmode>; did you mean <TMode>?"}},
        {"entirely different: 1\n", {"0:1:1 P112 nothing looks for the key entirely different"}},
        {": 1\n", {"0:1:3 P113 the line stands outside of any section, where nothing reads it"}},
        {"<TMode> {\n\t1 \"Idle\"\n}\n",
         {"0:1:1 P113 2 lines from here on stand outside of any section, where nothing reads them",
          "0:3:1 P108 the bracket closes nothing and ends the data"}},
        {"<QType><FBaseName>: {\n}\n",
         {"0:1:1 P115 <QType><FBaseName> stands with a single value, but the line opens a section"}},
        {"<DbDesign.CacheVersion>: {\n}\n",
         {"0:1:1 P115 <DbDesign.CacheVersion> stands with a single value, but the line opens a section",
          "0:1:1 P118 <DbDesign.CacheVersion> stands with a value and with a section"}},
        {Modes + Modes + Modes,
         {"0:1:1 P116 1 line of this section will not be read: a later section has its key",
          "0:4:1 P116 1 line of this section will not be read: a later section has its key"}},
        {Modes + "<TMode>: 1\n",
         {"0:4:1 P115 <TMode> is the tag of a table, but the line opens no section",
          "0:4:1 P118 <TMode> stands with a value and with a section"}},
        {"<DbDesign.CacheVersion>: 216\n",
         {"0:1:1 P118 <DbDesign.CacheVersion> is repeated: the first line counts"}},
        // Named texts.
        {"<QType><FBaseName>: \"a b\"\n<QType><FAliasName>:\n", {}},
        {"<QType><FBaseName>: \"a b\n",
         {"0:1:21 P110 the quote is never closed, so colons and blanks behind it count "
          "as text"}},
        {"<QLearn><FLearnArcName>: a b\n",
         {"0:1:26 P120 the text is \"a\": what follows behind the blank is not read"}},
        // Characters.
        {"; comments may hold \xC3\xBC and \x96 and \"\n" + Modes, {}},
        {"<TMode>: {\n\t1 \"Pr\xFC"
         "fen\"\n}\n",
         {}},
        {"<TMode>: {\n\t1 \"a\vb\"\n}\n", {"0:2:6 P124 the byte 0x0B is a control character"}},
        {"<TMode>: {\n\t1 \"\xF0\x9D\x84\x9E\"\n}\n",
         {"0:2:5 P122 this is UTF-8, but is read byte by byte, as "
          "\"\xC3\xB0\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\"",
          "0:2:5 P123 the character \xF0\x9D\x84\x9E has no byte in this format, and cannot be written"}},
        {"<TMode>: {\r\n\t1 \"Idle\"\r\n}\r\n", {}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(Findings({test.text}), test.findings) << test.text;
}

TEST_F(LakeRulesTest, SeveralFiles) {
    struct Case {
        Texts files;
        Texts findings;
    };
    std::string const two = "<TMode>: {\n\t1 \"Idle\"\n\t2 \"Warm up\"\n}\n";
    Case const cases[] = {
        {{Modes, "<TChannel>: {\n\t1 \"Fixed\"\n}\n"}, {}},
        {{Modes, two}, {}},
        {{two, Modes},
         {"1:1:1 P117 the section replaces one of an earlier file as a whole, of which 1 row of 2 has no "
          "successor: 2"}},
        {{two, Modes, two},
         {"1:1:1 P117 the section replaces one of an earlier file as a whole, of which 1 row of 2 has no "
          "successor: 2"}},
        {{Modes, LakeVersion}, {}},
        {{Modes, "<DbDesign.CacheVersion>: 215\n"},
         {"1:1:1 P119 <DbDesign.CacheVersion> keeps its value of an earlier file: 216"}},
        {{"<TMode>: {\n\t1 \"Idle\"\n", "<TChannel>: {\n}\n"},
         {"0:1:1 P105 the section <TMode> is never closed, and takes in the files that follow",
          "1:1:1 P106 the section <TChannel> stands inside of <TMode>, where nothing looks for it",
          // The line that joins the files, and that in the other file.
          "0:0:0 P202 the blank line is read as a row of <TMode>, which repeats the key of the line before "
          "it"}},
        {{Modes + "}\n", two},
         {"0:4:1 P108 the bracket closes nothing and ends the data: 4 lines behind it are never read"}},
    };
    for (Case const& test : cases) {
        Texts found = Findings(test.files);
        Texts expected = test.findings;
        std::sort(found.begin(), found.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(found, expected) << test.files.back();
    }
}

TEST_F(LakeRulesTest, Versions) {
    struct Case {
        std::string text;
        Texts findings;
    };
    Case const cases[] = {
        {"<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 2\n", {}},
        {"<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 0\n", {"P102"}},
        {"<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: x\n", {"P102", "P104"}},
        {"<DbDesign.CacheMinorVersion>: 1\n", {"P101"}},
        {"<DbDesign.CacheVersion>: 201\n", {"P102"}},
        {"<DbDesign.CacheVersion>: 300\n", {"P103"}},
        {"<DbDesign.CacheVersion>: 2160\n<DbDesign.CacheMinorVersion>: 1\n", {"P103"}},
        {"<DbDesign.CacheVersion>: 99999999999\n<DbDesign.CacheMinorVersion>: 1\n", {"P103", "P104"}},
    };
    for (Case const& test : cases) {
        auto const& context = Context({test.text});
        paramdb::tools::check::FindingList list;
        RunRules(context, list);
        Texts codes;
        for (auto const& finding : list.Take())
            codes.emplace_back(finding.code->code);
        EXPECT_EQ(codes, test.findings) << test.text;
    }
}
