// Rows of triggers: fields, cells and positions are those of the model of the tests.
#include <paramdb/query/trigger_store.h>
#include <paramdb/storage/parameter_lake.h>

#include "support/custom_mutator.h"
#include "support/expect.h"
#include "support/input.h"
#include "support/loading.h"
#include "support/message_watch.h"
#include "support/query_sweep.h"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <tests/query/trigger_model.h>

namespace {

using trigger_model::Row;
using trigger_model::Same;

constexpr float Infinite = std::numeric_limits<float>::infinity();

bool AreSame(CTriggerStore::CInterval const& interval, trigger_model::Interval const& model) {
    return Same(interval.start(), model.start) && Same(interval.stop(), model.stop) &&
           Same(interval.step(), model.step) && interval.len() == model.len &&
           interval.raising() == model.raising;
}

// Whatever a host may ask of one dimension: positions on its boundaries, beside them and far away.
void CheckDimension(CTriggerStore::CInterval const& interval, trigger_model::Interval const& model) {
    std::vector<float> positions{0,       -0.0f, Infinite,      -Infinite, std::nanf(""),
                                 3.4e38f, 65536, -2147483648.0f};
    for (float const cells : {-1.0f, 0.0f, 0.5f, 1.0f, 3.0f, 65535.0f, 65536.0f}) {
        float const edge = interval.start() + cells * interval.step();
        for (float const near : {edge, std::nextafter(edge, Infinite), std::nextafter(edge, -Infinite)})
            positions.push_back(near);
    }
    for (float const position : positions)
        for (unsigned int const dim : {0u, 1u, 2u, 3u, 4u, 0xFFFFFFFFu})
            for (bool const clamp : {false, true}) {
                auto const expected = trigger_model::Cell(model, dim, position, clamp);
                std::int64_t number = 0;
                fuzz::Expect(CTriggerStore::cell(interval, dim, position, number, clamp) ==
                                 expected.has_value(),
                             "a cell where the model has one");
                fuzz::Expect(number == expected.value_or(0), "the cell of the model");
                float answer = 0;
                CTriggerStore::position(interval, number, dim, answer);
                int const cells = trigger_model::CellOf(number, dim) + (model.raising ? 1 : 0);
                fuzz::Expect(
                    Same(answer, trigger_model::PositionOf(cells, 0, model.step, model.start, model.stop)),
                    "the position of the model");
            }
}

void CheckTrigger(CTriggerStore const& store, std::vector<Row> const& table, int mode, int trigger) {
    unsigned int expected_mask = 0;
    bool is_broken = false;
    std::vector<Row> rows;
    for (Row const& row : trigger_model::RowsOf(table, mode, trigger)) {
        is_broken = row.key[2] < 1 || row.key[2] > 4;
        if (is_broken)
            break;
        expected_mask |= 1u << (row.key[2] - 1);
        rows.push_back(row);
    }
    unsigned int mask = 99;
    CTriggerStore::CIntervals field;
    CTriggerStore::CDimensions places;
    std::int64_t const number = 0x0123FFFF80007FFF;
    std::int64_t const extent = 0x0000000200030000;
    int faults = 0;
    auto const ask = [&](auto const& question) {
        try {
            fuzz::Expect(question() == !rows.empty(), "an answer where there are rows");
        } catch (std::out_of_range const&) {
            ++faults;
        }
    };
    ask([&] { return store.dimensions(mode, trigger, mask); });
    ask([&] { return store.field(mode, trigger, field); });
    ask([&] { return store.position(mode, trigger, number, extent, places); });
    fuzz::Expect(faults == (is_broken ? 3 : 0), "a fault exactly for a row of no dimension");
    fuzz::Expect(mask == expected_mask && field.dimensions.to_ulong() == expected_mask &&
                     places.dimensions.to_ulong() == expected_mask,
                 "the dimensions of the rows");
    for (Row const& row : rows) {
        auto const dim = static_cast<unsigned int>(row.key[2] - 1);
        fuzz::Expect(AreSame(field.intervals[dim], trigger_model::IntervalOf(row)),
                     "the interval of the model");
        fuzz::Expect(Same(places.positions[dim],
                          trigger_model::MiddleOrEdge(number, extent, dim, row.step, row.start, row.stop)),
                     "the middle or edge of the model");
    }
}

} // namespace

fuzz::Tags const& fuzz::MutatorTags() {
    static Tags const tags{"<TTriggerParam>"};
    return tags;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    constexpr std::size_t most_rows = 30;
    fuzz::MessageWatch messages;
    fuzz::FillLake(fuzz::TextOf(data, size));
    CQtParamDistillery distillery;
    auto& triggers = distillery.Tables().TriggerParam;
    triggers.ReadTable(CParameterLake::Lake());
    CQtParamInstance instance(&distillery);
    CTriggerStore const store(instance);

    std::vector<Row> table;
    for (auto const& [key, row] : triggers)
        table.push_back({{key[0], key[1], key[2]},
                         row.get<"kind">(),
                         row.get<"start">(),
                         row.get<"stop">(),
                         row.get<"step">()});
    std::size_t checked = 0;
    for (Row const& row : table) {
        if (++checked > most_rows)
            break;
        CTriggerStore::CInterval const interval = triggers.find({row.key[0], row.key[1], row.key[2]})->second;
        auto const model = trigger_model::IntervalOf(row);
        fuzz::Expect(AreSame(interval, model), "the interval of the model");
        CheckDimension(interval, model);
        CTriggerStore::CInterval set;
        set.set(row.start, row.step, row.stop);
        fuzz::Expect(AreSame(set, trigger_model::IntervalSet(row.start, row.step, row.stop)),
                     "the interval that is set in the model");
        for (int const beside : {-1, 0, 1}) // of 64 bits, as a neighbour may leave 32
            CheckTrigger(
                store, table, row.key[0],
                static_cast<int>(static_cast<unsigned int>(row.key[1]) + static_cast<unsigned int>(beside)));
    }
    fuzz::Answers answers;
    fuzz::AskTriggers(instance, fuzz::KnownIds(instance), answers);
    return 0;
}
