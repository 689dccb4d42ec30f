#include "layouts.h"

#include <cstddef>
#include <stdexcept>

namespace layouts {
namespace {

using enum Container;

// clang-format off
constexpr Layout Layouts[] = {
    {L"<TMode>", "i", "QIdxName", "t", NameTable},
    {L"<TChannel>", "i", "QIdxName", "t", NameTable},
    {L"<TLocation>", "i", "QIdxName", "t", NameTable},
    {L"<TInstrument>", "i", "QIdxName", "t", NameTable},
    {L"<TInstrumentParam>", "i", "QVInstrumentParam", "itiuu"},
    {L"<TPhysMode>", "i", "QIdxName", "t", NameTable},
    {L"<TResamplingGroup>", "i", "QIdxName", "t", NameTable, -1, "ResamplingJob"},
    {L"<TProcessingUnit>", "i", "QIdxName", "t", NameTable, -1, "ResamplingSet"},
    {L"<TSensorGroup>", "i", "QIdxName", "t", NameTable},
    {L"<TTrigger>", "i", "QVTrigger", "ti"},
    {L"<TApplicationSignal>", "i", "QIdxName", "t", NameTable},
    {L"<TSignalUnit>", "i", "QIdxName", "t", NameTable},
    {L"<TAliasType>", "i", "QIdxName", "t", NameTable, -1, "TypeNames"},
    {L"<TAliasBench>", "i", "QIdxName", "t", NameTable, -1, "BenchNames"},
    {L"<TModeProperty>", "i", "QVModeProps", "iuii"},
    {L"<TModeTranslate>", "t", "QIdx1", "i"},
    {L"<TChannelProperty>", "i", "QVChannelProperty", "ui"},
    {L"<TChannelInheritance>", "ii", "QVRefIdx", "i"},
    {L"<TLocationProperty>", "i", "QVLocationProperty", "uii"},
    {L"<TRotorSpeed>", "ii", "QVRotorSpeeds", "dii"},
    {L"<TBaseOrder>", "i", "QVBaseOrder", "f"},
    {L"<TGearDiameter>", "i", "QVGearDiameter", "f"},
    {L"<TVirtual2PhysGear>", "ii", "QVRefIdx", "i"},
    {L"<TSpeedSource>", "i", "QVRefIdx", "i"},
    {L"<TRotorSpeedSource>", "ii", "QVRefIdx", "i"},
    {L"<TRotorSpeedReference>", "ii", "QVRefIdx", "i"},
    {L"<TOrderSource2Rotor>", "ii", "QVRefIdx", "i"},
    {L"<TTEMeasurement>", "i", "CVTEMeasurement", "tiiiiii"},
    {L"<TTEOperation>", "i", "CVTEOperation", "ii"},
    {L"<TSensorGroupList>", "i", "QVSensorGroupList", "ii", MultiMap},
    {L"<TResamplingM>", "ii", "QVResampling", "iiiuufifi"},
    {L"<TAppSignalProperty>", "i", "QVAppSignalProperty", "itfii"},
    {L"<TTpSensorConfig>", "i", "QIdxName", "t", NameTable, -1, "SensorConfigName"},
    {L"<TTpSensorConfigProperty>", "iii", "QVSensorConfiguration", "i"},
    {L"<TSignalDispatch>", "i", "QVSignalDispatch", "i"},
    {L"<TTriggerParam>", "iii", "QVTriggerParams", "iuffffiiii"},
    {L"<TAutoModeParamOrder>", "i", "QVAutoModeParamOrder", "i", Tree},
    {L"<TAutoModeParam>", "i", "QVAutoModeParams", "ffffffifu", Tree},
    {L"<TAutoModeSequence>", "i", "QVAutoModeSequence", "i"},
    {L"<TIpParamAndStore>", "iiiiii", "QVIpParamAndStore", "iffif"},
    {L"<TIpSpectralValue>", "i", "QVIpSvOfSpec", "iiitii", UniqueMap, 1001, "IpSvOfSpec"},
    {L"<TIpSpectralTrack>", "i", "QVIpSvOfSpec", "iiitii", UniqueMap, 2001, "IpSvOfSpec"},
    {L"<TIpResidualTrack>", "i", "QVIpSvOfSpec", "iiitii", UniqueMap, 2007, "IpSvOfSpec"},
    {L"<TIpCrest>", "i", "QVIpTimeCalcVal", "iif", UniqueMap, 1002, "IpTimeCalcVal"},
    {L"<TIpRms>", "i", "QVIpTimeCalcVal", "iif", UniqueMap, 1003, "IpTimeCalcVal"},
    {L"<TIpPeak>", "i", "QVIpTimeCalcVal", "iif", UniqueMap, 1004, "IpTimeCalcVal"},
    {L"<TIpKurtosis>", "i", "QVIpTimeCalcVal", "iif", UniqueMap, 1005, "IpTimeCalcVal"},
    {L"<TIpHoelder>", "i", "QVIpHoelder", "iifi"},
    {L"<TIpRatioTest>", "i", "QVIpSimpleTrack", "i", UniqueMap, 1050, "IpSimpleTrack"},
    {L"<TIpDiffTest>", "i", "QVIpSimpleTrack", "i", UniqueMap, 1051, "IpSimpleTrack"},
    {L"<TIpSP>", "i", "QVIpSP", "i"},
    {L"<TIpSgArea>", "i", "QVIpSgArea", "itiifii"},
    {L"<TIpCrestTrack>", "i", "QVIpCalcTrack", "ii", UniqueMap, 2002, "IpCalcTrack"},
    {L"<TIpRmsTrack>", "i", "QVIpCalcTrack", "ii", UniqueMap, 2003, "IpCalcTrack"},
    {L"<TIpPeakTrack>", "i", "QVIpCalcTrack", "ii", UniqueMap, 2004, "IpCalcTrack"},
    {L"<TIpKurtosisTrack>", "i", "QVIpCalcTrack", "ii", UniqueMap, 2005, "IpCalcTrack"},
    {L"<TIpHoelderTrack>", "i", "QVIpHoelderTrack", "iii"},
    {L"<TIpModulationTrack>", "i", "QVIpCalcTrack", "ii", UniqueMap, 2006, "IpCalcTrack"},
    {L"<TIpVarAreaTrack>", "i", "QVIpSchlauchTrack", "iiiiiii", UniqueMap, -1, "IpSchlauchTrack"},
    {L"<TIpSgAreaTrack>", "i", "QVIpSgAreaTrack", "iitii"},
    {L"<TIpCatCurve>", "i", "QVIpCatCurve", "ii"},
    {L"<TIpSpectrum>", "i", "QVIpSpectrum", "iifi"},
    {L"<TIpModSpectrogram>", "i", "QVIpSpectrum", "iifi"},
    {L"<TIpTimeSignal>", "i", "QVIpSimpleTrack", "i", UniqueMap, 2600, "IpSimpleTrack"},
    {L"<TIpSgSection>", "i", "QVIpSgSection", "itiiii"},
    {L"<TIpSpectralDev>", "i", "QVIpSpectrogramDeviation", "iiffff"},
    {L"<TIpCepstrum>", "i", "QVIpSimpleTrack", "i", UniqueMap, 2900, "IpSimpleTrack"},
    {L"<TIpSpectrogram>", "i", "QVIpSimpleTrack", "i", UniqueMap, 3500, "IpSimpleTrack"},
    {L"<TIpSFTrack>", "i", "QVIpSimpleTrack", "i", UniqueMap, 5000, "IpSimpleTrack"},
    {L"<TIpSFTimeSignal>", "i", "QVIpSimpleTrack", "i", UniqueMap, 5001, "IpSimpleTrack"},
    {L"<TIpTrackInterval>", "i", "QVIpTrackInterval", "iiiffi"},
    {L"<TIpCurveMax>", "i", "QVIpSimple2ndLevel", "ii"},
    {L"<TIpCurvePolygon>", "i", "QVIpCurvePolygon", "iiiiff"},
    {L"<TIpSvCurve>", "i", "QVIpSvCurve", "ii"},
    {L"<TIpSvTrend>", "i", "QVIpTrend", "iiiiff"},
    {L"<TIpTrackTransform>", "i", "QVIpTrackTransform", "iiii"},
    {L"<TIpCurveTrend>", "i", "QVIpTrend", "iiiiff"},
    {L"<TIpCurveTrackTrend>", "i", "QVIpTrend", "iiiiff"},
    {L"<TIpTrackRegression>", "i", "QVIpTrackRegression", "iiiiii"},
    {L"<TIpCvValue>", "i", "QVDbIpCalcVal", "ii", UniqueMap, -1, "IpCV"},
    {L"<TIpSvBinOp>", "i", "QVIpBinOp", "iiiiii", UniqueMap, 10201, "IpSvBinOp"},
    {L"<TIpTrackBinOp>", "i", "QVIpBinOp", "iiiiii", UniqueMap, 11201, "IpSvBinOp"},
    {L"<TIpCvTrack>", "i", "QVIpSimpleTrack", "i", UniqueMap, 21000, "IpSimpleTrack"},
    {L"<TIpSignalGuard>", "i", "QVIpSignalGuard", "ii"},
    {L"<TIpTrackPolygon>", "iiiiii", "QVIpTrackPolygon", "iiiififfff"},
    {L"<TIpRunTest>", "i", "QVIpRunTest", "i"},
    {L"<TLimSValue>", "iiiiii", "QVLimSValue", "iff"},
    {L"<TLimCValue>", "iiiiii", "QVLimCValue", "iiiii"},
    {L"<TIpPolygon>", "i", "QVClassIdName", "it"},
    {L"<TIpPolygonValue>", "if", "QVIpY", "f"},
    {L"<TIpPolygonProperty>", "i", "QVIpPolygonProperty", "ii"},
    {L"<TLimArea>", "iiiiii", "QVLimArea", "iff"},
    {L"<TRelativeLimit>", "iiiiii", "QVRelativeLimit", "ff"},
    {L"<TErrorCode>", "i", "QVErrorCode", "itiii"},
    {L"<TExternalError>", "i", "QVExternalError", "iiiiiii"},
    {L"<TErrorGroup>", "i", "QVErrorGroup", "iitt", UniqueMap, -1, "SeverityProperty"},
    {L"<TShadowGroupProperty>", "i", "QVShadowGroupProperty", "i"},
    {L"<TRetype>", "i", "QVRefIdx", "i"},
    {L"<TClavisUserNames>", "iiiii", "QVClavisUserNames", "tii"},
    {L"<TAuxStrings>", "t", "QVAuxStrings", "t"},
    {L"<TLearnProcedures>", "i", "QVLearnProcedures", "iuftf"},
    {L"<TIpLearnParams>", "iiiiii", "QVIpLearnParameter", "iquq"},
    {L"<TExternalName>", "i", "QVExternalName", "t"},
};
// clang-format on

} // namespace

std::span<Layout const> All() {
    return Layouts;
}

std::string_view KeyClass(std::string_view key) {
    if (key == "i")
        return "QIdx1";
    if (key == "ii")
        return "QIdx2";
    if (key == "iii")
        return "QIdx3";
    if (key == "iiiii")
        return "QIdx5";
    if (key == "iiiiii")
        return "QClavis";
    if (key == "if")
        return "QIdxIF";
    if (key == "t")
        return "QIdxName";
    throw std::invalid_argument("no such key");
}

std::wstring DefaultRow(Layout const& layout) {
    if (layout.tag == L"<TAutoModeParam>")
        return L"0 10 1 1 0 1 1 1 1";
    if (layout.row_class == "QIdx1") // a key class as a row
        return L"-1";
    std::wstring text;
    for (std::size_t field = 0; field < layout.row.size(); ++field) {
        text += field > 0 ? L" " : L"";
        text += layout.row[field] == 't' ? L"" : L"0";
    }
    return text;
}

} // namespace layouts
