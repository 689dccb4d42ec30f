#include <paramdb/distillery/auto_mode_params.h>

CVAutoModeParams::CVAutoModeParams(int signal, QVAutoModeParams const& row)
    : SignalId(signal), Start(row.get<"start">()), Stop(row.get<"stop">()), Step(row.get<"step">()),
      Value4(row.get<"value_4">()), Value5(row.get<"value_5">()), Value6(row.get<"value_6">()),
      IntervalBits(row.IntervalBits), HasState(row.get<"state">() != 0), Value8(row.get<"value_8">()),
      Value9(row.get<"value_9">()) {}

QVAutoModeParams CVAutoModeParams::ToRow() const {
    QVAutoModeParams row;
    row.get<"start">() = Start;
    row.get<"stop">() = Stop;
    row.get<"step">() = Step;
    row.get<"value_4">() = Value4;
    row.get<"value_5">() = Value5;
    row.get<"value_6">() = Value6;
    row.get<"state">() = HasState ? 1 : 0;
    row.get<"value_8">() = Value8;
    row.get<"value_9">() = Value9;
    row.IntervalBits = IntervalBits;
    return row;
}
