// The six-part key of the measurement data, as a key of tables.
#pragma once

#include <paramdb/keys/index_keys.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>

#include <ostream>

// Mode, instrument, channel, location, instrument parameter, application signal: the order of Clavis::qOrder.
class QClavis : public QIdxBase<6> {
public:
    QClavis() = default;
    QClavis(int mode, int instrument, int channel, int location, int parameter, int signal)
        : QIdxBase(mode, instrument, channel, location, parameter, signal) {}
    explicit QClavis(CClavis const& clavis)
        : QClavis(clavis[0], clavis[1], clavis[2], clavis[3], clavis[4], clavis[5]) {}

    // The same six numbers.
    CClavis ToClavis() const { return CClavis(elements().data()); }
};

// The six elements in order with one blank between them.
PARAMDB_API std::wostream& operator<<(std::wostream& stream, QClavis const& clavis);
