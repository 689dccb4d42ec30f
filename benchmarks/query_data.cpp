#include "query_data.h"

#include "command_line.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace benchmarks {
namespace {

constexpr int Modes = 100;
constexpr int Channels = 40;
constexpr int Signals = 20;
constexpr std::size_t PhysicalModes = 10;
// The rotors and gears of a physical mode are numbered on; those of a speed source follow each other.
constexpr std::size_t SourcesOfARotor = 5;
constexpr std::size_t RotorsOfASpeedSource = 8;
constexpr int Triggers = 40;
constexpr int Instruments[] = {1001, 1002, 1003, 1004, 1005, 2001, 2007};

int Int(std::size_t number) {
    return static_cast<int>(number);
}

std::wstring Wide(std::string_view text) {
    return {text.begin(), text.end()};
}

// Every third id is there.
int LocationId(std::size_t place) {
    return 3 * Int(place) + 1;
}
int ParameterId(std::size_t place) {
    return 3 * Int(place) + 1001;
}
// Names whose beginnings are alike, as those of benches are.
std::wstring LocationName(std::size_t place) {
    static constexpr std::string_view parts[] = {"input shaft", "output shaft", "differential", "final drive",
                                                 "idler",       "bearing",      "housing",      "mount"};
    static constexpr std::string_view sides[] = {"left", "right", "top", "front", "rear"};
    return Wide(parts[place % std::size(parts)]) + L' ' +
           Wide(sides[place / std::size(parts) % std::size(sides)]) + L' ' + std::to_wstring(place + 1);
}

void FillNames(CParamTables& tables, std::size_t locations) {
    for (std::size_t place = 0; place < locations; ++place)
        tables.Location.Add(LocationId(place), LocationName(place).c_str());
    for (int mode = 0; mode < Modes; ++mode) {
        tables.Mode.Add(mode, (L"gear " + std::to_wstring(mode) + L" run up").c_str());
        tables.ModeProperty.insert({mode, QVModeProps(mode % Int(PhysicalModes), 0, 0, 0)});
    }
    for (int channel = 0; channel < Channels; ++channel) {
        tables.Channel.Add(channel, (L"channel " + std::to_wstring(channel)).c_str());
        tables.ChannelProperty.insert({channel, QVChannelProperty(1u << channel % 3, 0)});
    }
    for (int signal = 0; signal < Signals; ++signal)
        tables.ApplicationSignal.Add(signal, (L"signal " + std::to_wstring(signal)).c_str());
}

// Parameters in turn of each instrument, with a row in the table of its instrument that names the trigger.
void FillParameters(CParamTables& tables, std::size_t parameters) {
    for (int const instrument : Instruments)
        tables.Instrument.Add(instrument, (L"instrument " + std::to_wstring(instrument)).c_str());
    tables.InstrumentParam.reserve(parameters);
    for (std::size_t place = 0; place < parameters; ++place) {
        int const instrument = Instruments[place % std::size(Instruments)];
        int const parameter = ParameterId(place);
        std::wstring const name = L"order " + std::to_wstring(place);
        tables.InstrumentParam.insert(
            {parameter, QVInstrumentParam(instrument, std::wstring_view(name), 0, 0, 0)});
        int const trigger = Int(place % Triggers) + 1;
        if (instrument > 1001 && instrument < 2000)
            tables.IpTimeCalcVal.at(instrument).insert({parameter, QVIpTimeCalcVal(trigger, 0, 0)});
        else
            tables.IpSvOfSpec.at(instrument).insert({parameter, QVIpSvOfSpec(trigger, 0, 0, L"H1", 0, 0)});
    }
}

// One gear in two has another physical gear.
void FillRotors(CParamTables& tables, std::size_t order_sources) {
    std::size_t const of_a_mode = std::max<std::size_t>(1, order_sources / PhysicalModes);
    for (std::size_t source = 0; source < of_a_mode; ++source) {
        int const order_source = Int(source) + 1;
        tables.BaseOrder.insert({order_source, QVBaseOrder(static_cast<float>(source % 97) + 0.5f)});
        for (int mode = 0; mode < Int(PhysicalModes); ++mode)
            tables.OrderSource2Rotor.insert(
                {{order_source, mode}, QVRefIdx(Int(source / SourcesOfARotor) + 1)});
    }
    for (int mode = 0; mode < Int(PhysicalModes); ++mode) {
        for (std::size_t rotor = 0; rotor * SourcesOfARotor < of_a_mode; ++rotor)
            tables.RotorSpeedSource.insert(
                {{mode, Int(rotor) + 1}, QVRefIdx(Int(rotor / RotorsOfASpeedSource) + 1)});
        for (std::size_t gear = 0; gear < of_a_mode; gear += 2)
            tables.Virtual2PhysGear.insert(
                {{mode, Int(gear) + 1},
                 QVRefIdx(Int((gear + static_cast<std::size_t>(mode)) % of_a_mode) + 1)});
    }
}

// The places of that many rows, each round in an order of its own.
std::vector<std::size_t> Places(std::size_t rows, Random& random) {
    constexpr std::size_t least = 50'000;
    std::vector<std::size_t> places;
    do {
        std::size_t const begin = places.size();
        for (std::size_t place = 0; place < rows; ++place)
            places.push_back(place);
        for (std::size_t left = rows; left > 1; --left)
            std::swap(places[begin + left - 1], places[begin + static_cast<std::size_t>(random.Below(left))]);
    } while (places.size() < least);
    return places;
}

} // namespace

