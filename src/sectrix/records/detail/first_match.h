#pragma once

#include "sectrix/records/tables.h"

#include <string>

/// \file
/// The steps of a pull that the records have in common.

namespace qel::Sectrix {

// By their numbers, since a host's own enumerations may have other names for them.
inline constexpr auto kEqual = gvs::ExprBuilder::ComparisonOps(0);
inline constexpr auto kAnd = gvs::ExprBuilder::LogicalOps(0);

/// Pushes the condition that `column` is equal to `value`.
inline void PushEqual(gvs::ExprBuilder& builder, wchar_t const* column, gvs::Value const& value) {
    builder.Identifier(column);
    builder.Constant(value);
    builder.CmpOp(kEqual);
}

/// What `getBlobText` gives, in `out`, whose memory is used again.
void ReadBlob(mvq::DbTable const& table, wchar_t const* column, std::string& out);

/// Replaces `out` by what `read` makes of the column "DATA" in the first row that matches; leaves it empty when
/// none does. Which of several rows comes first is the database's choice.
template <class Read>
void ReadFirstMatch(mvq::DbTable& table, gvs::Expression const& filter, Read read, std::string& out) {
    table.querySequential(&filter, nullptr, true);
    if (table.readNext())
        read(table, L"DATA", out);
    else
        out.clear();
}

} // namespace qel::Sectrix
