// Loads and queries that run out of memory at each request in turn: nothing is lost but that load, and the
// next one gives what it gives in a new store.
#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>

#include "failing_memory.h"
#include "quiet_sink.h"

#include <gtest/gtest.h>
#include <tests/distillery/derivation_support.h>
#include <tests/distillery/load_data.h>
#include <tests/equality/questions.h>
#include <tests/support/sources.h>

namespace {

using failing_memory::Ending;
using failing_memory::RefuseEach;

// Rows for every derived structure, and one that cannot be read.
constexpr char Data[] =
    "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
    "<QLearn><FLearnArcName>: \"learned values of the bench.bin\"\n<QType><FBaseName>: base\n"
    "<TMode>: {\n1 idle\n2 ramp\n3 \"a name that is longer than a short text\"\n}\n"
    "<TPhysMode>: {\n1 First\n2 Second\n}\n<TModeProperty>: {\n1 1 1024 0 0\n2 2 0 0 0\n}\n"
    "<TInstrument>: {\n1001 level\n2500 spectrum\n2700 section\n}\n"
    "<TInstrumentParam>: {\n5 1001 late 0 0 0\n4 1001 value 0 0 0\n7 2500 third 0 0 0\nx\n}\n"
    "<TIpSpectralValue>: {\n4 3 0 0 O1;O2;O3;O4 0 0\n5 3 0 0 HX-M1;HX+M1 0 0\n}\n"
    "<TIpSpectrum>: {\n7 1\n}\n<TTrigger>: {\n1 start\n3 stop\n}\n"
    "<TChannel>: {\n1 mic\n2 sensor\n3 mean\n4 speed\n}\n"
    "<TChannelProperty>: {\n1 4 0\n2 1 0\n3 2 0\n}\n<TChannelInheritance>: {\n1 -1 2\n2 1 3\n3 -1 1\n}\n"
    "<TApplicationSignal>: {\n1 Speed\n2 Torque\n3 Time\n}\n"
    "<TAppSignalProperty>: {\n1 1 old 0 7 0\n2 1 old 0 8 3\n3 4 own 0 1 0\n}\n"
    "<TAutoModeParam>: {\n1 0 1000 100 1 0 1 0 1 1\n2 0 4 1 0 0 1 0 1 1\n}\n"
    "<TAutoModeParamOrder>: {\n0 1\n1 2\n}\n"
    "<TIpParamAndStore>: {\n1 2 3 1 2 1 0 0 0 0 0\n2 2 3 2 2 1 0 0 0 0 0\n}\n"
    "<TIpPolygonValue>: {\n1 1 1\n1 2 3\n}\n"
    "<TIpTrackPolygon>: {\n-1 -1 3 -1 -1 -1 1 1 1 1 0 0 1 1 2\n}\n"
    "<TOrderSource2Rotor>: {\n1 1 3\n2 1 4\n}\n<TBaseOrder>: {\n1 7\n}\n<TGearDiameter>: {\n1 80.5\n}\n"
    "<TRotorSpeed>: {\n1 3 0.5 1 3\n1 2 4 0 0\n}\n<TRotorSpeedSource>: {\n1 3 2\n}\n"
    "<TRotorSpeedReference>: {\n1 4 2\n}\n<TSpeedSource>: {\n2 1\n}\n<TSensorGroupList>: {\n1 2\n1 3\n}\n";

class LoadAllocations : public LoadTest {
protected:
    using State = std::vector<std::wstring>;

    static State StateOfNewStore() {
        CQtParamDistillery distillery;
        EXPECT_TRUE(distillery.ReadTablesFromCandidateLake());
        return derivation::State(distillery);
    }
    static std::string Answers(CQtParamDistillery& distillery) {
        CQtParamInstance instance(&distillery);
        equality::Random random(7);
        equality::AnswerBook book;
        AskNames(instance, book);
        AskClassification(instance, book);
        AskModes(instance, random, book);
        AskRotors(instance, book);
        AskChannelsAndPolygons(instance, book);
        AskIntervals(instance, random, book);
        return book.Text();
    }

