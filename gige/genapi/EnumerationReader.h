#ifndef TELVO_GIGE_GENAPI_ENUMERATIONREADER_H
#define TELVO_GIGE_GENAPI_ENUMERATIONREADER_H

#include "ElementReader.h"
#include "EnumerationNode.h"

namespace gige::genapi
{

/// Reads an Enumeration with its entries. An entry without a name or value is left out.
void readEnumeration(ElementReader& reader, EnumerationNode& node);

} // namespace gige::genapi

#endif
