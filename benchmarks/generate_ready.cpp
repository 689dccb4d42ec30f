#include "generate_ready.h"

#include "generate_values.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace benchmarks {
namespace {

using Key = std::array<int, 6>; // mode, instrument, channel, location, parameter, signal
using Fields = std::vector<std::string>;

Fields Split(std::string_view row) {
    Fields fields;
    for (std::size_t tab = row.find('\t'); tab != std::string_view::npos; tab = row.find('\t')) {
        fields.emplace_back(row.substr(0, tab));
        row.remove_prefix(tab + 1);
    }
    fields.emplace_back(row);
    return fields;
}

std::string Join(Fields const& fields) {
    std::string row;
    for (std::string const& field : fields) {
        if (!row.empty())
            row += '\t';
        row += field;
    }
    return row;
}

// A table whose fields are given other values.
class TableEditor {
public:
    explicit TableEditor(std::vector<TableRows>& tables, std::wstring_view tag)
        : m_table(&*std::ranges::find(tables, tag, [](TableRows const& table) -> std::wstring_view {
              return table.description->tag;
          })) {}

    std::size_t size() const { return m_table->rows.size(); }

    // Gives every row the value that the function has for its place.
    template <class Value>
    void Set(std::string_view column, Value const& value) {
        std::size_t const place = Place(column);
        for (std::size_t row = 0; row < m_table->rows.size(); ++row) {
            Fields fields = Split(m_table->rows[row]);
            fields[place] = value(row);
            m_table->rows[row] = Join(fields);
        }
    }
    // Replaces the first elements of the rows.
    template <std::size_t Size>
    void SetKeys(std::vector<std::array<int, Size>> const& keys) {
        for (std::size_t element = 0; element < Size; ++element) {
            std::string const column(m_table->description->key_columns[element].name);
            Set(column, [&](std::size_t row) { return std::to_string(keys[row][element]); });
        }
    }

private:
    std::size_t Place(std::string_view column) const {
        std::size_t place = 0;
        for (auto const* columns : {&m_table->description->key_columns, &m_table->description->row_columns})
            for (paramdb::ColumnDescription const& each : *columns) {
                if (each.name == column)
                    return place;
                ++place;
            }
        throw std::invalid_argument("no column " + std::string(column));
    }

