#include "tools/polygon_listing.h"

#include <paramdb/query/param_instance.h>

#include "tools/named_id.h"
#include "tools/short_number.h"

#include <array>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

// The room for points in a line of the listing.
constexpr std::size_t PointsWidth = 72;

constexpr std::array<wchar_t const*, 16> AreaInterpretations{L"not defined",
                                                             L"Minimum",
                                                             L"Maximum",
                                                             L"Sum above",
                                                             L"Sum below",
                                                             L"Deviation",
                                                             L"RMS above",
                                                             L"RMS below",
                                                             L"Minimum value",
                                                             L"Maximum value",
                                                             L"Area above",
                                                             L"Area below",
                                                             L"Loss Integral Response",
                                                             L"Mean value above",
                                                             L"Mean value below",
                                                             L"Mean value overall"};

NamedId AreaInterpretation(int number) {
    bool const is_known = number >= 0 && static_cast<std::size_t>(number) < AreaInterpretations.size();
    return {number, is_known ? AreaInterpretations[static_cast<std::size_t>(number)] : L""};
}

struct Polygon {
    NamedId number;
    bool has_two_points; // was made for one key
    std::vector<CGrexInfo::group_element> points;
};

struct Judged {
    QClavis key;
    NamedId parameter;
    NamedId interpretation;
    NamedId source_parameter;
    int polygon;
    bool is_missing;
};

struct Listing {
    std::vector<Polygon> polygons;
    std::vector<Judged> keys;
};

std::vector<Judged> CollectKeys(CQtParamInstance const& parameters, KeyPattern const* pattern) {
    std::vector<Judged> keys;
    for (auto const& [key, entry] : parameters.GroupInfo().Entries()) {
        if (pattern != nullptr && !pattern->Matches(paramdb::ConstFields(key)))
            continue;
        keys.push_back({key, NamedParameter(parameters, key[Clavis::qInstrParam]),
                        AreaInterpretation(entry.area_interpretation),
                        NamedParameter(parameters, entry.source_parameter), entry.group,
                        parameters.GroupInfo().Group(entry.group).empty()});
    }
    return keys;
}

std::set<int> NumbersOf(CQtParamInstance const& parameters) {
    std::set<int> numbers;
    for (auto const& [key, point] : parameters.GroupInfo().Groups())
        numbers.insert(numbers.end(), key.first);
    return numbers;
}

Listing Collect(CQtParamInstance const& parameters, KeyPattern const* pattern) {
    Listing listing;
    listing.keys = CollectKeys(parameters, pattern);
    std::set<int> used;
    for (Judged const& judged : listing.keys)
        used.insert(judged.polygon);
    std::set<int> in_table;
    for (auto const& [key, row] : parameters.IpPolygonValue())
        in_table.insert(key.number());
    for (int const number : NumbersOf(parameters)) {
        if (pattern != nullptr && !used.contains(number))
            continue;
        listing.polygons.push_back({NamedPolygon(parameters, number), !in_table.contains(number),
                                    parameters.GroupInfo().Group(number)});
    }
    return listing;
}

std::string PointText(CGrexInfo::group_element const& point) {
    std::string text = ShortNumber(point.x);
    return text.append(", ").append(ShortNumber(point.y));
}

// The points in as few lines as have room for them.
std::vector<std::string> PointLines(std::vector<CGrexInfo::group_element> const& points) {
    std::vector<std::string> lines;
    for (auto const& point : points) {
        std::string const text = PointText(point);
        if (lines.empty() || lines.back().size() + 3 + text.size() > PointsWidth)
            lines.push_back(text);
        else
            lines.back().append(" | ").append(text);
    }
    return lines;
}

void PrintPolygonTable(std::ostream& out, std::vector<Polygon> const& polygons) {
    using enum TextTable::Align;
    TextTable table({Right, Left, Left});
    table.Add({"Polygon", "Name", "Points x, y"});
    for (Polygon const& polygon : polygons) {
        std::vector<std::string> cells{std::to_string(polygon.number.id),
                                       polygon.has_two_points ? "(two points)"
                                                              : Printable(polygon.number.name)};
        for (std::string const& line : PointLines(polygon.points)) {
            cells.push_back(line);
            table.Add(std::move(cells));
            cells.assign(2, "");
        }
    }
    table.Print(out);
}

std::string KeyText(QClavis const& key) {
    std::string text;
    for (int const element : key.elements())
        text.append(text.empty() ? "" : "/").append(std::to_string(element));
    return text;
}

void PrintKeyTable(std::ostream& out, std::vector<Judged> const& keys) {
    using enum TextTable::Align;
    TextTable table({Left, Left, Left, Left, Right, Left});
    table.Add({"Key", "Parameter", "Area interpretation", "Source parameter", "Polygon", ""});
    for (Judged const& judged : keys)
        table.Add({KeyText(judged.key), Printable(judged.parameter.name), Shown(judged.interpretation),
                   Shown(judged.source_parameter), std::to_string(judged.polygon),
                   judged.is_missing ? "has no points" : ""});
    table.Print(out);
}

void PrintText(std::ostream& out, Listing const& listing) {
    if (!listing.polygons.empty())
        PrintPolygonTable(out, listing.polygons);
    if (!listing.polygons.empty() && !listing.keys.empty())
        out << '\n';
    if (!listing.keys.empty())
        PrintKeyTable(out, listing.keys);
}

Json JsonPolygons(std::vector<Polygon> const& polygons) {
    Json list = Json::array();
    for (Polygon const& polygon : polygons) {
        Json points = Json::array();
        for (auto const& point : polygon.points)
            points.push_back(Json::array({JsonNumber(point.x), JsonNumber(point.y)}));
        list.push_back({{"number", polygon.number.id},
                        {"name", JsonText(polygon.number.name)},
                        {"two_points", polygon.has_two_points},
                        {"points", std::move(points)}});
    }
    return list;
}

Json JsonKeys(std::vector<Judged> const& keys) {
    Json list = Json::array();
    for (Judged const& judged : keys)
        list.push_back({{"key", judged.key.elements()},
                        {"parameter", ToJson(judged.parameter)},
                        {"area_interpretation", ToJson(judged.interpretation)},
                        {"source_parameter", ToJson(judged.source_parameter)},
                        {"polygon", judged.polygon},
                        {"is_missing", judged.is_missing}});
    return list;
}

} // namespace

std::size_t PrintPolygons(std::ostream& out, CQtParamInstance const& parameters, KeyPattern const* pattern,
                          ReportFormat format) {
    Listing const listing = Collect(parameters, pattern);
    if (format == ReportFormat::Json)
        PrintJson(out,
                  Json{{"polygons", JsonPolygons(listing.polygons)}, {"judged", JsonKeys(listing.keys)}});
    else
        PrintText(out, listing);
    return listing.polygons.size() + listing.keys.size();
}

} // namespace paramdb::tools
