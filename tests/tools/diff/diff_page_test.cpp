#include "tests/tools/command_run.h"
#include "tests/tools/diff/lake_edits.h"
#include "tests/tools/drive_lake.h"
#include "tests/tools/sample_lake.h"

#include <algorithm>
#include <set>

namespace {

class DiffPageTest : public CommandTest {
protected:
    std::string Page(std::string const& a, std::string const& b,
                     std::vector<std::string> const& options = {}) {
        std::vector<std::string> arguments{"diff", File(u8"a.lake", a), File(u8"b.lake", b), "--format",
                                           "html"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunCommand(arguments).out;
    }
};

std::size_t Count(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != text.npos; place = text.find(part, place + 1))
        ++count;
    return count;
}

// What is wrong with the nesting of elements, if anything.
std::string NestingFault(std::string const& page) {
    std::set<std::string> const empty{"!DOCTYPE", "meta"};
    std::vector<std::string> open;
    for (std::size_t place = page.find('<'); place != page.npos; place = page.find('<', place + 1)) {
        std::size_t const end = page.find('>', place);
        if (end == page.npos)
            return "no end at " + page.substr(place, 40);
        std::string const tag = page.substr(place + 1, end - place - 1);
        bool const closes = tag.starts_with('/');
        std::string const name = tag.substr(closes ? 1 : 0, tag.find(' ') - (closes ? 1 : 0));
        if (empty.contains(name))
            continue;
        if (!closes)
            open.push_back(name);
        else if (open.empty() || open.back() != name)
            return name + " ends inside " + (open.empty() ? "nothing" : open.back());
        else
            open.pop_back();
    }
    return open.empty() ? "" : "no end of " + open.back();
}

// All that a word of the page refers to.
std::set<std::string> Values(std::string const& page, std::string const& attribute) {
    std::set<std::string> values;
    for (std::size_t place = page.find(attribute); place != page.npos;
         place = page.find(attribute, place + 1)) {
        std::size_t const begin = place + attribute.size();
        values.insert(page.substr(begin, page.find('"', begin) - begin));
    }
    return values;
}

} // namespace

TEST_F(DiffPageTest, IsWholeAndLooksForNothingElsewhere) {
    std::string const folder = PARAMDB_SOURCE_DIR "/examples/gearbox/";
    auto const run = RunCommand({"diff", folder + "gearbox.lake", "--format=html", "-n", "0",
                                 folder + "gearbox.lake," + folder + "customer.lake"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(
        run.out.starts_with("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"));
    EXPECT_TRUE(run.out.ends_with("</body>\n</html>\n"));
    EXPECT_EQ(NestingFault(run.out), "");
    for (char const* const reference : {"http", "src=", "url(", "@import", "<script", "<link"})
        EXPECT_EQ(Count(run.out, reference), 0U) << reference;
    EXPECT_EQ(Count(run.out, "prefers-color-scheme: dark"), 1U);
    EXPECT_EQ(Count(run.out, "@media print"), 1U);
    EXPECT_EQ(Count(run.out, "<tr class=\"added\">"), 30U);
    EXPECT_EQ(Count(run.out, "<tr class=\"removed\">"), 1032U);
}

TEST_F(DiffPageTest, LinksToItsParts) {
    std::string b = Edited(DriveLake, "\"F100;F200\"", "\"F100;F300\"");
    b = Edited(b, "5 1000 68.5", "5 1000 69");
    std::string const page = Page(DriveLake, b);
    EXPECT_EQ(NestingFault(page), "");
    auto const anchors = Values(page, "<h3 id=\"");
    EXPECT_EQ(anchors, (std::set<std::string>{"table-41", "table-90", "topic-6", "topic-9"}));
    std::set<std::string> targets;
    for (std::string const& link : Values(page, "href=\"#"))
        targets.insert(link);
    EXPECT_EQ(targets, anchors);
    EXPECT_EQ(Count(page, "<h2>What follows, with rotors at 50 Hz</h2>"), 1U);
}

TEST_F(DiffPageTest, ShowsRows) {
    std::string const b = Edited(Edited(SampleLake, "\t2 \"Warm up\"\n", ""), "\"Idle\"", "\"<b> & 'c'\"");
    std::string const page = Page(SampleLake, b);
    EXPECT_EQ(
        Count(page, "<p class=\"verdict\">2 rows differ in 1 of 103 tables: 1 changed, 1 removed</p>\n"), 1U);
    std::size_t const rows = page.find("<tbody>", page.find("<h3 id=\"table-1\">&lt;TMode&gt;</h3>"));
    EXPECT_EQ(
        page.substr(rows, page.find("</tbody>", rows) - rows),
        "<tbody>\n"
        "<tr class=\"changed\"><td class=\"mark\">changed</td><td class=\"key\"><div><span class=\"item\">"
        "<span class=\"column\">mode</span> 1</span></div></td><td><div><span class=\"column\">name</span> "
        "<del>&quot;Idle&quot;</del> &rarr; <ins>&quot;&lt;b&gt; &amp; 'c'&quot;</ins></div></td></tr>\n"
        "<tr class=\"removed\"><td class=\"mark\">removed</td><td class=\"key\"><div><span class=\"item\">"
        "<span class=\"column\">mode</span> 2</span></div></td><td><span class=\"item\">"
        "<span class=\"column\">name</span> &quot;Warm up&quot;</span></td></tr>\n");
}

TEST_F(DiffPageTest, ShowsWhatStandsBeforeTheTables) {
    std::string const page = Page(SampleLake, SampleLake + "<QType><FBaseName>: \"TG 1\"\n");
    EXPECT_EQ(NestingFault(page), "");
    EXPECT_EQ(Count(page, "<tr><th scope=\"row\">base type</th><td><del>&quot;&quot;</del></td><td><ins>"
                          "&quot;TG 1&quot;</ins></td></tr>\n"),
              1U);
    EXPECT_EQ(Count(page, "<h3"), 0U);
}

TEST_F(DiffPageTest, NoDifference) {
    std::string const page = Page(SampleLake, SampleLake);
    EXPECT_EQ(NestingFault(page), "");
    EXPECT_EQ(Count(page, "<p class=\"verdict\">No difference: 103 tables with 9 rows</p>\n"), 1U);
    EXPECT_EQ(Count(page, "<h2"), 0U);
}

TEST_F(DiffPageTest, LimitsTheRowsOfATable) {
    std::string rows = "<TChannel>: {\n";
    for (int id = 1; id <= 1200; ++id)
        rows += std::to_string(id) + " \"x\"\n";
    rows += "}\n";
    EXPECT_EQ(Count(Page(SampleLake, SampleLake + rows), "<tr class=\"added\">"), 1000U);
    EXPECT_EQ(
        Count(Page(SampleLake, SampleLake + rows), "<p class=\"more\">200 more; --limit 0 shows all</p>\n"),
        1U);
    std::string const all = Page(SampleLake, SampleLake + rows, {"--limit", "0"});
    EXPECT_EQ(Count(all, "<tr class=\"added\">"), 1200U);
    EXPECT_EQ(Count(all, "class=\"more\""), 0U);
}
