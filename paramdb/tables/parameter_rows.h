// The rows of the tables that say how each instrument parameter is calculated.
//
// The key of these rows is the id of the parameter in <TInstrumentParam>, or a clavis. A trigger is an id of
// <TTrigger>; source instruments and parameters are ids of <TInstrument> and <TInstrumentParam>. A column
// without a fixed use is called value_N, N being its place in the row.
#pragma once

#include <paramdb/tables/calc_mode.h>
#include <paramdb/tables/row.h>

class QVIpParamAndStore : public QVRow<QInt<"value_1">, QFloat<"value_2">, QFloat<"value_3">, QInt<"value_4">,
                                       QFloat<"value_5">> {
public:
    using QVRow::QVRow;
};

class QVIpHoelder : public QVRow<QInt<"trigger">, QInt<"calculation">, QFloat<"averaging_constant">,
                                 QInt<"hoelder_power">> {
public:
    using QVRow::QVRow;
};

class QVIpSP : public QVRow<QInt<"shifting_evaluation">> {
public:
    using QVRow::QVRow;
};

class QVIpSgArea
    : public QVRow<QInt<"calculation">, QText<"definition">, QInt<"source_instrument">,
                   QInt<"source_parameter">, QFloat<"value_5">, QInt<"trigger">, QInt<"accumulation">> {
public:
    using QVRow::QVRow;
};

class QVIpHoelderTrack : public QVRow<QInt<"value_1">, QInt<"trigger">, QInt<"value_3">> {
public:
    using QVRow::QVRow;
};

class QVIpSchlauchTrack
    : public QVRow<QInt<"calculation">, QInt<"trigger">, QInt<"source_location">, QInt<"source_instrument">,
                   QInt<"source_parameter">, QInt<"polygon">, QInt<"second_polygon">> {
public:
    using QVRow::QVRow;
};

class QVIpSgAreaTrack : public QVRow<QInt<"trigger">, QInt<"calculation">, QText<"definition">,
                                     QInt<"source_instrument">, QInt<"source_parameter">> {
public:
    using QVRow::QVRow;
};

class QVIpCatCurve : public QVRow<QInt<"calculation">, QInt<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVIpSpectrum : public QVRow<QInt<"trigger">, QInt<"accumulation">, QFloat<"decay">, QInt<"value_4">> {
public:
    using QVRow::QVRow;
};

class QVIpSgSection : public QVRow<QInt<"calculation">, QText<"definition">, QInt<"source_instrument">,
                                   QInt<"source_parameter">, QInt<"trigger">, QInt<"accumulation">> {
public:
    using QVRow::QVRow;
};

class QVIpSpectrogramDeviation
    : public QVRow<QInt<"source_parameter">, QInt<"trend_detection_mode">, QFloat<"averaging_constant">,
                   QFloat<"standard_deviation">, QFloat<"x_start">, QFloat<"x_end">> {
public:
    using QVRow::QVRow;
};

class QVIpSignalGuard : public QVRow<QInt<"calculation">, QInt<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVIpTrackInterval
    : public QVRow<QInt<"calculation">, QInt<"source_instrument">, QInt<"source_parameter">,
                   QFloat<"x_start">, QFloat<"x_end">, QInt<"calculation_special">> {
public:
    using QVRow::QVRow;
};

class QVIpTrackPolygon
    : public QVRow<QInt<"polygon">, QInt<"value_2">, QInt<"area_interpretation">, QInt<"source_parameter">,
                   QFloat<"offset">, QInt<"polygon_mode">, QFloat<"x_start">, QFloat<"x_end">,
                   QFloat<"y_start">, QFloat<"y_end">> {
public:
    using QVRow::QVRow;
    static unsigned int const s_version = 1;
};

class QVIpSimple2ndLevel : public QVRow<QInt<"value_1">, QInt<"source_parameter">> {
public:
    using QVRow::QVRow;
};

class QVIpCurvePolygon : public QVRow<QInt<"area_interpretation">, QInt<"value_2">, QInt<"source_parameter">,
                                      QInt<"polygon">, QFloat<"offset">, QFloat<"standard_deviation">> {
public:
    using QVRow::QVRow;
    static unsigned int const s_version = 1;
};

class QVIpSvCurve : public QVRow<QInt<"calculation">, QInt<"source_parameter">> {
public:
    using QVRow::QVRow;
    static unsigned int const s_version = 1;

    ParamDb::calc_mode_t interpretation() const {
        return static_cast<ParamDb::calc_mode_t>(get<"calculation">());
    }
    int src_instrument_param() const { return get<"source_parameter">(); }
};

class QVIpTrend
    : public QVRow<QInt<"source_parameter">, QInt<"trend_detection_mode">, QInt<"learn_procedure_a">,
                   QInt<"learn_procedure_b">, QFloat<"offset">, QFloat<"slope">> {
public:
    using QVRow::QVRow;
};

class QVIpTrackTransform : public QVRow<QInt<"track_transformation">, QInt<"source_instrument">,
                                        QInt<"source_parameter">, QInt<"trigger">> {
public:
    using QVRow::QVRow;
    static unsigned int const s_version = 1;

    int trigger() const { return get<"trigger">(); }
};

class QVIpTrackRegression
    : public QVRow<QInt<"source_parameter">, QInt<"regression_time">, QInt<"regression_link">,
                   QInt<"regression_source">, QInt<"regression_transform">, QInt<"regression_show_mode">> {
public:
    using QVRow::QVRow;
    static unsigned int const s_version = 1;
};

class QVDbIpCalcVal : public QVRow<QInt<"trigger">, QInt<"calculation">> {
public:
    using QVRow::QVRow;
};

class QVExternalName : public QVRow<QText<"name">> {
public:
    using QVRow::QVRow;
};

class QVIpRunTest : public QVRow<QInt<"value_1">> {
public:
    using QVRow::QVRow;
};

class QVIpSvOfSpec : public QVRow<QInt<"trigger">, QInt<"base_order_reference">, QInt<"interpretation">,
                                  QText<"definition">, QInt<"source_instrument">, QInt<"source_parameter">> {
public:
    using QVRow::QVRow;
};

class QVIpTimeCalcVal : public QVRow<QInt<"trigger">, QInt<"calculation">, QFloat<"averaging_constant">> {
public:
    using QVRow::QVRow;
};

class QVIpCalcTrack : public QVRow<QInt<"trigger">, QInt<"calculation">> {
public:
    using QVRow::QVRow;
};

class QVIpSimpleTrack : public QVRow<QInt<"trigger">> {
public:
    using QVRow::QVRow;
};

class QVIpBinOp
    : public QVRow<QInt<"binary_operation_mode">, QInt<"source_instrument">, QInt<"source_parameter">,
                   QInt<"second_source_instrument">, QInt<"second_source_parameter">, QInt<"trigger">> {
public:
    using QVRow::QVRow;
};
