#include <paramdb/distillery/order_interpreter.h>
#include <paramdb/query/spec_interval.h>
#include <paramdb/query/trigger_store.h>
#include <paramdb/tables/number_text.h>

#include "questions.h"

#include <stdexcept>
#include <vector>

namespace equality {
namespace {

// A number as a caller has it, of the usual sizes or out of all bounds.
float RandomFloat(Random& random) {
    float value = 0;
    std::string const text = RandomReal(random);
    std::string_view rest = text;
    paramdb::TakeNumber(rest, value);
    return value;
}

void TellPosition(std::string_view name, QVSpecIntervalEntry::Definition const& position, AnswerBook& book) {
    book.Tell(name, position.frequency(), position.order(), position.harmonic(), position.modulation(),
              position.lines(), position.domain());
}

void TellDimension(CTriggerStore::CInterval const& dimension, AnswerBook& book) {
    book.Tell("dimension", dimension.start(), dimension.len(), dimension.step(), dimension.stop(),
              dimension.raising());
}

// The answer, or the text of the fault.
template <class Question>
void AskTrigger(std::string_view name, AnswerBook& book, Question const& question) {
    try {
        book.Tell(name, question());
    } catch (std::out_of_range const& fault) {
        book.Tell(name, fault.what());
    }
}

} // namespace

void AskModes(CQtParamInstance& instance, Random& random, AnswerBook& book) {
    for (auto const& [order, params] : instance.AutoModeParams())
        book.Tell("grid", order, params.SignalId, params.Start, params.Stop, params.Step, params.IntervalBits,
                  params.HasState, instance.VirtModeIntervals(params));
    std::vector<int> modes;
    for (int mode = -2; mode <= HighestId + 1; ++mode)
        modes.push_back(mode);
    for (int round = 0; round < 200; ++round) {
        int const intervals[] = {random.Between(-1, 20), random.Between(-1, 40), random.Between(-1, 9)};
        int const states[] = {random.Between(0, 3), random.Between(0, 3), random.Between(0, 3)};
        int const extension = instance.VirtModeExtension(intervals, random.OneIn(3) ? nullptr : states);
        int const mode = random.Between(-1, HighestId);
        modes.push_back(
            instance.VirtModeGenerateId(mode, random.OneIn(10) ? random.Between(-1, 99) : extension));
        book.Tell("extension", extension, mode, modes.back());
    }
    for (int const mode : modes) {
        book.Tell("mode", mode, instance.VirtMode2BaseMode(mode), instance.VirtModeExtension(mode),
                  instance.IsVirtualMode(mode), instance.IsValidVirtualMode(mode),
                  instance.ModeIsHidden(mode), instance.PhysModeId(mode), instance.ModeName(mode),
                  instance.VirtModeName(mode));
        for (unsigned int flag = 1; flag < 32; flag *= 2)
            book.Tell("flag", mode, flag,
                      instance.ModeIsOfType(mode, static_cast<QVModeProps::modeFlag>(flag)));
    }
    for (auto parameter = instance.AutoModeParams().cbegin(); parameter != instance.AutoModeParams().cend();
         ++parameter)
        for (unsigned int index = 0; index < 30; ++index) {
            float const position = instance.VirtModePosition(parameter->second, index);
            float const other = RandomFloat(random);
            int const extension = random.Between(0, 1023);
            int const physical_mode = random.Between(-1, 4);
            book.Tell("position", index, position,
                      instance.VirtModeNameFragment(parameter, position, index % 7),
                      instance.VirtModeNameFragment(parameter, other, index % 4),
                      instance.VirtModeBaseName(extension, physical_mode));
        }
    for (int round = 0; round < 20; ++round) {
        int const mode = modes[random.Bits() % modes.size()];
        bool const added = instance.AddVMode(mode);
        bool const named = instance.AddVModeName(mode, L"own \u00E4 name");
        book.Tell("added", mode, added, named, instance.ModeName(mode), instance.IsValidMode(mode));
    }
}

void AskRotors(CQtParamInstance const& instance, AnswerBook& book) {
    for (int mode = -1; mode <= HighestId; ++mode) {
        for (int a = -1; a <= HighestId; ++a) {
            book.Tell("gear", mode, a, instance.PhysicalGear(mode, a), instance.OrderSource2Rotor(mode, a),
                      instance.BaseOrder(mode, a), instance.GearDiameter(mode, a));
            for (bool const reference : {false, true}) {
                book.Tell("speed source", mode, a, reference, instance.RotorSpeedSource(mode, a, reference),
                          instance.RotorSpeedSourceAppId(mode, a, reference),
                          instance.SpeedInfoOfRotor(mode, a, reference),
                          instance.RotorFrequencyRelativeToSpeedSourceRotor(mode, a, reference));
                for (int channel = 0; channel <= HighestId; ++channel) {
                    auto const [first, last] = instance.OrderSourceRange(mode, channel, a, reference);
                    for (auto source = first; source != last; ++source)
                        book.Tell("order source", mode, channel, a, reference, source->first[3],
                                  source->second.get<"referred_id">());
                }
            }
            for (int b = -1; b <= HighestId; ++b)
                book.Tell("ratio", mode, a, b, instance.FrequencyRatioToGeneratingRotor(mode, a, b),
                          instance.RotorSpeedRatio(mode, a, b));
        }
    }
    for (int signal = -1; signal <= HighestId; ++signal)
        book.Tell("source of signal", signal, instance.RotorSpeedAppIdSource(signal));
}

void AskChannelsAndPolygons(CQtParamInstance const& instance, AnswerBook& book) {
    for (int mode = -1; mode <= HighestId; ++mode)
        for (int channel = -1; channel <= HighestId; ++channel)
            book.Tell("channel", mode, channel, instance.BaseChannel(mode, channel),
                      instance.ChannelFlags(mode, channel), instance.ParentChannel(mode, channel));
    for (auto const& [key, entry] : instance.GroupInfo().Entries()) {
        book.Tell("judged", key[0], key[1], key[2], key[3], key[4], key[5], entry.area_interpretation,
                  entry.source_parameter, entry.group);
        for (auto const& point : instance.GroupInfo().Group(entry.group))
            book.Tell("point", point.x, point.y);
    }
    for (unsigned int parameter = 0; parameter <= HighestParameter; ++parameter) {
        book.Tell("definition", parameter, instance.SpecIntervalDefinition(parameter));
        auto const [first, last] = instance.SpecIntervalRange(parameter);
        for (auto interval = first; interval != last; ++interval) {
            TellPosition("lower", interval->second.lower(), book);
            TellPosition("upper", interval->second.upper(), book);
        }
    }
}

void AskIntervals(CQtParamInstance const& instance, Random& random, AnswerBook& book) {
    CQtSpecInterval calculation(instance);
    std::vector<CQtSpecInterval::IndexInterval> all;
    for (int round = 0; round < 60; ++round) {
        int const a = random.Between(-1, HighestId);
        int const b = random.Between(-1, HighestId);
        calculation.LoadTransformParams(random.Between(0, HighestId), a, b);
        book.Tell("transform", a, b, calculation.BaseOrderValue(), calculation.RatioAssembly2SpeedSrc());
        for (unsigned int parameter = 0; parameter <= HighestParameter; ++parameter) {
            auto const [first, last] = instance.SpecIntervalRange(parameter);
            for (auto entry = first; entry != last; ++entry) {
                float const distance = random.OneIn(4) ? RandomFloat(random) : 0.5f;
                float const speed = random.OneIn(4) ? RandomFloat(random) : 47.3f;
                unsigned int const count = random.OneIn(3) ? random.Bits() % 9000 : 4096;
                float lower = -1;
                float upper = -1;
                int const result = calculation.FrequencyRange(entry->second, distance, speed, lower, upper);
                book.Tell("frequencies", parameter, result, lower, upper);
                CQtSpecInterval::IndexInterval lines{-1, -1, 0, 0};
                int const line_result = calculation.IndexRange(entry->second, lines, count, distance, speed);
                book.Tell("lines", line_result, lines.start, lines.stop, lines.first, lines.last);
                if (line_result == CQtSpecInterval::range_success)
                    all.push_back(lines);
            }
        }
        if (all.size() > 1) {
            auto const pieces = CQtSpecInterval::InvertIndexIntervalCollection(all);
            book.Tell("inverted", pieces);
            for (auto const& piece : all)
                book.Tell("piece", piece.start, piece.stop, piece.first, piece.last);
        }
        all.clear();
    }
}

void AskTriggers(CQtParamInstance const& instance, Random& random, AnswerBook& book) {
    CTriggerStore const triggers(instance);
    for (int mode = -1; mode <= HighestId; ++mode) {
        for (int trigger = -1; trigger <= HighestId; ++trigger) {
            AskTrigger("only dimension", book, [&] { return triggers.dimension(mode, trigger); });
            unsigned int mask = 0;
            AskTrigger("dimensions", book, [&] { return triggers.dimensions(mode, trigger, mask); });
            CTriggerStore::CIntervals field;
            AskTrigger("field", book, [&] { return triggers.field(mode, trigger, field); });
            book.Tell("mask", mask, field.dimensions.to_ulong());
            for (auto const& dimension : field.intervals)
                TellDimension(dimension, book);
            for (unsigned int dim = 0; dim < 5; ++dim) {
                CTriggerStore::CInterval dimension;
                float position = -1;
                auto const number = static_cast<std::int64_t>(random.Bits()) << (16 * (dim % 3));
                book.Tell("one dimension", dim, triggers.field(mode, trigger, dim, dimension));
                TellDimension(dimension, book);
                bool const found = triggers.position(mode, trigger, number, dim, position);
                book.Tell("one position", number, found, position);
            }
            CTriggerStore::CDimensions place;
            AskTrigger("all positions", book,
                       [&] { return triggers.position(mode, trigger, 0x0001000200030004, 0x10000, place); });
            book.Tell("place", place.dimensions.to_ulong(), place.positions[0], place.positions[1],
                      place.positions[2], place.positions[3]);
        }
    }
    for (int round = 0; round < 2000; ++round) {
        CTriggerStore::CInterval interval;
        float const start = RandomFloat(random);
        float const step = RandomFloat(random);
        if (random.OneIn(2))
            interval.set(start, step, RandomFloat(random));
        else
            interval = {start, step, random.Bits() % 100, random.OneIn(2)};
        TellDimension(interval, book);
        for (unsigned int dim = 0; dim < 5; ++dim) {
            float const position = random.OneIn(2) ? start + 3.3f * step : RandomFloat(random);
            for (bool const clamp : {false, true}) {
                std::int64_t number = 0;
                bool const inside = CTriggerStore::cell(interval, dim, position, number, clamp);
                float back = -1;
                bool const known = CTriggerStore::position(interval, number, dim, back);
                book.Tell("cell", dim, position, clamp, inside, number, known, back);
            }
        }
    }
}

void AskNumbersAndOrders(Random& random, AnswerBook& book) {
    for (int round = 0; round < 2000; ++round) {
        std::string const text = RandomReal(random);
        std::string_view double_rest = text;
        std::string_view float_rest = text;
        double real = -1;
        float single = -1;
        auto const double_fault = static_cast<int>(paramdb::TakeNumber(double_rest, real));
        auto const float_fault = static_cast<int>(paramdb::TakeNumber(float_rest, single));
        book.Tell("number", text, double_fault, real, std::string(double_rest), float_fault, single,
                  std::string(float_rest));
        unsigned int const bits = random.Bits();
        CString formatted;
        formatted.Format(L"%g %f %.3e %10.2f %G %d %u %x", real, real, real, static_cast<double>(single),
                         real, round, bits, bits % 65536);
        book.Tell("formatted", formatted);
    }
    for (int round = 0; round < 500; ++round) {
        std::string const text = RandomDefinition(random);
        std::vector<QVSpecIntervalEntry::Definition> positions(CQtSpecIntervalStore::max_orders);
        unsigned int const count =
            OrderInterpreter::GetSpecPositions(std::wstring(text.begin(), text.end()).c_str(),
                                               positions.data(), CQtSpecIntervalStore::max_orders);
        book.Tell("order", text, count);
        for (unsigned int position = 0; position < count; ++position)
            TellPosition("at", positions[position], book);
    }
}

} // namespace equality
