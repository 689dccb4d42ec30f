#include "tools/check/class_tables.h"

#include <algorithm>

namespace paramdb::tools::check {
namespace {

constexpr ClassTable Tables[] = {
    {1001, "TIpSpectralValue", true},
    {1002, "TIpCrest", true},
    {1003, "TIpRms", true},
    {1004, "TIpPeak", true},
    {1005, "TIpKurtosis", true},
    {1008, "TIpHoelder", false},
    {1050, "TIpRatioTest", true},
    {1051, "TIpDiffTest", true},
    {1060, "TIpSP", false},
    {1700, "TIpSgArea", true},
    {2001, "TIpSpectralTrack", true},
    {2002, "TIpCrestTrack", true},
    {2003, "TIpRmsTrack", true},
    {2004, "TIpPeakTrack", true},
    {2005, "TIpKurtosisTrack", true},
    {2006, "TIpModulationTrack", true},
    {2007, "TIpResidualTrack", true},
    {2008, "TIpHoelderTrack", true},
    {2012, "TIpVarAreaTrack", true},
    {2070, "TIpSgAreaTrack", true},
    {2100, "TIpCatCurve", false},
    {2500, "TIpSpectrum", true},
    {2600, "TIpTimeSignal", true},
    {2700, "TIpSgSection", true},
    {2800, "TIpSpectralDev", false},
    {2900, "TIpCepstrum", true},
    {3000, "TIpSignalGuard", false},
    {3500, "TIpSpectrogram", true},
    {3700, "TIpModSpectrogram", true},
    {5000, "TIpSFTrack", true},
    {5001, "TIpSFTimeSignal", true},
    {10000, "TIpTrackInterval", false},
    {10100, "TIpCurveMax", false},
    {10101, "TIpCurvePolygon", false},
    {10102, "TIpSvCurve", false},
    {10201, "TIpSvBinOp", false},
    {10202, "TIpSvTrend", false},
    {11000, "TIpTrackTransform", true},
    {11201, "TIpTrackBinOp", true},
    {12202, "TIpCurveTrend", false},
    {13202, "TIpCurveTrackTrend", false},
    {16000, "TIpTrackRegression", false},
    {20000, "TIpCvValue", true},
    {21000, "TIpCvTrack", true},
};

} // namespace

std::span<ClassTable const> ClassTables() {
    return Tables;
}

ClassTable const* ClassTableOf(int instrument) {
    auto const found =
        std::lower_bound(std::begin(Tables), std::end(Tables), instrument,
                         [](ClassTable const& table, int wanted) { return table.instrument < wanted; });
    return found != std::end(Tables) && found->instrument == instrument ? found : nullptr;
}

} // namespace paramdb::tools::check
