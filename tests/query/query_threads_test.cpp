// Every query at once from several threads: each sees what a single one sees.
#include <paramdb/query/param_instance.h>

#include "name_kinds.h"

#include <atomic>
#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

constexpr char Data[] =
    "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
    "<TAliasType>: {\n1 type\n}\n<TAliasBench>: {\n1 bench\n}\n<TResamplingGroup>: {\n2 job\n}\n"
    "<TProcessingUnit>: {\n2 set\n}\n<TSensorGroup>: {\n3 group\n}\n<TTpSensorConfig>: {\n3 config\n}\n"
    "<TMode>: {\n1 idle\n2 ramp\n3 coast\n}\n<TPhysMode>: {\n1 First\n2 Second\n}\n"
    "<TModeProperty>: {\n1 1 1024 0 0\n2 2 0 0 0\n}\n"
    "<TInstrument>: {\n1 level\n2 spectrum\n}\n"
    "<TInstrumentParam>: {\n1 1 only 0 0 0\n2 2 order 0 0 0\n3 2 third 0 0 0\n4 1001 value 0 0 0\n}\n"
    "<TIpSpectralValue>: {\n4 3 0 0 O1;O2;O3;O4 0 0\n}\n<TTrigger>: {\n1 start\n3 stop\n}\n"
    "<TChannel>: {\n1 mic\n2 sensor\n3 mean\n4 speed\n}\n"
    "<TChannelProperty>: {\n1 4 0\n2 1 0\n3 2 0\n}\n<TChannelInheritance>: {\n1 -1 2\n2 1 3\n}\n"
    "<TLocation>: {\n1 front\n2 rear\n}\n<TLocationProperty>: {\n1 4 0 0\n2 0 0 0\n}\n"
    "<TApplicationSignal>: {\n1 Speed\n2 Torque\n3 Time\n}\n"
    "<TAppSignalProperty>: {\n1 1 old 0 7 0\n2 1 old 0 8 3\n3 4 own 0 1 0\n}\n"
    "<TAutoModeParam>: {\n1 0 1000 100 1 0 1 0 1 1\n2 0 4 1 0 0 1 0 1 1\n}\n"
    "<TAutoModeParamOrder>: {\n0 1\n1 2\n}\n"
    "<TIpParamAndStore>: {\n1 2 3 1 2 1 0 0 0 0 0\n2 2 3 2 2 1 0 0 0 0 0\n}\n"
    "<TOrderSource2Rotor>: {\n1 1 3\n2 1 4\n}\n<TBaseOrder>: {\n1 7\n2 5\n}\n<TGearDiameter>: {\n1 80.5\n}\n"
    "<TRotorSpeed>: {\n1 3 0.5 1 3\n1 2 4 0 0\n}\n<TRotorSpeedSource>: {\n1 3 2\n}\n"
    "<TRotorSpeedReference>: {\n1 4 2\n}\n<TSpeedSource>: {\n2 1\n}\n";

class Answers {
public:
    // A text, a number, or a row's place.
    template <class T>
    void Add(T const& answer) {
        if constexpr (std::is_arithmetic_v<T>)
            m_answers.push_back(std::to_wstring(answer));
        else if constexpr (std::is_same_v<T, wchar_t const*>)
            m_answers.emplace_back(answer != nullptr ? answer : L"null");
        else
            m_answers.emplace_back(answer);
    }
    template <class... T>
    void AddAll(T const&... answers) {
        (Add(answers), ...);
    }

    std::vector<std::wstring> const& All() const { return m_answers; }
    bool operator==(Answers const&) const = default;

private:
    std::vector<std::wstring> m_answers;
};

void AskNames(CQtParamInstance const& instance, int id, Answers& answers) {
    for (auto const& kind : names::Kinds) {
        wchar_t const* const name = (instance.*kind.name)(id);
        answers.Add(name);
        answers.Add((instance.*kind.id)(std::wstring(name).c_str()));
        if (kind.is_valid != nullptr)
            answers.Add((instance.*kind.is_valid)(id));
        answers.Add((instance.*kind.tree)().size());
    }
    std::wstring const parameter = instance.InstrumentParamName(id);
    int const instrument = instance.InstrumentParameterToInstrument(id);
    std::wstring const trigger = instance.TriggerName(id);
    answers.AddAll(parameter, instrument, instance.InstrumentParamId(parameter.c_str(), instrument), trigger,
                   instance.TriggerId(trigger.c_str()), instance.TriggerId(id), instance.PhysModeId(id),
                   instance.SensorConfigName().Name(id));
    for (int element = -1; element <= 6; ++element) {
        answers.Add(instance.ClavisElementName(element, id));
        answers.Add(instance.IdNameMap(static_cast<unsigned int>(element)).size());
    }
}

