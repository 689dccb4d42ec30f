#include <paramdb/tables/table_messages.h>

#include <gtest/gtest.h>
#include <tests/support/messages.h>
#include <vector>

namespace {

TEST(TableMessages, ALineThatCannotBeRead) {
    MessageLog messages;
    DynTables::log_error(L"Reader::Read()", L"<TMode>", L"1 \"idle");
    DynTables::log_error(L"", L"", L"");
    EXPECT_EQ(
        messages.Take(),
        (std::vector<Message>{{8, 3, L"Reader::Read(): Error reading line '1 \"idle' of table '<TMode>'\n"},
                              {8, 3, L": Error reading line '' of table ''\n"}}));
}

TEST(TableMessages, ACellOfAnotherType) {
    MessageLog messages;
    paramdb::LogBadCell(L"<TMode>", 2);
    EXPECT_EQ(messages.Take(),
              (std::vector<Message>{
                  {8, 3,
                   L"CQParamSeaTypedTable< T >::ReadTable(): No data or incompatible data type in "
                   L"some field of line 2' of table '<TMode>'\n"}}));
}

} // namespace
