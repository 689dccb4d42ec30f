#include <paramdb/distillery/refinement.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/tables/catalogue.h>

namespace {

using namespace ParamDb;

// An exponential average of at least this decay counts as one over all.
constexpr float InfiniteDecay = 1000.0f;

bool SetInstrumentsOfRelativeLimits(CParamTables& tables) {
    for (auto& [key, limit] : tables.RelativeLimit) {
        auto const parameter = tables.InstrumentParam.find(key[Clavis::qInstrParam]);
        if (parameter == tables.InstrumentParam.end())
            return false;
        key[Clavis::qInstrument] = parameter->second.get<"instrument">();
    }
    return true;
}

void BoundResultCodes(CParamTables& tables) {
    constexpr int system_error = 3;
    for (auto& [group, row] : tables.SeverityProperty) {
        int& code = row.get<"result_code">();
        if (static_cast<unsigned int>(code) <= static_cast<unsigned int>(system_error))
            continue;
        CString message;
        message.Format(
            L"CQtParamDistillery::RefineDatabaseTables(): illegal result code %ld, set to %d ('System "
            L"error')\n",
            code, system_error);
        PrWin::Output(8, 4, message.GetString());
        code = system_error;
    }
}

// The present code of an accumulation that may be one of older data.
int ConvertAccumulation(int accumulation, float decay) {
    constexpr int old_maximum = 2;
    constexpr int old_exponential = 3;
    switch (accumulation) {
    case accumulation_maximum:
    case accumulation_average:
    case accumulation_last:
        return accumulation;
    case old_maximum:
        return accumulation_maximum;
    case old_exponential:
        return decay != 0.0f ? accumulation_average : accumulation_last;
    default:
        return accumulation_none;
    }
}

void ReportDecay(CParamTables const& tables, int parameter, int accumulation, float decay) {
    if (accumulation != accumulation_average || !(decay < InfiniteDecay))
        return;
    auto const row = tables.InstrumentParam.find(parameter);
    bool const is_known = row != tables.InstrumentParam.end();
    int const instrument = is_known ? row->second.get<"instrument">() : -1;
    CString instrument_name = tables.Instrument.Name(instrument);
    if (instrument_name.IsEmpty())
        instrument_name.Format(L"(Instr. %d)", instrument);
    CString message;
    message.Format(
        L"CQtParamDistillery::RefineDatabaseTables(): exponential decay %f found for instrument '%s', "
        L"parameter '%s', treated as infinity\n",
        static_cast<double>(decay), instrument_name.GetString(),
        is_known ? row->second.get<"name">().c_str() : L"");
    PrWin::Output(8, 3, message.GetString());
}

template <class Table>
void ConvertSpectra(CParamTables const& tables, Table& spectra) {
    for (auto& [parameter, row] : spectra) {
        int& accumulation = row.template get<"accumulation">();
        float const decay = row.template get<"decay">();
        accumulation = ConvertAccumulation(accumulation, decay);
        ReportDecay(tables, parameter[0], accumulation, decay);
    }
}

void ConvertSections(CParamTables& tables) {
    constexpr int first_present = 9;
    for (auto& [parameter, row] : tables.IpSgSection)
        if (int& accumulation = row.get<"accumulation">(); accumulation < first_present)
            accumulation = ConvertAccumulation(accumulation, InfiniteDecay);
}

} // namespace

bool RefineTables(CParamTables& tables) {
    if (!SetInstrumentsOfRelativeLimits(tables))
        return false;
    BoundResultCodes(tables);
    ConvertSpectra(tables, tables.IpSpectrum);
    ConvertSpectra(tables, tables.IpModSpectrogram);
    ConvertSections(tables);
    return true;
}
