#include "tests/tools/check/check_files.h"
#include "tools/check/checked_table.h"

using namespace paramdb::tools::check;

namespace {

class CheckedTableTest : public CheckTest {};

std::string Text(Place const& place) {
    return std::to_string(place.file) + ':' + std::to_string(place.line) + ':' +
           std::to_string(place.column) + '+' + std::to_string(place.length);
}

} // namespace

TEST_F(CheckedTableTest, RowsWithTheirPlaces) {
    CheckContext const& context =
        Context({LakeVersion + "<TMode>: {\n\t1 \"Idle\"\n\t2 \"Warm up\"\n}\n<TTriggerParam>: {\n"
                               "\t2 7 1 1 4294967295 1.5 2 3 4 5 6 7\n\t1 7 1 1\n}\n",
                 "<TMode>: {\n\t3 Drive\n\t1 \"Leerlauf\" ; x\n}\n"});
    CheckedTable const& modes = context.Table("Mode");
    EXPECT_EQ(modes.Tag(), "<TMode>");
    EXPECT_EQ(modes.RowCount(), 2U);
    std::size_t const mode = modes.Column("mode");
    std::size_t const name = modes.Column("name");
    EXPECT_THROW(static_cast<void>(modes.Column("nome")), std::logic_error);
    Texts seen;
    modes.VisitRows([&](CheckedRow const& row) {
        EXPECT_EQ(row.Index(), seen.size());
        EXPECT_THROW(static_cast<void>(row.Integer(name)), std::logic_error);
        EXPECT_THROW(static_cast<void>(row.Number(name)), std::logic_error);
        EXPECT_THROW(static_cast<void>(row.Text(mode)), std::logic_error);
        seen.push_back(std::to_string(row.Integer(mode)) + ' ' + paramdb::ToUtf8(row.Text(name)) + ' ' +
                       Text(row.Whole()) + ' ' + Text(row.At(mode)) + ' ' + Text(row.At(name)));
    });
    EXPECT_EQ(seen, (Texts{"1 Leerlauf 1:3:2+16 1:3:2+1 1:3:5+8", "3 Drive 1:2:2+7 1:2:2+1 1:2:4+5"}));

    CheckedTable const& triggers = context.Table("<TTriggerParam>");
    seen.clear();
    triggers.VisitRows([&](CheckedRow const& row) {
        seen.push_back(std::to_string(row.Integer(0)) + ' ' + Text(row.At(2)) + ' ' + Text(row.At(6)));
    });
    EXPECT_EQ(seen, (Texts{"1 0:9:6+1 0:9:9+1", "2 0:8:6+1 0:8:25+1"}));
    EXPECT_EQ(context.Table("TChannel").Section(), nullptr);
    EXPECT_THROW(static_cast<void>(context.Table("Moed")), std::logic_error);
    EXPECT_EQ(context.Tables().size(), 103U);
}

// Rows that a load makes itself come from no line.
TEST_F(CheckedTableTest, RowsWithoutALine) {
    CheckContext const& context = Context({LakeVersion + "<TMode>: {\n1 a\n}\n"});
    CQtParamInstance().Entries();
    CheckedTable const& modes = context.Table("Mode");
    ASSERT_NE(modes.Line(0), nullptr);
    EXPECT_EQ(Text(modes.PlaceOf(0)), "0:4:1+3");
    CheckedTable const& none = context.Table("Location");
    EXPECT_EQ(none.RowCount(), 0U);
}
