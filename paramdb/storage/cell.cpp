#include <paramdb/platform/numeric/truncate.h>
#include <paramdb/storage/cell.h>

#include <type_traits>

namespace ParamDb {
template <class Integer>
Integer ToInteger(cell_t const& cell) {
    return std::visit(
        [](auto const& value) -> Integer {
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_integral_v<Value>) {
                auto const result = static_cast<Integer>(value);
                if (sizeof(Value) <= sizeof(Integer) || static_cast<Value>(result) == value)
                    return result;
            } else if constexpr (std::is_floating_point_v<Value>) {
                auto const result = static_cast<Integer>(numeric::Truncate64(value));
                if (static_cast<Value>(result) == value)
                    return result;
            }
            throw std::bad_variant_access();
        },
        cell);
}

template std::int32_t ToInteger(cell_t const&);
template std::uint32_t ToInteger(cell_t const&);
template std::int64_t ToInteger(cell_t const&);

template <class Float>
Float ToFloat(cell_t const& cell) {
    return std::visit(
        [](auto const& value) -> Float {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
                return static_cast<Float>(value);
            else
                throw std::bad_variant_access();
        },
        cell);
}

template float ToFloat(cell_t const&);
template double ToFloat(cell_t const&);

std::wstring const& ToText(cell_t const& cell) {
    return std::get<std::wstring>(cell);
}

} // namespace ParamDb
