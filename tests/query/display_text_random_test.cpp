#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/query/param_instance.h>

#include "display_model.h"

#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <tests/support/messages.h>
#include <tests/support/sources.h>

namespace {

using display_model::Layouts;
using display_model::Model;
using display_model::TextLake;

class RandomLake : public TextLake {
public:
    explicit RandomLake(std::mt19937& random) : m_random(random) {
        for (int number = 0; number < 8; ++number) {
            std::string const id = std::to_string(number);
            if (Below(2) == 0)
                Add("<TTrigger>", id + " trigger" + id + " 0");
            if (Below(2) == 0)
                Add("<TLocation>", id + " location" + id);
            if (Below(2) == 0)
                Add("<TLearnProcedures>", id + " 0 0 0 procedure" + id + " 0");
        }
        for (int const instrument : {0, 1, 2, 3, 4, 5, 1001, 1004, 2500, 10001})
            if (Below(3) != 0)
                Add("<TInstrument>", std::to_string(instrument) + " instrument" + std::to_string(instrument));
        for (int parameter = 0; parameter < 30; ++parameter)
            if (Below(10) != 0)
                AddParameter(parameter);
        for (int row = 0; row < 4; ++row)
            Add("<TIpTrackPolygon>", Clavis(3) + " " + Number() + " 0 " + Number() + " " + Number() + " 0 " +
                                         std::to_string(Below(2)) + " 0 0 0 0");
    }
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned int>(limit)); }

private:
    void AddParameter(int parameter) {
        std::string const id = std::to_string(parameter);
        int const instrument = AnyClass();
        Add("<TInstrumentParam>", id + " " + std::to_string(instrument) + " parameter" + id + " 0 0 0");
        if (instrument == 10001)
            Add("<TIpParamAndStore>", Clavis(0, id) + " 0 0 0 0 0");
        auto const layout = Layouts().find(instrument);
        if (layout == Layouts().end())
            return;
        // Now and then none or two, of which the second says nothing.
        int const chance = Below(8);
        for (int count = chance == 0 ? 0 : chance == 1 ? 2 : 1; count > 0; --count) {
            std::string line = id;
            for (char const type : layout->second.columns)
                line += " " + (type == 'n' ? Number() : type == 'r' ? Real() : Definition());
            Add(layout->second.tag, line);
        }
    }
    int AnyClass() {
        constexpr int others[] = {10001, 10001, 10001, 2900, 1006, 0, -1, 2, 9999};
        if (Below(4) == 0)
            return others[Below(std::size(others))];
        return std::next(Layouts().begin(), Below(static_cast<int>(Layouts().size())))->first;
    }
    std::string Number() {
        constexpr int specials[] = {20, 21, 22, 23, 100, -93, 515, 2147483647, -2147483647};
        return std::to_string(Below(8) == 0 ? specials[Below(std::size(specials))] : Below(12) - 2);
    }
    std::string Real() {
        constexpr char const* reals[] = {"0", "1", "-0.5", "1e6", "1e-7", "123.456", "-3e38", "0.1", "inf"};
        return reals[Below(std::size(reals))];
    }
    std::string Definition() {
        constexpr char const* definitions[] = {"O1;O2", "H1-M2;H1+M2", "F100;F200", "L3", "bad*"};
        return definitions[Below(std::size(definitions))];
    }
    // A key of small numbers with wildcards; the parameter is one of the first, unless it is given.
    std::string Clavis(int wildcards, std::string const& parameter = "") {
        std::string text;
        for (int element = 0; element < 6; ++element) {
            bool const is_wildcard = Below(6) < wildcards;
            std::string const number = std::to_string(Below(element == 4 ? 30 : 2));
            text += (text.empty() ? "" : " ") + (element == 4 && !parameter.empty() ? parameter
                                                 : is_wildcard                      ? "-1"
                                                                                    : number);
        }
        return text;
    }

    std::mt19937& m_random;
};

class DisplayTextRandom : public LoadTest {
protected:
    DisplayTextRandom() { CLibMgr::SetLanguage(CLibMgr::Language::english); }
    ~DisplayTextRandom() override { CLibMgr::ResetLanguage(); }
};

TEST_F(DisplayTextRandom, SameAsTheModel) {
    constexpr std::uint32_t seed = 6401;
    std::mt19937 random(seed);
    MessageLog messages;
    CQtParamInstance instance;
    int failures = 0;
    int with_lines = 0;
    int polygons = 0;
    int cut = 0;
    for (int round = 0; round < 80; ++round) {
        RandomLake lake(random);
        Reset();
        FillLake(lake.Text());
        ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
        Model const model(lake);
        for (int parameter = -1; parameter < 31; ++parameter) {
            SCOPED_TRACE(testing::Message()
                         << "seed " << seed << " round " << round << " parameter " << parameter);
            std::string const prefix(static_cast<std::size_t>(lake.Below(lake.Below(8) == 0 ? 400 : 3)), '<');
            std::string const suffix(static_cast<std::size_t>(lake.Below(lake.Below(8) == 0 ? 400 : 3)), '>');
            auto const display = [&] {
                return instance.IpDisplayText(parameter, std::wstring(prefix.begin(), prefix.end()),
                                              std::wstring(suffix.begin(), suffix.end()));
            };
            std::string expected;
            try {
                expected = model.Display(parameter, prefix, suffix);
            } catch (std::out_of_range const&) {
                ++failures;
                ASSERT_THROW(display(), std::out_of_range);
                continue;
            }
            std::wstring wide;
            for (char const c : expected)
                wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
            ASSERT_EQ(display(), wide);
            with_lines += expected != prefix + suffix;
            polygons += expected.find("Area interpretation") != std::string::npos &&
                        expected.find("Offset") == std::string::npos;
            cut += expected.size() == 999;
        }
    }
    for (int const count : {failures, with_lines / 10, polygons, cut})
        EXPECT_GT(count, 20) << "every kind must have come";
}

} // namespace
