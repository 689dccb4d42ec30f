// CQtParamInstance: the settings of instrument parameters as lines of text.
#include <paramdb/keys/text_buffer.h>
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/query/param_instance.h>

#include <algorithm>

namespace {

// String ids.
constexpr unsigned int NotAssigned = 9;
constexpr unsigned int Accumulation = 10;
constexpr unsigned int NoAccumulation = 18;
constexpr unsigned int CurrentMeasurement = 22;
constexpr unsigned int NotDefined = 300;

using paramdb::ColumnName;

constexpr std::size_t Capacity = 1000;

CString TextOf(unsigned int string) {
    return CLibMgr().Text(string);
}

CString PlainText(unsigned int label, wchar_t const* value) {
    CString text;
    text.Format(L"%s: %s", TextOf(label).GetString(), value);
    return text;
}

CString NumberedText(unsigned int label, wchar_t const* value, int number) {
    CString text;
    text.Format(L"%s: %s (#%d)", TextOf(label).GetString(), value, number);
    return text;
}

// The kinds of lines. Each is made from a column of the row.

// The name and the id of a thing, an id of -1 as well.
template <unsigned int Label, ColumnName Id, auto Name>
struct Named {
    template <class Row>
    static CString Text(CQtParamInstance& instance, Row const& row) {
        int const id = row.template get<Id>();
        return NumberedText(Label, (instance.*Name)(id), id);
    }
};

// The word and the number of a value; the words of a setting stand at a base.
template <unsigned int Label, unsigned int Base, ColumnName Value>
struct Word {
    template <class Row>
    static CString Text(CQtParamInstance& instance, Row const& row) {
        int const value = row.template get<Value>();
        return instance.IpEnumParamDisplayText(Label, value, Base + static_cast<unsigned int>(value));
    }
};

// The number of a value behind a word that is always the same.
template <unsigned int Label, unsigned int String, ColumnName Value>
struct FixedWord {
    template <class Row>
    static CString Text(CQtParamInstance& instance, Row const& row) {
        return instance.IpEnumParamDisplayText(Label, row.template get<Value>(), String);
    }
};

// A text or a number.
template <unsigned int Label, ColumnName Value>
struct Plain {
    template <class Row>
    static CString Text(CQtParamInstance&, Row const& row) {
        return PlainText(Label, Shown(row.template get<Value>()));
    }

private:
    static CString Shown(std::int32_t value) {
        CString text;
        text.Format(L"%d", value);
        return text;
    }
    static CString Shown(float value) {
        CString text;
        text.Format(L"%f", static_cast<double>(value));
        return text;
    }
    static wchar_t const* Shown(CFixedText const& value) { return value; }
};

// The instrument of the source parameter, for rows that do not tell it.
struct InstrumentOfSource {
    template <class Row>
    static CString Text(CQtParamInstance& instance, Row const& row) {
        int const id = instance.InstrumentParameterToInstrument(row.template get<"source_parameter">());
        return NumberedText(107, instance.InstrumentName(id), id);
    }
};

struct AccumulationOfSpectra {
    template <class Row>
    static CString Text(CQtParamInstance& instance, Row const& row) {
        return instance.IpSpectrumAccumulationType(
            static_cast<ParamDb::time_domain_accumulation_t>(row.template get<"accumulation">()));
    }
};

template <unsigned int Label, ColumnName Id>
struct LearnProcedure {
    template <class Row>
    static CString Text(CQtParamInstance& instance, Row const& row) {
        int const id = row.template get<Id>();
        if (id == -1)
            return PlainText(Label, TextOf(CurrentMeasurement));
        auto const procedure = instance.LearnProcedures().find(id);
        if (procedure == instance.LearnProcedures().end())
            return PlainText(Label, TextOf(NotAssigned));
        return PlainText(Label, procedure->second.template get<"name">());
    }
};

// What a polygon entry says, under the names of columns.
using PolygonRow = QVRow<QInt<"area_interpretation">, QInt<"source_parameter">, QInt<"polygon">>;

// The lines.
using Trigger = Named<101, "trigger", &CQtParamInstance::TriggerName>;
// Shown under a label of orders, but the id is that of a location.
using BaseOrderReference = Named<104, "base_order_reference", &CQtParamInstance::LocationName>;
using SourceInstrument = Named<107, "source_instrument", &CQtParamInstance::InstrumentName>;
using SourceParameter = Named<108, "source_parameter", &CQtParamInstance::InstrumentParamName>;
using SecondInstrument = Named<128, "second_source_instrument", &CQtParamInstance::InstrumentName>;
using SecondParameter = Named<129, "second_source_parameter", &CQtParamInstance::InstrumentParamName>;
using SourceLocation = Named<130, "source_location", &CQtParamInstance::LocationName>;

using Calculation = Word<100, 200, "calculation">;
using GuardCalculation = Word<100, 220, "calculation">; // under the general label, not that of the guard
using Interpretation = Word<102, 300, "interpretation">;
using AreaInterpretation = Word<109, 500, "area_interpretation">;
using OperationMode = Word<127, 400, "binary_operation_mode">;
using SpecialCalculation = Word<133, 250, "calculation_special">;
using ShiftingEvaluation = Word<134, 290, "shifting_evaluation">;
using TrendMode = Word<144, 550, "trend_detection_mode">;
using DeviationMode = Word<144, 30, "trend_detection_mode">; // words of its own under the label of trends

// There are no words for these values.
using Transformation = FixedWord<112, NotDefined, "track_transformation">;
using RegressionTime = FixedWord<116, NotDefined, "regression_time">;
using RegressionLink = FixedWord<117, NotDefined, "regression_link">;

using Slope = Plain<23, "slope">;
using OrderDefinition = Plain<103, "definition">;
using XStart = Plain<105, "x_start">;
using XEnd = Plain<106, "x_end">;
using Polygon = Plain<110, "polygon">;
using AveragingConstant = Plain<111, "averaging_constant">;
using Offset = Plain<114, "offset">;
using StandardDeviation = Plain<115, "standard_deviation">;
using RegressionSource = Plain<118, "regression_source">;
using RegressionTransform = Plain<119, "regression_transform">;
using RegressionShowMode = Plain<120, "regression_show_mode">;
using SecondPolygon = Plain<131, "second_polygon">;
using HoelderPower = Plain<148, "hoelder_power">;

using ProcedureA = LearnProcedure<145, "learn_procedure_a">;
using ProcedureB = LearnProcedure<146, "learn_procedure_b">;

// The text as it is put together, a prefix and a suffix around each line.
class Display {
public:
    Display(CQtParamInstance& instance, int parameter, CString const& prefix, CString const& suffix)
        : m_instance(instance), m_parameter(parameter), m_prefix(prefix), m_suffix(suffix) {}

