#include "sectrix/sections/cross_section.h"

namespace qel::Sectrix {

// The objects that loading the library builds. They stand in one file because only within a file is the order
// fixed: built in this order, destroyed in reverse.
CSPosition CSPositions::m_invalidPosition;
CSPositions const Loop::m_emptyPositions;
CSPositions CrossSection::m_emptyPositions;

} // namespace qel::Sectrix
