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

/// What `read` makes of the column "DATA" in the first row that matches; empty when none does. Which of several
/// rows comes first is the database's choice.
template <class Read>
std::string ReadFirstMatch(mvq::DbTable& table, gvs::Expression const& filter, Read read) {
    table.querySequential(&filter, nullptr, true);
    return table.readNext() ? read(table, L"DATA") : std::string();
}

} // namespace qel::Sectrix
