// The plain type names of the framework that hosts and the library use in their signatures.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(_WIN32)
using LONG = long;
using DWORD = unsigned long;
#else
using __int64 = long long; // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): built in elsewhere
using LONG = std::int32_t;
using DWORD = std::uint32_t;
#endif

using BOOL = int;
using BYTE = unsigned char;
using WORD = std::uint16_t;
using UINT = unsigned int;
using INT_PTR = __int64;
using UINT_PTR = std::uintptr_t;
using LONGLONG = __int64;
using ULONGLONG = unsigned long long;
using WPARAM = UINT_PTR;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using TCHAR = char;
using LPSTR = char*;
using LPCSTR = const char*;
using LPTSTR = char*;
using LPCTSTR = const char*;

#if !defined(TRUE)
inline constexpr BOOL TRUE = 1;
#endif
#if !defined(FALSE)
inline constexpr BOOL FALSE = 0;
#endif
