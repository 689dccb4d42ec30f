// An interval of a spectrum as an order definition tells it: two positions, each a sum of terms.
#pragma once

#include <paramdb/keys/value_base.h>

#include <cstdint>
#include <tuple>

class QVSpecIntervalEntry : public QValueBase {
public:
    // Which terms a position has: bit 0 for a frequency, bit 1 for an order, a modulation or a harmonic.
    using domain_t = std::int32_t;
    static constexpr domain_t FrequencyDomain = 1;
    static constexpr domain_t OrderDomain = 2;
    static constexpr domain_t MixedDomain = 3;

    class Definition {
    public:
        float& frequency() { return m_frequency; } // Hz
        float frequency() const { return m_frequency; }
        float& order() { return m_order; }
        float order() const { return m_order; }
        float& harmonic() { return m_harmonic; } // multiple of the base order
        float harmonic() const { return m_harmonic; }
        float& modulation() { return m_modulation; }
        float modulation() const { return m_modulation; }
        int& lines() { return m_lines; } // spectral lines
        int lines() const { return m_lines; }
        domain_t& domain() { return m_domain; }
        domain_t domain() const { return m_domain; }

        // Sets every field to 0.
        void clear() { *this = Definition(); }

        auto tuple() { return std::tie(m_frequency, m_order, m_harmonic, m_modulation, m_lines, m_domain); }
        auto tuple() const {
            return std::tie(m_frequency, m_order, m_harmonic, m_modulation, m_lines, m_domain);
        }
        friend bool operator==(Definition const&, Definition const&) = default;

    private:
        float m_frequency = 0;
        float m_order = 0;
        float m_harmonic = 0;
        float m_modulation = 0;
        std::int32_t m_lines = 0;
        domain_t m_domain = 0;
    };

    QVSpecIntervalEntry() = default;
    QVSpecIntervalEntry(Definition const& lower, Definition const& upper) : m_lower(lower), m_upper(upper) {}

    Definition& lower() { return m_lower; }
    Definition const& lower() const { return m_lower; }
    Definition& upper() { return m_upper; }
    Definition const& upper() const { return m_upper; }

    // The fields of the lower, then of the upper position.
    auto tuple() { return std::tuple_cat(m_lower.tuple(), m_upper.tuple()); }
    auto tuple() const { return std::tuple_cat(m_lower.tuple(), m_upper.tuple()); }

private:
    Definition m_lower;
    Definition m_upper;
};
