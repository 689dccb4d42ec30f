// The tables of the example gearbox as those of the process, for a test suite.
#pragma once

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/parameter_lake.h>

#include <gtest/gtest.h>

struct Gearbox {
    static void Load() {
        CParameterLake::Lake().read(
            paramdb::FromUtf8(PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake").c_str());
        ASSERT_TRUE(CQtParamInstance().ReadTablesFromCandidateLake());
        CParameterLake::Lake().clear();
    }
    static void Unload() { CQtParamInstance().PurgeTables(); }
};
