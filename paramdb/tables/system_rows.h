// The rows of the tables that describe the test system: names, modes, channels, rotors, signals, triggers.
//
// A column without a fixed use is called value_N, N being its place in the row.
#pragma once

#include <paramdb/tables/row.h>

#include <cstdint>

// Wherever a key maps to one id.
class QVRefIdx : public QVRow<QInt<"referred_id">> {
public:
    using QVRow::QVRow;
};

class QVInstrumentParam : public QVRow<QInt<"instrument">, QText<"name">, QInt<"value_3">,
                                       QUnsigned<"value_4">, QUnsigned<"value_5">> {
public:
    using QVRow::QVRow;
};

class QVTrigger : public QVRow<QText<"name">, QInt<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVModeProps
    : public QVRow<QInt<"physical_mode">, QUnsigned<"flags">, QInt<"value_3">, QInt<"value_4">> {
public:
    using QVRow::QVRow;

    // Bits of the flags; hosts know more of them.
    enum modeFlag : std::uint32_t {
        hidden = 1024, // not shown to operators
    };
};

class QVChannelProperty : public QVRow<QUnsigned<"flags">, QInt<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVLocationProperty : public QVRow<QUnsigned<"flags">, QInt<"value_2">, QInt<"value_3">> {
public:
    using QVRow::QVRow;
};

class QVRotorSpeeds : public QVRow<QDouble<"ratio">, QInt<"numerator">, QInt<"denominator">> {
public:
    using QVRow::QVRow;
};

class QVBaseOrder : public QVRow<QFloat<"base_order">> {
public:
    using QVRow::QVRow;
};

class QVGearDiameter : public QVRow<QFloat<"diameter">> {
public:
    using QVRow::QVRow;
};

class CVTEMeasurement : public QVRow<QText<"name">, QInt<"value_2">, QInt<"value_3">, QInt<"value_4">,
                                     QInt<"value_5">, QInt<"value_6">, QInt<"value_7">> {
public:
    using QVRow::QVRow;
};

class CVTEOperation : public QVRow<QInt<"value_1">, QInt<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVSensorGroupList : public QVRow<QInt<"value_1">, QInt<"value_2">> {
public:
    using QVRow::QVRow;
};

class QVResampling : public QVRow<QInt<"value_1">, QInt<"value_2">, QInt<"value_3">, QUnsigned<"value_4">,
                                  QUnsigned<"value_5">, QFloat<"value_6">, QInt<"value_7">, QFloat<"value_8">,
                                  QInt<"value_9">> {
public:
    using QVRow::QVRow;
};

class QVAppSignalProperty : public QVRow<QInt<"signal_type">, QText<"unit">, QFloat<"value_3">,
                                         QInt<"unit_code">, QInt<"unit_prefix">> {
public:
    using QVRow::QVRow;
};

class QVSensorConfiguration : public QVRow<QInt<"value_1">> {
public:
    using QVRow::QVRow;
};

class QVSignalDispatch : public QVRow<QInt<"value_1">> {
public:
    using QVRow::QVRow;
};

class QVTriggerParams
    : public QVRow<QInt<"kind">, QUnsigned<"value_2">, QFloat<"start">, QFloat<"stop">, QFloat<"step">,
                   QFloat<"value_6">, QInt<"value_7">, QInt<"value_8">, QInt<"value_9">, QInt<"value_10">> {
public:
    using QVRow::QVRow;
};

class QVAutoModeParamOrder : public QVRow<QInt<"signal">> {
public:
    using QVRow::QVRow;
};

class QVAutoModeSequence : public QVRow<QInt<"value_1">> {
public:
    using QVRow::QVRow;
};

// One parameter of the grid of virtual modes.
class QVAutoModeParams
    : public QVRow<QFloat<"start">, QFloat<"stop">, QFloat<"step">, QFloat<"value_4">, QFloat<"value_5">,
                   QFloat<"value_6">, QInt<"state">, QFloat<"value_8">, QUnsigned<"value_9">> {
public:
    QVAutoModeParams() : QVRow(0.0f, 10.0f, 1.0f, 1.0f, 0.0f, 1.0f, 1, 1.0f, 1) {}

    // Bits for the interval inside a virtual mode id: derived, in no line.
    int IntervalBits = 5;
};
