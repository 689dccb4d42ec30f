#include "tools/browser/table_search.h"
#include "tools/table_names.h"

#include <tests/browser/browser_test.h>
#include <tests/tools/sample_lake.h>

namespace paramdb::browser {
namespace {

using BrowserTableSearch = LoadTest;

TEST_F(BrowserTableSearch, LooksInTagColumnsAndRows) {
    FillLake(SampleLake);
    CQtParamInstance().ReadTablesFromCandidateLake();
    struct Case {
        char const* table;
        QString sought;
        std::optional<QString> found;
    };
    std::vector<Case> const cases{
        {"Mode", QString(), QString()},
        {"Mode", QStringLiteral("tmode"), QString()},
        {"Mode", QStringLiteral("<TMode>"), QString()},
        {"RotorSpeed", QStringLiteral("RATIO"), QStringLiteral("column ratio")},
        {"RotorSpeed", QStringLiteral("cal_mo"), QStringLiteral("column physical_mode")},
        {"Mode", QStringLiteral("GEAR"), QStringLiteral("1. gear drive")},
        {"Mode", QString::fromUtf16(u"PR\u00DC"), QString::fromUtf16(u"Pr\u00FCfen")},
        {"Mode", QStringLiteral("gear coast"), std::nullopt},
        {"AuxStrings", QStringLiteral("report/f"), QStringLiteral("Report/Footer")}, // in the key
        {"AuxStrings", QStringLiteral("gearbox"), QStringLiteral("Gearbox")},
        {"AuxStrings", QStringLiteral(","), std::nullopt}, // too short for the rows
        {"AuxStrings", QStringLiteral(", b"), QStringLiteral("a, b")},
        {"RotorSpeed", QStringLiteral("13"), std::nullopt}, // numbers are no texts
        {"Channel", QStringLiteral("gear"), std::nullopt},  // no rows
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(std::string(test.table) + ": " + test.sought.toStdString());
        EXPECT_EQ(FindInTable(tools::EntryOf(*tools::FindTable(test.table)), test.sought), test.found);
    }
}

} // namespace
} // namespace paramdb::browser
