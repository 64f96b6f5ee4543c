#pragma once

/// \file
/// Included by every source file whose result depends on the order of a sum or on how not-a-number compares.

#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__) || defined(__RECIPROCAL_MATH__) ||                     \
    (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__) || defined(_M_FP_FAST)
#error "The answers are defined bit for bit: build without -ffast-math, /fp:fast and their like."
#endif

#if defined(_MSC_VER) && !defined(__clang__)
#pragma fp_contract(off) // what -ffp-contract=off says to the others
#endif
