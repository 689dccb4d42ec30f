// The common base of all keys and rows.
#pragma once

// Keys and rows are values: they are copied, compared and read field by field through their tuple(), which
// gives references to the fields in the order in which a line holds them. Key and row classes differ in their
// fields and in nothing else.
class QValueBase {
public:
    virtual ~QValueBase() = 0;

protected:
    QValueBase() = default;
    QValueBase(QValueBase const&) = default;
    QValueBase(QValueBase&&) = default;
    QValueBase& operator=(QValueBase const&) = default;
    QValueBase& operator=(QValueBase&&) = default;
};

inline QValueBase::~QValueBase() = default;
