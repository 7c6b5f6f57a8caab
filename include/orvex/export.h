/** \file
 * Export and calling-convention macros of the public interface, for C as well. */
#pragma once

/** \addtogroup export
 * \{ */

/** ORVEX_API marks what the library exports. Define ORVEX_STATIC when linking the static library. */
#if defined(ORVEX_STATIC)
#define ORVEX_API
#elif defined(_WIN32)
#if defined(ORVEX_BUILDING)
#define ORVEX_API __declspec(dllexport)
#else
#define ORVEX_API __declspec(dllimport)
#endif
#else
#define ORVEX_API __attribute__((visibility("default")))
#endif

/** Calling convention of every exported function and of every callback. */
#if defined(_WIN32) && !defined(_WIN64)
#define ORVEX_CALL __cdecl
#else
#define ORVEX_CALL
#endif

/** \} */