    // The lines of the parameter's row in a table; false without one.
    template <class... Lines, class Table>
    bool FromTable(Table const& table) {
        auto const row = table.find(m_parameter);
        if (row == table.end())
            return false;
        FromRow<Lines...>(row->second);
        return true;
    }
    template <class Table>
    bool FromTrend(Table const& table) {
        return FromTable<SourceParameter, TrendMode, ProcedureA, ProcedureB, Offset, Slope>(table);
    }
    // Of a polygon that judges several keys of the parameter the first.
    bool FromPolygons(CGrexInfo::expansion_map const& polygons) {
        auto const polygon = std::find_if(polygons.begin(), polygons.end(), [this](auto const& entry) {
            return entry.first[Clavis::qInstrParam] == m_parameter;
        });
        if (polygon == polygons.end())
            return false;
        auto const& [area_interpretation, source_parameter, group] = polygon->second;
        FromRow<AreaInterpretation, SourceParameter, Polygon>(
            PolygonRow(area_interpretation, source_parameter, group));
        return true;
    }
    void WithoutLines() { (m_text += m_prefix.GetString()) += m_suffix.GetString(); }

    wchar_t const* Text() const { return m_text.c_str(); }

private:
    template <class... Lines, class Row>
    void FromRow(Row const& row) {
        (Append(Lines::Text(m_instance, row)), ...);
    }
    void Append(CString const& line) {
        m_text += m_prefix.GetString();
        m_text += line.GetString();
        m_text += m_suffix.GetString();
    }

