#include "tools/diff/snapshot.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/quiet.h"
#include "tools/report.h"

#include <algorithm>
#include <ostream>

namespace paramdb::tools {
namespace {

RowTable Copy(CatalogueEntry const& entry) {
    RowTable table(RowColumnsOf(*entry.description));
    table.Reserve(entry.rows->RowCount());
    entry.rows->VisitRows([&table](auto key, auto row) {
        table.Add(key, row);
        return true;
    });
    table.Sort();
    return table;
}

// Where the tables of the kinds stand in the catalogue.
std::size_t PlaceOf(Kind const& kind) {
    static auto const places = [] {
        std::vector<std::size_t> result(Kinds().size());
        for (TableDescription const& table : Catalogue())
            if (Kind const* const known = KindOf(table))
                result[static_cast<std::size_t>(known - Kinds().data())] =
                    static_cast<std::size_t>(&table - Catalogue().data());
        return result;
    }();
    return places[static_cast<std::size_t>(&kind - Kinds().data())];
}

// The text in a row that is its name: the first one.
std::optional<std::wstring_view> NameIn(RowTable const& table, std::int32_t id) {
    std::size_t const row = table.Find(id);
    if (row == table.size())
        return std::nullopt;
    auto const& columns = table.columns().columns;
    auto const text = std::find_if(columns.begin(), columns.end(), [](ColumnDescription const& column) {
        return column.type == FieldType::Text;
    });
    auto const value = table.Value(row, static_cast<std::size_t>(text - columns.begin()));
    return std::get<std::wstring_view>(value);
}

RowTable const* VirtualModes(Snapshot const& snapshot) {
    auto const topics = AnswerTopics();
    auto const topic = std::ranges::find(topics, std::string_view("virtual_modes"), &AnswerTopic::name);
    return snapshot.answers ? &(*snapshot.answers)[static_cast<std::size_t>(topic - topics.begin())]
                            : nullptr;
}

// What a load has come to, if there is something to tell.
void TellLoad(std::ostream& err, std::vector<std::string> const& files, Load const& load) {
    std::uint64_t messages = 0;
    for (auto const& [kind, count] : load.messages)
        messages += count;
    if (load.result == LoadResult::Complete && (messages == 0 || IsQuiet(err)))
        return;
    err << "paramdb: " << FileNames(files) << ": ";
    if (load.result == LoadResult::Refused)
        err << "not loaded";
    else if (load.result == LoadResult::Incomplete)
        err << "loaded, but what follows from the tables is missing";
    else
        err << "loaded with " << messages << (messages == 1 ? " message" : " messages");
    err << '\n';
}

} // namespace

std::uint64_t Snapshot::RowCount() const {
    std::uint64_t rows = 0;
    for (RowTable const& table : tables)
        rows += table.size();
    return rows;
}

std::optional<std::wstring_view> Snapshot::NameOf(Kind const& kind, std::int32_t id) const {
    auto name = NameIn(tables[PlaceOf(kind)], id);
    if (!name && &kind == &Kinds()[Clavis::qMode])
        if (RowTable const* const modes = VirtualModes(*this))
            name = NameIn(*modes, id);
    return name;
}

std::optional<Snapshot> LoadSnapshot(std::vector<std::string> const& files, AnswerOptions const& options,
                                     std::ostream& err) {
    auto const load = LoadFiles(files, err);
    if (!load)
        return std::nullopt;
    TellLoad(err, files, *load);
    if (load->result == LoadResult::Refused)
        return std::nullopt;

    CQtParamInstance const parameters;
    Snapshot snapshot;
    snapshot.files = files;
    snapshot.major = load->major;
    snapshot.minor = load->minor;
    snapshot.texts = load->texts;
    for (CatalogueEntry const& entry : parameters.Entries())
        snapshot.tables.push_back(Copy(entry));
    if (load->result == LoadResult::Complete)
        snapshot.answers = CollectAnswers(parameters, options);
    return snapshot;
}

std::string FileNames(std::vector<std::string> const& files) {
    std::string text;
    for (std::string const& file : files)
        text.append(text.empty() ? "" : ", ").append(Printable(FromUtf8(file)));
    return text;
}

} // namespace paramdb::tools
