// The two sources of a load, and the process-wide objects around them, put back to their first state.
#pragma once

#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include <gtest/gtest.h>
#include <string>
#include <tests/support/temp_dir.h>

// What a file begins with that is accepted.
inline constexpr char VersionLines[] = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";

// A test whose sources are empty at its start and end.
class LoadTest : public testing::Test {
protected:
    LoadTest() { Reset(); }
    ~LoadTest() override { Reset(); }

    static void Reset() {
        CParameterLake::Lake().clear();
        ParamDb::CParameterTableSet::TableSet().clear();
        CQtParamInstance().PurgeTables();
        CQtParamServer::Object().Clear();
    }

    // Fills the process-wide lake with these lines, as a file would.
    static void FillLake(std::string const& text) {
        test_support::TempDir const folder;
        auto const path = folder / u8"load.lake";
        test_support::WriteBytes(path, text);
        CParameterLake::Lake().read(test_support::WideName(path));
    }
};
