/// Registers and their contents' layout out of a description's elements.
#ifndef TELVO_GIGE_GENAPI_REGISTERREADER_H
#define TELVO_GIGE_GENAPI_REGISTERREADER_H

#include "ElementReader.h"
#include "Register.h"
#include "RegisterSources.h"

#include <memory>

namespace gige::genapi
{

/// Null and a defect when the element describes no register.
std::shared_ptr<Register> readRegister(ElementReader& reader);

ByteOrder readByteOrder(ElementReader& reader);

/// @param isMasked  whether the element must have Bit, or LSB and MSB
IntegerLayout readIntegerLayout(ElementReader& reader, bool isMasked);

} // namespace gige::genapi

#endif
