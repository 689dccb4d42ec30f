#include "mode_world.h"

#include <paramdb/platform/signal/measuring_unit.h>

#include <sstream>
#include <tests/support/extremes.h>

void ModeWorld::Renew() {
    own.Clear();
    model = ModeModel();
    AddModes();
    AddParams();
    AddNaming();
}

void ModeWorld::AddModes() {
    static constexpr int ids[] = {0,  1,    2,    3,       7,           8,       9,  31,
                                  64, 1000, 4096, Highest, Highest - 1, 1 << 29, -3, Lowest};
    for (int count = Below(5); count > 0; --count) {
        int const mode = Below(4) > 0 ? Below(10) : Pick(ids);
        std::wstring const name = L"mode " + std::to_wstring(mode);
        if (own.tables().Mode.Add(mode, name.c_str()))
            model.mode_names[mode] = name;
        int const physical_mode = Below(4) - 1;
        if (own.tables().ModeProperty.insert({mode, QVModeProps(physical_mode, 0, 0, 0)}).second)
            model.physical_modes[mode] = physical_mode;
    }
    for (int physical_mode = 0; physical_mode < 2; ++physical_mode) {
        std::wstring const name = L"P" + std::to_wstring(physical_mode);
        own.tables().PhysMode.Add(physical_mode, name.c_str());
        model.physical_names[physical_mode] = name;
    }
}

void ModeWorld::AddParams() {
    static constexpr float nasty[] = {0.0f,       -0.0f,   1.0f,     -1.0f,  Infinite, -Infinite,
                                      NotANumber, Largest, -Largest, 1e-45f, 1e9f,     4e9f};
    static constexpr int odd_orders[] = {-1, Lowest, Highest, 6, 100};
    static constexpr int unit_codes[] = {0, 1, 2, 6, 7, 30, 31, -1};
    int const count = Below(5);
    bool const is_nasty = Below(4) == 0;
    for (int place = 0; place < count; ++place) {
        int const order = Below(12) > 0 ? place : Pick(odd_orders);
        int const signal = Below(40) > 0 ? place * 10 : Below(4) * 10 - 10;
        float start = static_cast<float>(Below(20));
        float stop = start + static_cast<float>(Below(40));
        float step = 0.5f * static_cast<float>(1 + Below(8));
        if (is_nasty) {
            float* const values[] = {&start, &stop, &step};
            *Pick(values) = Pick(nasty);
        }
        int const state = Below(3) - 1;
        if (own.tables().AutoModeParamOrder.try_emplace(order, signal).second)
            model.order_rows[order] = signal;
        if (Below(60) > 0) {
            own.AddParameterRow(signal, start, stop, step, state);
            model.param_rows.try_emplace(signal, ModelParam{signal, start, stop, step, state != 0, 0});
        }
        int const code = Pick(unit_codes);
        int const prefix = Below(5) - 1;
        if (Below(5) == 0)
            continue;
        own.AddSignal(signal, L"stored", code, prefix);
        bool const is_stored = code != 0 && (code < 2 || code > 30);
        model.units.try_emplace(signal, is_stored
                                            ? L"stored"
                                            : CMeasuringUnit(code, prefix == 1 || prefix == -1 ? 0 : prefix)
                                                  .prefixunit(false)
                                                  .GetString());
    }
}

void ModeWorld::AddNaming() {
    if (Below(3) > 0) {
        model.naming.IndexedSuffix = L"<indexed>";
        model.naming.StateFallText = Below(2) > 0 ? L"" : L"fall";
    }
    if (Below(5) == 0)
        model.naming.SeparatorText = std::wstring(static_cast<std::size_t>(480 + Below(30)), L'=');
    for (int signal = 0; signal < 50; signal += 10)
        if (Below(2) > 0)
            model.naming.ParamTexts[signal] = {Below(4) - 1, L"[" + std::to_wstring(signal) + L"]"};
    own.instance().SetAutoModeNaming(model.naming);
}

bool ModeWorld::Build(bool& combines) {
    combines = model.Combine();
    return own.Build() == model.HasRoom();
}

std::wstring ModeWorld::Describe() const {
    std::wostringstream text;
    text << L"modes:";
    for (auto const& [mode, name] : model.mode_names)
        text << L' ' << mode;
    text << L"; orders:";
    for (auto const& [order, signal] : model.order_rows)
        text << L' ' << order << L"->" << signal;
    text << L"; parameters:";
    for (auto const& [signal, param] : model.param_rows)
        text << L' ' << signal << L":(" << param.start << L' ' << param.stop << L' ' << param.step << L' '
             << param.has_state << L')';
    return text.str();
}

int ModeWorld::AnyId() {
    static constexpr int ids[] = {-1, 0, 1, -2, Highest, Lowest, Lowest + 1};
    switch (Below(5)) {
    case 0:
        return Pick(ids);
    case 1:
        return AnyInt();
    case 2:
        return Below(12);
    default: {
        auto const states = States(false);
        return model.Generate(Below(10), model.Pack(Intervals(Below(8) == 0), &states));
    }
    }
}

std::vector<int> ModeWorld::Intervals(bool wild) {
    std::vector<int> intervals;
    for (auto const& param : model.params())
        intervals.push_back(wild ? AnyInt() : Below(1 << std::min(param.bits, 20)) - 1);
    return intervals;
}

std::vector<int> ModeWorld::States(bool wild) {
    std::vector<int> states;
    for (std::size_t place = 0; place < model.params().size(); ++place)
        states.push_back(wild ? AnyInt() : Below(4));
    return states;
}
