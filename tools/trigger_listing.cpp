#include "tools/trigger_listing.h"

#include <paramdb/query/param_instance.h>

#include "tools/short_number.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

constexpr unsigned int BitsPerDimension = 16;

bool AreUsable(std::vector<TriggerDimension> const& dimensions) {
    return std::all_of(dimensions.begin(), dimensions.end(),
                       [](TriggerDimension const& dimension) { return dimension.IsUsable(); });
}

unsigned int IndexOf(TriggerDimension const& dimension) {
    return static_cast<unsigned int>(dimension.dimension - 1);
}

bool IsInField(CTriggerStore::CInterval const& interval, int cell) {
    return cell >= 0 && static_cast<unsigned int>(cell) < interval.len();
}

// A number that has this cell in a dimension and 0 in the others.
std::int64_t NumberOfCell(int cell, unsigned int dim) {
    return static_cast<std::int64_t>(std::uint64_t{static_cast<std::uint16_t>(cell)}
                                     << (dim * BitsPerDimension));
}

int CellIn(std::int64_t number, unsigned int dim) {
    return static_cast<std::int16_t>(number >> (dim * BitsPerDimension));
}

// The answers in one mode.
class Answers {
public:
    Answers(CQtParamInstance const& parameters, int trigger, TriggerInMode& entry)
        : m_store(parameters), m_trigger(trigger), m_entry(entry) {}

    void OfPosition(CTriggerStore::CDimensions const& position, bool clamp) {
        for (TriggerDimension const& dimension : m_entry.dimensions)
            if (position.dimensions[IndexOf(dimension)])
                AddCell(dimension, position.positions[IndexOf(dimension)], clamp);
        CTriggerStore::CIntervals field;
        std::int64_t number = 0;
        if (!m_entry.places.empty() && m_store.field(m_entry.mode.id, m_trigger, field) &&
            CTriggerStore::cell(field, position, number, clamp))
            m_entry.cell_number = number;
    }

    void OfCell(std::int64_t number, std::int64_t extent) {
        CTriggerStore::CDimensions position;
        m_store.position(m_entry.mode.id, m_trigger, number, extent, position);
        for (TriggerDimension const& dimension : m_entry.dimensions) {
            unsigned int const dim = IndexOf(dimension);
            int const cell = CellIn(number, dim);
            m_entry.places.push_back({dimension.dimension, position.positions[dim], cell,
                                      BoundaryOf(number, dim), IsInField(dimension.interval, cell)});
        }
    }

private:
    void AddCell(TriggerDimension const& dimension, float position, bool clamp) {
        TriggerPlace place{dimension.dimension, position, std::nullopt, std::nullopt, false};
        std::int64_t number = 0;
        // By itself, since in the number of a field dimensions lie upon each other.
        if (CTriggerStore::cell(dimension.interval, 0, position, number, clamp)) {
            auto const cell = static_cast<int>(number);
            place.cell = cell;
            place.boundary = BoundaryOf(NumberOfCell(cell, IndexOf(dimension)), IndexOf(dimension));
            place.is_in_field = IsInField(dimension.interval, cell);
        }
        m_entry.places.push_back(place);
    }

    std::optional<float> BoundaryOf(std::int64_t number, unsigned int dim) const {
        float boundary = 0;
        bool const has_one = m_store.position(m_entry.mode.id, m_trigger, number, dim, boundary);
        return has_one ? std::optional(boundary) : std::nullopt;
    }

    CTriggerStore m_store;
    int m_trigger;
    TriggerInMode& m_entry;
};

void Answer(CQtParamInstance const& parameters, int trigger, TriggerQuestion const& question,
            TriggerInMode& entry) {
    if (!AreUsable(entry.dimensions))
        return;
    int const varying = CTriggerStore(parameters).dimension(entry.mode.id, trigger);
    if (varying != -1)
        entry.varying = varying + 1;
    Answers answers(parameters, trigger, entry);
    if (question.position)
        answers.OfPosition(*question.position, question.clamp);
    else if (question.cell)
        answers.OfCell(*question.cell, question.extent);
}

float RowStart(CTriggerStore::CInterval const& interval) {
    return interval.raising() ? interval.start() : interval.stop();
}

float RowStop(CTriggerStore::CInterval const& interval) {
    return interval.raising() ? interval.stop() : interval.start();
}

std::string KindText(int kind) {
    switch (kind) {
    case 1:
        return "1 fixed";
    case 2:
        return "2 closed above";
    case 3:
        return "3 closed below";
    default:
        return std::to_string(kind);
    }
}

char const* Remark(TriggerPlace const& place) {
    if (!place.cell)
        return "no cell";
    return place.is_in_field ? "" : "not in the field";
}

std::string NumberText(std::optional<std::int64_t> const& number) {
    return number ? std::to_string(*number) : "none";
}

