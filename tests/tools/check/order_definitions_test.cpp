#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

#include <algorithm>

namespace {

class OrderDefinitionsTest : public CheckTest {};

std::string Row(std::string const& definition, int interpretation = 6) {
    return "1 1 9 " + std::to_string(interpretation) + " \"" + definition + "\" -1 -1";
}

std::string Positions(int count) {
    std::string text;
    for (int position = 1; position <= count; ++position)
        text += (position == 1 ? "O" : ";O") + std::to_string(position);
    return text;
}

} // namespace

TEST_F(OrderDefinitionsTest, Definitions) {
    struct Case {
        std::string row;
        Texts findings; // of a value; a residual track has the same but for the interpretation
    };
    Case const cases[] = {
        {Row("O1"), {}},
        {Row("H1-L2;H1+L2"), {}},
        {Row(" h"), {"10 P406 nothing looks at 'h' in position 1 of the definition"}},
        {Row("HX-M0.5;HX+M0.5"), {}},
        {Row(""), {"10 P407 the definition is empty, so there is nothing to measure"}},
        {Row("O1;O2;O3"),
         {"10 P403 the definition has 3 positions, one of which is left over, and is ignored as a whole"}},
        {Row("O1*2"),
         {"12 P402 the order definition is bad and counts as empty: '*' cannot follow the number of 'O'"}},
        {Row("O1;F100+H1"),
         {"18 P402 the order definition is bad and counts as empty: 'F' and 'H' cannot stand in one "
          "position"}},
        {Row("O1O2;O3"),
         {"12 P402 the order definition is bad and counts as empty: 'O' cannot follow the number of 'O'"}},
        {Row("O1-L2+O2;O3"), {"10 P406 nothing looks at '+O2' in position 1 of the definition"}},
        {Row(Positions(32)), {}},
        {Row(Positions(33)), {"10 P405 only the first 32 positions of the definition are read"}},
        {Row("O1", 0), {}},
        {Row("O1", 1), {"7 P404 the interpretation 1 is deprecated"}},
        {Row("O1", 4), {"7 P404 the interpretation 4 is deprecated"}},
        {Row("O1", 5), {}},
        {Row("O1", -1), {}},
        {Row("O1;", 3), {"7 P404 the interpretation 3 is deprecated"}},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.row);
        for (char const* const tag : {"TIpSpectralValue", "TIpSpectralTrack", "TIpResidualTrack"}) {
            SCOPED_TRACE(tag);
            Texts expected;
            for (std::string const& finding : test.findings)
                if (finding.find("P404") == std::string::npos || tag != std::string("TIpResidualTrack"))
                    expected.push_back("2:" + finding);
            EXPECT_EQ(RuleFindings(TableText(tag, {test.row})), expected);
        }
    }
}

// Each message of the load has its finding, whatever stands between them.
TEST_F(OrderDefinitionsTest, MessagesAreExplained) {
    std::vector<std::string> rows;
    for (int row = 0; row < 30; ++row)
        rows.push_back(std::to_string(row) + " 1 9 2 \"" +
                       (row % 3 == 0   ? "O*"
                        : row % 3 == 1 ? "O1;O2;O3"
                                       : "O1") +
                       "\" -1 -1");
    Texts const found = Findings({TableText("TIpSpectralValue", rows) + TableText("TIpSpectralTrack", rows) +
                                  TableText("TIpResidualTrack", rows)},
                                 "1234");
    auto const count = [&](char const* code) {
        return std::count_if(found.begin(), found.end(), [&](std::string const& finding) {
            return finding.find(code) != std::string::npos;
        });
    };
    EXPECT_EQ(count(" P402 "), 30);
    EXPECT_EQ(count(" P403 "), 30);
    EXPECT_EQ(count(" P404 "), 60);
    EXPECT_EQ(count(" P191 "), 0);
}
