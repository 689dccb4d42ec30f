// The forms of the report that programs read.
#include <paramdb/platform/core/utf8.h>

#include "tools/check/check_report.h"
#include "tools/file_path.h"
#include "tools/report.h"

#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools::check {
namespace {

using Json = nlohmann::ordered_json;

std::string const& RawName(CheckContext const& context, Place const& place) {
    return context.LoadInfo().sources.files[place.file].name;
}

Json OrNull(bool is_there, Json value) {
    return is_there ? std::move(value) : Json(nullptr);
}

Json JsonFinding(CheckContext const& context, Finding const& finding) {
    Place const& place = finding.place;
    bool const has_line = place.line > 0;
    Json related = Json::array();
    for (RelatedPlace const& other : finding.related)
        related.push_back({{"file", RawName(context, other.place)},
                           {"line", OrNull(other.place.line > 0, other.place.line)},
                           {"column", OrNull(other.place.line > 0, other.place.column)},
                           {"text", other.text}});
    Json json;
    json["code"] = finding.code->code;
    json["name"] = finding.code->name;
    json["severity"] = SeverityWord(finding.code->severity);
    json["file"] = RawName(context, place);
    json["line"] = OrNull(has_line, place.line);
    json["column"] = OrNull(has_line, place.column);
    json["length"] = OrNull(has_line, place.length);
    json["message"] = finding.message;
    json["hint"] = OrNull(!finding.hint.empty(), finding.hint);
    json["source"] = nullptr;
    if (has_line)
        json["source"] = ToUtf8(LakeText(context.Files()[place.file].Line(place.line)).wide());
    json["related"] = std::move(related);
    return json;
}

char const* ResultWord(LoadResult result) {
    constexpr char const* words[] = {"complete", "incomplete", "refused"};
    return words[static_cast<std::size_t>(result)];
}

// A file name as a URI: relative as it is, absolute with a scheme.
std::string UriOf(std::string const& name) {
    std::filesystem::path const path = PathOf(name);
    std::u8string const generic = path.generic_u8string();
    std::string uri = path.is_absolute() ? generic.starts_with(u8'/') ? "file://" : "file:///" : "";
    for (char8_t const unit : generic) {
        auto const byte = static_cast<unsigned char>(unit);
        bool const is_plain =
            (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
            std::string_view("-._~/:").find(static_cast<char>(byte)) != std::string_view::npos;
        char encoded[4] = {static_cast<char>(byte)};
        if (!is_plain)
            std::snprintf(encoded, sizeof encoded, "%%%02X", static_cast<unsigned>(byte));
        uri += encoded;
    }
    return uri;
}

Json SarifLocation(CheckContext const& context, Place const& place) {
    Json physical;
    physical["artifactLocation"]["uri"] = UriOf(RawName(context, place));
    if (place.line > 0)
        physical["region"] = {{"startLine", place.line},
                              {"startColumn", place.column},
                              {"endColumn", place.column + place.length}};
    Json location;
    location["physicalLocation"] = std::move(physical);
    return location;
}

std::string const& WithHint(std::string& text, Finding const& finding, char const* between) {
    text = finding.message;
    if (!finding.hint.empty())
        text += between + finding.hint;
    return text;
}

Json SarifRules() {
    Json rules = Json::array();
    for (Code const& code : Codes()) {
        Json rule;
        rule["id"] = code.code;
        rule["name"] = code.name;
        rule["shortDescription"]["text"] = code.title;
        rule["fullDescription"]["text"] = code.explanation;
        rule["help"]["text"] = code.remedy;
        rule["defaultConfiguration"]["level"] = SeverityWord(code.severity);
        rules.push_back(std::move(rule));
    }
    return rules;
}

Json SarifResult(CheckContext const& context, Finding const& finding) {
    std::string text;
    Json result;
    result["ruleId"] = finding.code->code;
    result["ruleIndex"] = finding.code - Codes().data();
    result["level"] = SeverityWord(finding.code->severity);
    result["message"]["text"] = WithHint(text, finding, "; ");
    result["locations"] = Json::array({SarifLocation(context, finding.place)});
    if (!finding.related.empty()) {
        Json related = Json::array();
        for (RelatedPlace const& other : finding.related) {
            Json location = SarifLocation(context, other.place);
            location["id"] = related.size();
            location["message"]["text"] = other.text;
            related.push_back(std::move(location));
        }
        result["relatedLocations"] = std::move(related);
    }
    return result;
}

// In the values of a workflow command; those of properties hold no colons and commas either.
std::string GithubText(std::string_view text, bool is_property) {
    std::string result;
    for (char const letter : text) {
        bool const is_mark = letter == '%' || letter == '\r' || letter == '\n' ||
                             (is_property && (letter == ':' || letter == ','));
        char encoded[4] = {letter};
        if (is_mark)
            std::snprintf(encoded, sizeof encoded, "%%%02X", static_cast<unsigned>(letter));
        result += encoded;
    }
    return result;
}

} // namespace

void PrintFindingsJson(std::ostream& out, CheckContext const& context, std::vector<Finding> const& findings) {
    Json files = Json::array();
    for (SourceFile const& file : context.LoadInfo().sources.files)
        files.push_back({{"file", file.name}, {"lines", file.lines}, {"sections", file.sections}});
    Json list = Json::array();
    for (Finding const& finding : findings)
        list.push_back(JsonFinding(context, finding));
    FindingCounts const counts = CountFindings(findings);
    Json document;
    document["files"] = std::move(files);
    document["result"] = ResultWord(context.LoadInfo().result);
    document["findings"] = std::move(list);
    document["summary"] = {{"errors", counts.errors}, {"warnings", counts.warnings}, {"notes", counts.notes}};
    PrintJson(out, document);
}

void PrintFindingsSarif(std::ostream& out, CheckContext const& context,
                        std::vector<Finding> const& findings) {
    Json driver;
    driver["name"] = "paramdb";
    driver["version"] = PARAMDB_VERSION;
    driver["rules"] = SarifRules();
    Json run;
    run["tool"]["driver"] = std::move(driver);
    run["columnKind"] = "unicodeCodePoints";
    run["results"] = Json::array();
    for (Finding const& finding : findings)
        run["results"].push_back(SarifResult(context, finding));
    Json document;
    document["$schema"] = "https://json.schemastore.org/sarif-2.1.0.json";
    document["version"] = "2.1.0";
    document["runs"] = Json::array({std::move(run)});
    PrintJson(out, document);
}

void PrintFindingsGithub(std::ostream& out, CheckContext const& context,
                         std::vector<Finding> const& findings) {
    constexpr char const* commands[] = {"notice", "warning", "error"};
    std::string text;
    for (Finding const& finding : findings) {
        Place const& place = finding.place;
        out << "::" << commands[static_cast<std::size_t>(finding.code->severity)]
            << " file=" << GithubText(RawName(context, place), true);
        if (place.line > 0)
            out << ",line=" << place.line << ",col=" << place.column
                << ",endColumn=" << place.column + place.length;
        out << ",title=" << finding.code->code << ' ' << finding.code->name
            << "::" << GithubText(WithHint(text, finding, "\nhint: "), false) << '\n';
    }
}

} // namespace paramdb::tools::check