    CQtParamInstance& m_instance;
    int m_parameter;
    CString const& m_prefix;
    CString const& m_suffix;
    CTextBuffer<Capacity> m_text;
};

// Which table an instrument has and which lines it shows, in their order. False without a row or lines.
bool ShowInstrument(Display& display, CQtParamInstance const& tables, int instrument) {
    switch (instrument) {
    case 1001:
    case 2001:
    case 2007:
        return display.FromTable<Trigger, BaseOrderReference, Interpretation, OrderDefinition,
                                 SourceInstrument, SourceParameter>(tables.IpSvOfSpec().at(instrument));
    case 1002:
    case 1003:
    case 1004:
    case 1005:
        return display.FromTable<Trigger, Calculation, AveragingConstant>(
            tables.IpTimeCalcVal().at(instrument));
    case 1008:
        return display.FromTable<Trigger, Calculation, AveragingConstant, HoelderPower>(tables.IpHoelder());
    case 1060:
        return display.FromTable<ShiftingEvaluation>(tables.IpSP());
    case 1700:
        return display.FromTable<Calculation, OrderDefinition, SourceInstrument, SourceParameter,
                                 AccumulationOfSpectra>(tables.IpSgArea());
    case 2002:
    case 2003:
    case 2004:
    case 2005:
    case 2006:
    case 2900: // has its table in IpSimpleTrack: the lookup here fails, which hosts know
        return display.FromTable<Trigger, Calculation>(tables.IpCalcTrack().at(instrument));
    case 2012:
        return display.FromTable<Calculation, Trigger, SourceLocation, SourceInstrument, SourceParameter,
                                 Polygon, SecondPolygon>(tables.IpSchlauchTrack());
    case 2070:
        return display.FromTable<Trigger, Calculation, OrderDefinition, SourceInstrument, SourceParameter>(
            tables.IpSgAreaTrack());
    case 2100:
        return display.FromTable<Calculation>(tables.IpCatCurve());
    case 2500:
        return display.FromTable<Trigger, AccumulationOfSpectra>(tables.IpSpectrum());
    case 2700:
        return display.FromTable<Calculation, OrderDefinition, SourceInstrument, SourceParameter>(
            tables.IpSgSection());
    case 2800:
        return display
            .FromTable<SourceParameter, DeviationMode, AveragingConstant, StandardDeviation, XStart, XEnd>(
                tables.IpSpectralDev());
    case 3000:
        return display.FromTable<GuardCalculation>(tables.IpSignalGuard());
    case 3700:
        return display.FromTable<Trigger>(tables.IpModSpectrogram());
    case 10000:
        return display
            .FromTable<Calculation, SourceInstrument, SourceParameter, XStart, XEnd, SpecialCalculation>(
                tables.IpTrackInterval());
    case 10001:
        return display.FromPolygons(tables.GroupInfo().Entries());
    case 10100:
        return display.FromTable<SourceParameter>(tables.IpCurveMax());
    case 10101:
        return display.FromTable<AreaInterpretation, InstrumentOfSource, SourceParameter, Polygon, Offset,
                                 StandardDeviation>(tables.IpCurvePolygon());
    case 10102:
        return display.FromTable<Calculation, InstrumentOfSource, SourceParameter>(tables.IpSvCurve());
    case 10201:
    case 11201:
        return display.FromTable<OperationMode, SourceInstrument, SourceParameter, SecondInstrument,
                                 SecondParameter, Trigger>(tables.IpSvBinOp().at(instrument));
    case 10202:
        return display.FromTrend(tables.IpSvTrend());
    case 12202:
        return display.FromTrend(tables.IpCurveTrend());
    case 13202:
        return display.FromTrend(tables.IpCurveTrackTrend());
    case 11000:
        return display.FromTable<Transformation, SourceInstrument, SourceParameter, Trigger>(
            tables.IpTrackTransform());
    case 16000:
        return display.FromTable<SourceParameter, RegressionTime, RegressionLink, RegressionSource,
                                 RegressionTransform, RegressionShowMode>(tables.IpTrackRegression());
    case 20000:
        return display.FromTable<Trigger, Calculation>(tables.IpCV());
    case 1050:
    case 1051:
    case 2600:
    case 3500:
    case 5000:
    case 5001:
    case 21000:
        return display.FromTable<Trigger>(tables.IpSimpleTrack().at(instrument));
    default:
        return false;
    }
}

} // namespace

CString CQtParamInstance::IpDisplayText(int parameter, CString const& prefix, CString const& suffix) {
    Display display(*this, parameter, prefix, suffix);
    auto const row = InstrumentParam().find(parameter);
    if (row == InstrumentParam().end() || !ShowInstrument(display, *this, row->second.get<"instrument">()))
        display.WithoutLines();
    return display.Text();
}

CString CQtParamInstance::IpParamDisplayText(unsigned int label, std::wstring const& value, int index) {
    return index < 0 ? PlainText(label, value.c_str()) : NumberedText(label, value.c_str(), index);
}

CString CQtParamInstance::IpEnumParamDisplayText(unsigned int label, int value, unsigned int text) {
    return NumberedText(label, TextOf(text), value);
}

CString CQtParamInstance::IpSpectrumAccumulationType(ParamDb::time_domain_accumulation_t accumulation) {
    if (accumulation == ParamDb::accumulation_none)
        return PlainText(Accumulation, TextOf(NoAccumulation));
    // The words of 20, 21 and 22 stand one place before.
    return IpEnumParamDisplayText(Accumulation, accumulation, static_cast<unsigned int>(accumulation) - 1);
}
