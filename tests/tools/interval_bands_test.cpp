#include "tests/support/sources.h"
#include "tests/tools/drive_lake.h"
#include "tools/interval_bands.h"

using namespace paramdb::tools;

namespace {

class IntervalBandsTest : public LoadTest {
protected:
    IntervalBandsTest() {
        FillLake(DriveLake);
        CQtParamInstance().ReadTablesFromCandidateLake();
    }
    CQtParamInstance const m_parameters;
};

struct Band {
    wchar_t const* definition;
    DriveOptions options;
    unsigned int line_count;
    BandUnit unit;
    int result;
    std::string fault;
    float lower;
    float upper;
    std::optional<std::pair<float, float>> hz;
    std::optional<std::pair<unsigned int, unsigned int>> lines;
};

} // namespace

// Gear 131 on the output shaft, which makes half a turn for one of the input shaft, with 17 events.
TEST_F(IntervalBandsTest, PlacesIntervals) {
    CQtSpecInterval calculation(m_parameters);
    calculation.LoadTransformParams(11, 1, 131);
    using enum BandUnit;
    std::string const needs_speed = "orders beside frequencies: needs the speed";
    for (Band const& sample : std::vector<Band>{
             {L"F100;F200", {}, 0, Hz, 0, "", 100, 200, {}, {}},
             {L"F100;F200", {.speed = 50, .line_distance = 10}, 16, Hz, 0, "", 100, 150, {}, {{10, 15}}},
             {L"F100;F200", {.line_distance = 10}, 10, Hz, 1, "it begins beyond the last line", 0, 0, {}, {}},
             {L"F200;F100", {}, 0, Hz, 6, "it begins below 0 or behind its end", 0, 0, {}, {}},
             {L"H1;H2", {}, 0, Orders, 0, "", 8.5f, 17, {}, {}},
             {L"H1;H2", {.speed = 20}, 0, Orders, 0, "", 8.5f, 17, {{170, 340}}, {}},
             {L"O3", {.speed = 20}, 0, Orders, 0, "", 3, 3, {{60, 60}}, {}},
             {L"H1-L2;H1+L2", {.line_distance = 0.25f}, 0, Orders, 0, "", 8, 9, {}, {{32, 36}}},
             {L"H1-L2;H1+L2", {}, 0, Orders, 0, "", 8.5f, 8.5f, {}, {}},
             {L"H1;H2",
              {.line_distance = 0.0f},
              0,
              Orders,
              4,
              "the line distance is not above 0",
              0,
              0,
              {},
              {}},
             {L"O1+F50;O2+F50", {}, 0, Hz, 0, needs_speed, 0, 0, {}, {}},
             {L"O1+F50;O2+F50", {.speed = 20}, 0, Hz, 0, "", 70, 90, {}, {}},
             {L"F10;O2", {.speed = 20}, 0, Hz, 0, "", 10, 40, {}, {}},
             {L"F10;O2", {}, 0, Hz, 6, needs_speed, 0, 0, {}, {}},
             {L"O1+F50",
              {.line_distance = -1.0f},
              0,
              Hz,
              4,
              "the line distance is not above 0",
              0,
              0,
              {},
              {}},
             {L"L2;L8", {.line_distance = 0.5f}, 0, Spectrum, 0, "", 1, 4, {}, {{2, 8}}},
             {L"L2;L8", {.speed = 20}, 0, Spectrum, 0, "", 0, 0, {}, {}},
         }) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(sample.definition)));
        auto const bands =
            BandsOf(MeaningOf(sample.definition), calculation, sample.options, sample.line_count);
        ASSERT_EQ(bands.size(), 1U);
        IntervalBand const& band = bands.front();
        EXPECT_EQ(band.unit, sample.unit);
        EXPECT_EQ(band.result, sample.result);
        EXPECT_EQ(band.fault, sample.fault);
        EXPECT_EQ(band.hz, sample.hz);
        EXPECT_EQ(band.lines, sample.lines);
        if (band.fault.empty()) {
            EXPECT_EQ(band.lower, sample.lower);
            EXPECT_EQ(band.upper, sample.upper);
        }
    }
}

TEST_F(IntervalBandsTest, TellsWhatIsMissing) {
    struct Case {
        wchar_t const* definition;
        int gear;
        int result;
        std::string fault;
    };
    for (Case const& sample : std::vector<Case>{
             {L"H1;H2", -1, 2, "a harmonic, but the gear has no base order"},
             {L"M1;M2", -1, 3, "a harmonic or modulation, but the gear has no speed relative to the rotor"},
             {L"O1+F1", -1, 5,
              "an order beside a frequency, but the gear has no speed relative to the rotor"},
             {L"H1;H2", 2, 2, "a harmonic, but the gear has no base order"},
         }) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(sample.definition)));
        CQtSpecInterval calculation(m_parameters);
        calculation.LoadTransformParams(11, 1, sample.gear);
        auto const bands = BandsOf(MeaningOf(sample.definition), calculation, {}, 0);
        ASSERT_EQ(bands.size(), 1U);
        EXPECT_EQ(bands[0].result, sample.result);
        EXPECT_EQ(bands[0].fault, sample.fault);
    }
    for (int result = 0; result <= 7; ++result)
        EXPECT_EQ(*ResultText(static_cast<CQtSpecInterval::index_range_result_t>(result)) == '\0',
                  result == 0);
    EXPECT_TRUE(BandsOf(MeaningOf(L"O1*2"), CQtSpecInterval(m_parameters), {}, 0).empty());
    EXPECT_STREQ(UnitWord(BandUnit::Orders), "orders");
    EXPECT_STREQ(UnitWord(BandUnit::Hz), "Hz");
    EXPECT_STREQ(UnitWord(BandUnit::Spectrum), "spectrum");
}

// What is shown is what a host gets from the intervals of the load.
TEST_F(IntervalBandsTest, AgreesWithTheIntervalsOfTheLoad) {
    CParameterLake::Lake().read(test_support::WideName(PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake"));
    ASSERT_TRUE(CQtParamInstance().ReadTablesFromCandidateLake());
    DriveOptions const options{.speed = 33.3f, .line_distance = 0.5f};
    std::size_t count = 0;
    for (auto const& [key, row] : m_parameters.InstrumentParam()) {
        auto const parameter = static_cast<unsigned int>(key[0]);
        wchar_t const* const definition = m_parameters.SpecIntervalDefinition(parameter);
        if (definition == nullptr)
            continue;
        SCOPED_TRACE(key[0]);
        CQtSpecInterval calculation(m_parameters);
        calculation.LoadTransformParams(41, 1, 90);
        auto const bands = BandsOf(MeaningOf(definition), calculation, options, 500);
        auto [entry, end] = m_parameters.SpecIntervalRange(parameter);
        for (IntervalBand const& band : bands) {
            ASSERT_NE(entry, end);
            CQtSpecInterval::IndexInterval interval{};
            EXPECT_EQ(band.result, calculation.IndexRange(entry->second, interval, 500, 0.5f, 33.3f));
            if (band.result == CQtSpecInterval::range_success) {
                EXPECT_EQ(band.lower, interval.start);
                EXPECT_EQ(band.upper, interval.stop);
                EXPECT_EQ(band.lines, std::pair(interval.first, interval.last));
                ++count;
            }
            ++entry;
        }
        EXPECT_EQ(entry, end);
    }
    EXPECT_GT(count, 40U);
}
