// A key with type and bench in front of the six elements of the measurement data.
#pragma once

#include <paramdb/keys/index_keys.h>
#include <paramdb/platform/signal/clavis.h>

// Type, bench, then mode, instrument, channel, location, instrument parameter, application signal. A new key
// has -1 in every element: not given.
class QIdx8 : public QIdxBase<8> {
public:
    QIdx8() = default;
    QIdx8(int type, int bench, int mode, int instrument, int channel, int location, int parameter, int signal)
        : QIdxBase(type, bench, mode, instrument, channel, location, parameter, signal) {}

    int type() const { return elements()[0]; }
    int bench() const { return elements()[1]; }
    // The six elements behind them.
    CClavis ToClavis() const { return CClavis(elements().data() + 2); }
};
