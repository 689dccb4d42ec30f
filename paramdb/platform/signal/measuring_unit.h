// A unit of measurement with its prefix.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>

class PARAMDB_API CMeasuringUnit {
public:
    // No unit.
    CMeasuringUnit() = default;
    // One of the common units, 0 for none or 2 to 30, with a power of ten as prefix, 0 for none. Any other
    // unit has an empty text; any other power that has no SI letter counts as 0. Short value, factor and
    // flags are the host's and have no bearing on the text.
    CMeasuringUnit(int unit, int prefix, short value = 1, double factor = 1.0, unsigned int flags = 0);

    // The same as constructing anew.
    void set(int unit, int prefix, short value = 1, double factor = 1.0, unsigned int flags = 0) {
        *this = CMeasuringUnit(unit, prefix, value, factor, flags);
    }

    // Takes a text: what prefixunit() writes for a common unit is recognised, any other text is kept as it
    // is.
    void set(wchar_t const* text);

    // Code and power of ten of a common unit; a text that is none has the unit -1.
    int unit() const { return m_unit; }
    int prefix() const { return m_prefix; }
    short value() const { return m_value; }
    double factor() const { return m_factor; }
    unsigned int flags() const { return m_flags; }

    // Prefix and unit as one text such as "kHz", in brackets if wanted: "[kHz]". No brackets around nothing.
    CString prefixunit(bool with_brackets) const;

private:
    int m_unit = 0;
    int m_prefix = 0;
    short m_value = 1;
    double m_factor = 1.0;
    unsigned int m_flags = 0;
    CString m_text; // of a unit that is not common
};
