// Whether the program is built with the address sanitizer, which makes everything slower and keeps freed
// memory for a while.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool IsSanitized = true;
#elif defined(__has_feature)
inline constexpr bool IsSanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool IsSanitized = false;
#endif
