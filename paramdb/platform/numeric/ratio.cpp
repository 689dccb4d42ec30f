#include <paramdb/platform/numeric/ratio.h>

#include <limits>
#include <numeric>

namespace numeric {
namespace {

constexpr std::uint64_t Largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());

std::uint64_t Magnitude(std::int64_t value) {
    return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
}

// The product of two magnitudes, or 0 if it does not fit.
std::uint64_t Product(std::uint64_t left, std::uint64_t right) {
    return left == 0 || right > Largest / left ? 0 : left * right;
}

} // namespace

CRatio::CRatio(std::int64_t numerator, std::int64_t denominator) : CRatio(0.0) {
    if (denominator == 0)
        return;
    m_value = static_cast<double>(numerator) / static_cast<double>(denominator);
    std::uint64_t const divisor = std::gcd(Magnitude(numerator), Magnitude(denominator));
    std::uint64_t const over = Magnitude(numerator) / divisor;
    std::uint64_t const under = Magnitude(denominator) / divisor;
    if (over > Largest || under > Largest)
        return;
    bool const negative = (numerator < 0) != (denominator < 0);
    m_numerator = negative ? -static_cast<std::int64_t>(over) : static_cast<std::int64_t>(over);
    m_denominator = static_cast<std::int64_t>(under);
    m_value = static_cast<double>(m_numerator) / static_cast<double>(m_denominator);
}

CRatio operator/(CRatio const& left, CRatio const& right) {
    if (right.value() == 0.0)
        return CRatio(0.0);
    if (!left.is_exact() || !right.is_exact())
        return CRatio(left.value() / right.value());
    if (left.m_numerator == 0)
        return left;
    // Crosswise reduction first, so that a product leaves 64 bits only if the result does.
    CRatio const outer(left.m_numerator, right.m_numerator);
    CRatio const inner(right.m_denominator, left.m_denominator);
    std::uint64_t const over = Product(Magnitude(outer.m_numerator), Magnitude(inner.m_numerator));
    std::uint64_t const under = Product(Magnitude(outer.m_denominator), Magnitude(inner.m_denominator));
    if (over == 0 || under == 0)
        return CRatio(left.value() / right.value());
    auto const numerator = static_cast<std::int64_t>(over);
    return CRatio(outer.m_numerator < 0 ? -numerator : numerator, static_cast<std::int64_t>(under));
}

} // namespace numeric
