// Names and ids of instrument parameters and triggers.
#include <paramdb/query/param_instance.h>

#include "name_kinds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <tests/distillery/own_distillery.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using names::RandomName;

class NamesOfRows : public testing::Test {
protected:
    ~NamesOfRows() override { EXPECT_EQ(messages.Take(), std::vector<Message>()); }

    CQtParamInstance& instance() { return own.instance(); }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(NamesOfRows, InstrumentParameters) {
    static constexpr struct {
        int parameter, instrument;
        wchar_t const* name;
    } rows[] = {
        {30, 2500, L"Order"}, {10, 1001, L"Order"}, {20, 1001, L"Order"}, {40, 1001, L""},
        {-7, 1001, L"late"},  {50, 1001, L"late"},  {60, -1, L"wild"},
    };
    for (auto const& row : rows)
        own.tables().InstrumentParam.insert(
            {row.parameter, QVInstrumentParam(row.instrument, row.name, 0, 0u, 0u)});
    EXPECT_EQ(instance().InstrumentParamId(L"Order", 2500), 30);
    EXPECT_EQ(instance().InstrumentParamId(L"Order", 1001), 10) << "the lowest id";
    EXPECT_EQ(instance().InstrumentParamId(L"Order", 1002), -1);
    EXPECT_EQ(instance().InstrumentParamId(L"Order", -1), -1) << "no wildcard";
    EXPECT_EQ(instance().InstrumentParamId(L"wild", -1), 60) << "a number as any other";
    EXPECT_EQ(instance().InstrumentParamId(L"wild", 1001), -1);
    EXPECT_EQ(instance().InstrumentParamId(L"order", 1001), -1);
    EXPECT_EQ(instance().InstrumentParamId(L"Orde", 1001), -1);
    EXPECT_EQ(instance().InstrumentParamId(L"Orders", 1001), -1);
    EXPECT_EQ(instance().InstrumentParamId(L"", 1001), 40);
    EXPECT_EQ(instance().InstrumentParamId(L"", 2500), -1);
    EXPECT_EQ(instance().InstrumentParamId(L"late", 1001), -7);
    EXPECT_STREQ(instance().InstrumentParamName(30), L"Order");
    EXPECT_STREQ(instance().InstrumentParamName(-7), L"late");
    EXPECT_EQ(instance().InstrumentParameterToInstrument(30), 2500);
    EXPECT_EQ(instance().InstrumentParameterToInstrument(60), -1);
    EXPECT_EQ(instance().InstrumentParameterToInstrument(-7), 1001);
    for (int const unknown : {-1, 0, 11, 61, Lowest, Highest}) {
        EXPECT_STREQ(instance().InstrumentParamName(unknown), L"") << unknown;
        EXPECT_EQ(instance().InstrumentParameterToInstrument(unknown), -1) << unknown;
    }
}

TEST_F(NamesOfRows, TriggersByName) {
    for (auto const& [trigger, name] : {std::pair{8, L"ramp"}, {3, L"ramp"}, {5, L""}, {-2, L"idle"}})
        own.tables().Trigger.insert({trigger, QVTrigger(name, 0)});
    EXPECT_EQ(instance().TriggerId(L"ramp"), 3) << "the lowest id";
    EXPECT_EQ(instance().TriggerId(L"idle"), -2);
    EXPECT_EQ(instance().TriggerId(L""), 5);
    for (auto const* const unknown : {L"Ramp", L"ram", L"ramps", L" "})
        EXPECT_EQ(instance().TriggerId(unknown), -1);
    EXPECT_STREQ(instance().TriggerName(8), L"ramp");
    EXPECT_STREQ(instance().TriggerName(-2), L"idle");
    for (int const unknown : {-1, 0, 4, 9, Lowest, Highest})
        EXPECT_STREQ(instance().TriggerName(unknown), L"") << unknown;
    EXPECT_EQ(instance().TriggerId(3), -1) << "a number is that of a parameter";
}

// These two look at the rows themselves and have no key that is cut.
TEST_F(NamesOfRows, LongNamesOfParametersAndTriggersFindNothing) {
    std::wstring const fits(199, L'n');
    own.tables().Trigger.insert({3, QVTrigger(CFixedText(fits.c_str()), 0)});
    own.tables().InstrumentParam.insert({4, QVInstrumentParam(7, CFixedText(fits.c_str()), 0, 0u, 0u)});
    EXPECT_EQ(instance().TriggerId(fits.c_str()), 3);
    EXPECT_EQ(instance().InstrumentParamId(fits.c_str(), 7), 4);
    EXPECT_EQ(instance().TriggerId((fits + L"n").c_str()), -1);
    EXPECT_EQ(instance().InstrumentParamId((fits + L"n").c_str(), 7), -1);
}

TEST_F(NamesOfRows, RandomParametersAndTriggersAgainstAScan) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        own.Clear();
        auto& parameters = own.tables().InstrumentParam;
        auto& triggers = own.tables().Trigger;
        std::vector<std::pair<int, std::pair<int, std::wstring>>> rows;
        for (int count = random.Between(0, 20); count > 0; --count) {
            int const id = random.Between(-3, 30);
            int const instrument = random.Between(-1, 2);
            std::wstring const name = RandomName(random).substr(0, 199);
            if (parameters.insert({id, QVInstrumentParam(instrument, name.c_str(), 0, 0u, 0u)}).second)
                rows.emplace_back(id, std::pair(instrument, name));
            triggers.insert({id, QVTrigger(name.c_str(), 0)});
        }
        std::ranges::sort(rows);
        for (int count = 0; count < 60; ++count) {
            int const instrument = random.Between(-1, 3);
            std::wstring const name = RandomName(random);
            int parameter = -1;
            int trigger = -1;
            for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
                if (row->second == std::pair(instrument, name))
                    parameter = row->first;
                if (row->second.second == name)
                    trigger = row->first;
            }
            EXPECT_EQ(instance().InstrumentParamId(name.c_str(), instrument), parameter);
            EXPECT_EQ(instance().TriggerId(name.c_str()), trigger);

            int const id = random.Between(-4, 31);
            int owner = -1;
            std::wstring id_name;
            for (auto const& [row_id, row] : rows)
                if (row_id == id)
                    std::tie(owner, id_name) = row;
            EXPECT_EQ(instance().InstrumentParameterToInstrument(id), owner);
            EXPECT_EQ(std::wstring(instance().InstrumentParamName(id)), id_name);
            EXPECT_EQ(std::wstring(instance().TriggerName(id)), id_name);
        }
    }
}

} // namespace
