// All that a library answers to one input, as one number: it reads every byte of the answers, and two runs
// that should agree can be compared.
#pragma once

#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

class Answers {
public:
    template <class... Parts>
    void Take(Parts const&... parts) {
        (Add(parts), ...);
    }
    std::uint64_t Sum() const { return m_sum; }

private:
    void Mix(std::uint64_t value) { m_sum = (m_sum ^ value) * 0x100000001B3u; }

    void Add(std::integral auto value) { Mix(static_cast<std::uint64_t>(value)); }
    // Any NaN is as good as another.
    void Add(float value) { Mix(std::isnan(value) ? 1 : std::bit_cast<std::uint32_t>(value)); }
    void Add(double value) { Mix(std::isnan(value) ? 1 : std::bit_cast<std::uint64_t>(value)); }
    void Add(std::wstring_view text) {
        for (wchar_t const unit : text)
            Mix(static_cast<std::uint64_t>(unit));
        Mix(text.size());
    }
    void Add(std::wstring const& text) { Add(std::wstring_view(text)); }
    void Add(wchar_t const* text) { Add(text != nullptr ? std::wstring_view(text) : L"null"); }

    std::uint64_t m_sum = 0xCBF29CE484222325u;
};

} // namespace fuzz
