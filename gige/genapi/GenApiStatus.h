#ifndef TELVO_GIGE_GENAPI_GENAPISTATUS_H
#define TELVO_GIGE_GENAPI_GENAPISTATUS_H

#include "Result.h"

#include <cstdint>

namespace gige::genapi
{

/// Outcome of every operation on a device description and its features.
enum class [[nodiscard]] Status : std::uint8_t{
    Ok = 0,

    // A feature refuses, nothing was sent.
    NotImplemented,  ///< the device lacks the feature
    NotAvailable,    ///< not in the device's present state
    ReadOnly,        ///< written, but read only or locked now
    WriteOnly,       ///< read, but write only
    OutOfRange,      ///< below minimum, above maximum, off the increment, text too long
    NoSuchEntry,     ///< the enumeration has no such entry
    EntryNotOffered, ///< the entry exists, but is not offered now
    WrongKind,       ///< a node without a value of the kind asked for

    // The description is at fault; the rest of the tree works.
    BadNode,           ///< the node's own elements are unusable
    CircularReference, ///< references deeper than kReferenceDepthLimit, as a cycle is
    TooComplex,        ///< one access takes more than kEvaluationStepLimit steps
    ArithmeticError,   ///< division by zero, no finite result, no 64-bit integer
    RegisterTooLarge,  ///< register of 0 or more than kRegisterSizeLimit bytes
    FormulaTooLong,    ///< more than kFormulaLengthLimit characters
    FormulaTooDeep,    ///< nested deeper than kFormulaDepthLimit
    FormulaMalformed,  ///< syntax error or unknown name

    // The device, or the way to it.
    PortTimeout,      ///< no answer
    PortNotConnected, ///< no link
    PortAccessDenied, ///< refused by the device
    PortBadAddress,   ///< no such register, or alignment refused
    PortBusy,         ///< the device is busy
    PortError,        ///< any other failure

    // The description as a whole.
    DescriptionTooLarge,  ///< more than kDescriptionSizeLimit bytes, zipped or unzipped
    DescriptionTooDeep,   ///< elements nested deeper than kXmlDepthLimit
    TooManyNodes,         ///< more than kNodeCountLimit nodes or kElementCountLimit elements
    DescriptionMalformed, ///< not XML, or no RegisterDescription
    ZipMalformed,         ///< damaged archive, or none of its files is a description
    UrlMalformed,         ///< no address of a description
    UrlUnsupported,       ///< a description that is not in the device's memory
};

/// The status as log texts name it, such as "OUT_OF_RANGE".
const char* name(Status status);

template <typename T>
using Result = gige::Result<T, Status>;

} // namespace gige::genapi

#endif
