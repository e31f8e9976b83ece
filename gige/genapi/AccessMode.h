#ifndef TELVO_GIGE_GENAPI_ACCESSMODE_H
#define TELVO_GIGE_GENAPI_ACCESSMODE_H

#include "GenApiStatus.h"

#include <cstdint>

namespace gige::genapi
{

/// In the order of the numbers by which formulas know them: 0 to 4.
enum class AccessMode : std::uint8_t {
    NotImplemented,
    NotAvailable,
    WriteOnly,
    ReadOnly,
    ReadWrite,
};

/// What both modes allow: ReadOnly and WriteOnly together leave NotAvailable.
AccessMode intersect(AccessMode first, AccessMode second);

/// The mode of a locked node: nothing can be written.
AccessMode lock(AccessMode mode);

/// Ok, or why a node of this mode cannot be read or written.
Status readability(AccessMode mode);
Status writability(AccessMode mode);

} // namespace gige::genapi

#endif
