// Virtual modes: layouts of any parameters, taken apart, packed and named as the model of the tests does it.
#include <paramdb/distillery/signal_unit.h>
#include <paramdb/storage/parameter_lake.h>

#include "support/custom_mutator.h"
#include "support/expect.h"
#include "support/input.h"
#include "support/loading.h"
#include "support/message_watch.h"
#include "support/query_sweep.h"

#include <limits>
#include <set>
#include <tests/distillery/mode_model.h>

namespace {

// The model goes through all parameters for each parameter.
constexpr std::size_t MostParams = 40;

ModeModel ModelOf(CParamTables& tables) {
    ModeModel model;
    for (auto const& [order, row] : tables.AutoModeParamOrder)
        model.order_rows[order[0]] = row.get<"signal">();
    for (auto const& [signal, row] : tables.AutoModeParam)
        model.param_rows[signal[0]] = {signal[0], row.get<"start">(), row.get<"stop">(), row.get<"step">(),
                                       row.get<"state">() != 0};
    for (auto const& [mode, name] : tables.Mode)
        model.mode_names[mode[0]] = static_cast<wchar_t const*>(name);
    for (auto const& [mode, row] : tables.ModeProperty)
        model.physical_modes[mode[0]] = row.get<"physical_mode">();
    for (auto const& [mode, name] : tables.PhysMode)
        model.physical_names[mode[0]] = static_cast<wchar_t const*>(name);
    for (auto& [signal, row] : tables.AppSignalProperty)
        model.units[signal[0]] = paramdb::UnitTextOf(row).c_str();
    return model;
}

std::vector<int> IdsToAsk(fuzz::KnownIds const& ids, ModeModel const& model) {
    std::vector<int> asked = ids.Of("mode", 8);
    std::vector<int> const bases = asked;
    for (int round = 0; round < 24; ++round) {
        std::vector<int> intervals;
        std::vector<int> states;
        for (auto const& param : model.params()) {
            int const limit = 1 << std::min(param.bits, 20);
            intervals.push_back(round == 0 ? limit - 2 : round * 7 % limit - 1);
            states.push_back((round + static_cast<int>(states.size())) % 4);
        }
        int const base = bases[static_cast<std::size_t>(round) % bases.size()];
        asked.push_back(model.Generate(base, model.Pack(intervals, round % 3 == 0 ? nullptr : &states)));
    }
    for (int const odd : {1, -2, std::numeric_limits<int>::min() + 1, 1 << 30, 0x55555555})
        asked.push_back(odd);
    return asked;
}

bool HasOwnSignals(ModeModel const& model) {
    std::set<int> signals;
    for (auto const& param : model.params())
        signals.insert(param.signal);
    return signals.size() == model.params().size();
}

void Compare(CQtParamInstance const& instance, ModeModel const& model, std::vector<int> const& ids) {
    for (int const id : ids) {
        fuzz::Expect(instance.VirtMode2BaseMode(id) == model.Base(id), "the base mode of the model");
        fuzz::Expect(instance.VirtModeExtension(id) == model.Extension(id), "the extension of the model");
        fuzz::Expect(instance.IsVirtualMode(id) == model.IsVirtual(id), "as virtual as in the model");
        fuzz::Expect(instance.IsValidVirtualMode(id) == model.IsValid(id), "as valid as in the model");
        fuzz::Expect(instance.PhysModeId(id) == (id == -1 ? -1 : model.PhysicalMode(id)),
                     "the physical mode of the model");
        fuzz::Expect(instance.VirtModeName(id).GetString() == model.VirtualName(id), "the name of the model");
        fuzz::Expect(instance.ModeName(id) == model.Name(id), "the name of the model, cut");
        int const extension = model.Extension(id);
        fuzz::Expect(instance.VirtModeGenerateId(model.Base(id), extension) ==
                         model.Generate(model.Base(id), extension),
                     "the id of the model");
    }
}

} // namespace

fuzz::Tags const& fuzz::MutatorTags() {
    static Tags const tags{"<TMode>",          "<TModeProperty>",       "<TPhysMode>",
                           "<TAutoModeParam>", "<TAutoModeParamOrder>", "<TAppSignalProperty>",
                           "<TAutoModeParam>", "<TAutoModeParamOrder>"};
    return tags;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::MessageWatch messages;
    fuzz::FillLake(fuzz::TextOf(data, size));
    CQtParamDistillery distillery;
    CParamTables& tables = distillery.Tables();
    for (CQParamSeaTable* const table : std::initializer_list<CQParamSeaTable*>{
             &tables.Mode, &tables.ModeProperty, &tables.PhysMode, &tables.AutoModeParam,
             &tables.AutoModeParamOrder, &tables.AppSignalProperty})
        table->ReadTable(CParameterLake::Lake());
    bool const is_built = distillery.DerivedInfo().BuildDerivedInfo();
    CQtParamInstance instance(&distillery);
    fuzz::KnownIds const ids(instance);
    fuzz::Answers answers;
    fuzz::AskModes(instance, ids, answers);
    if (tables.AutoModeParam.size() > MostParams || tables.AutoModeParamOrder.size() > MostParams)
        return 0;

    ModeModel model = ModelOf(tables);
    bool const combines = model.Combine();
    fuzz::Expect(instance.AutoModeParams().size() == model.params().size(), "the parameters of the model");
    fuzz::Expect(combines || model.params().empty(), "no parameters of tables that do not fit");
    fuzz::Expect(is_built == model.HasRoom(), "as much room as in the model");
    auto const asked = IdsToAsk(ids, model);
    Compare(instance, model, asked);

    // The tables made anew give the same layout, unless parameters share a signal, which has one row then.
    distillery.DerivedInfo().ModeInfo().WriteTables();
    bool const is_built_again = distillery.DerivedInfo().BuildDerivedInfo();
    if (!HasOwnSignals(model))
        return 0;
    fuzz::Expect(is_built_again == is_built, "the same layout again");
    if (combines)
        Compare(instance, model, asked);
    for (int const id : asked) {
        bool const is_there = instance.IsValidMode(id);
        fuzz::Expect(instance.AddVMode(id) == model.IsVirtual(id), "a virtual mode added");
        fuzz::Expect(instance.AddVModeName(id, L"late") == false, "no mode added twice");
        fuzz::Expect(instance.IsValidMode(id) == (is_there || model.IsVirtual(id)),
                     "the mode that was added");
    }
    return 0;
}
