#pragma once

/// \file
/// Included by every source file whose result depends on the order of a sum or on how not-a-number compares.

#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__) || defined(__RECIPROCAL_MATH__) ||                     \
    (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#error "The answers are defined bit for bit: build without -ffast-math and its like."
#endif
