#pragma once

/// \file
/// The marks of everything that the libraries export, one a library. All else is hidden.
///
/// A library of Windows tells what it exports from what it takes of another one. So each has a mark of its own,
/// which says "export" while the library itself is compiled and "import" in whatever uses it. SECTRIX_STATIC is
/// defined, also for hosts, where the libraries are static.

/// \cond
#if defined(SECTRIX_STATIC)
#define SECTRIX_EXPORTED
#define SECTRIX_IMPORTED
#elif defined(_WIN32)
#define SECTRIX_EXPORTED __declspec(dllexport)
#define SECTRIX_IMPORTED __declspec(dllimport)
#if defined(_MSC_VER)
// Members and bases of the standard library have no marks. They are the same on both sides all the same, since a
// host is built by the compiler, and with the runtime library, that has built this one.
#pragma warning(disable : 4251 4275)
#endif
#elif defined(__GNUC__)
#define SECTRIX_EXPORTED __attribute__((visibility("default")))
#define SECTRIX_IMPORTED __attribute__((visibility("default")))
#else
#define SECTRIX_EXPORTED
#define SECTRIX_IMPORTED
#endif

// The build defines a symbol called after the library and "_EXPORTS" while it compiles it.
#if defined(ORL_Sectrix_EXPORTS)
#define SECTRIX_EXPORT SECTRIX_EXPORTED
#else
#define SECTRIX_EXPORT SECTRIX_IMPORTED
#endif
#if defined(ORL_SectrixTools_EXPORTS)
#define SECTRIX_TOOLS_EXPORT SECTRIX_EXPORTED
#else
#define SECTRIX_TOOLS_EXPORT SECTRIX_IMPORTED
#endif
#if defined(ORL_Json_EXPORTS)
#define SECTRIX_JSON_EXPORT SECTRIX_EXPORTED
#else
#define SECTRIX_JSON_EXPORT SECTRIX_IMPORTED
#endif
#if defined(GvsWrap_EXPORTS)
#define SECTRIX_GVS_EXPORT SECTRIX_EXPORTED
#else
#define SECTRIX_GVS_EXPORT SECTRIX_IMPORTED
#endif
#if defined(MVQ_EXPORTS)
#define SECTRIX_MVQ_EXPORT SECTRIX_EXPORTED
#else
#define SECTRIX_MVQ_EXPORT SECTRIX_IMPORTED
#endif
/// \endcond
