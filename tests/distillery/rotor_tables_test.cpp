#include <paramdb/distillery/rotor_tables.h>

#include "own_distillery.h"

#include <gtest/gtest.h>
#include <tests/support/extremes.h>

namespace {

class RotorTablesTest : public testing::Test {
protected:
    CQtRotorTables const& rotors() { return own.derived().RotorTables(); }
    CParamTables& tables() { return own.tables(); }

    OwnDistillery own;
};

TEST_F(RotorTablesTest, EmptyTables) {
    EXPECT_EQ(rotors().PhysicalGear(1, 5), 5);
    EXPECT_EQ(rotors().Rotor(1, 5), 5);
    EXPECT_EQ(rotors().BaseOrder(5), 0.0f);
    EXPECT_EQ(rotors().GearDiameter(5), 0.0f);
    EXPECT_FALSE(rotors().HasBaseOrder(5));
    EXPECT_EQ(rotors().SpeedSource(1, 5, false), -1);
    EXPECT_EQ(rotors().SpeedSource(1, 5, true), -1);
    EXPECT_EQ(rotors().SpeedSourceSignal(5), -1);
    EXPECT_EQ(rotors().SpeedSourceOfSignal(5), -1);
    EXPECT_EQ(rotors().Speed(1, 5), 0.0);
    EXPECT_EQ(rotors().SpeedRatio(1, 5), numeric::CRatio(0.0));
}

TEST_F(RotorTablesTest, GearsAndRotorsAreOneStep) {
    tables().Virtual2PhysGear.insert({{1, 5}, QVRefIdx(6)});
    tables().Virtual2PhysGear.insert({{1, 6}, QVRefIdx(5)}); // a circle
    tables().Virtual2PhysGear.insert({{1, 7}, QVRefIdx(-1)});
    tables().Virtual2PhysGear.insert({{1, Highest}, QVRefIdx(Lowest)});
    EXPECT_EQ(rotors().PhysicalGear(1, 5), 6);
    EXPECT_EQ(rotors().PhysicalGear(1, 6), 5);
    EXPECT_EQ(rotors().PhysicalGear(1, 7), -1);
    EXPECT_EQ(rotors().PhysicalGear(1, Highest), Lowest);
    EXPECT_EQ(rotors().PhysicalGear(2, 5), 5) << "another physical mode";
    EXPECT_EQ(rotors().PhysicalGear(-1, 5), -1);
    EXPECT_EQ(rotors().PhysicalGear(1, -1), -1);

    tables().OrderSource2Rotor.insert({{5, 1}, QVRefIdx(50)});
    tables().OrderSource2Rotor.insert({{1, 5}, QVRefIdx(99)}); // the source comes first in the key
    tables().OrderSource2Rotor.insert({{50, 1}, QVRefIdx(5)});
    EXPECT_EQ(rotors().Rotor(1, 5), 50);
    EXPECT_EQ(rotors().Rotor(1, 50), 5);
    EXPECT_EQ(rotors().Rotor(5, 1), 99);
    EXPECT_EQ(rotors().Rotor(2, 5), 5);
    EXPECT_EQ(rotors().Rotor(-1, 5), -1);
    EXPECT_EQ(rotors().Rotor(1, -1), -1);
}

TEST_F(RotorTablesTest, SourceGoesBeforeReference) {
    tables().RotorSpeedSource.insert({{1, 5}, QVRefIdx(70)});
    tables().RotorSpeedReference.insert({{1, 5}, QVRefIdx(80)});
    tables().RotorSpeedReference.insert({{1, 6}, QVRefIdx(81)});
    tables().RotorSpeedSource.insert({{1, 7}, QVRefIdx(-1)});
    tables().RotorSpeedReference.insert({{1, 7}, QVRefIdx(82)});
    struct Case {
        int rotor;
        bool reference;
        int source;
    };
    Case const cases[] = {{5, false, 70}, {5, true, 70},  {6, false, -1},
                          {6, true, 81},  {7, false, -1}, {7, true, -1}, // a row of -1 wins too
                          {8, false, -1}, {8, true, -1}};
    for (auto const& [rotor, reference, source] : cases)
        EXPECT_EQ(rotors().SpeedSource(1, rotor, reference), source) << rotor << " " << reference;
    EXPECT_EQ(rotors().SpeedSource(2, 5, true), -1);
}

TEST_F(RotorTablesTest, SignalsOfSpeedSources) {
    tables().SpeedSource.insert({3, QVRefIdx(300)});
    tables().SpeedSource.insert({9, QVRefIdx(200)});
    tables().SpeedSource.insert({-7, QVRefIdx(200)});
    tables().SpeedSource.insert({-1, QVRefIdx(400)});
    EXPECT_EQ(rotors().SpeedSourceSignal(3), 300);
    EXPECT_EQ(rotors().SpeedSourceSignal(9), 200);
    EXPECT_EQ(rotors().SpeedSourceSignal(4), -1);
    EXPECT_EQ(rotors().SpeedSourceSignal(-1), -1) << "no source has no signal";
    EXPECT_EQ(rotors().SpeedSourceOfSignal(200), -7) << "the first in the order of the keys";
    EXPECT_EQ(rotors().SpeedSourceOfSignal(300), 3);
    EXPECT_EQ(rotors().SpeedSourceOfSignal(3), -1);
}

TEST_F(RotorTablesTest, SpeedByGearThenByRotor) {
    auto const add = [&](int rotor, double ratio) {
        tables().RotorSpeed.insert({{1, rotor}, QVRotorSpeeds(ratio, 0, 0)});
    };
    add(5, 0.5);
    EXPECT_EQ(rotors().Speed(1, 5), 0.5);
    // The gear 5 is a physical gear 6 on rotor 60; without a speed there its own is taken.
    tables().Virtual2PhysGear.insert({{1, 5}, QVRefIdx(6)});
    tables().OrderSource2Rotor.insert({{6, 1}, QVRefIdx(60)});
    EXPECT_EQ(rotors().Speed(1, 5), 0.5);
    add(6, 0.25);
    EXPECT_EQ(rotors().Speed(1, 5), 0.5) << "the rotor of the gear counts, not the gear";
    add(60, 2.0);
    EXPECT_EQ(rotors().Speed(1, 5), 2.0);
    EXPECT_EQ(rotors().Speed(1, 6), 2.0);
    tables().OrderSource2Rotor.insert({{5, 1}, QVRefIdx(50)});
    EXPECT_EQ(rotors().Speed(1, 5), 2.0);
    EXPECT_EQ(rotors().Speed(2, 5), 0.0);
    EXPECT_EQ(rotors().Speed(1, -1), 0.0);
    EXPECT_EQ(rotors().Speed(-1, 5), 0.0);
}

TEST_F(RotorTablesTest, RotorOfTheGearItselfIsTheFallback) {
    tables().Virtual2PhysGear.insert({{1, 5}, QVRefIdx(6)});
    tables().OrderSource2Rotor.insert({{5, 1}, QVRefIdx(50)});
    tables().RotorSpeed.insert({{1, 50}, QVRotorSpeeds(1.5, 0, 0)});
    tables().RotorSpeed.insert({{1, 5}, QVRotorSpeeds(9.5, 0, 0)});
    EXPECT_EQ(rotors().Speed(1, 5), 1.5);
}

TEST_F(RotorTablesTest, RatiosOfRows) {
    struct Case {
        double ratio;
        int numerator, denominator;
        numeric::CRatio expected;
    };
    Case const cases[] = {
        {0.5, 0, 0, numeric::CRatio(0.5)},
        {0.5, 7, 0, numeric::CRatio(0.5)},
        {0.5, 34, 14, numeric::CRatio(17, 7)},
        {0.5, 0, 3, numeric::CRatio(0, 1)},
        {0.5, 3, -6, numeric::CRatio(-1, 2)},
        {0.5, Lowest, -1, numeric::CRatio(std::int64_t{2147483648}, 1)},
        {0.5, Highest, Lowest, numeric::CRatio(-std::int64_t{Highest}, std::int64_t{2147483648})},
    };
    for (auto const& [ratio, numerator, denominator, expected] : cases) {
        own.Clear();
        tables().RotorSpeed.insert({{1, 5}, QVRotorSpeeds(ratio, numerator, denominator)});
        EXPECT_EQ(rotors().SpeedRatio(1, 5), expected) << numerator << " / " << denominator;
        EXPECT_EQ(rotors().Speed(1, 5), ratio) << "the number is that of the row";
    }
}

TEST_F(RotorTablesTest, BaseOrdersAndDiameters) {
    tables().BaseOrder.insert({5, QVBaseOrder(23.5f)});
    tables().BaseOrder.insert({6, QVBaseOrder(0.0f)});
    tables().GearDiameter.insert({5, QVGearDiameter(112.25f)});
    EXPECT_EQ(rotors().BaseOrder(5), 23.5f);
    EXPECT_TRUE(rotors().HasBaseOrder(5));
    EXPECT_TRUE(rotors().HasBaseOrder(6)) << "a row of 0 is a row";
    EXPECT_FALSE(rotors().HasBaseOrder(7));
    EXPECT_EQ(rotors().GearDiameter(5), 112.25f);
    EXPECT_EQ(rotors().GearDiameter(6), 0.0f);
}

} // namespace