void FillForQueries(CQtParamDistillery& distillery, QuerySizes const& sizes) {
    CParamTables& tables = distillery.Tables();
    FillNames(tables, sizes.locations);
    FillParameters(tables, sizes.parameters);
    FillRotors(tables, sizes.order_sources);
    Check(distillery.DerivedInfo().BuildDerivedInfo(), "the derivation has failed");
}

std::vector<int> LocationIds(CQtParamDistillery const& distillery, bool missing, Random& random) {
    std::vector<int> ids;
    for (std::size_t const place : Places(distillery.Tables().Location.size(), random))
        ids.push_back(LocationId(place) + (missing ? 1 : 0));
    return ids;
}

std::vector<int> Parameters(CQtParamDistillery const& distillery, bool missing, Random& random) {
    std::vector<int> ids;
    for (std::size_t const place : Places(distillery.Tables().InstrumentParam.size(), random))
        ids.push_back(ParameterId(place) + (missing ? 1 : 0));
    return ids;
}

std::vector<BaseOrderQuestion> Gears(CQtParamDistillery const& distillery, Random& random) {
    std::vector<BaseOrderQuestion> questions;
    for (std::size_t const place : Places(distillery.Tables().BaseOrder.size(), random))
        questions.push_back({random.Between(0, Modes - 1), Int(place) + 1});
    return questions;
}

std::vector<OrderSourceQuestion> Rotors(CQtParamDistillery const& distillery, Random& random) {
    std::vector<OrderSourceQuestion> questions;
    std::size_t const rotors = distillery.Tables().RotorSpeedSource.size() / PhysicalModes;
    for (std::size_t const place : Places(rotors, random))
        questions.push_back({random.Between(0, Modes - 1), random.Between(0, Channels - 1), Int(place) + 1});
    return questions;
}

std::vector<QClavis> Keys(CQtParamDistillery const& distillery, Random& random) {
    std::vector<QClavis> keys;
    auto const locations = static_cast<std::uint64_t>(distillery.Tables().Location.size());
    for (std::size_t const place : Places(distillery.Tables().InstrumentParam.size(), random))
        keys.emplace_back(random.Between(0, Modes - 1), Instruments[place % std::size(Instruments)],
                          random.Between(0, Channels - 1),
                          LocationId(static_cast<std::size_t>(random.Below(locations))), ParameterId(place),
                          random.Between(0, Signals - 1));
    return keys;
}

NameQuestions::NameQuestions(CQtParamDistillery const& distillery, bool missing, Random& random) {
    std::vector<std::size_t> const places = Places(distillery.Tables().Location.size(), random);
    std::unordered_map<std::size_t, std::pair<std::size_t, std::size_t>> texts; // place to begin and length
    for (std::size_t const place : places) {
        if (texts.contains(place))
            continue;
        std::wstring const name = LocationName(place) + (missing ? L"b" : L"");
        texts.emplace(place, std::pair(m_utf8.size(), name.size()));
        m_wide.insert(m_wide.end(), name.c_str(), name.c_str() + name.size() + 1);
        for (std::size_t unit = 0; unit <= name.size(); ++unit)
            m_utf8 += static_cast<char>(name.c_str()[unit]);
    }
    m_questions.reserve(places.size());
    for (std::size_t const place : places) {
        auto const [begin, length] = texts.at(place);
        m_questions.push_back({m_wide.data() + begin, std::string_view(m_utf8).substr(begin, length)});
    }
}

} // namespace benchmarks
