#include <paramdb/distillery/refinement.h>

#include "derivation_support.h"

#include <limits>

using derivation::Random;

namespace {

using Messages = std::vector<Message>;

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

class Refinement : public derivation::DerivationTest {
protected:
    void Parameter(int id, int instrument, wchar_t const* name) {
        tables.InstrumentParam.insert({id, QVInstrumentParam(instrument, name, 0, 0, 0)});
    }
    void Limit(QClavis const& key) { tables.RelativeLimit.insert({key, QVRelativeLimit(1.0f, 2.0f)}); }
    void ErrorGroup(int id, int code) {
        tables.SeverityProperty.insert({id, QVErrorGroup(code, 5, L"a", L"b")});
    }
    template <class Table>
    static void Spectrum(Table& table, int id, int accumulation, float decay) {
        table.insert({id, QVIpSpectrum(9, accumulation, decay, 7)});
    }
    void Section(int id, int accumulation) {
        tables.IpSgSection.insert({id, QVIpSgSection(1, L"x", 2, 3, 4, accumulation)});
    }
    static Message IllegalCode(std::wstring const& code) {
        return {8, 4,
                L"CQtParamDistillery::RefineDatabaseTables(): illegal result code " + code +
                    L", set to 3 ('System error')\n"};
    }
    static Message Decay(std::wstring const& decay, std::wstring const& instrument,
                         std::wstring const& parameter) {
        return {8, 3,
                L"CQtParamDistillery::RefineDatabaseTables(): exponential decay " + decay +
                    L" found for instrument '" + instrument + L"', parameter '" + parameter +
                    L"', treated as infinity\n"};
    }
    std::vector<QClavis> LimitKeys() const {
        std::vector<QClavis> keys;
        for (auto const& [key, row] : tables.RelativeLimit)
            keys.push_back(key);
        return keys;
    }
};

TEST_F(Refinement, EmptyTables) {
    EXPECT_TRUE(RefineTables(tables));
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(Refinement, RelativeLimitsTakeTheInstrumentOfTheirParameter) {
    Parameter(50, 2500, L"a");
    Parameter(60, 1001, L"b");
    Limit({1, 0, 3, 4, 60, 6});
    Limit({1, 9, 3, 4, 50, 6});
    Limit({-1, -1, -1, -1, 50, -1});
    EXPECT_TRUE(RefineTables(tables));
    // The rows stay where they were, also where their new keys are in another order.
    EXPECT_EQ(LimitKeys(), (std::vector<QClavis>{
                               {-1, 2500, -1, -1, 50, -1}, {1, 1001, 3, 4, 60, 6}, {1, 2500, 3, 4, 50, 6}}));
    EXPECT_EQ(tables.RelativeLimit.front().second.tuple(), std::tuple(1.0f, 2.0f));
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(Refinement, RelativeLimitsAreNotSortedAgain) {
    Parameter(50, 9000, L"a");
    Parameter(60, 1000, L"b");
    Limit({1, 1, 0, 0, 50, 0});
    Limit({1, 2, 0, 0, 60, 0});
    Limit({1, 3, 0, 0, 60, 0}); // comes out with the key of the row before it
    EXPECT_TRUE(RefineTables(tables));
    EXPECT_EQ(LimitKeys(),
              (std::vector<QClavis>{{1, 9000, 0, 0, 50, 0}, {1, 1000, 0, 0, 60, 0}, {1, 1000, 0, 0, 60, 0}}));
}

TEST_F(Refinement, ALimitOfAnUnknownParameterEndsTheStepAtOnce) {
    Parameter(50, 2500, L"a");
    Limit({1, 0, 0, 0, 50, 0});
    Limit({2, 0, 0, 0, 51, 0}); // the exact id alone counts
    Limit({3, 0, 0, 0, 50, 0});
    ErrorGroup(1, 9);
    Spectrum(tables.IpSpectrum, 50, 3, 5.0f);
    Spectrum(tables.IpModSpectrogram, 50, 2, 0.0f);
    Section(50, 2);
    EXPECT_FALSE(RefineTables(tables));
    EXPECT_EQ(LimitKeys(),
              (std::vector<QClavis>{{1, 2500, 0, 0, 50, 0}, {2, 0, 0, 0, 51, 0}, {3, 0, 0, 0, 50, 0}}));
    EXPECT_EQ(tables.SeverityProperty.front().second.get<"result_code">(), 9);
    EXPECT_EQ(tables.IpSpectrum.front().second.get<"accumulation">(), 3);
    EXPECT_EQ(tables.IpModSpectrogram.front().second.get<"accumulation">(), 2);
    EXPECT_EQ(tables.IpSgSection.front().second.get<"accumulation">(), 2);
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(Refinement, ALimitMayBeOfTheParameterMinusOne) {
    Limit({1, 5, 0, 0, -1, 0});
    EXPECT_FALSE(RefineTables(tables));
    Parameter(-1, 7, L"");
    EXPECT_TRUE(RefineTables(tables));
    EXPECT_EQ(LimitKeys(), (std::vector<QClavis>{{1, 7, 0, 0, -1, 0}}));
}

TEST_F(Refinement, ResultCodesAreThreeAtMost) {
    int const codes[] = {
        0, 1, 2, 3, 4, 5, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    int id = 0;
    for (int const code : codes)
        ErrorGroup(++id, code);
    EXPECT_TRUE(RefineTables(tables));
    std::vector<int> refined;
    for (auto const& [group, row] : tables.SeverityProperty) {
        refined.push_back(row.get<"result_code">());
        EXPECT_EQ(row.get<"value_2">(), 5);
    }
    EXPECT_EQ(refined, (std::vector<int>{0, 1, 2, 3, 3, 3, 3, 3, 3}));
    EXPECT_EQ(messages.Take(), (Messages{IllegalCode(L"4"), IllegalCode(L"5"), IllegalCode(L"-1"),
                                         IllegalCode(L"2147483647"), IllegalCode(L"-2147483648")}));
}

struct AccumulationCase {
    int accumulation;
    float decay;
    int refined;
    wchar_t const* reported; // the decay in a message; null for none
};

AccumulationCase const accumulation_cases[] = {
    {20, 0.0f, 20, nullptr},
    {20, 500.0f, 20, nullptr},
    {22, 0.0f, 22, nullptr},
    {22, 500.0f, 22, nullptr},
    {2, 0.0f, 20, nullptr},
    {2, 500.0f, 20, nullptr},
    {3, 0.0f, 22, nullptr},
    {3, -0.0f, 22, nullptr},
    {3, 500.0f, 21, L"500.000000"},
    {3, 1000.0f, 21, nullptr},
    {3, 1001.0f, 21, nullptr},
    {3, 999.9375f, 21, L"999.937500"},
    {3, -5.0f, 21, L"-5.000000"},
    {3, 0.25f, 21, L"0.250000"},
    {3, Infinity, 21, nullptr},
    {3, NaN, 21, nullptr},
    {21, 0.0f, 21, L"0.000000"},
    {21, 1.5f, 21, L"1.500000"},
    {21, 1000.0f, 21, nullptr},
    {21, NaN, 21, nullptr},
    {0, 500.0f, 0, nullptr},
    {1, 500.0f, 0, nullptr},
    {4, 500.0f, 0, nullptr},
    {9, 500.0f, 0, nullptr},
    {19, 500.0f, 0, nullptr},
    {23, 500.0f, 0, nullptr},
    {-1, 500.0f, 0, nullptr},
    {std::numeric_limits<int>::max(), 500.0f, 0, nullptr},
    {std::numeric_limits<int>::min(), 500.0f, 0, nullptr},
};

TEST_F(Refinement, AccumulationOfSpectraAndSpectrograms) {
    tables.Instrument.Add(2500, L"Spectrum");
    tables.Instrument.Add(3700, L"Modulation");
    for (AccumulationCase const& test : accumulation_cases) {
        SCOPED_TRACE(testing::Message() << test.accumulation << " with " << test.decay);
        tables.InstrumentParam.Clear();
        tables.IpSpectrum.Clear();
        tables.IpModSpectrogram.Clear();
        Parameter(5, 2500, L"first");
        Parameter(6, 3700, L"second");
        Spectrum(tables.IpSpectrum, 5, test.accumulation, test.decay);
        Spectrum(tables.IpModSpectrogram, 6, test.accumulation, test.decay);
        EXPECT_TRUE(RefineTables(tables));
        for (auto const* table : {&tables.IpSpectrum, &tables.IpModSpectrogram}) {
            auto const& row = table->front().second;
            EXPECT_EQ(row.get<"accumulation">(), test.refined);
            EXPECT_EQ(row.get<"trigger">(), 9);
            EXPECT_EQ(row.get<"value_4">(), 7);
            EXPECT_TRUE(row.get<"decay">() == test.decay || test.decay != test.decay);
        }
        Messages expected;
        if (test.reported != nullptr)
            expected = {Decay(test.reported, L"Spectrum", L"first"),
                        Decay(test.reported, L"Modulation", L"second")};
        EXPECT_EQ(messages.Take(), expected);
    }
}

TEST_F(Refinement, AccumulationOfSections) {
    std::pair<int, int> const cases[] = {
        {0, 0},   {1, 0},   {2, 20},  {3, 21},  {4, 0},   {8, 0},  {9, 9},
        {10, 10}, {20, 20}, {21, 21}, {22, 22}, {23, 23}, {-1, 0}, {std::numeric_limits<int>::min(), 0}};
    int id = 0;
    for (auto const& [accumulation, refined] : cases)
        Section(++id, accumulation);
    EXPECT_TRUE(RefineTables(tables));
    for (std::size_t row = 0; row < std::size(cases); ++row)
        EXPECT_EQ(tables.IpSgSection[row].second.tuple(),
                  std::tuple(1, CFixedText(L"x"), 2, 3, 4, cases[row].second))
            << cases[row].first;
    EXPECT_EQ(messages.Take(), Messages()); // a section has no decay to report
}

TEST_F(Refinement, TheReportNamesWhatItCan) {
    tables.Instrument.Add(2500, L"Spectrum");
    tables.Instrument.Add(2600, L"");
    Parameter(1, 2500, L"known");
    Parameter(2, 2600, L"no name of the instrument");
    Parameter(3, 77, L"no instrument");
    Parameter(5, 2500, L"");
    for (int const id : {1, 2, 3, 4, 5})
        Spectrum(tables.IpSpectrum, id, 21, 2.0f);
    EXPECT_TRUE(RefineTables(tables));
    EXPECT_EQ(messages.Take(),
              (Messages{Decay(L"2.000000", L"Spectrum", L"known"),
                        Decay(L"2.000000", L"(Instr. 2600)", L"no name of the instrument"),
                        Decay(L"2.000000", L"(Instr. 77)", L"no instrument"),
                        Decay(L"2.000000", L"(Instr. -1)", L""), Decay(L"2.000000", L"Spectrum", L"")}));
}

TEST_F(Refinement, TheStepsInTheirOrder) {
    tables.Instrument.Add(2500, L"S");
    for (int const id : {1, 2, 3})
        Parameter(id, 2500, L"p");
    Spectrum(tables.IpModSpectrogram, 1, 3, 3.0f);
    Spectrum(tables.IpSpectrum, 2, 3, 1.0f);
    Spectrum(tables.IpSpectrum, 3, 3, 2.0f);
    ErrorGroup(9, 8);
    EXPECT_TRUE(RefineTables(tables));
    EXPECT_EQ(messages.Take(), (Messages{IllegalCode(L"8"), Decay(L"1.000000", L"S", L"p"),
                                         Decay(L"2.000000", L"S", L"p"), Decay(L"3.000000", L"S", L"p")}));
}

TEST_F(Refinement, ASecondTimeChangesNothingButReportsDecaysAgain) {
    tables.Instrument.Add(2500, L"S");
    Parameter(1, 2500, L"p");
    Limit({1, 0, 0, 0, 1, 0});
    ErrorGroup(1, 8);
    Spectrum(tables.IpSpectrum, 1, 3, 1.0f);
    Spectrum(tables.IpModSpectrogram, 1, 2, 1.0f);
    Section(1, 3);
    EXPECT_TRUE(RefineTables(tables));
    EXPECT_EQ(messages.Take(), (Messages{IllegalCode(L"8"), Decay(L"1.000000", L"S", L"p")}));
    EXPECT_TRUE(RefineTables(tables));
    EXPECT_EQ(messages.Take(), (Messages{Decay(L"1.000000", L"S", L"p")}));
    EXPECT_EQ(LimitKeys(), (std::vector<QClavis>{{1, 2500, 0, 0, 1, 0}}));
    EXPECT_EQ(tables.SeverityProperty.front().second.get<"result_code">(), 3);
    EXPECT_EQ(tables.IpSpectrum.front().second.get<"accumulation">(), 21);
    EXPECT_EQ(tables.IpModSpectrogram.front().second.get<"accumulation">(), 20);
    EXPECT_EQ(tables.IpSgSection.front().second.get<"accumulation">(), 21);
}

// What refinement makes of the tables, told a second time.
struct PlainRefinement {
    bool result = true;
    std::vector<QClavis> limits;
    std::vector<int> codes;
    std::vector<int> accumulations; // of spectra, spectrograms, sections
    Messages messages;

    static int Converted(int accumulation, float decay) {
        if (accumulation >= 20 && accumulation <= 22)
            return accumulation;
        if (accumulation == 2)
            return 20;
        if (accumulation == 3)
            return decay == 0.0f ? 22 : 21;
        return 0;
    }
};

class RandomRefinement : public Refinement {
protected:
    void Fill(Random& random) {
        PurgeAll();
        for (int id = 0; id < 8; ++id)
            if (!random.OneIn(12))
                Parameter(id, random.Between(1, 4), (L"p" + std::to_wstring(id)).c_str());
        tables.Instrument.Add(1, L"one");
        tables.Instrument.Add(2, L"");
        for (int limits = random.Between(0, 6); limits > 0; --limits)
            Limit({random.Between(0, 2), random.Between(-1, 9), 0, 0, random.Between(0, 7), 0});
        for (int id = 0; id < 4; ++id)
            ErrorGroup(id, random.Between(-2, 6));
        auto const decay = [&random] {
            return random.Pick(std::vector<float>{0.0f, 1.5f, 1000.0f, 2000.0f});
        };
        for (int id = 0; id < 10; ++id) {
            int const accumulation = random.OneIn(2) ? random.Between(-1, 5) : random.Between(18, 24);
            int const table = random.Between(0, 3);
            if (table == 0)
                Spectrum(tables.IpSpectrum, id, accumulation, decay());
            else if (table == 1)
                Spectrum(tables.IpModSpectrogram, id, accumulation, decay());
            else if (table == 2)
                Section(id, random.Between(-1, 12));
        }
    }

    PlainRefinement Expected() const {
        PlainRefinement expected;
        expected.limits = LimitKeys();
        for (QClavis& key : expected.limits) {
            int const instrument = InstrumentOf(key[4]);
            expected.result = expected.result && instrument != -1;
            if (expected.result)
                key[1] = instrument;
        }
        for (auto const& [group, row] : tables.SeverityProperty) {
            int const code = row.get<"result_code">();
            bool const is_legal = !expected.result || (code >= 0 && code <= 3);
            expected.codes.push_back(is_legal ? code : 3);
            if (!is_legal)
                expected.messages.push_back(IllegalCode(std::to_wstring(code)));
        }
        for (auto const* table : {&tables.IpSpectrum, &tables.IpModSpectrogram})
            for (auto const& [id, row] : *table) {
                auto const& [trigger, accumulation, decay, last] = row.tuple();
                int const converted =
                    expected.result ? PlainRefinement::Converted(accumulation, decay) : accumulation;
                expected.accumulations.push_back(converted);
                if (expected.result && converted == 21 && decay < 1000.0f)
                    expected.messages.push_back(DecayOf(id[0], decay));
            }
        for (auto const& [id, row] : tables.IpSgSection) {
            int const accumulation = row.get<"accumulation">();
            bool const stays = !expected.result || accumulation >= 9;
            expected.accumulations.push_back(stays ? accumulation
                                                   : PlainRefinement::Converted(accumulation, 1000.0f));
        }
        return expected;
    }

    PlainRefinement Actual() {
        PlainRefinement actual;
        actual.result = RefineTables(tables);
        actual.limits = LimitKeys();
        for (auto const& [group, row] : tables.SeverityProperty)
            actual.codes.push_back(row.get<"result_code">());
        for (auto const* table : {&tables.IpSpectrum, &tables.IpModSpectrogram})
            for (auto const& [id, row] : *table)
                actual.accumulations.push_back(row.get<"accumulation">());
        for (auto const& [id, row] : tables.IpSgSection)
            actual.accumulations.push_back(row.get<"accumulation">());
        actual.messages = messages.Take();
        return actual;
    }

private:
    void PurgeAll() { distillery.PurgeTables(); }
    int InstrumentOf(int parameter) const {
        for (auto const& [id, row] : tables.InstrumentParam)
            if (id[0] == parameter)
                return row.get<"instrument">();
        return -1;
    }
    Message DecayOf(int parameter, float decay) const {
        int const instrument = InstrumentOf(parameter);
        return Decay(std::to_wstring(decay),
                     instrument == 1 ? L"one" : L"(Instr. " + std::to_wstring(instrument) + L")",
                     instrument == -1 ? L"" : L"p" + std::to_wstring(parameter));
    }
};

TEST_F(RandomRefinement, AgainstThePlainRules) {
    std::size_t failed = 0;
    std::size_t reports = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        Fill(random);
        PlainRefinement const expected = Expected();
        PlainRefinement const actual = Actual();
        EXPECT_EQ(actual.result, expected.result);
        EXPECT_EQ(actual.limits, expected.limits);
        EXPECT_EQ(actual.codes, expected.codes);
        EXPECT_EQ(actual.accumulations, expected.accumulations);
        EXPECT_EQ(actual.messages, expected.messages);
        if (HasFailure())
            return;
        failed += expected.result ? 0 : 1;
        reports += expected.messages.size();
    }
    EXPECT_GT(failed, 300u);
    EXPECT_LT(failed, 2000u);
    EXPECT_GT(reports, 3000u);
}

} // namespace
