// Whether a sanitizer watches this build. It makes everything several times slower and larger, so tests of great depths
// and of times allow for it.
#pragma once

namespace ondrel::test {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

/// The slowest of them, which watches every access of every thread.
#if defined(__SANITIZE_THREAD__)
inline constexpr bool kThreadSanitized = true;
#else
inline constexpr bool kThreadSanitized = false;
#endif

}  // namespace ondrel::test
