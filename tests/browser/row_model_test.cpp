#include "tools/browser/row_model.h"
#include "tools/table_names.h"

#include <chrono>
#include <tests/browser/browser_test.h>
#include <tests/tools/sample_lake.h>

namespace paramdb::browser {
namespace {

class BrowserRowModel : public LoadTest {
protected:
    void Load(std::string const& text) {
        FillLake(text);
        CQtParamInstance().ReadTablesFromCandidateLake();
    }
    static CatalogueEntry const& Entry(char const* name) { return tools::EntryOf(*tools::FindTable(name)); }
    std::vector<std::string> Row(int row) const {
        std::vector<std::string> cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells.push_back(model.index(row, column).data().toString().toStdString());
        return cells;
    }
    std::string Head(int column, int role = Qt::DisplayRole) const {
        return model.headerData(column, Qt::Horizontal, role).toString().toStdString();
    }

    RowModel model;
};

TEST_F(BrowserRowModel, IsEmptyWithoutATable) {
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
    EXPECT_EQ(model.Names(0), QString());
    EXPECT_EQ(model.Parameter(0), std::nullopt);
    EXPECT_EQ(model.Key(0), std::nullopt);
}

TEST_F(BrowserRowModel, ShowsKeyAndRowUnderColumnNames) {
    Load(SampleLake);
    model.SetTable(&Entry("RotorSpeed"));
    ASSERT_EQ(model.rowCount(), 3);
    ASSERT_EQ(model.columnCount(), 5);
    EXPECT_EQ(Head(0), "physical_mode");
    EXPECT_EQ(Head(2), "ratio");
    EXPECT_EQ(Head(1, Qt::ToolTipRole), "int, key");
    EXPECT_EQ(Head(2, Qt::ToolTipRole), "double");
    EXPECT_TRUE(model.headerData(1, Qt::Horizontal, Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(model.headerData(2, Qt::Horizontal, Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(Row(0), (std::vector<std::string>{"1", "1", "0.1", "1", "10"}));
    EXPECT_EQ(Row(1), (std::vector<std::string>{"1", "2", "0.2826086956521739", "13", "46"}));
    EXPECT_EQ(Row(2), (std::vector<std::string>{"2", "1", "inf", "1", "1"}));
    model.SetTable(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(BrowserRowModel, SaysWhatIdsAreCalled) {
    Load(SampleLake);
    model.SetTable(&Entry("Mode"));
    EXPECT_EQ(model.Names(3), QStringLiteral("mode: 1. gear drive"));
    EXPECT_EQ(model.Names(4), QString());
    EXPECT_EQ(model.index(3, 1).data(Qt::ToolTipRole).toString(),
              QStringLiteral("<span>mode: 1. gear drive</span>"));
    model.SetTable(&Entry("RotorSpeed")); // there are no names of locations
    EXPECT_EQ(model.Names(0), QString());
}

TEST_F(BrowserRowModel, FindsRowsForwardAndBack) {
    EXPECT_EQ(model.FindRow(QStringLiteral("1"), -1, false), -1); // no table
    Load(SampleLake);
    model.SetTable(&Entry("RotorSpeed")); // 1 1 0.1 1 10, 1 2 0.28... 13 46, 2 1 inf 1 1
    struct Case {
        char const* text;
        int row;
        bool back;
        int found;
    };
    for (auto const& [text, row, back, found] :
         {Case{"46", -1, false, 1}, Case{"46", 1, false, 1}, Case{"1", 0, false, 1}, Case{"1", 2, false, 0},
          Case{"INF", 0, false, 2}, Case{"0.", 0, true, 1}, Case{"0.", -1, true, 1}, Case{"inf", -1, true, 2},
          Case{"10", 99, true, 0}, Case{"", 0, false, -1}, Case{"x", 0, true, -1}}) {
        SCOPED_TRACE(std::string(text) + " from " + std::to_string(row));
        EXPECT_EQ(model.FindRow(QString::fromUtf8(text), row, back), found);
    }
}

TEST_F(BrowserRowModel, TellsTheKeyOrTheParameterOfARow) {
    Load(SampleLake + "<TIpParamAndStore>: {\n\t3 1001 1 2 1015 7 1 0 0 0 1\n}\n"
                      "<TInstrumentParam>: {\n\t1015 1001 \"Mesh\" 0 1 0\n}\n");
    model.SetTable(&Entry("IpParamAndStore"));
    EXPECT_EQ(model.Key(0), CClavis(3, 1001, 1, 2, 1015, 7));
    EXPECT_EQ(model.Key(1), std::nullopt);
    model.SetTable(&Entry("InstrumentParam"));
    EXPECT_EQ(model.Key(0), std::nullopt);
    EXPECT_EQ(model.Parameter(0), 1015);
}

TEST_F(BrowserRowModel, OpensALongTableAtOnce) {
    constexpr int count = 100'000;
    CDynNameIdTable table(L"<TMode>");
    for (int id = 0; id < count; ++id)
        table.Add(id, (L"Mode " + std::to_wstring(id)).c_str());
    CatalogueEntry const entry{tools::FindTable("Mode"), &table, &table};
    RowView view(QStringLiteral("Rows"));
    view.setModel(&model);
    view.show();

    auto const start = std::chrono::steady_clock::now();
    model.SetTable(&entry);
    view.FitColumns();
    Settle();
    view.grab();
    std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - start;

    EXPECT_LT(seconds.count(), 2); // some hundredths, but for a busy machine
    EXPECT_EQ(model.rowCount(), count);
    EXPECT_EQ(Row(count - 1), (std::vector<std::string>{"99999", "Mode 99999"}));
    EXPECT_EQ(Row(12'345), (std::vector<std::string>{"12345", "Mode 12345"}));
}

} // namespace
} // namespace paramdb::browser
