#include <paramdb/query/param_instance.h>

#include "tests/support/sources.h"
#include "tests/tools/drive_lake.h"
#include "tools/id_choice.h"

#include <sstream>

using namespace paramdb::tools;

namespace {

class IdChoiceTest : public LoadTest {
protected:
    IdChoiceTest() {
        FillLake(DriveLake);
        CQtParamInstance().ReadTablesFromCandidateLake();
    }
    CQtParamInstance const m_parameters;
    std::ostringstream m_err;
};

} // namespace

TEST_F(IdChoiceTest, TakesIdsAndNames) {
    EXPECT_EQ(ChooseId("trigger", "2", m_parameters, m_err), 2);
    EXPECT_EQ(ChooseId("trigger", "Speed and torque", m_parameters, m_err), 2);
    EXPECT_EQ(ChooseId("mode", "11", m_parameters, m_err), 11);
    EXPECT_EQ(ChooseParameter("7", std::nullopt, m_parameters, m_err), 7);
    EXPECT_EQ(ChooseParameter("Mesh", std::nullopt, m_parameters, m_err), 7);
    EXPECT_EQ(ChooseParameter("Level", 1004, m_parameters, m_err), 14);
    EXPECT_EQ(ChooseParameter("13", 1003, m_parameters, m_err), 13);
    EXPECT_EQ(m_err.str(), "");
}

TEST_F(IdChoiceTest, OffersWhatMayHaveBeenMeant) {
    auto const miss = [this](std::optional<int> chosen) {
        EXPECT_EQ(chosen, std::nullopt);
        std::string const text = m_err.str();
        m_err.str("");
        return text;
    };
    EXPECT_EQ(miss(ChooseId("trigger", "Sped", m_parameters, m_err)),
              "paramdb: Sped: no such trigger; did you mean 1 Speed?\n");
    EXPECT_EQ(miss(ChooseId("trigger", "4", m_parameters, m_err)),
              "paramdb: 4: no such trigger; did you mean 3 Nowhere, 2 Speed and torque or 1 Speed?\n");
    EXPECT_EQ(miss(ChooseId("mode", "-1", m_parameters, m_err)).substr(0, 28),
              "paramdb: -1: no such mode; d");
    EXPECT_EQ(miss(ChooseId("trigger", "", m_parameters, m_err)), "paramdb: \"\": no such trigger\n");
    EXPECT_EQ(miss(ChooseId("trigger", "\x01zzzzzzzzzz", m_parameters, m_err)),
              "paramdb: \xEF\xBF\xBDzzzzzzzzzz: no such trigger\n");
    EXPECT_EQ(miss(ChooseParameter("mesh", std::nullopt, m_parameters, m_err)),
              "paramdb: mesh: no such parameter; did you mean 7 Mesh?\n");
    EXPECT_EQ(miss(ChooseParameter("7", 1003, m_parameters, m_err)),
              "paramdb: 7: no such parameter of instrument 1003; did you mean 13 Level?\n");
    EXPECT_EQ(miss(ChooseParameter("Mesh", 99, m_parameters, m_err)),
              "paramdb: Mesh: no such parameter of instrument 99\n");
}

TEST_F(IdChoiceTest, ListsSeveralOfOneName) {
    EXPECT_EQ(ChooseParameter("Level", std::nullopt, m_parameters, m_err), std::nullopt);
    EXPECT_EQ(m_err.str(),
              "paramdb: Level: 2 parameters have that name; choose one by its id or with --instrument\n"
              "Parameter  Instrument\n"
              "       13  1003 RMS\n"
              "       14  1004 Peak\n");
}
