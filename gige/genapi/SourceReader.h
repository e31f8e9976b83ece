/// Numbers' sources, limits and presentation out of a description's elements.
#ifndef TELVO_GIGE_GENAPI_SOURCEREADER_H
#define TELVO_GIGE_GENAPI_SOURCEREADER_H

#include "ElementReader.h"
#include "NumberNode.h"

#include <memory>

namespace gige::genapi
{

/// pValue, pIndex or Value. Null and a defect when there is none of them.
std::unique_ptr<NumberSource> readSource(ElementReader& reader, bool isInteger);

OwnLimits readLimits(ElementReader& reader, bool isInteger);

Presentation readPresentation(ElementReader& reader);

} // namespace gige::genapi

#endif