// The middle of a cell, or where an extent in that dimension ends.
std::string PlaceWord(TriggerQuestion const& question, int dimension) {
    return CellIn(question.extent, static_cast<unsigned int>(dimension - 1)) == 0 ? "middle" : "far edge";
}

Json JsonPlaces(std::vector<TriggerPlace> const& places) {
    Json list = Json::array();
    for (TriggerPlace const& place : places)
        list.push_back({{"dimension", place.dimension},
                        {"position", JsonNumber(place.position)},
                        {"cell", place.cell ? Json(*place.cell) : Json(nullptr)},
                        {"boundary", place.boundary ? JsonNumber(*place.boundary) : Json(nullptr)},
                        {"in_field", place.is_in_field}});
    return list;
}

} // namespace

std::vector<TriggerInMode> CollectTrigger(CQtParamInstance const& parameters, int trigger,
                                          std::optional<int> mode, TriggerQuestion const& question) {
    std::vector<TriggerInMode> modes;
    int last_mode = -1;
    for (auto const& [key, row] : parameters.TriggerParam()) {
        if (key[1] != trigger || (mode && key[0] != parameters.VirtMode2BaseMode(*mode)))
            continue;
        if (modes.empty() || key[0] != last_mode) {
            last_mode = key[0];
            int const shown = mode.value_or(key[0]);
            modes.push_back({.mode = {shown, parameters.ModeName(shown)},
                             .varying = {},
                             .dimensions = {},
                             .cell_number = {},
                             .places = {}});
        }
        modes.back().dimensions.push_back({key[2], row.get<"kind">(), row});
    }
    for (TriggerInMode& entry : modes)
        Answer(parameters, trigger, question, entry);
    return modes;
}

void PrintDimensions(std::ostream& out, std::vector<TriggerInMode> const& modes) {
    using enum TextTable::Align;
    TextTable table({Left, Right, Left, Right, Right, Right, Right, Left, Left});
    table.Add({"Mode", "Dimension", "Kind", "Start", "Stop", "Step", "Cells", "Direction"});
    for (TriggerInMode const& entry : modes) {
        std::string mode = Shown(entry.mode);
        for (TriggerDimension const& dimension : entry.dimensions) {
            auto const& interval = dimension.interval;
            table.Add({mode, std::to_string(dimension.dimension), KindText(dimension.kind),
                       ShortNumber(RowStart(interval)), ShortNumber(RowStop(interval)),
                       ShortNumber(interval.step()), std::to_string(interval.len()),
                       interval.raising() ? "raising" : "falling",
                       dimension.IsUsable() ? "" : "no such dimension"});
            mode.clear();
        }
    }
    table.Print(out);
}

void PrintPlaces(std::ostream& out, std::vector<TriggerInMode> const& modes,
                 TriggerQuestion const& question) {
    using enum TextTable::Align;
    bool const is_of_cell = question.cell.has_value();
    TextTable table({Left, Right, Right, Right, Left, Right, Right, Left});
    table.Add({"Mode", "Cell number", "Dimension", "Position", "", "Cell", "Boundary"});
    for (TriggerInMode const& entry : modes) {
        std::string mode = Shown(entry.mode);
        std::string number = NumberText(is_of_cell ? question.cell : entry.cell_number);
        for (TriggerPlace const& place : entry.places) {
            table.Add({std::move(mode), std::move(number), std::to_string(place.dimension),
                       ShortNumber(place.position), is_of_cell ? PlaceWord(question, place.dimension) : "",
                       place.cell ? std::to_string(*place.cell) : "none",
                       place.boundary ? ShortNumber(*place.boundary) : "", Remark(place)});
            mode.clear();
            number.clear();
        }
    }
    table.Print(out);
}

Json ToJson(TriggerDimension const& dimension) {
    auto const& interval = dimension.interval;
    return {{"dimension", dimension.dimension},
            {"kind", dimension.kind},
            {"start", JsonNumber(RowStart(interval))},
            {"stop", JsonNumber(RowStop(interval))},
            {"step", JsonNumber(interval.step())},
            {"cells", interval.len()},
            {"raising", interval.raising()}};
}

Json TriggerJson(NamedId const& trigger, std::vector<TriggerInMode> const& modes,
                 TriggerQuestion const& question) {
    bool const is_asked = question.position || question.cell;
    Json list = Json::array();
    for (TriggerInMode const& entry : modes) {
        Json dimensions = Json::array();
        for (TriggerDimension const& dimension : entry.dimensions)
            dimensions.push_back(ToJson(dimension));
        list.push_back({{"mode", ToJson(entry.mode)},
                        {"varying", entry.varying ? Json(*entry.varying) : Json(nullptr)},
                        {"dimensions", std::move(dimensions)},
                        {"cell_number", entry.cell_number ? Json(*entry.cell_number) : Json(nullptr)},
                        {"places", is_asked ? JsonPlaces(entry.places) : Json(nullptr)}});
    }
    return {{"trigger", ToJson(trigger)}, {"modes", std::move(list)}};
}

} // namespace paramdb::tools
