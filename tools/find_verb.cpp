// `paramdb find`: loads parameter files and looks for a name in all tables.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/case_fold.h"
#include "tools/id_words.h"
#include "tools/last_words.h"
#include "tools/loading.h"
#include "tools/name_fields.h"
#include "tools/nearest_names.h"
#include "tools/report.h"
#include "tools/table_names.h"
#include "tools/verb.h"
#include "tools/wildcard_text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <unordered_set>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t ShortestWord = 3;

struct FoundName {
    TableDescription const* table;
    std::string_view column;
    std::optional<int> id;
    std::wstring key;
    std::wstring name;

    std::string KindWord() const {
        Kind const* const kind = KindOf(*table);
        return kind != nullptr ? std::string(kind->word) : "";
    }
};

std::vector<FoundName> FindNames(CQtParamInstance const& parameters, std::wstring_view text) {
    WildcardText sought(text);
    std::vector<FoundName> found;
    VisitNames(parameters, [&](NameField const& field) {
        if (sought.IsIn(field.name))
            found.push_back(
                {field.table, field.column, field.Id(), field.KeyText(), std::wstring(field.name)});
    });
    return found;
}

// The different names, and words of them, that are nearest to the text.
std::vector<std::string> NearNames(CQtParamInstance const& parameters, std::wstring_view text) {
    std::vector<std::wstring_view> names;
    std::unordered_set<std::wstring> known; // folded: to look for any of them finds all
    auto const add = [&](std::wstring_view name) {
        if (known.insert(FoldCase(name)).second)
            names.push_back(name);
    };
    VisitNames(parameters, [&](NameField const& field) { // the tables keep the texts
        std::wstring_view rest = field.name;
        add(rest);
        while (!rest.empty()) {
            std::size_t const end = std::min(rest.find_first_of(L" ,;:()/"), rest.size());
            if (end >= ShortestWord)
                add(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    });
    std::vector<std::string> near;
    for (std::size_t const place : NearestNames(text, names))
        near.push_back(ToUtf8(names[place]));
    return near;
}

class FindVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb =
            *command.add_subcommand("find", "Load parameter files and look for a name in all tables");
        AddLastWordsArgument(verb, m_words, "TEXT");
        AddFormatOption(verb, m_format);
        verb.footer(
            std::string(
                "TEXT is any part of the name; case does not count. In it * stands for any characters\n"
                "and ? for one. Quote what the shell would expand. For a TEXT that begins with a minus put\n"
                "-- before the files.\n\n"
                "Examples:\n"
                "  paramdb find gearbox.lake customer.lake torque\n"
                "  paramdb find gearbox.lake 'gear * drive'\n\n") +
            ExitCodeHelp + "\nThat there is no such name is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const split = SplitLastWords(m_words, 1);
        if (!split) {
            err << "paramdb: a TEXT is required behind the files\n";
            return ExitCode::NoLoad;
        }
        std::wstring const text = FromUtf8(split->words[0]);
        if (text.empty()) {
            err << "paramdb: the TEXT is empty; * finds every name\n";
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(split->files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        CQtParamInstance const parameters;
        auto const found = FindNames(parameters, text);
        std::vector<std::string> near;
        if (found.empty()) {
            near = NearNames(parameters, text);
            std::vector<std::string> shown;
            for (std::string const& name : near)
                shown.push_back('"' + Printable(FromUtf8(name)) + '"');
            err << "paramdb: " << Printable(text) << ": no such name" << DidYouMean(shown) << '\n';
        }
        if (m_format == ReportFormat::Json)
            PrintJson(out, JsonAnswer(found, near));
        else if (!found.empty())
            PrintText(out, found);
        return found.empty() ? ExitCode::Findings : ExitCodeOf(*load);
    }

private:
    static void PrintText(std::ostream& out, std::vector<FoundName> const& found) {
        using enum TextTable::Align;
        TextTable table({Left, Right, Left, Left});
        table.Add({"Kind", "Id", "Name", "Table"});
        for (FoundName const& entry : found)
            table.Add({entry.KindWord(), entry.id ? std::to_string(*entry.id) : Printable(entry.key),
                       Printable(entry.name), TagOf(*entry.table)});
        table.Print(out);
    }

    static Json JsonAnswer(std::vector<FoundName> const& found, std::vector<std::string> const& near) {
        Json list = Json::array();
        for (FoundName const& entry : found) {
            std::string const kind = entry.KindWord();
            list.push_back({{"kind", kind.empty() ? Json(nullptr) : Json(kind)},
                            {"id", entry.id ? Json(*entry.id) : Json(nullptr)},
                            {"name", ToUtf8(entry.name)},
                            {"table", TagOf(*entry.table)},
                            {"column", entry.column},
                            {"key", ToUtf8(entry.key)}});
        }
        return {{"found", std::move(list)}, {"nearest", near}};
    }

    std::vector<std::string> m_words;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeFindVerb() {
    return std::make_unique<FindVerb>();
}

} // namespace paramdb::tools
