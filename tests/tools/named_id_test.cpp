#include <paramdb/query/param_instance.h>

#include "tests/support/sources.h"
#include "tools/named_id.h"

#include <nlohmann/json.hpp>

using namespace paramdb::tools;

namespace {

using NamedIdTest = LoadTest;

} // namespace

TEST_F(NamedIdTest, ShowsIdAndName) {
    EXPECT_EQ(Shown({10, L"Input speed"}), "10 Input speed");
    EXPECT_EQ(Shown({10, L""}), "10");
    EXPECT_EQ(Shown({-2, L"a\tb"}), "-2 a\xEF\xBF\xBD"
                                    "b");
    EXPECT_EQ(Shown({-1, L"unused"}), "");
}

TEST_F(NamedIdTest, GivesJson) {
    EXPECT_EQ(ToJson(NamedId{10, L"\u00C4"}).dump(), "{\"id\":10,\"name\":\"\xC3\x84\"}");
    EXPECT_EQ(ToJson(NamedId{10, L""}).dump(), R"({"id":10,"name":null})");
    EXPECT_EQ(ToJson(NamedId{}).dump(), "null");
    EXPECT_EQ(JsonText(L"").dump(), "null");
}

TEST_F(NamedIdTest, FindsNames) {
    FillLake("<DbDesign.CacheVersion>: 216\n"
             "<DbDesign.CacheMinorVersion>: 1\n"
             "<TLocation>: {\n"
             "4 \"Differential\"\n"
             "}\n"
             "<TInstrumentParam>: {\n"
             "-1 1001 \"None\" 0 1 0\n"
             "7 1001 \"Mesh H1\" 0 1 0\n"
             "}\n");
    CQtParamInstance parameters;
    ASSERT_TRUE(parameters.ReadTablesFromCandidateLake());
    EXPECT_EQ(Shown(Named(parameters.Location(), 4)), "4 Differential");
    EXPECT_EQ(Shown(Named(parameters.Location(), 5)), "5");
    EXPECT_EQ(Shown(NamedParameter(parameters, 7)), "7 Mesh H1");
    EXPECT_EQ(Shown(NamedParameter(parameters, 8)), "8");
    EXPECT_TRUE(NamedParameter(parameters, -1).name.empty());
}
