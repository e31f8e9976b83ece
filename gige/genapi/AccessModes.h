#ifndef TELVO_GIGE_GENAPI_ACCESSMODES_H
#define TELVO_GIGE_GENAPI_ACCESSMODES_H

#include "GenApiStatus.h"
#include "NodeInfo.h"

namespace gige::genapi
{

/// What both modes allow: ReadOnly and WriteOnly together leave NotAvailable.
[[nodiscard]] AccessMode intersect(AccessMode first, AccessMode second);

/// The mode of a locked node: nothing can be written.
[[nodiscard]] AccessMode lock(AccessMode mode);

/// Ok, or why a node of this mode cannot be read or written.
[[nodiscard]] Status readability(AccessMode mode);
[[nodiscard]] Status writability(AccessMode mode);

} // namespace gige::genapi

#endif