void AskKinds(CQtParamInstance& instance, int id, Answers& answers) {
    answers.AddAll(CQtParamInstance::ResultType(id), CQtParamInstance::ScalarInstrumentToTrackInstrument(id),
                   CQtParamInstance::TrackInstrumentToScalarInstrument(id),
                   instance.IsSingleValueInstrument(id), instance.IsTrackInstrument(id),
                   instance.IsSpectrumInstrument(id), instance.Is2dDataInstrument(id),
                   CQtParamInstance::TimeSignalId(), instance.ChannelResamplingType(id),
                   instance.ChannelIsSync(id), instance.ChannelIsMix(id), instance.ChannelIsFix(id),
                   instance.LocationPropertyFlag(id), instance.IpMultipleMixLocs());
    // The first questions bring the texts of the rows up to date.
    answers.Add(std::wstring(instance.ApplicationSignalUnit(id).prefixunit(false)));
    for (int mode = -1; mode <= 3; ++mode)
        answers.AddAll(instance.ChannelFlags(mode, id), instance.BaseChannel(mode, id),
                       instance.ParentChannel(mode, id));
    for (unsigned int parameter = 3; parameter <= 4; ++parameter) {
        auto const [begin, end] = instance.SpecIntervalRange(parameter);
        answers.AddAll(instance.SpecIntervalDefinition(parameter), std::distance(begin, end));
    }
}

void AskTexts(CQtParamInstance const& instance, int id, Answers& answers) {
    for (int other = -1; other <= 4; ++other) {
        QClavis const key(id, other, id, other, id, other);
        CString out;
        for (bool const both : {false, true})
            answers.AddAll(std::wstring(instance.FormatClavisTextNice(key, both, L"/")),
                           std::wstring(instance.FormatLocaChanText(out, other, id, both)));
        answers.Add(std::wstring(instance.FormatInstrParamText(out, other, id)));
        for (auto const rule : {CQtParamInstance::show_id_never, CQtParamInstance::show_id_always,
                                CQtParamInstance::show_id_if_unnamed})
            answers.Add(std::wstring(instance.FormatClavisText(key, rule, 63)));
        answers.Add(std::wstring(instance.FormatClavisText(key, 63)));
    }
    answers.Add(CQtParamInstance::ShowIdsInDialogs());
}

void AskModes(CQtParamInstance const& instance, int first, Answers& answers) {
    for (int mode = -1; mode <= 3; ++mode) {
        int const intervals[] = {first, mode};
        int const states[] = {(mode + 4) % 4, 0};
        int const extension = instance.VirtModeExtension(intervals, states);
        int const id = instance.VirtModeGenerateId(mode, extension);
        answers.AddAll(extension, id, instance.IsVirtualMode(id), instance.IsValidVirtualMode(id),
                       instance.VirtMode2BaseMode(id), instance.VirtModeExtension(id),
                       instance.PhysModeId(id), instance.IsValidMode(id), instance.ModeIsHidden(mode),
                       instance.ModeIsOfType(id, QVModeProps::hidden),
                       std::wstring(instance.VirtModeName(id)),
                       std::wstring(instance.VirtModeBaseName(extension, 1)), instance.ModeName(id),
                       instance.BaseModeClavis(QClavis(id, 1, 1, 1, 1, 1))[Clavis::qMode]);
        answers.Add(std::wstring(instance.FormatClavisTextNice(QClavis(id, 9, 1, 1, 1, 1), true, L"/")));
    }
    auto const& params = instance.AutoModeParams();
    for (auto param = params.begin(); param != params.end(); ++param)
        answers.AddAll(std::wstring(instance.VirtModeNameFragment(param, 2.5f, 2)),
                       instance.VirtModeIntervals(param->second),
                       instance.VirtModePosition(param->second, 2));
}

void AskRotors(CQtParamInstance const& instance, int id, Answers& answers) {
    for (int mode = -1; mode <= 2; ++mode) {
        answers.AddAll(instance.PhysicalGear(mode, id), instance.OrderSource2Rotor(mode, id),
                       instance.BaseOrder(mode, id), instance.GearDiameter(mode, id),
                       instance.RotorSpeedAppIdSource(id));
        for (bool const reference : {false, true}) {
            answers.AddAll(instance.RotorSpeedSource(mode, id, reference),
                           instance.RotorSpeedSourceAppId(mode, id, reference),
                           instance.SpeedInfoOfRotor(mode, id, reference),
                           instance.RotorFrequencyRelativeToSpeedSourceRotor(mode, id, reference));
            for (int channel = 1; channel <= 3; ++channel) {
                auto const [begin, end] = instance.OrderSourceRange(mode, channel, id, reference);
                answers.Add(std::distance(begin, end));
            }
        }
        for (int other = 1; other <= 4; ++other)
            answers.AddAll(instance.FrequencyRatioToGeneratingRotor(mode, id, other),
                           instance.RotorSpeedRatio(mode, id, other).value());
    }
}

