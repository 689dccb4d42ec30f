#include "tools/load_report.h"

#include <paramdb/platform/core/utf8.h>

#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

// What all files have together; its name stays empty.
SourceFile TotalOf(std::vector<SourceFile> const& files) {
    SourceFile total{.name = {}, .bytes = 0};
    for (SourceFile const& file : files) {
        total.bytes = total.bytes && file.bytes ? std::optional(*total.bytes + *file.bytes) : std::nullopt;
        total.lines += file.lines;
        total.sections += file.sections;
    }
    return total;
}

struct Throughput {
    std::optional<double> megabytes;
    std::optional<double> lines;
};

// For each second. Nothing where the clock is too coarse to see the time pass.
Throughput ThroughputOf(SourceFile const& total, double seconds) {
    if (seconds <= 0)
        return {};
    Throughput result;
    result.lines = static_cast<double>(total.lines) / seconds;
    if (total.bytes)
        result.megabytes = static_cast<double>(*total.bytes) / 1e6 / seconds;
    return result;
}

char const* VerdictOf(LoadResult result) {
    return result == LoadResult::Refused ? "refused" : "accepted";
}

std::string StyleName(int style) {
    switch (style) {
    case PlainStyle:
        return " (plain)";
    case FaultStyle:
        return " (fault in the data)";
    case RefusalStyle:
        return " (refusal)";
    default:
        return "";
    }
}

void PrintSources(std::ostream& out, std::vector<SourceFile> const& files, SourceFile const& total) {
    using enum TextTable::Align;
    TextTable table({Right, Right, Right, Left});
    table.Add({"Bytes", "Lines", "Sections", "File"});
    auto const add = [&table](SourceFile const& file, std::string const& name) {
        table.Add(
            {file.bytes ? Grouped(*file.bytes) : "-", Grouped(file.lines), Grouped(file.sections), name});
    };
    for (SourceFile const& file : files)
        add(file, Printable(FromUtf8(file.name)));
    if (files.size() > 1)
        add(total, "total");
    table.Print(out);
}

void AddTexts(TextTable& table, NamedTexts const& texts) {
    auto const add = [&table](char const* label, std::wstring const& text) {
        table.Add({label, text.empty() ? "(none)" : Printable(text)});
    };
    add("Learn file", texts.learn_file);
    add("Calibration file", texts.calib_file);
    add("Base type", texts.base_type);
    add("Alias type", texts.alias_type);
}

void AddMessages(TextTable& table, MessageCounts const& messages) {
    if (messages.empty())
        table.Add({"Messages", "none"});
    char const* label = "Messages";
    for (auto const& [kind, count] : messages) {
        table.Add({label, Grouped(count) + " of category " + std::to_string(kind.category) + ", style " +
                              std::to_string(kind.style) + StyleName(kind.style)});
        label = "";
    }
}

void AddTimes(TextTable& table, Load const& load, SourceFile const& total) {
    double const seconds = load.sources.seconds + load.load_seconds;
    table.Add({"Time", "read " + Duration(load.sources.seconds) + ", load " + Duration(load.load_seconds) +
                           ", total " + Duration(seconds)});
    Throughput const throughput = ThroughputOf(total, seconds);
    std::string text = throughput.megabytes ? Fixed(*throughput.megabytes, 1) + " MB/s" : "";
    if (throughput.lines)
        text +=
            (text.empty() ? "" : ", ") + Grouped(static_cast<std::uint64_t>(*throughput.lines)) + " lines/s";
    if (!text.empty())
        table.Add({"Throughput", text});
}

void PrintText(std::ostream& out, Load const& load) {
    SourceFile const total = TotalOf(load.sources.files);
    PrintSources(out, load.sources.files, total);
    out << '\n';

    TextTable table({TextTable::Align::Left, TextTable::Align::Left});
    table.Add({"Version", std::to_string(load.major) + "." + std::to_string(load.minor) + ", " +
                              VerdictOf(load.result)});
    if (load.result == LoadResult::Incomplete)
        table.Add({"Load", "incomplete: the tables are read, what is derived from them is missing"});
    if (load.result != LoadResult::Refused)
        AddTexts(table, load.texts);
    if (load.tables)
        table.Add({"Tables", Grouped(load.tables->tables) + " of " + Grouped(load.tables->all_tables) +
                                 " with " + Grouped(load.tables->rows) + " rows"});
    AddMessages(table, load.messages);
    AddTimes(table, load, total);
    table.Print(out);
}

template <class Value>
Json OrNull(std::optional<Value> const& value) {
    return value ? Json(*value) : Json(nullptr);
}

char const* ResultName(LoadResult result) {
    switch (result) {
    case LoadResult::Complete:
        return "complete";
    case LoadResult::Incomplete:
        return "incomplete";
    case LoadResult::Refused:
        break;
    }
    return "refused";
}

Json JsonSources(std::vector<SourceFile> const& files) {
    Json list = Json::array();
    for (SourceFile const& file : files)
        list.push_back({{"file", file.name},
                        {"bytes", OrNull(file.bytes)},
                        {"lines", file.lines},
                        {"sections", file.sections}});
    return list;
}

Json JsonTexts(Load const& load) {
    auto const text = [&load](std::wstring const& value) {
        return load.result == LoadResult::Refused ? Json(nullptr) : Json(ToUtf8(value));
    };
    return {{"learn_file", text(load.texts.learn_file)},
            {"calib_file", text(load.texts.calib_file)},
            {"base_type", text(load.texts.base_type)},
            {"alias_type", text(load.texts.alias_type)}};
}

Json JsonTotals(SourceFile const& total, std::optional<TableTotals> const& tables) {
    return {{"bytes", OrNull(total.bytes)},
            {"lines", total.lines},
            {"sections", total.sections},
            {"tables", tables ? Json(tables->tables) : Json(nullptr)},
            {"all_tables", tables ? Json(tables->all_tables) : Json(nullptr)},
            {"rows", tables ? Json(tables->rows) : Json(nullptr)}};
}

Json JsonMessages(MessageCounts const& messages) {
    Json list = Json::array();
    for (auto const& [kind, count] : messages)
        list.push_back({{"category", kind.category}, {"style", kind.style}, {"count", count}});
    return list;
}

void PrintJsonReport(std::ostream& out, Load const& load) {
    SourceFile const total = TotalOf(load.sources.files);
    double const seconds = load.sources.seconds + load.load_seconds;
    Throughput const throughput = ThroughputOf(total, seconds);
    Json document;
    document["sources"] = JsonSources(load.sources.files);
    document["version"] = {{"major", load.major}, {"minor", load.minor}, {"verdict", VerdictOf(load.result)}};
    document["result"] = ResultName(load.result);
    document["texts"] = JsonTexts(load);
    document["totals"] = JsonTotals(total, load.tables);
    document["messages"] = JsonMessages(load.messages);
    document["seconds"] = {{"read", load.sources.seconds}, {"load", load.load_seconds}, {"total", seconds}};
    document["throughput"] = {{"megabytes_per_second", OrNull(throughput.megabytes)},
                              {"lines_per_second", OrNull(throughput.lines)}};
    PrintJson(out, document);
}

} // namespace

void PrintLoadReport(std::ostream& out, Load const& load, ReportFormat format) {
    if (format == ReportFormat::Json)
        PrintJsonReport(out, load);
    else
        PrintText(out, load);
}

} // namespace paramdb::tools