    TableRows* m_table;
};

constexpr int ChannelsOfAParameter = 6;
constexpr int LocationsOfAParameter = 3;
constexpr int SignalsOfAParameter = 2;

int Instrument(int parameter) {
    return 2001 + parameter % 7;
}

std::vector<Key> ConcreteKeys(std::size_t count, int parameters) {
    std::vector<Key> keys;
    for (int mode = 1; keys.size() < count; ++mode)
        for (int parameter = 0; parameter < parameters; ++parameter)
            for (int rest = 0; rest < ChannelsOfAParameter * LocationsOfAParameter * SignalsOfAParameter;
                 ++rest)
                if (keys.size() < count)
                    keys.push_back({mode, Instrument(parameter), 1 + rest % ChannelsOfAParameter,
                                    1 + rest / ChannelsOfAParameter % LocationsOfAParameter, 1001 + parameter,
                                    1 + rest / ChannelsOfAParameter / LocationsOfAParameter});
    std::ranges::sort(keys);
    return keys;
}

// Each for another parameter, channel and signal; mode and location are wildcards half of the time.
std::vector<Key> Patterns(std::size_t count, int modes, Random& random) {
    std::vector<Key> patterns;
    for (int index = 0; patterns.size() < count; ++index) {
        int const parameter = index / (ChannelsOfAParameter * SignalsOfAParameter);
        int const mode = random.Below(2) == 0 ? -1 : random.Between(1, modes);
        int const location = random.Below(2) == 0 ? -1 : random.Between(1, LocationsOfAParameter);
        patterns.push_back({mode, Instrument(parameter),
                            1 + index / SignalsOfAParameter % ChannelsOfAParameter, location,
                            1001 + parameter, 1 + index % SignalsOfAParameter});
    }
    std::ranges::sort(patterns);
    return patterns;
}

void FitGroups(std::vector<TableRows>& tables, Random& random) {
    TableEditor judging(tables, L"<TIpTrackPolygon>");
    TableEditor judged(tables, L"<TIpParamAndStore>");
    auto const parameters = static_cast<int>(judging.size() / 10 + 1);
    auto const keys = ConcreteKeys(judged.size(), parameters);
    judged.SetKeys(keys);
    judging.SetKeys(Patterns(judging.size(), keys.back()[0], random));
}

// Lines of ten channels: each inherits from the one before it, and in some modes from the last channel of the
// line before, so that no line of parents is closed.
void FitChannels(std::vector<TableRows>& tables, Random& random) {
    constexpr int rows_of_a_channel = 5;
    constexpr int depth = 10;
    TableEditor inheritance(tables, L"<TChannelInheritance>");
    auto const modes = static_cast<int>(TableEditor(tables, L"<TMode>").size());
    std::vector<std::array<int, 2>> keys;
    for (int channel = 1; keys.size() < inheritance.size(); ++channel) {
        keys.push_back({channel, -1});
        int mode = 0;
        for (int row = 1; row < rows_of_a_channel && keys.size() < inheritance.size(); ++row)
            keys.push_back({channel, mode += random.Between(1, std::max(1, modes / rows_of_a_channel))});
    }
    inheritance.SetKeys(keys);
    inheritance.Set("parent_channel", [&keys](std::size_t row) {
        auto const [channel, mode] = keys[row];
        int const line = (channel - 1) / depth * depth; // the channel in front of it
        bool const is_first = channel == line + 1;
        int const parent = mode == -1 ? (is_first ? -1 : channel - 1) : (line == 0 ? -1 : line);
        return std::to_string(parent);
    });
}

void FitModes(std::vector<TableRows>& tables) {
    TableEditor params(tables, L"<TAutoModeParam>");
    auto const first_two = [](std::size_t row) { return std::to_string(row + 1); };
    params.Set("signal", first_two);
    params.Set("start", [](std::size_t) { return "0.0"; });
    params.Set("stop", [](std::size_t) { return "1000.0"; });
    params.Set("step", [](std::size_t) { return "100.0"; });
    TableEditor order(tables, L"<TAutoModeParamOrder>");
    order.Set("order_key", [](std::size_t row) { return std::to_string(row); });
    order.Set("signal", first_two);
}

// The instruments of the parameters come first.
void FitInstruments(std::vector<TableRows>& tables) {
    constexpr std::array ids{1001, 1002, 1003, 1004, 1005, 2001, 2002, 2003, 2007, 2500, 3500, 10001};
    TableEditor(tables, L"<TInstrument>").Set("instrument", [&ids](std::size_t row) {
        return std::to_string(row < ids.size() ? ids[row] : ids.back() + static_cast<int>(row));
    });
}

void FitValues(std::vector<TableRows>& tables, Random& random) {
    auto const gears = static_cast<int>(TableEditor(tables, L"<TBaseOrder>").size());
    TableEditor(tables, L"<TVirtual2PhysGear>").Set("physical_gear", [&](std::size_t) {
        return std::to_string(random.Between(1, gears));
    });
    TableEditor(tables, L"<TErrorGroup>").Set("result_code", [](std::size_t row) {
        return std::to_string(row % 4);
    });
    for (wchar_t const* const tag : {L"<TIpSpectralValue>", L"<TIpSpectralTrack>"})
        TableEditor(tables, tag).Set("interpretation", [](std::size_t row) {
            return std::to_string(row % 2 * 5);
        });
    for (wchar_t const* const tag : {L"<TIpSpectrum>", L"<TIpModSpectrogram>"})
        TableEditor(tables, tag).Set("decay", [](std::size_t) { return "1000.0"; });
}

} // namespace

std::vector<TableRows> GenerateReadyRows(std::size_t rows, std::uint64_t seed) {
    auto tables = GenerateRows({.rows = rows, .seed = seed, .has_ready_shares = true});
    Random random(seed);
    FitGroups(tables, random);
    FitChannels(tables, random);
    FitModes(tables);
    FitInstruments(tables);
    FitValues(tables, random);
    return tables;
}

} // namespace benchmarks