// Everything, beginning with another kind of question for each start.
Answers AskAll(CQtParamInstance instance, int start) {
    Answers parts[5];
    for (int part = 0; part < 5; ++part)
        for (int const id : {-1, 0, 1, 2, 3, 4, 5, 1001, 2500})
            switch (int const topic = (part + start) % 5) {
            case 0:
                AskNames(instance, id, parts[topic]);
                break;
            case 1:
                AskKinds(instance, id, parts[topic]);
                break;
            case 2:
                AskTexts(instance, id, parts[topic]);
                break;
            case 3:
                AskModes(instance, id, parts[topic]);
                break;
            default:
                AskRotors(instance, id, parts[topic]);
            }
    Answers all;
    for (Answers const& part : parts)
        for (auto const& answer : part.All())
            all.Add(answer);
    return all;
}

class QueryThreads : public LoadTest {
protected:
    // Another start for each thread, all at once.
    static std::vector<Answers> AskInThreads(CQtParamInstance const& instance) {
        constexpr int count = 4;
        std::vector<Answers> answers(count);
        std::atomic<int> waiting = count;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < count; ++thread)
            threads.emplace_back([&, thread] {
                --waiting;
                while (waiting > 0)
                    std::this_thread::yield();
                answers[static_cast<std::size_t>(thread)] = AskAll(instance, thread);
            });
        for (std::thread& thread : threads)
            thread.join();
        return answers;
    }
    // A row after the load leaves the counts to the first question.
    static void Load(CQtParamDistillery& distillery) {
        ASSERT_TRUE(distillery.ReadTablesFromCandidateLake());
        auto& tables = distillery.Tables();
        tables.InstrumentParam.insert({5, QVInstrumentParam(2500, L"late", 0, 0u, 0u)});
        tables.ChannelProperty.insert({5, QVChannelProperty(4u, 0)});
    }

    MessageLog messages;
};

TEST_F(QueryThreads, SeeWhatASingleOneSees) {
    FillLake(Data);
    CQtParamDistillery alone;
    ASSERT_NO_FATAL_FAILURE(Load(alone));
    Answers const expected = AskAll(CQtParamInstance(&alone), 0);
    ASSERT_GT(expected.All().size(), 2000u);
    EXPECT_EQ(AskAll(CQtParamInstance(&alone), 3), expected) << "questions change no answer";
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        CQtParamDistillery shared;
        ASSERT_NO_FATAL_FAILURE(Load(shared));
        for (Answers const& answers : AskInThreads(CQtParamInstance(&shared))) {
            ASSERT_EQ(answers.All().size(), expected.All().size());
            for (std::size_t place = 0; place < expected.All().size(); ++place)
                ASSERT_EQ(answers.All()[place], expected.All()[place]) << place;
        }
    }
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

// Each thread keeps the generated names that it has asked for.
TEST_F(QueryThreads, KeepTheirGeneratedNames) {
    FillLake(Data);
    CQtParamInstance instance;
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    int const intervals[] = {0, 0};
    int const first = instance.VirtModeGenerateId(1, instance.VirtModeExtension(intervals, nullptr));
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            std::wstring const number = L"(Instr. " + std::to_wstring(1000 + thread) + L")";
            int const mode = thread % 2 == 0 ? first : first + 1;
            std::wstring const virtual_name(instance.VirtModeName(mode));
            for (int time = 0; time < 2000; ++time) {
                wchar_t const* const instrument = instance.InstrumentName(1000 + thread);
                wchar_t const* const name = instance.ModeName(mode);
                wrong += instrument == number && name == virtual_name ? 0 : 1;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_STRNE(instance.VirtModeName(first), instance.VirtModeName(first + 1));
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

// A host's rows come between two rounds; whoever asks first counts them.
TEST_F(QueryThreads, CountNewRowsOnce) {
    FillLake(Data);
    CQtParamDistillery distillery;
    ASSERT_NO_FATAL_FAILURE(Load(distillery));
    CQtParamInstance const instance(&distillery);
    for (int round = 0; round < 50; ++round) {
        auto& parameters = distillery.Tables().InstrumentParam;
        bool const has_two = round % 2 == 0;
        if (has_two)
            parameters.insert({6, QVInstrumentParam(1, L"second", 0, 0u, 0u)});
        else
            parameters.erase(parameters.find(6));
        std::atomic<int> wrong = 0;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([&] {
                CString text;
                instance.FormatInstrParamText(text, 1, 1);
                wrong += text == (has_two ? L"level only" : L"level") ? 0 : 1;
            });
        for (std::thread& thread : threads)
            thread.join();
        ASSERT_EQ(wrong, 0) << round;
    }
}

} // namespace
