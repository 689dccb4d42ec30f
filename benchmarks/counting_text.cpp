#include "counting_text.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace benchmarks {
namespace {

constexpr unsigned int MixChannel = 2;
constexpr unsigned int FixChannel = 4;
constexpr unsigned int ShownByLocation = 4;

template <class... Arguments>
std::wstring Format(wchar_t const* format, Arguments... arguments) {
    wchar_t buffer[500];
    std::swprintf(buffer, std::size(buffer), format, arguments...);
    return buffer;
}

std::wstring Name(ModelNames const& names, int id) {
    return id == -1 ? L"(Nil)" : names.Name(id);
}

std::wstring InstrumentText(ModelTables const& tables, int instrument, int parameter) {
    auto const row = tables.InstrumentParam.find({parameter});
    bool const is_known = row != tables.InstrumentParam.end();
    if (instrument == -1 && is_known)
        instrument = row->second.get<"instrument">();
    std::wstring name = tables.Instrument.Name(instrument);
    if (name.empty())
        name = Format(L"(Instr. %d)", instrument);
    auto const count = std::ranges::count_if(tables.InstrumentParam, [instrument](auto const& other) {
        return other.second.template get<"instrument">() == instrument;
    });
    if (count <= 1)
        return name;
    return Format(L"%ls %ls", name.c_str(), is_known ? row->second.get<"name">().c_str() : L"");
}

std::wstring PlaceText(ModelTables const& tables, int location, int channel) {
    wchar_t const* const location_name = tables.Location.Name(location);
    wchar_t const* const channel_name = tables.Channel.Name(channel);
    auto const row = tables.ChannelProperty.find({channel});
    unsigned int const type = row != tables.ChannelProperty.end() ? row->second.get<"flags">() : 0;
    auto const count = std::ranges::count_if(tables.ChannelProperty, [type](auto const& other) {
        return other.second.template get<"flags">() == type;
    });
    if (type == 0 || (type & FixChannel) != 0) {
        if (count > 1)
            return Format(L"%ls (%ls)", location_name, channel_name);
        auto const property = tables.LocationProperty.find({location});
        bool const by_channel = property != tables.LocationProperty.end() &&
                                (property->second.get<"flags">() & ShownByLocation) == 0;
        return by_channel ? channel_name : location_name;
    }
    if ((type & MixChannel) != 0)
        return count > 1 ? Format(L"%ls (%ls)", channel_name, location_name) : channel_name;
    return Format(L"%ls %ls", location_name, channel_name);
}

} // namespace

std::wstring CountingText(ModelTables const& tables, QClavis const& key, wchar_t const* separator) {
    return Format(L"%ls %ls %ls %ls %ls %ls %ls", Name(tables.Mode, key[Clavis::qMode]).c_str(), separator,
                  InstrumentText(tables, key[Clavis::qInstrument], key[Clavis::qInstrParam]).c_str(),
                  separator, PlaceText(tables, key[Clavis::qLocation], key[Clavis::qChannel]).c_str(),
                  separator, Name(tables.ApplicationSignal, key[Clavis::qSignal]).c_str());
}

} // namespace benchmarks
