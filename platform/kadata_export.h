#pragma once

// Marks what leaves the dynamic library. Everything else stays inside it: the library is built with hidden visibility.
//
// KADATA_API goes on exported classes and functions, exception classes included, so that a host can catch by type
// what the library throws. KADATA_BUILD is defined while the library itself is compiled, and only then.

#if defined(_WIN32)
#if defined(KADATA_BUILD)
#define KADATA_API __declspec(dllexport)
#else
#define KADATA_API __declspec(dllimport)
#endif
#else
#define KADATA_API __attribute__((visibility("default")))
#endif
