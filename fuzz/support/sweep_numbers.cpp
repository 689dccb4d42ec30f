// The questions that are answered by numbers, rows and ranges.
#include <paramdb/query/spec_interval.h>
#include <paramdb/query/trigger_store.h>

#include "expect.h"
#include "query_sweep.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace fuzz {
namespace {

constexpr float Infinite = std::numeric_limits<float>::infinity();
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float OddFloats[] = {0.0f,  -0.0f, 0.5f,    -1.5f,    47.3f,     1e-45f,
                               65536, 4e9f,  3.4e38f, Infinite, -Infinite, NotANumber};

// The answer, or that there was none for a row with an impossible dimension.
template <class Question>
void AskTrigger(Answers& answers, Question const& question) {
    try {
        answers.Take(question());
    } catch (std::out_of_range const&) {
        answers.Take(-1);
    }
}

void TakePosition(QVSpecIntervalEntry::Definition const& position, Answers& answers) {
    answers.Take(position.frequency(), position.order(), position.harmonic(), position.modulation(),
                 position.lines(), position.domain());
}

// The pairs of three kinds of ids, as many as a walk along all of them gives.
template <class Question>
void ForTriples(std::vector<int> const& first, std::vector<int> const& second, std::vector<int> const& third,
                Question const& question) {
    for (std::size_t a = 0; a < first.size(); ++a)
        for (std::size_t b = 0; b < second.size(); ++b)
            question(first[a], second[b], third[(a * second.size() + b) % third.size()]);
}

} // namespace

void AskKinds(CQtParamInstance& instance, KnownIds const& ids, Answers& answers) {
    for (int const id : ids.Of("instrument", 12))
        answers.Take(CQtParamInstance::ResultType(id), instance.IsSingleValueInstrument(id),
                     instance.IsTrackInstrument(id), instance.IsSpectrumInstrument(id),
                     instance.Is2dDataInstrument(id), CQtParamInstance::ScalarInstrumentToTrackInstrument(id),
                     CQtParamInstance::TrackInstrumentToScalarInstrument(id));
    for (int const id : ids.Of("channel", 12))
        answers.Take(instance.ChannelResamplingType(id), instance.ChannelIsSync(id),
                     instance.ChannelIsMix(id), instance.ChannelIsFix(id));
    for (int const id : ids.Of("location", 8))
        answers.Take(instance.LocationPropertyFlag(id));
    for (int const id : ids.Of("signal", 12)) {
        CMeasuringUnit const unit = instance.ApplicationSignalUnit(id);
        answers.Take(unit.unit(), unit.prefix(), unit.prefixunit(false).GetString());
    }
    answers.Take(instance.IpMultipleMixLocs());
}

void AskModes(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers) {
    auto const& params = instance.AutoModeParams();
    std::vector<int> modes = ids.Of("mode", 10);
    std::vector<int> const bases = modes;
    for (std::size_t round = 0; round < 6; ++round) {
        std::vector<int> intervals;
        std::vector<int> states;
        for (auto const& [order, param] : params) {
            int const count = instance.VirtModeIntervals(param);
            intervals.push_back(round == 0 ? -1 : round == 1 ? 0 : round == 2 ? count - 1 : count / 2);
            states.push_back(static_cast<int>((round + intervals.size()) % 4));
        }
        int const extension =
            instance.VirtModeExtension(intervals.data(), round % 2 == 0 ? states.data() : nullptr);
        modes.push_back(instance.VirtModeGenerateId(bases[round % bases.size()], extension));
        answers.Take(extension,
                     instance.VirtModeBaseName(extension, bases[round % bases.size()]).GetString());
    }
    for (int const mode : modes) {
        answers.Take(instance.VirtMode2BaseMode(mode), instance.VirtModeExtension(mode),
                     instance.IsVirtualMode(mode), instance.IsValidVirtualMode(mode),
                     instance.ModeIsHidden(mode), instance.PhysModeId(mode), instance.ModeName(mode),
                     instance.VirtModeName(mode).GetString(),
                     instance.ModeIsOfType(mode, QVModeProps::hidden));
    }
    std::size_t asked = 0;
    for (auto param = params.cbegin(); param != params.cend() && asked < 6; ++param, ++asked)
        for (unsigned int const index : {0u, 1u, 30u, 0xFFFFFFFFu}) {
            float const position = instance.VirtModePosition(param->second, index);
            answers.Take(position, instance.VirtModeNameFragment(param, position, index % 7).GetString());
        }
}

