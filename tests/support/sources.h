// The two sources of a load, and the process-wide objects around them, put back to their first state.
#pragma once

#include <paramdb/service/param_server.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

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
        auto const path = std::filesystem::temp_directory_path() /
                          ("paramdb_load_test_" + std::to_string(testing::UnitTest::GetInstance()->random_seed()) +
                           "_" + std::to_string(reinterpret_cast<std::uintptr_t>(&text)) + ".lake");
        std::ofstream(path, std::ios::binary) << text;
        CLake& lake = CParameterLake::Lake();
        lake.read(FromPath(path));
        std::filesystem::remove(path);
    }

private:
    static std::wstring FromPath(std::filesystem::path const& path) {
        auto const name = path.u16string();
        return {name.begin(), name.end()};
    }
};
