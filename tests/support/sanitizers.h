// Whether a sanitizer watches this build, or counts are taken of what it runs. Both make everything several times
// slower and sanitizers make it larger too, so tests of great depths and of times allow for it.
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

#if defined(ONDREL_COVERAGE)
inline constexpr bool kSlowed = true;
#else
inline constexpr bool kSlowed = kSanitized;
#endif

}  // namespace ondrel::test
