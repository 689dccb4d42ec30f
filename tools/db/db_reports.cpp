#include "tools/db/db_reports.h"

#include <paramdb/platform/core/utf8.h>

#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools::db {
namespace {

using Json = nlohmann::ordered_json;
using ParamDb::Revision;

// The revisions of a set, the last one being the newest.
struct SetOfRevisions {
    Revision const* newest;
    std::size_t count;
};

std::vector<SetOfRevisions> SetsOf(std::vector<Revision> const& revisions) {
    std::vector<SetOfRevisions> sets;
    for (Revision const& revision : revisions) {
        if (sets.empty() || sets.back().newest->set != revision.set)
            sets.push_back({});
        sets.back().newest = &revision;
        ++sets.back().count;
    }
    return sets;
}

Json ToJson(Revision const& revision) {
    return {
        {"set", ToUtf8(revision.set)}, {"revision", revision.number},       {"when", ToUtf8(revision.when)},
        {"who", ToUtf8(revision.who)}, {"remark", ToUtf8(revision.remark)}, {"tables", revision.tables},
        {"rows", revision.rows}};
}

Json ToJson(SetOfRevisions const& set) {
    Revision const& newest = *set.newest;
    return {{"set", ToUtf8(newest.set)},   {"revisions", set.count},    {"newest", newest.number},
            {"when", ToUtf8(newest.when)}, {"who", ToUtf8(newest.who)}, {"remark", ToUtf8(newest.remark)},
            {"tables", newest.tables},     {"rows", newest.rows}};
}

void PrintDetails(std::ostream& out, Revision const& revision) {
    using enum TextTable::Align;
    TextTable table({Left, Left});
    table.Add({"Set", Printable(revision.set)});
    table.Add({"Revision", std::to_string(revision.number)});
    table.Add({"When", Printable(revision.when)});
    table.Add({"Who", Printable(revision.who)});
    if (!revision.remark.empty())
        table.Add({"Remark", Printable(revision.remark)});
    table.Add({"Tables", Grouped(revision.tables) + " with " + Grouped(revision.rows) + " rows"});
    table.Print(out);
}

} // namespace

void PrintSets(std::ostream& out, std::vector<Revision> const& revisions, ReportFormat format) {
    auto const sets = SetsOf(revisions);
    if (format == ReportFormat::Json) {
        Json list = Json::array();
        for (SetOfRevisions const& set : sets)
            list.push_back(ToJson(set));
        return PrintJson(out, list);
    }
    using enum TextTable::Align;
    TextTable table({Left, Right, Right, Left, Left, Right, Left});
    table.Add({"Set", "Revisions", "Newest", "When", "Who", "Rows", "Remark"});
    for (SetOfRevisions const& set : sets) {
        Revision const& newest = *set.newest;
        table.Add({Printable(newest.set), Grouped(set.count), std::to_string(newest.number),
                   Printable(newest.when), Printable(newest.who), Grouped(newest.rows),
                   Printable(newest.remark)});
    }
    table.Print(out);
}

void PrintLog(std::ostream& out, std::vector<Revision> const& revisions, ReportFormat format) {
    if (format == ReportFormat::Json) {
        Json list = Json::array();
        for (auto revision = revisions.rbegin(); revision != revisions.rend(); ++revision)
            list.push_back(ToJson(*revision));
        return PrintJson(out, list);
    }
    using enum TextTable::Align;
    TextTable table({Left, Right, Left, Left, Right, Right, Left});
    table.Add({"Set", "Revision", "When", "Who", "Tables", "Rows", "Remark"});
    for (auto revision = revisions.rbegin(); revision != revisions.rend(); ++revision)
        table.Add({Printable(revision->set), std::to_string(revision->number), Printable(revision->when),
                   Printable(revision->who), Grouped(revision->tables), Grouped(revision->rows),
                   Printable(revision->remark)});
    table.Print(out);
}

void PrintImport(std::ostream& out, ParamDb::Import const& import, ReportFormat format) {
    if (format == ReportFormat::Json) {
        Json document = ToJson(import.revision);
        document["is_local_copy"] = import.is_local_copy;
        document["faults"] = import.faults;
        return PrintJson(out, document);
    }
    PrintDetails(out, import.revision);
}

void PrintExport(std::ostream& out, Revision const& revision, ReportFormat format) {
    if (format == ReportFormat::Json)
        return PrintJson(out, ToJson(revision));
    PrintDetails(out, revision);
}

} // namespace paramdb::tools::db
