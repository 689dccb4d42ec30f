#include <paramdb/query/param_instance.h>

#include "tests/support/sources.h"
#include "tests/tools/drive_lake.h"
#include "tools/judging_polygons.h"

#include <nlohmann/json.hpp>

using namespace paramdb::tools;

namespace {

class JudgingPolygonsTest : public LoadTest {
protected:
    static std::vector<std::string> Lines(std::string const& lake, int parameter) {
        FillLake(lake);
        CQtParamInstance().ReadTablesFromCandidateLake();
        std::vector<std::string> lines;
        for (JudgingPolygon const& polygon : JudgingPolygons(CQtParamInstance(), parameter))
            lines.push_back(Shown(polygon.polygon) + " | " + Shown(polygon.judge) + " | " +
                            Shown(polygon.source) + " | " + std::to_string(polygon.keys) +
                            (polygon.is_missing ? " missing" : ""));
        return lines;
    }
};

using Strings = std::vector<std::string>;

} // namespace

TEST_F(JudgingPolygonsTest, FindsBothSides) {
    Strings const track{"5 Level | 15 Above polygon | 8 Pinion track | 1",
                        "6 | 15 Above polygon | 8 Pinion track | 1 missing"};
    EXPECT_EQ(Lines(DriveLake, 8), track);
    EXPECT_EQ(Lines(DriveLake, 15), track);
    EXPECT_EQ(Lines(DriveLake, 13), Strings{"5 Level | 17 | 13 Level | 0"}); // a curve polygon
    EXPECT_EQ(Lines(DriveLake, 17), Strings{"5 Level | 17 | 13 Level | 0"});
    EXPECT_EQ(Lines(DriveLake, 7), Strings());
    EXPECT_EQ(Lines(DriveLake, -1), Strings());
}

TEST_F(JudgingPolygonsTest, AVariableAreaHasOneOrTwo) {
    std::string const lake = DriveLake + "<TIpVarAreaTrack>: {\n"
                                         "20 2 1 200 2001 8 5 -1\n"
                                         "21 2 1 200 2001 9 5 7\n"
                                         "22 2 1 200 2001 9 5 5\n"
                                         "}\n";
    EXPECT_EQ(Lines(lake, 20), Strings{"5 Level | 20 | 8 Pinion track | 0"});
    EXPECT_EQ(Lines(lake, 9), (Strings{"5 Level | 21 | 9 Band | 0", "7 | 21 | 9 Band | 0 missing",
                                       "5 Level | 22 | 9 Band | 0"}));
}

TEST_F(JudgingPolygonsTest, GivesJson) {
    Lines(DriveLake, 8);
    EXPECT_EQ(ToJson(JudgingPolygons(CQtParamInstance(), 8).at(1)).dump(),
              R"({"polygon":{"id":6,"name":null},"judge":{"id":15,"name":"Above polygon"},)"
              R"("source":{"id":8,"name":"Pinion track"},"keys":1,"is_missing":true})");
}
