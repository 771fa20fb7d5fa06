// Copyright Orvane. All Rights Reserved.

#pragma once

#include <cstddef>
#include <cstdint>

// The headless engine targets Linux only; these mirror the engine's Linux platform choices.
#ifndef PLATFORM_LINUX
#define PLATFORM_LINUX 1
#endif
#ifndef PLATFORM_WINDOWS
#define PLATFORM_WINDOWS 0
#endif
#ifndef PLATFORM_MAC
#define PLATFORM_MAC 0
#endif
#ifndef PLATFORM_64BITS
#define PLATFORM_64BITS 1
#endif
#ifndef PLATFORM_TCHAR_IS_CHAR16
#define PLATFORM_TCHAR_IS_CHAR16 1
#endif
#define PLATFORM_LITTLE_ENDIAN 1

// Fixed-width integer types.
typedef std::uint8_t uint8;
typedef std::uint16_t uint16;
typedef std::uint32_t uint32;
typedef std::uint64_t uint64;
typedef std::int8_t int8;
typedef std::int16_t int16;
typedef std::int32_t int32;
typedef std::int64_t int64;
typedef std::size_t SIZE_T;
typedef std::ptrdiff_t SSIZE_T;
typedef std::uintptr_t UPTRINT;
typedef std::intptr_t PTRINT;

// Character types. On Linux the engine uses 16-bit UTF-16 code units for TCHAR.
typedef char ANSICHAR;
typedef char16_t WIDECHAR;
typedef char8_t UTF8CHAR;
typedef char16_t UTF16CHAR;
typedef char32_t UTF32CHAR;
typedef WIDECHAR TCHAR;

#define TEXT_PASTE(x) u##x
#define TEXT(x) TEXT_PASTE(x)

#define FORCEINLINE inline __attribute__((always_inline))
#define FORCENOINLINE __attribute__((noinline))
#define UE_NODISCARD [[nodiscard]]
#define UE_NORETURN [[noreturn]]
#define DLLEXPORT __attribute__((visibility("default")))
#define DLLIMPORT __attribute__((visibility("default")))
#define LIKELY(x) __builtin_expect(!!(x), 1)
#define UNLIKELY(x) __builtin_expect(!!(x), 0)
#define PLATFORM_BREAK() __builtin_trap()
#define UE_DEBUG_BREAK() ((void)0)
#define PRAGMA_DISABLE_DEPRECATION_WARNINGS \
	_Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wdeprecated-declarations\"")
#define PRAGMA_ENABLE_DEPRECATION_WARNINGS _Pragma("GCC diagnostic pop")
#define PREPROCESSOR_TO_STRING_INNER(x) #x
#define PREPROCESSOR_TO_STRING(x) PREPROCESSOR_TO_STRING_INNER(x)
#define PREPROCESSOR_JOIN_INNER(x, y) x##y
#define PREPROCESSOR_JOIN(x, y) PREPROCESSOR_JOIN_INNER(x, y)

#define UE_DEPRECATED(Version, Message)                                                                             \
	[[deprecated(Message " Please update your code to the new API before upgrading to the next release, otherwise " \
						 "your project will no longer compile.")]]

static_assert(sizeof(TCHAR) == 2, "The headless engine uses 16-bit TCHAR, as the engine does on Linux.");
