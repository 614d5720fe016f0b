// Whether the test runs under a checker that changes how memory behaves.
#ifndef TESTS_SUPPORT_SYSTEM_SANITIZERS_H
#define TESTS_SUPPORT_SYSTEM_SANITIZERS_H

#ifndef __has_feature
#define __has_feature(feature) 0
#endif

#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
inline constexpr bool kAddressSanitizer = true;
#else
inline constexpr bool kAddressSanitizer = false;
#endif

#if defined(__SANITIZE_THREAD__) || __has_feature(thread_sanitizer)
inline constexpr bool kThreadSanitizer = true;
#else
inline constexpr bool kThreadSanitizer = false;
#endif

#endif
