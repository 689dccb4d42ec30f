#include "tools/rewrite/merge_report.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/lake_text.h>

#include "tools/rewrite/file_bytes.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;
using enum TextTable::Align;

std::string Utf8(std::string const& bytes) {
    return ToUtf8(LakeText(bytes).wide());
}

class MergeReport {
public:
    MergeReport(Merged const& merged, std::vector<MergeInput> const& inputs, std::string const& target)
        : m_merged(merged), m_inputs(inputs), m_target(target) {}

    void PrintText(std::ostream& out) const {
        if (!m_merged.sections.empty()) {
            TextTable table({Left, Right, Left, Left});
            table.Add({"Section", "Rows", "From", "Instead of"});
            for (MergedSection const& section : m_merged.sections)
                table.Add({Shown(section.key), Grouped(section.used.rows), Shown(section.used.place),
                           Replaced(section)});
            table.Print(out);
            out << '\n';
        }
        if (!m_merged.keys.empty()) {
            TextTable table({Left, Left, Left, Left});
            table.Add({"Key", "Value", "From", "Passed over"});
            for (MergedKey const& key : m_merged.keys)
                table.Add({Shown(key.key), Shown(key.used.value), Shown(key.used.place), PassedOver(key)});
            table.Print(out);
            out << '\n';
        }
        out << ShownName(m_target) << ": " << Grouped(m_merged.lines) << " lines, "
            << Grouped(m_merged.bytes.size()) << " bytes";
        if (m_merged.left_out > 0)
            out << ", " << Grouped(m_merged.left_out) << " superseded lines left out";
        out << '\n';
    }

    void PrintJson(std::ostream& out) const {
        Json document{{"output",
                       {{"file", m_target},
                        {"bytes", m_merged.bytes.size()},
                        {"lines", m_merged.lines},
                        {"left_out", m_merged.left_out}}},
                      {"sections", Json::array()},
                      {"keys", Json::array()}};
        for (MergedSection const& section : m_merged.sections) {
            Json entry{{"key", Utf8(section.key)}};
            entry.update(JsonOf(section.used));
            entry["replaced"] = Json::array();
            for (auto const& replaced : section.replaced)
                entry["replaced"].push_back(JsonOf(replaced));
            document["sections"].push_back(std::move(entry));
        }
        for (MergedKey const& key : m_merged.keys) {
            Json entry{{"key", Utf8(key.key)}};
            entry.update(JsonOf(key.used));
            entry["passed_over"] = Json::array();
            for (auto const& passed_over : key.passed_over)
                entry["passed_over"].push_back(JsonOf(passed_over));
            document["keys"].push_back(std::move(entry));
        }
        paramdb::tools::PrintJson(out, document);
    }

private:
    static std::string Shown(std::string const& bytes) { return Printable(LakeText(bytes).wide()); }
    std::string Shown(MergePlace place) const {
        return ShownName(m_inputs[place.file].name) + ":" + std::to_string(place.line);
    }

    std::string Replaced(MergedSection const& section) const {
        std::string text;
        for (auto const& replaced : section.replaced)
            text += (text.empty() ? "" : ", ") + Shown(replaced.place) + " with " + Grouped(replaced.rows) +
                    (replaced.rows == 1 ? " row" : " rows");
        return text;
    }
    std::string PassedOver(MergedKey const& key) const {
        std::string text;
        for (auto const& passed_over : key.passed_over)
            text += (text.empty() ? "" : ", ") + Shown(passed_over.value) + " of " + Shown(passed_over.place);
        return text;
    }

    Json JsonOf(MergedSection::Occurrence const& occurrence) const {
        return {{"file", m_inputs[occurrence.place.file].name},
                {"line", occurrence.place.line},
                {"rows", occurrence.rows}};
    }
    Json JsonOf(MergedKey::Occurrence const& occurrence) const {
        return {{"value", Utf8(occurrence.value)},
                {"file", m_inputs[occurrence.place.file].name},
                {"line", occurrence.place.line}};
    }

    Merged const& m_merged;
    std::vector<MergeInput> const& m_inputs;
    std::string const& m_target;
};

} // namespace

void PrintMergeReport(std::ostream& out, Merged const& merged, std::vector<MergeInput> const& inputs,
                      std::string const& target, ReportFormat format) {
    MergeReport const report(merged, inputs, target);
    if (format == ReportFormat::Json)
        report.PrintJson(out);
    else
        report.PrintText(out);
}

} // namespace paramdb::tools