void AskRotors(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers) {
    std::vector<int> rotors = ids.Of("rotor", 5);
    for (char const* const kind : {"gear", "source"})
        for (int const id : ids.Of(kind, 4))
            rotors.push_back(id);
    std::sort(rotors.begin(), rotors.end());
    rotors.erase(std::unique(rotors.begin(), rotors.end()), rotors.end());
    std::vector<int> const channels = ids.Of("channel", 5);
    ForTriples(ids.Of("mode", 6), rotors, channels, [&](int mode, int rotor, int channel) {
        answers.Take(instance.PhysicalGear(mode, rotor), instance.OrderSource2Rotor(mode, rotor),
                     instance.BaseOrder(mode, rotor), instance.GearDiameter(mode, rotor));
        for (bool const reference : {false, true}) {
            answers.Take(instance.RotorSpeedSource(mode, rotor, reference),
                         instance.RotorSpeedSourceAppId(mode, rotor, reference),
                         instance.SpeedInfoOfRotor(mode, rotor, reference),
                         instance.RotorFrequencyRelativeToSpeedSourceRotor(mode, rotor, reference));
            auto const [first, last] = instance.OrderSourceRange(mode, channel, rotor, reference);
            int shown = 0;
            for (auto source = first; source != last && shown < 20; ++source, ++shown)
                answers.Take(source->first[3], source->second.get<"referred_id">());
        }
        int const other = rotors[static_cast<unsigned int>(rotor) % rotors.size()];
        auto const ratio = instance.RotorSpeedRatio(mode, rotor, other);
        answers.Take(instance.FrequencyRatioToGeneratingRotor(mode, rotor, other), ratio.numerator(),
                     ratio.denominator(), ratio.value());
    });
    for (int const signal : ids.Of("signal", 8))
        answers.Take(instance.RotorSpeedAppIdSource(signal));
}

void AskDerived(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers) {
    for (int const mode : ids.Of("mode", 8))
        for (int const channel : ids.Of("channel", 8))
            answers.Take(instance.BaseChannel(mode, channel), instance.ChannelFlags(mode, channel),
                         instance.ParentChannel(mode, channel));
    int shown = 0;
    for (auto const& [key, entry] : instance.GroupInfo().Entries()) {
        answers.Take(key[0], key[5], entry.area_interpretation, entry.source_parameter, entry.group);
        for (auto const& point : instance.GroupInfo().Group(entry.group))
            answers.Take(point.x, point.y);
        if (++shown == 40)
            break;
    }
    for (QClavis const& key : ids.Keys())
        answers.Take(instance.GroupInfo().Entry(key) != nullptr);
    for (int const parameter : ids.Of("parameter", 16)) {
        auto const id = static_cast<unsigned int>(parameter);
        answers.Take(instance.SpecIntervalDefinition(id));
        auto const [first, last] = instance.SpecIntervalRange(id);
        for (auto interval = first; interval != last; ++interval) {
            Expect(interval->first[0] == parameter, "intervals of the parameter alone");
            TakePosition(interval->second.lower(), answers);
            TakePosition(interval->second.upper(), answers);
        }
    }
}

