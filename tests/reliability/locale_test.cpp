// Whole loads and every question where the decimal point is a comma: the answers are those of the classic
// locale.
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/lake.h>

#include <gtest/gtest.h>
#include <string>
#include <tests/equality/questions.h>
#include <tests/support/comma_locale.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>

namespace {

class ReliabilityLocale : public LoadTest {
protected:
    // Messages, dumps, answers, and the tables as lines of a sea.
    static std::string Everything(std::string const& lake) {
        MessageLog messages;
        FillLake(lake);
        CQtParamDistillery distillery;
        CQtParamInstance instance(&distillery);
        equality::Random random(3);
        equality::AnswerBook book;
        book.Tell("loaded", instance.ReadTablesFromCandidateLake());
        instance.DumpTables(0);
        AskNames(instance, book);
        AskClassification(instance, book);
        AskKeyTexts(instance, random, book);
        AskDisplayTexts(instance, book);
        AskModes(instance, random, book);
        AskRotors(instance, book);
        AskChannelsAndPolygons(instance, book);
        AskIntervals(instance, random, book);
        AskTriggers(instance, random, book);
        AskNumbersAndOrders(random, book);
        CResourceSea sea;
        for (auto const& entry : distillery.Entries())
            entry.table->WriteTable(&sea);
        for (auto const& [tag, lines] : sea.Lists())
            for (std::wstring const& line : lines)
                book.Tell("line", tag, line);
        for (Message const& message : messages.Take())
            book.Tell("message", message.category, message.style, message.text);
        return book.Text();
    }
};

TEST_F(ReliabilityLocale, AnswersDoNotMindCommas) {
    equality::Random random(1);
    std::string const lake = equality::RandomLake(random);
    std::string const expected = Everything(lake);
    test_support::CommaLocale const commas;
    EXPECT_TRUE(Everything(lake) == expected);
}

} // namespace
