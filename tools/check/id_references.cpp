// References to ids: every column of every table that holds the ids of another one.
#include "tools/check/known_ids.h"
#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/diff/column_meaning.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>

namespace paramdb::tools::check {
namespace {

// A column that holds ids.
struct Reference {
    std::size_t column;
    std::string_view name;
    IdTable const* ids;
    bool is_key;
    bool is_mode;  // may be that of a virtual mode
    bool is_rotor; // a rotor, gear or order source, which needs the row for its name alone
};

// Where a column means the rows of a table other than that of its kind.
struct Exception {
    std::wstring_view tag; // empty: all tables
    std::string_view column;
    std::string_view table; // empty: tells nothing that this rule is to look at
};

constexpr Exception Exceptions[] = {
    {L"<TAppSignalProperty>", "signal", ""}, // must be the same ids anyway: see CheckSignals
    {L"<TRelativeLimit>", "parameter", ""},  // ends the load: see CheckRelativeLimits
    {L"<TRelativeLimit>", "instrument", ""}, // is written by the load
    {L"<TIpPolygonValue>", "polygon", "IpPolygon"},
    {L"<TIpPolygonProperty>", "polygon", "IpPolygon"},
    {L"", "polygon", "IpPolygonValue"},
    {L"", "second_polygon", "IpPolygonValue"},
    {L"<TRotorSpeedSource>", "referred_id", "SpeedSource"},
    {L"<TRotorSpeedReference>", "referred_id", "SpeedSource"},
};

constexpr std::string_view RotorColumns[] = {"base_order_reference", "gear",  "order_source",
                                             "physical_gear",        "rotor", "speed_source"};

class ReferenceCheck {
public:
    ReferenceCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings), m_known(context), m_is_derived(IsDerived(context)) {}

    void Run() {
        for (CheckedTable const& table : m_context.Tables()) {
            if (table.RowCount() == 0)
                continue;
            auto const references = ReferencesOf(table);
            if (!references.empty())
                CheckTable(table, references);
        }
    }

private:
    // A wrong id in the key of several rows is told once.
    struct WrongKey {
        std::size_t row;
        std::size_t count;
    };
    using WrongKeys = std::map<std::pair<std::size_t, std::int64_t>, WrongKey>; // by reference and id

    std::vector<Reference> ReferencesOf(CheckedTable const& table) {
        std::vector<Reference> references;
        TableDescription const& description = table.Description();
        RowColumns const columns = RowColumnsOf(description);
        auto const meanings = MeaningsOf(description.tag, columns);
        for (std::size_t column = 0; column < meanings.size(); ++column) {
            Kind const* const kind = meanings[column].kind;
            std::string_view const name = columns.columns[column].name;
            // The id of a row itself is no reference.
            if (kind == nullptr || (column == 0 && KindOf(description) == kind))
                continue;
            std::string_view target = kind->table;
            for (Exception const& exception : Exceptions) {
                if (exception.column == name && (exception.tag.empty() || exception.tag == description.tag)) {
                    target = exception.table;
                    break;
                }
            }
            if (target.empty())
                continue;
            bool const is_rotor =
                std::find(std::begin(RotorColumns), std::end(RotorColumns), name) != std::end(RotorColumns);
            IdTable const& ids = m_known.Of(target, NamesFor(target));
            if (ids.IsThere())
                references.push_back(
                    {column, name, &ids, column < columns.key_columns, kind->table == "Mode", is_rotor});
        }
        return references;
    }

    static std::string_view NamesFor(std::string_view target) {
        return target == "IpPolygonValue" ? "IpPolygon" : target == "SpeedSource" ? "Location" : "";
    }

    bool Exists(Reference const& reference, std::int64_t id) const {
        if (id == -1 || reference.ids->Contains(id))
            return true;
        CQtParamInstance const& parameters = m_context.Parameters();
        int const mode = static_cast<int>(id);
        return reference.is_mode && m_is_derived && parameters.IsVirtualMode(mode) &&
               reference.ids->Contains(parameters.VirtMode2BaseMode(mode));
    }

    void CheckTable(CheckedTable const& table, std::vector<Reference> const& references) {
        // A two-point definition does not use its polygon.
        bool const is_track_polygon = table.Description().tag == std::wstring_view(L"<TIpTrackPolygon>");
        std::size_t const polygon_mode = is_track_polygon ? table.Column("polygon_mode") : 0;
        std::vector<std::optional<std::int64_t>> last_good(references.size());
        WrongKeys wrong_keys;
        table.VisitRows([&](CheckedRow const& row) {
            for (std::size_t index = 0; index < references.size(); ++index) {
                Reference const& reference = references[index];
                std::int64_t const id = row.Integer(reference.column);
                if (last_good[index] == id)
                    continue;
                if (Exists(reference, id))
                    last_good[index] = id;
                else if (reference.is_rotor)
                    ReportRotor(table, row, reference, static_cast<int>(id));
                else if (reference.is_key)
                    ++wrong_keys.try_emplace({index, id}, WrongKey{row.Index(), 0}).first->second.count;
                else if (!is_track_polygon || reference.name != "polygon" || row.Integer(polygon_mode) != 1)
                    ReportValue(row, reference, static_cast<int>(id));
            }
        });
        for (auto const& [which, wrong] : wrong_keys)
            ReportKey(table, references[which.first], static_cast<int>(which.second), wrong);
    }

