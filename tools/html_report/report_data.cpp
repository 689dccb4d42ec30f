#include "tools/html_report/report_data.h"

#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/html_report/report_parts.h"
#include "tools/html_report/script_json.h"
#include "tools/short_number.h"

#include <nlohmann/json.hpp>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

// What is asked of the library for a report has been told by the load already.
class Silence {
public:
    Silence() : m_previous(PrWin::SetSink([](int, int, std::wstring const&) {})) {}
    Silence(Silence const&) = delete;
    Silence& operator=(Silence const&) = delete;
    ~Silence() { PrWin::SetSink(std::move(m_previous)); }

private:
    PrWin::Sink m_previous;
};

char const* LanguageCode() {
    switch (CLibMgr::GetLanguage()) {
    case CLibMgr::Language::portuguese:
        return "pt";
    case CLibMgr::Language::czech:
        return "cs";
    case CLibMgr::Language::german:
        return "de";
    case CLibMgr::Language::french:
        return "fr";
    case CLibMgr::Language::hungarian:
        return "hu";
    case CLibMgr::Language::italian:
        return "it";
    case CLibMgr::Language::chinese:
        return "zh";
    case CLibMgr::Language::spanish:
        return "es";
    case CLibMgr::Language::english:
    case CLibMgr::Language::standard:
        break;
    }
    return "en";
}

Json SourcesJson(std::vector<SourceFile> const& files) {
    Json list = Json::array();
    for (SourceFile const& file : files)
        list.push_back({{"file", file.name},
                        {"bytes", file.bytes ? Json(*file.bytes) : Json(nullptr)},
                        {"lines", file.lines},
                        {"sections", file.sections}});
    return list;
}

Json TotalsJson(Load const& load) {
    std::optional<std::uint64_t> bytes = 0;
    std::uint64_t lines = 0;
    std::uint64_t sections = 0;
    for (SourceFile const& file : load.sources.files) {
        bytes = bytes && file.bytes ? std::optional(*bytes + *file.bytes) : std::nullopt;
        lines += file.lines;
        sections += file.sections;
    }
    TableTotals const tables = load.tables.value_or(TableTotals());
    return {{"bytes", bytes ? Json(*bytes) : Json(nullptr)},
            {"lines", lines},
            {"sections", sections},
            {"tables", tables.tables},
            {"all_tables", tables.all_tables},
            {"rows", tables.rows}};
}

Json OrNull(bool is_there, Json value) {
    return is_there ? std::move(value) : Json(nullptr);
}

Json RelatedJson(std::vector<ReportFinding::Related> const& related) {
    Json list = Json::array();
    for (auto const& [place, text] : related)
        list.push_back({{"file", place.file}, {"line", OrNull(place.line > 0, place.line)}, {"text", text}});
    return list;
}

Json FindingsJson(std::vector<ReportFinding> const& findings) {
    Json list = Json::array();
    for (ReportFinding const& finding : findings) {
        bool const has_line = finding.place.line > 0;
        list.push_back({{"severity", finding.severity},
                        {"code", finding.code},
                        {"title", finding.title},
                        {"file", finding.place.file},
                        {"line", OrNull(has_line, finding.place.line)},
                        {"column", OrNull(has_line, finding.place.column)},
                        {"length", OrNull(has_line, finding.place.length)},
                        {"message", finding.message},
                        {"hint", OrNull(!finding.hint.empty(), finding.hint)},
                        {"source", OrNull(has_line, finding.source)},
                        {"related", RelatedJson(finding.related)}});
    }
    return list;
}

Json ColumnsJson(std::vector<ColumnDescription> const& columns) {
    Json list = Json::array();
    for (ColumnDescription const& column : columns)
        list.push_back(Json::array({column.name, ToUtf8(FieldTypeName(column.type))}));
    return list;
}

// Members of the one object, written one behind the other.
class Document {
public:
    void Add(std::string_view key, Json const& value) { AppendScriptJson(Begin(key), value); }

    // The text to which the value of this key is to be added.
    std::string& Begin(std::string_view key) {
        m_text.append(m_text.empty() ? "{" : ",\n").append("\"").append(key).append("\":");
        return m_text;
    }

    std::string Take() {
        m_text += '}';
        return std::move(m_text);
    }

private:
    std::string m_text;
};

void AppendRow(std::string& out, CQParamTableRows::ConstFields key, CQParamTableRows::ConstFields row) {
    char before = '[';
    for (auto const& fields : {key, row}) {
        for (ConstField const field : fields) {
            out += before;
            AppendScriptField(out, field);
            before = ',';
        }
    }
    out += ']';
}

// Straight from the rows: there may be a million.
void AppendTables(std::string& out, CQtParamInstance const& parameters) {
    char before = '[';
    for (CatalogueEntry const& table : parameters.Entries()) {
        TableDescription const& description = *table.description;
        out.append(1, before).append("\n{\"tag\":");
        AppendScriptText(out, description.tag);
        out.append(",\"instrument_class\":")
            .append(description.instrument_class < 0 ? "null" : std::to_string(description.instrument_class));
        out += ",\"key\":";
        AppendScriptJson(out, ColumnsJson(description.key_columns));
        out += ",\"row\":";
        AppendScriptJson(out, ColumnsJson(description.row_columns));
        out += ",\"rows\":[";
        bool is_first = true;
        table.rows->VisitRows([&](auto key, auto row) {
            out += is_first ? "\n" : ",\n";
            is_first = false;
            AppendRow(out, key, row);
            return true;
        });
        out += "]}";
        before = ',';
    }
    out += ']';
}

} // namespace

std::string ReportData(ReportSubject const& subject) {
    Silence const silence;
    CQtParamInstance parameters;
    Load const& load = subject.load;
    Document document;
    document.Add("program", "paramdb " PARAMDB_VERSION);
    document.Add("language", LanguageCode());
    document.Add("rpm", JsonNumber(subject.rpm));
    document.Add("sources", SourcesJson(load.sources.files));
    document.Add("version", {{"major", load.major}, {"minor", load.minor}});
    document.Add("result", load.result == LoadResult::Complete ? "complete" : "incomplete");
    document.Add("texts", {{"learn_file", ToUtf8(load.texts.learn_file)},
                           {"calib_file", ToUtf8(load.texts.calib_file)},
                           {"base_type", ToUtf8(load.texts.base_type)},
                           {"alias_type", ToUtf8(load.texts.alias_type)}});
    document.Add("totals", TotalsJson(load));
    document.Add("findings", FindingsJson(subject.findings));
    document.Add("rotors", RotorsPart(parameters));
    document.Add("results", ResultTexts());
    document.Add("orders", OrdersPart(parameters));
    document.Add("polygons", PolygonsPart(parameters));
    document.Add("parameters", ParametersPart(parameters));
    AppendKeysPart(document.Begin("keys"), parameters);
    AppendTables(document.Begin("tables"), parameters);
    return document.Take();
}

} // namespace paramdb::tools
