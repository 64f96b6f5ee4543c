#pragma once

/// \file
/// The mark of everything that the libraries export. All else is hidden.

#if defined(__GNUC__)
#define SECTRIX_EXPORT __attribute__((visibility("default")))
#else
#define SECTRIX_EXPORT
#endif
