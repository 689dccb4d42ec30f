// The parameter data that the tests of the controls work on, and their surroundings put back in order.
#pragma once

#include <paramdb/platform/framework/message_queue.h>
#include <paramdb/platform/framework/sys_color.h>
#include <paramdb/query/param_instance.h>

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <tests/support/messages.h>
#include <tests/support/sources.h>

// Plain data, from which a lake is written and against which a control is judged.
struct ControlWorld {
    struct Parameter {
        int instrument;
        std::wstring name;
    };

    // By element; that of the parameters stays empty. Virtual modes are added after the load.
    std::map<int, std::wstring> names[6];
    std::map<int, Parameter> parameters;
    std::map<int, unsigned int> mode_flags;
    std::map<int, unsigned int> location_flags;
    std::map<int, int> signal_types; // of the signals that have a name, 0 for one that is missing here

    std::string Lake() const;

    // A mode with an extension, in the layout of the lake's one grid parameter.
    static int VirtualMode(int mode, int interval) { return mode + ((interval + 1) << 27); }

    // What a control has to know of a mode, told without the library.
    bool IsHidden(int mode) const;
    static bool IsVirtual(int mode) { return mode != -1 && (mode >> 27) != 0; }
    // Whether a value passes a mask, also.
    bool Passes(int element, int id, unsigned int mask) const;

    // The text of FormatInstrParamText for a parameter.
    std::wstring ParameterText(int parameter) const;
    std::wstring InstrumentName(int instrument) const;

    static ControlWorld Random(std::mt19937& random);
};

class ControlTest : public LoadTest {
protected:
    ControlTest();
    ~ControlTest() override;

    void Load(ControlWorld const& world);

    MessageLog messages;
};
