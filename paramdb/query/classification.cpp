// CQtParamInstance: kinds of instruments, channels, locations and signals.
#include <paramdb/distillery/signal_unit.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/tables/id_search.h>

#include <algorithm>
#include <iterator>

namespace {

enum result_t {
    result_none = -1,
    result_unknown = 0,
    result_single_value = 1,
    result_track = 2,
    result_spectrum = 3,
    result_own_kind = 4,
    result_second_track = 5,
    result_two_dimensions = 6,
};

struct InstrumentPair {
    int scalar;
    int track;
};
// A track that stands twice leads back to the first of its scalars here.
constexpr InstrumentPair InstrumentPairs[] = {
    {1001, 2001}, {1002, 2002}, {1003, 2003}, {1004, 2004},   {1005, 2005},
    {1700, 2070}, {1070, 2070}, {2500, 3500}, {20000, 21000},
};

} // namespace

int CQtParamInstance::ResultType(int instrument) {
    // clang-format off
    switch (instrument) {
    case 1001: case 1002: case 1003: case 1004: case 1005: case 1006: case 1007: case 1008:
    case 1050: case 1051: case 1060: case 1061: case 1070: case 1100: case 1110:
    case 1150: case 1151: case 1152: case 1153: case 1154: case 1155: case 1156: case 1157:
    case 1700: case 3000: case 5002: case 9000: case 9090: case 9500: case 9600: case 9650: case 9651:
    case 10000: case 10001: case 10100: case 10101: case 10102: case 10201: case 10202:
    case 16000: case 16001: case 20000:
        return result_single_value;
    case 2001: case 2002: case 2003: case 2004: case 2005: case 2006: case 2007: case 2008:
    case 2012: case 2070: case 5000: case 11000: case 11201: case 21000:
        return result_track;
    case 2100: case 2500: case 2700: case 2800: case 2900: case 12202:
        return result_spectrum;
    case 2600: case 5001:
        return result_own_kind;
    case 3500: case 13202:
        return result_second_track;
    case 3600: case 3700:
        return result_two_dimensions;
    case 8000: case 8999:
        return result_none;
    default:
        return result_unknown;
    }
    // clang-format on
}

bool CQtParamInstance::IsSingleValueInstrument(int instrument) const {
    return ResultType(instrument) == result_single_value;
}

bool CQtParamInstance::IsTrackInstrument(int instrument) const {
    int const result = ResultType(instrument);
    return result == result_track || result == result_second_track;
}

bool CQtParamInstance::IsSpectrumInstrument(int instrument) const {
    return ResultType(instrument) == result_spectrum;
}

bool CQtParamInstance::Is2dDataInstrument(int instrument) const {
    return ResultType(instrument) == result_two_dimensions;
}

int CQtParamInstance::ScalarInstrumentToTrackInstrument(int instrument) {
    auto const pair = std::ranges::find(InstrumentPairs, instrument, &InstrumentPair::scalar);
    return pair != std::end(InstrumentPairs) ? pair->track : -1;
}

int CQtParamInstance::TrackInstrumentToScalarInstrument(int instrument) {
    auto const pair = std::ranges::find(InstrumentPairs, instrument, &InstrumentPair::track);
    return pair != std::end(InstrumentPairs) ? pair->scalar : -1;
}

unsigned int CQtParamInstance::ChannelResamplingType(int channel) const {
    auto const row = paramdb::FindById(ChannelProperty(), channel);
    return row != ChannelProperty().end() ? row->second.get<"flags">() : 0;
}

bool CQtParamInstance::ChannelIsSync(int channel) const {
    return (ChannelResamplingType(channel) & sync_channel) != 0;
}

bool CQtParamInstance::ChannelIsMix(int channel) const {
    return (ChannelResamplingType(channel) & mix_channel) != 0;
}

bool CQtParamInstance::ChannelIsFix(int channel) const {
    return (ChannelResamplingType(channel) & fix_channel) != 0;
}

unsigned int CQtParamInstance::LocationPropertyFlag(int location) const {
    auto const row = LocationProperty().find(location);
    return row != LocationProperty().end() ? row->second.get<"flags">() : 0;
}

CMeasuringUnit CQtParamInstance::ApplicationSignalUnit(int signal) {
    auto const row = AppSignalProperty().find(signal);
    return row != AppSignalProperty().end() ? paramdb::UnitOf(row->second) : CMeasuringUnit();
}

bool CQtParamInstance::IpMultipleMixLocs() const {
    constexpr int first_uncounted = 5000; // of the instruments
    int channel_of_rows = -1;
    int mix_channels = 0;
    for (auto const& [channel, row] : ChannelProperty()) {
        if (row.get<"flags">() != static_cast<unsigned int>(mix_channel))
            continue;
        channel_of_rows = channel[0];
        ++mix_channels;
    }
    if (mix_channels > 1)
        return true;
    int first_location = -1;
    for (auto const& [key, row] : IpParamAndStore()) {
        if (key[Clavis::qChannel] != channel_of_rows || key[Clavis::qInstrument] >= first_uncounted)
            continue;
        if (first_location == -1)
            first_location = key[Clavis::qLocation];
        else if (key[Clavis::qLocation] != first_location)
            return true;
    }
    return false;
}

void CQtParamInstance::BaseModeClavis(QClavis& key) const {
    key[Clavis::qMode] = VirtMode2BaseMode(key[Clavis::qMode]);
}

QClavis CQtParamInstance::BaseModeClavis(QClavis const& key) const {
    QClavis base = key;
    BaseModeClavis(base);
    return base;
}
