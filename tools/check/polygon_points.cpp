// Polygons and their points.
#include "tools/check/known_ids.h"
#include "tools/check/row_lines.h"
#include "tools/check/rules.h"
#include "tools/short_number.h"

#include <unordered_map>

namespace paramdb::tools::check {
namespace {

// A polygon with its name, if it has one.
std::string Shown(CQtParamInstance const& parameters, int polygon) {
    auto const row = parameters.IpPolygon().find(polygon);
    bool const has_name = polygon != -1 && row != parameters.IpPolygon().end();
    return has_name ? tools::Shown({polygon, row->second.get<"name">().c_str()}) : std::to_string(polygon);
}

void CheckCounts(CheckContext const& context, FindingList& findings) {
    CheckedTable const& points = context.Table("IpPolygonValue");
    if (points.Section() == nullptr)
        return;
    int polygon = -1;
    std::size_t count = 0;
    std::size_t first = 0;
    auto const report = [&] {
        if (count == 1)
            findings
                .Add("P430", points.PlaceOf(first),
                     "polygon " + Shown(context.Parameters(), polygon) + " has no other point than this")
                .Hint("a polygon is a line from point to point: give it two or more");
    };
    points.VisitRows([&](CheckedRow const& row) {
        int const number = static_cast<int>(row.Integer(0));
        if (count > 0 && number == polygon) {
            ++count;
            return;
        }
        report();
        polygon = number;
        count = 1;
        first = row.Index();
    });
    report();

    IdTable const with_points(context, points);
    context.Table("IpPolygon").VisitRows([&](CheckedRow const& row) {
        if (!with_points.Contains(row.Integer(0)))
            findings.Add("P431", row.At(0), "the polygon has no points")
                .Hint("add points to " + points.Tag() + ", or leave the row out");
    });
}

// Tables are in the order of x whatever that of the lines is.
void CheckOrder(CheckContext const& context, FindingList& findings) {
    struct Last {
        float x;
        CLakeNode const* line;
    };
    CheckedTable const& points = context.Table("IpPolygonValue");
    std::unordered_map<int, Last> last_of;
    VisitRowLines(points, [&](CLakeNode const& line, RowBuffer const& row) {
        int const polygon = row.Key()[0].As<std::int32_t>();
        float const x = row.Key()[1].As<float>();
        auto const [last, is_new] = last_of.try_emplace(polygon, Last{x, &line});
        if (is_new)
            return;
        if (x < last->second.x)
            findings
                .Add("P432", points.FieldPlace(line, 1),
                     "x = " + ShortNumber(x) + " comes behind " + ShortNumber(last->second.x) +
                         " in polygon " + Shown(context.Parameters(), polygon) +
                         ", whose points count in the order of x")
                .Hint("put the points in the order of x, and see that no digit is missing")
                .Relate(context.PlaceOf(*last->second.line), "the point before");
        last->second = {x, &line};
    });
}

void CheckTwoPoints(CheckContext const& context, FindingList& findings) {
    CheckedTable const& rows = context.Table("IpTrackPolygon");
    std::size_t const mode = rows.Column("polygon_mode");
    std::size_t const x_start = rows.Column("x_start");
    std::size_t const x_end = rows.Column("x_end");
    rows.VisitRows([&](CheckedRow const& row) {
        if (row.Integer(mode) != 1 || row.Number(x_start) < row.Number(x_end))
            return;
        findings
            .Add("P433", row.At(x_end),
                 "the line of two points ends at x = " + ShortNumber(static_cast<float>(row.Number(x_end))) +
                     ", which is not above its start at " +
                     ShortNumber(static_cast<float>(row.Number(x_start))))
            .Hint("write the lower x first");
    });
}

} // namespace

void CheckPolygons(CheckContext const& context, FindingList& findings) {
    CheckCounts(context, findings);
    CheckOrder(context, findings);
    CheckTwoPoints(context, findings);
}

} // namespace paramdb::tools::check
