// The ratio of two speeds: an exact fraction while that is possible, a floating number otherwise.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstdint>

namespace numeric {

class PARAMDB_API CRatio {
public:
    // A ratio known as a floating number only.
    explicit CRatio(double value = 0.0) : m_value(value) {}
    // The fraction numerator / denominator, kept in lowest terms with a positive denominator. A denominator
    // of 0 gives the ratio 0.0.
    CRatio(std::int64_t numerator, std::int64_t denominator);

    // Whether the ratio is a fraction; numerator and denominator are 0 where it is not.
    bool is_exact() const { return m_denominator != 0; }
    std::int64_t numerator() const { return m_numerator; }
    std::int64_t denominator() const { return m_denominator; }
    double value() const { return m_value; }

    // The quotient: exact if both are and its terms fit 64 bits. Dividing by zero gives the ratio 0.0.
    friend PARAMDB_API CRatio operator/(CRatio const& left, CRatio const& right);
    // Equal values of one kind.
    friend bool operator==(CRatio const& left, CRatio const& right) = default;

private:
    std::int64_t m_numerator = 0;
    std::int64_t m_denominator = 0;
    double m_value;
};

} // namespace numeric
