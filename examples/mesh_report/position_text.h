#pragma once

/// \file
/// How reports write a position.

#include "common/markup.h"
#include "sectrix/foundation/position.h"

#include <string>

namespace example {

/// Such as "(12, 0, 0.9)".
inline std::string Text(qel::Sectrix::Position const& position) {
    return '(' + Number(position.X()) + ", " + Number(position.Y()) + ", " + Number(position.Z()) + ')';
}

} // namespace example
