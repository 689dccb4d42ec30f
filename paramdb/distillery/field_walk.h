// Taking the fields of all parameters from the extension of a virtual mode id. A helper of CQtModeInfo.
#pragma once

#include <paramdb/distillery/mode_info.h>

#include <algorithm>
#include <cstddef>

class CQtModeInfo::FieldWalk {
public:
    // Stands at the first parameter.
    FieldWalk(CAutoModeParamMap const& params, int extension, int state_bits)
        : m_param(params.begin()), m_end(params.end()), m_states(extension),
          m_intervals(extension >> (static_cast<unsigned int>(state_bits) & 31)) {
        for (auto const& [order, later] : params)
            CountLater(later, 1);
        SkipOwn();
    }

    bool AtEnd() const { return m_param == m_end; }
    std::size_t Position() const { return m_position; }
    CVAutoModeParams const& Params() const { return m_param->second; }

    void Next() {
        ++m_param;
        ++m_position;
        SkipOwn();
    }
    // Goes on to a parameter that is not before the present one; false, at the end, if there is none.
    bool GoTo(std::size_t position) {
        while (!AtEnd() && m_position < position)
            Next();
        return !AtEnd();
    }

    // The state of the parameter, 0 to 3; 0 for one without.
    unsigned int State() const {
        return Params().HasState ? static_cast<unsigned int>(m_states >> Shift(m_later_states)) & 3u : 0;
    }
    // The interval field of the parameter: 0, or the interval index plus 1.
    unsigned int Interval() const {
        unsigned int const width = static_cast<unsigned int>(Params().IntervalBits) & 31;
        return static_cast<unsigned int>(m_intervals >> Shift(m_later_intervals)) & ((1u << width) - 1);
    }

private:
    // Many small shifts in one: at 31 bits nothing is left but the sign.
    static unsigned int Shift(std::ptrdiff_t bits) {
        return static_cast<unsigned int>(std::min<std::ptrdiff_t>(bits, 31));
    }
    void CountLater(CVAutoModeParams const& params, std::ptrdiff_t times) {
        m_later_states += params.HasState ? times * 2 : 0;
        m_later_intervals += times * (static_cast<unsigned int>(params.IntervalBits) & 31);
    }
    void SkipOwn() {
        if (!AtEnd())
            CountLater(Params(), -1);
    }

    CAutoModeParamMap::const_iterator m_param;
    CAutoModeParamMap::const_iterator m_end;
    std::size_t m_position = 0;
    int m_states;
    int m_intervals;
    std::ptrdiff_t m_later_states = 0; // bits of the parameters behind the present one
    std::ptrdiff_t m_later_intervals = 0;
};
