#include "tools/html_report/page.h"

#include <gtest/gtest.h>
#include <string>

using namespace paramdb::tools;

TEST(ReportPage, DataStandsBetweenTheHalves) {
    EXPECT_TRUE(PageHead().starts_with("<!DOCTYPE html>\n<html lang=\"en\">\n"));
    EXPECT_TRUE(PageHead().ends_with("<script type=\"application/json\" id=\"data\">"));
    EXPECT_TRUE(PageTail().starts_with("</script>\n<script>\n"));
    EXPECT_TRUE(PageTail().ends_with("</script>\n</body>\n</html>\n"));
}

// So it reads the same in every encoding.
TEST(ReportPage, IsAscii) {
    for (std::string_view const half : {PageHead(), PageTail()})
        for (char const letter : half)
            EXPECT_TRUE(letter == '\n' || (letter >= 0x20 && letter < 0x7F)) << int{letter};
}

TEST(ReportPage, IsCompleteAndAsksForNothing) {
    std::string const page = std::string(PageHead()) + std::string(PageTail());
    for (char const* const mark : {"@STYLE", "@SCRIPT", "@DATA", "@import", "https://", "src=", "url(",
                                   "eval(", "innerHTML", "outerHTML", "insertAdjacentHTML", "document.write"})
        EXPECT_EQ(page.find(mark), std::string::npos) << mark;
    std::string const space = "http://www.w3.org/2000/svg"; // a name, and never asked for
    EXPECT_EQ(page.find("http:"), page.find(space));
    EXPECT_EQ(page.find("http:", page.find(space) + 1), std::string::npos);
}

TEST(ReportPage, PolicyNamesStyleAndScript) {
    std::string const head(PageHead());
    EXPECT_NE(head.find("content=\"default-src 'none'; style-src 'sha256-"), std::string::npos);
    EXPECT_NE(head.find("='; script-src 'sha256-"), std::string::npos);
    EXPECT_NE(head.find("; img-src data:; base-uri 'none'; form-action 'none'\">"), std::string::npos);
    EXPECT_EQ(head.find("unsafe"), std::string::npos);
}