void AskIntervals(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers) {
    CQtSpecInterval calculation(instance);
    std::vector<int> const rotors = ids.Of("rotor", 4);
    std::vector<CQtSpecInterval::IndexInterval> all;
    std::size_t round = 0;
    for (int const mode : ids.Of("mode", 4)) {
        ++round;
        calculation.LoadTransformParams(mode, rotors[round % rotors.size()],
                                        rotors[(round + 1) % rotors.size()]);
        answers.Take(calculation.BaseOrderValue(), calculation.RatioAssembly2SpeedSrc());
        for (int const parameter : ids.Of("parameter", 8)) {
            auto const [first, last] = instance.SpecIntervalRange(static_cast<unsigned int>(parameter));
            for (auto entry = first; entry != last; ++entry) {
                float const distance = round % 3 == 0 ? OddFloats[round % std::size(OddFloats)] : 0.5f;
                float const speed = OddFloats[++round % std::size(OddFloats)];
                float lower = -1;
                float upper = -1;
                answers.Take(static_cast<int>(
                                 calculation.FrequencyRange(entry->second, distance, speed, lower, upper)),
                             lower, upper);
                for (unsigned int const count : {0u, 1u, 4096u, 0xFFFFFFFFu}) {
                    CQtSpecInterval::IndexInterval lines{-1, -1, 0, 0};
                    auto const result = calculation.IndexRange(entry->second, lines, count, distance, speed);
                    answers.Take(static_cast<int>(result), lines.start, lines.stop, lines.first, lines.last);
                    Expect(result != CQtSpecInterval::range_success || lines.last <= count - 1,
                           "lines of the spectrum");
                    if (result == CQtSpecInterval::range_success && all.size() < 50)
                        all.push_back(lines);
                }
            }
        }
    }
    if (all.size() > 1) {
        std::sort(all.begin() + 1, all.end(),
                  [](auto const& left, auto const& right) { return left.first < right.first; });
        std::size_t const before = all.size();
        std::uint64_t const pieces = CQtSpecInterval::InvertIndexIntervalCollection(all);
        Expect(pieces == all.size() && pieces <= before, "no more pieces than intervals");
        for (auto const& piece : all)
            answers.Take(piece.start, piece.stop, piece.first, piece.last);
    }
}

void AskTriggers(CQtParamInstance const& instance, KnownIds const& ids, Answers& answers) {
    CTriggerStore const triggers(instance);
    for (int const mode : ids.Of("mode", 5)) {
        for (int const trigger : ids.Of("trigger", 6)) {
            AskTrigger(answers, [&] { return triggers.dimension(mode, trigger); });
            unsigned int mask = 0;
            AskTrigger(answers, [&] { return triggers.dimensions(mode, trigger, mask); });
            CTriggerStore::CIntervals field;
            AskTrigger(answers, [&] { return triggers.field(mode, trigger, field); });
            answers.Take(mask, field.dimensions.to_ulong());
            CTriggerStore::CDimensions place;
            AskTrigger(answers,
                       [&] { return triggers.position(mode, trigger, 0x0001800200030004, 0x10000, place); });
            for (unsigned int dim = 0; dim < 5; ++dim) {
                CTriggerStore::CInterval dimension;
                float position = -1;
                answers.Take(triggers.field(mode, trigger, dim, dimension), dimension.start(),
                             dimension.len(), dimension.step(), dimension.stop(), dimension.raising(),
                             triggers.position(mode, trigger, std::int64_t{-5} << (8 * dim), dim, position),
                             position);
                for (float const wanted : OddFloats) {
                    std::int64_t number = 0;
                    bool const inside = CTriggerStore::cell(dimension, dim, wanted, number, dim % 2 == 0);
                    answers.Take(inside, number, CTriggerStore::position(dimension, number, dim, position),
                                 position);
                }
            }
        }
    }
}

void AskRows(CQtParamInstance const& instance, Answers& answers) {
    for (paramdb::CatalogueEntry const& entry : instance.Entries()) {
        std::size_t rows = 0;
        entry.rows->VisitRows([&](auto key, auto row) {
            for (auto const fields : {key, row})
                for (auto const& field : fields)
                    field.Visit([&](auto const& value) {
                        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, CFixedText>)
                            answers.Take(value.c_str());
                        else
                            answers.Take(value);
                    });
            ++rows;
            return true;
        });
        Expect(rows == entry.rows->RowCount(), "a walk over all rows");
        answers.Take(rows, paramdb::MemoryBytes(*entry.rows) > 0);
    }
}

void AskEverything(CQtParamInstance& instance, Answers& answers) {
    KnownIds const ids(instance);
    AskRows(instance, answers);
    AskNames(instance, ids, answers);
    AskKinds(instance, ids, answers);
    AskKeyTexts(instance, ids, answers);
    AskDisplayTexts(instance, ids, answers);
    AskModes(instance, ids, answers);
    AskRotors(instance, ids, answers);
    AskDerived(instance, ids, answers);
    AskIntervals(instance, ids, answers);
    AskTriggers(instance, ids, answers);
}

} // namespace fuzz
