// The server: the one distillery of the process.
#pragma once

#include <paramdb/distillery/param_distillery.h>
#include <paramdb/platform/core/export.h>

class PARAMDB_API CQtParamServer : private CQtParamDistillery {
public:
    // Always the same object, built at the first call, which may come from any thread, and destroyed when the
    // process ends.
    static CQtParamServer& Object();

    // Does nothing: the object comes into being in Object().
    void Create() {}

    // Empties all tables and lowers the initialized flag. Named texts and derived information stay.
    void Clear();

    ~CQtParamServer() = default;

private:
    friend class CQtParamInstance;

    CQtParamServer() = default;
    CQtParamDistillery& store() { return *this; }
};
