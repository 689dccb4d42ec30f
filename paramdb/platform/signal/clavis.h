// The six-part key of the measurement data, and the words for its elements.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>

#include <array>
#include <compare>
#include <cstddef>

namespace Clavis {

// The order of the elements in every key of this kind.
enum qOrder {
    qMode = 0,
    qInstrument,
    qChannel,
    qLocation,
    qInstrParam,
    qSignal,
};

inline constexpr int ElementCount = 6;

// The word for an element. Form 0 is the technical word ("Mode"), the same in every language; 1 is the
// singular for the screen ("Test step"), 2 the plural ("Test steps"), both in the language of CLibMgr. Any
// other element or form gives an empty text. Any thread.
[[nodiscard]] PARAMDB_API CString ElementName(int element, int form);

} // namespace Clavis

// The plain form of a key: six ints in the order of Clavis::qOrder, -1 for an element that is not set.
struct SClavis {
    int elements[Clavis::ElementCount] = {-1, -1, -1, -1, -1, -1};

    [[nodiscard]] int operator[](int element) const noexcept { return elements[element]; }
    [[nodiscard]] int& operator[](int element) noexcept { return elements[element]; }
};

// Six ints in the order of Clavis::qOrder; -1 is an element that is not set, or any value in a pattern.
class PARAMDB_API CClavis {
public:
    CClavis() noexcept { m_elements.fill(-1); }
    CClavis(int mode, int instrument, int channel, int location, int parameter, int signal) noexcept
        : m_elements{mode, instrument, channel, location, parameter, signal} {}

    // From six ints in order; they are copied.
    explicit CClavis(int const* elements) noexcept;

    // One element; `element` must be one of Clavis::qOrder.
    [[nodiscard]] int operator[](int element) const noexcept {
        return m_elements[static_cast<std::size_t>(element)];
    }
    [[nodiscard]] int& operator[](int element) noexcept {
        return m_elements[static_cast<std::size_t>(element)];
    }

    // Whether this key as a pattern fits a concrete one: -1 here fits any value there, any other value itself
    // alone.
    [[nodiscard]] bool Matches(CClavis const& concrete) const noexcept;

    // Element by element from the first, as signed numbers; -1 has no special meaning.
    friend bool operator==(CClavis const&, CClavis const&) noexcept = default;
    friend std::strong_ordering operator<=>(CClavis const&, CClavis const&) noexcept = default;

private:
    std::array<int, Clavis::ElementCount> m_elements;
};