    // Loads in a new store, which then is cleared and loaded in peace; the sources are filled already.
    static std::size_t LoadInNewStores(std::size_t stride) {
        QuietSink const quiet;
        State const expected = StateOfNewStore();
        std::unique_ptr<CQtParamDistillery> distillery;
        return RefuseEach([&] { distillery = nullptr; },
                          [&] {
                              distillery = std::make_unique<CQtParamDistillery>();
                              if (distillery->ReadTablesFromCandidateLake())
                                  distillery->DerivedInfo().InstrumentCounts().Count(1001);
                          },
                          [&](std::size_t number, Ending const& ending) {
                              // What a load meets it passes on: a load without an exception is a whole one.
                              ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                              if (distillery == nullptr)
                                  return;
                              ASSERT_EQ(distillery->Initialized(), !ending.refused) << number;
                              if (ending.refused) {
                                  distillery->Clear();
                                  ASSERT_TRUE(distillery->ReadTablesFromCandidateLake()) << number;
                              }
                              ASSERT_EQ(derivation::State(*distillery), expected) << number;
                          },
                          stride);
    }
};

TEST_F(LoadAllocations, OfALake) {
    FillLake(Data);
    EXPECT_GT(LoadInNewStores(1), 300U);
}

TEST_F(LoadAllocations, OfATableSet) {
    derivation::Random random(11);
    ParamDb::CParameterTableSet::TableSet() = derivation::RandomData(random);
    // A missing named text becomes an empty table by the first load.
    EXPECT_GT(LoadInNewStores(7), 500U);
}

// One store lives on, as in a test bench: a second file over a first one, again and again.
TEST_F(LoadAllocations, OverAnEarlierLoad) {
    QuietSink const quiet;
    FillLake(Data);
    CQtParamDistillery fresh;
    ASSERT_TRUE(fresh.ReadTablesFromCandidateLake());
    State const state = derivation::State(fresh);
    std::string const expected = Answers(fresh);
    std::string const other = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
                              "<TMode>: {\n4 other\n1 same\n}\n<TChannel>: {\n1 one\n}\n";
    CQtParamDistillery distillery;
    std::size_t const requests = RefuseEach(
        [&] {
            FillLake(other);
            ASSERT_TRUE(distillery.ReadTablesFromCandidateLake());
            FillLake(Data);
        },
        [&] { distillery.ReadTablesFromCandidateLake(); },
        [&](std::size_t number, Ending const& ending) {
            ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
            // Whatever is half there can be asked without harm, and a new load puts it right.
            if (number % 32 == 1)
                Answers(distillery);
            ASSERT_TRUE(distillery.ReadTablesFromCandidateLake()) << number;
            ASSERT_EQ(derivation::State(distillery), state) << number;
            if (number % 32 == 1) {
                ASSERT_EQ(Answers(distillery), expected) << number;
            }
        });
    EXPECT_GT(requests, 100U);
}

TEST_F(LoadAllocations, OfRandomParameters) {
    QuietSink const quiet;
    for (std::uint32_t seed = 1; seed <= 2; ++seed) {
        SCOPED_TRACE(seed);
        equality::Random random(seed);
        FillLake(equality::RandomLake(random));
        CQtParamDistillery fresh;
        bool const loads = fresh.ReadTablesFromCandidateLake();
        State const expected = derivation::State(fresh);
        CQtParamDistillery distillery;
        RefuseEach([] {}, [&] { distillery.ReadTablesFromCandidateLake(); },
                   [&](std::size_t number, Ending const& ending) {
                       ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                       distillery.Clear();
                       ASSERT_EQ(distillery.ReadTablesFromCandidateLake(), loads) << number;
                       ASSERT_EQ(derivation::State(distillery), expected) << number;
                       distillery.PurgeTables();
                   },
                   37);
    }
}

// A text that cannot be made is no text: the query ends by the exception, and the next one has its answer.
TEST_F(LoadAllocations, OfQueries) {
    QuietSink const quiet;
    FillLake(Data);
    CQtParamDistillery distillery;
    ASSERT_TRUE(distillery.ReadTablesFromCandidateLake());
    CQtParamInstance instance(&distillery);
    int const intervals[] = {1, 2};
    int const states[] = {3, 0};
    int const mode = instance.VirtModeGenerateId(1, instance.VirtModeExtension(intervals, states));
    auto const ask = [&] {
        CString text;
        std::wstring all;
        for (int id = -1; id <= 7; ++id) {
            QClavis const key(mode, 1001, id, id, 4, 1);
            all += std::wstring(instance.FormatClavisText(key, CQtParamInstance::show_id_always, 63)) + L"\n";
            all += std::wstring(instance.FormatClavisTextNice(key, true, L"/")) + L"\n";
            all += std::wstring(instance.FormatInstrParamText(text, 1001, id)) + L"\n";
            all += std::wstring(instance.FormatLocaChanText(text, id, id, true)) + L"\n";
            all += std::wstring(instance.VirtModeName(mode + id)) + instance.ModeName(mode + id) + L"\n";
            all += std::wstring(instance.IpDisplayText(id, L"before ", L" behind")) + L"\n";
        }
        return all;
    };
    std::wstring const expected = ask();
    std::wstring got;
    std::size_t const requests = RefuseEach([&] { got.clear(); }, [&] { got = ask(); },
                                            [&](std::size_t number, Ending const& ending) {
                                                ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                                                ASSERT_EQ(ending.refused ? ask() : got, expected) << number;
                                            });
    EXPECT_GT(requests, 50U);
}

TEST_F(LoadAllocations, OfVirtualModesAndSeas) {
    QuietSink const quiet;
    FillLake(Data);
    CQtParamDistillery fresh;
    ASSERT_TRUE(fresh.ReadTablesFromCandidateLake());
    auto const write = [](CQtParamDistillery& distillery, CResourceSea& sea) {
        for (auto const& entry : distillery.Entries())
            entry.table->WriteTable(&sea);
        CQtParamInstance(&distillery).WriteTablesToLocalSeas();
    };
    CResourceSea whole;
    write(fresh, whole);
    std::unique_ptr<CQtParamDistillery> distillery;
    std::unique_ptr<CResourceSea> sea;
    std::size_t const requests = RefuseEach(
        [&] {
            distillery = std::make_unique<CQtParamDistillery>();
            ASSERT_TRUE(distillery->ReadTablesFromCandidateLake());
            sea = std::make_unique<CResourceSea>();
        },
        [&] {
            write(*distillery, *sea);
            CQtParamInstance instance(distillery.get());
            instance.AddVMode(1 << 28);
            instance.AddVModeName((1 << 28) + 1, L"a name that is longer than a short text");
        },
        [&](std::size_t number, Ending const& ending) {
            ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
            CQtParamInstance instance(distillery.get());
            instance.AddVModeName((1 << 28) + 1, L"a name that is longer than a short text");
            ASSERT_STREQ(instance.ModeName((1 << 28) + 1), L"a name that is longer than a short text");
            write(fresh, *sea);
            ASSERT_EQ(sea->Lists(), whole.Lists()) << number;
        },
        5);
    EXPECT_GT(requests, 100U);
}

// The object of the process comes into being late, and is there whole or not at all.
TEST_F(LoadAllocations, OfAStoreOfItsOwn) {
    std::unique_ptr<CQtParamDistillery> distillery;
    std::size_t const requests = RefuseEach([&] { distillery = nullptr; },
                                            [&] { distillery = std::make_unique<CQtParamDistillery>(); },
                                            [&](std::size_t number, Ending const& ending) {
                                                ASSERT_EQ(ending.refused, ending.bad_alloc) << number;
                                                ASSERT_EQ(distillery == nullptr, ending.refused) << number;
                                            });
    EXPECT_GT(requests, 5U);
}

} // namespace