    void ReportValue(CheckedRow const& row, Reference const& reference, int id) {
        m_findings
            .Add("P301", row.At(reference.column),
                 std::string(reference.name) + " refers to " + std::to_string(id) + ", which " +
                     reference.ids->Tag() + " does not have")
            .Hint(HintFor(*reference.ids, id));
    }

    void ReportKey(CheckedTable const& table, Reference const& reference, int id, WrongKey const& wrong) {
        std::string message = reference.ids->Tag() + " has no " + Words(reference.name) + ' ' +
                              std::to_string(id) + ", so nothing asks for this row";
        if (wrong.count > 1)
            message += " nor for " + Counted(wrong.count - 1, "other row") + " of the table";
        m_findings.Add("P302", table.PlaceOf(wrong.row, reference.column), message)
            .Hint(HintFor(*reference.ids, id));
    }

    // Each rotor is told once, at its first place in the order of tables.
    void ReportRotor(CheckedTable const& table, CheckedRow const& row, Reference const& reference, int id) {
        if (!m_rotors_told.insert(id).second)
            return;
        m_findings
            .Add("P303", table.PlaceOf(row.Index(), reference.column),
                 Words(reference.name) + ' ' + std::to_string(id) + " has no name in " + reference.ids->Tag())
            .Hint(HintFor(*reference.ids, id));
    }

    // Looking for the nearest ids takes its time, and a wrong one is often there many times.
    std::string const& HintFor(IdTable const& ids, int id) {
        auto const [place, is_new] = m_hints.try_emplace({&ids, id});
        if (is_new)
            place->second = ids.Hint(id);
        return place->second;
    }

    static std::string Words(std::string_view column) {
        std::string words(column);
        std::replace(words.begin(), words.end(), '_', ' ');
        return words;
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    KnownIds m_known;
    bool m_is_derived;
    std::set<int> m_rotors_told;
    std::map<std::pair<IdTable const*, int>, std::string> m_hints;
};

// A pair of columns that must agree: an instrument, and a parameter of it.
struct InstrumentPair {
    std::size_t instrument;
    std::size_t parameter;
};

std::vector<InstrumentPair> InstrumentPairs(CheckedTable const& table) {
    constexpr std::pair<std::string_view, std::string_view> names[] = {
        {"instrument", "parameter"},
        {"source_instrument", "source_parameter"},
        {"second_source_instrument", "second_source_parameter"},
    };
    auto const columns = RowColumnsOf(table.Description()).columns;
    auto const has = [&](std::string_view name) {
        return std::any_of(columns.begin(), columns.end(),
                           [&](ColumnDescription const& column) { return column.name == name; });
    };
    std::vector<InstrumentPair> pairs;
    for (auto const& [instrument, parameter] : names)
        if (has(instrument) && has(parameter))
            pairs.push_back({table.Column(instrument), table.Column(parameter)});
    return pairs;
}

class InstrumentCheck {
public:
    InstrumentCheck(CheckContext const& context, FindingList& findings)
        : m_context(context), m_findings(findings) {
        for (auto const& [key, row] : context.Parameters().InstrumentParam())
            m_instrument_of.emplace(key[0], row.get<"instrument">());
    }

    void Run() {
        std::wstring_view const own = L"<TInstrumentParam>";
        std::wstring_view const written_by_load = L"<TRelativeLimit>";
        for (CheckedTable const& table : m_context.Tables()) {
            std::wstring_view const tag = table.Description().tag;
            if (table.RowCount() > 0 && tag != own && tag != written_by_load)
                for (InstrumentPair const& pair : InstrumentPairs(table))
                    CheckTable(table, pair);
        }
    }

private:
    struct Wrong {
        std::size_t row;
        std::size_t count;
    };

    void CheckTable(CheckedTable const& table, InstrumentPair const& pair) {
        std::map<std::pair<int, int>, Wrong> wrong;
        table.VisitRows([&](CheckedRow const& row) {
            int const instrument = static_cast<int>(row.Integer(pair.instrument));
            int const parameter = static_cast<int>(row.Integer(pair.parameter));
            if (instrument == -1 || parameter == -1)
                return;
            auto const found = m_instrument_of.find(parameter);
            if (found != m_instrument_of.end() && found->second != instrument)
                ++wrong.try_emplace({instrument, parameter}, Wrong{row.Index(), 0}).first->second.count;
        });
        KnownIds known(m_context);
        for (auto const& [which, where] : wrong) {
            std::string message = "parameter " + known.Of("InstrumentParam").Shown(which.second) +
                                  " belongs to instrument " +
                                  known.Of("Instrument").Shown(m_instrument_of[which.second]) + ", not to " +
                                  std::to_string(which.first);
            if (where.count > 1)
                message += ", here and in " + Counted(where.count - 1, "other row") + " of the table";
            m_findings.Add("P304", table.PlaceOf(where.row, pair.instrument), message)
                .Hint("write " + std::to_string(m_instrument_of[which.second]) + ", or another parameter");
        }
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    std::unordered_map<int, int> m_instrument_of;
};

} // namespace

void CheckReferences(CheckContext const& context, FindingList& findings) {
    ReferenceCheck(context, findings).Run();
}

void CheckInstruments(CheckContext const& context, FindingList& findings) {
    InstrumentCheck(context, findings).Run();
}

} // namespace paramdb::tools::check
