// A plain model of virtual modes, against which the library is compared on random data.
//
// It works with powers of two in 64 bits and rounds to 32 in the end, and goes through the parameters one by
// one for every question.
#pragma once

#include <paramdb/distillery/auto_mode_naming.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

struct ModelParam {
    int signal = -1;
    float start = 0;
    float stop = 0;
    float step = 0;
    bool has_state = false;
    int bits = 0; // of the interval field
};

class ModeModel {
public:
    // The rows of the tables.
    std::map<int, int> order_rows;        // order key to signal
    std::map<int, ModelParam> param_rows; // by signal
    std::map<int, std::wstring> mode_names;
    std::map<int, int> physical_modes; // by mode
    std::map<int, std::wstring> physical_names;
    std::map<int, std::wstring> units; // by signal, as they are shown
    CAutoModeNaming naming;

    // Makes the parameters from the rows; false if they do not fit together, then there are none.
    bool Combine();
    // Whether the ids of the modes leave room for the extension.
    bool HasRoom() const;

    std::vector<ModelParam> const& params() const { return m_params; }
    int StateBits() const;
    int ExtensionBits() const;
    std::uint32_t Mask() const;

    int Base(int id) const;
    int Extension(int id) const;
    int Pack(std::vector<int> const& intervals, std::vector<int> const* states) const;
    int Generate(int mode, int extension) const;
    bool IsVirtual(int id) const;
    bool IsValid(int id) const;
    int PhysicalMode(int id) const;

    int State(std::size_t param, int extension) const;
    // The interval of a parameter, counted from 0; nothing where the field is 0.
    std::optional<int> Interval(std::size_t param, int id) const;

    std::wstring BaseName(int extension, int physical_mode) const;
    std::wstring VirtualName(int id) const;
    std::wstring Name(int id) const;

    static int IntervalBits(float start, float stop, float step);

private:
    std::wstring Label(int signal, int state) const;
    std::wstring Fragment(int param, int id) const;

    std::vector<ModelParam> m_params;
};
