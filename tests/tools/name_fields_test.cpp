#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tests/support/sources.h"
#include "tests/tools/names_lake.h"
#include "tools/name_fields.h"
#include "tools/table_names.h"

using namespace paramdb::tools;

namespace {

using NameFieldsTest = LoadTest;

} // namespace

TEST_F(NameFieldsTest, ShowsAllNames) {
    FillLake(NamesLake);
    CQtParamInstance parameters;
    ASSERT_TRUE(parameters.ReadTablesFromCandidateLake());
    std::string shown;
    VisitNames(parameters, [&](NameField const& field) {
        auto const id = field.Id();
        std::string const tag = TagOf(*field.table);
        if (tag == "<TMode>" || tag == "<TInstrument>" || tag == "<TLocation>")
            return;
        shown += tag + ' ' + std::string(field.column) + ' ' + (id ? std::to_string(*id) : "none") + " | " +
                 paramdb::ToUtf8(field.KeyText()) + " | " + paramdb::ToUtf8(field.name) + '\n';
    });
    EXPECT_EQ(shown, "<TChannel> name 1 | 1 | Fix\n"
                     "<TChannel> name 3 | 3 | Mix\n"
                     "<TInstrumentParam> name 7 | 7 | Mesh H1\n"
                     "<TInstrumentParam> name 8 | 8 | Mesh H1\n"
                     "<TInstrumentParam> name 9 | 9 | Level\n"
                     "<TPhysMode> name 1 | 1 | Gear 1\n"
                     "<TResamplingGroup> name 1 | 1 | Fast\n"
                     "<TProcessingUnit> name 1 | 1 | Unit A\n"
                     "<TSensorGroup> name 5 | 5 | Noise\n"
                     "<TTrigger> name 1 | 1 | Speed\n"
                     "<TApplicationSignal> name 10 | 10 | Input speed\n"
                     "<TSignalUnit> name 2 | 2 | Hz\n"
                     "<TAliasType> name 1 | 1 | Base\n"
                     "<TAliasBench> name 1 | 1 | Bench 1\n"
                     "<TModeTranslate> name 11 | G1_UP | G1_UP\n"
                     "<TTEMeasurement> name 4 | 4 | Drag torque\n"
                     "<TTpSensorConfig> name 1 | 1 | Standard\n"
                     "<TIpPolygon> name 5 | 5 | Limit\n"
                     "<TErrorCode> value_2 11 | 11 | Too loud\n"
                     "<TErrorGroup> value_3 1 | 1 | Bad\n"
                     "<TErrorGroup> value_4 1 | 1 | Gear: bad\n"
                     "<TClavisUserNames> value_1 none | 1001/1/10/4/7 | Gear whine\n"
                     "<TAuxStrings> name none | Report/Title | Report/Title\n"
                     "<TAuxStrings> value_1 none | Report/Title | Gearbox\n"
                     "<TLearnProcedures> name 1 | 1 | Mean\n");
}
