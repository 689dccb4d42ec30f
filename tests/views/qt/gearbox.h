// The tables of the example gearbox as those of the process, for a test suite.
#pragma once

#include <paramdb/query/param_instance.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/views/qt/qt_text.h>

#include <gtest/gtest.h>

struct Gearbox {
    static void Load() {
        QString const file = QStringLiteral(PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake");
        CParameterLake::Lake().read(paramdb::qt::FromQString(file).GetString());
        ASSERT_TRUE(CQtParamInstance().ReadTablesFromCandidateLake());
        CParameterLake::Lake().clear();
    }
    static void Unload() { CQtParamInstance().PurgeTables(); }
};
