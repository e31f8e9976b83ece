/// What a device's description may demand at most. Each limit has an error result behind it, so
/// that no device can exhaust this host's memory, stack or patience.
#ifndef TELVO_GIGE_GENAPI_GENAPILIMITS_H
#define TELVO_GIGE_GENAPI_GENAPILIMITS_H

#include <cstddef>
#include <cstdint>

namespace gige::genapi
{

constexpr std::size_t kDescriptionSizeLimit = std::size_t{16} << 20; // bytes, zipped and unzipped
constexpr std::size_t kXmlDepthLimit = 64;                           // nested elements
constexpr std::size_t kElementCountLimit = 1'000'000;                // XML elements
constexpr std::size_t kNodeCountLimit = 50'000;                      // feature tree nodes

// Every entry of a structure register reads again what the structure says.
constexpr std::size_t kStructureEntryLimit = 128;  // entries; such a register has at most 64 bits
constexpr std::size_t kStructureElementLimit = 64; // elements besides its entries

constexpr std::size_t kFormulaLengthLimit = std::size_t{8} << 10; // characters
constexpr std::size_t kFormulaDepthLimit = 64; // parentheses, signs, powers inside each other

constexpr std::size_t kRegisterSizeLimit = std::size_t{64} << 10; // bytes
constexpr std::size_t kCacheSizeLimit = std::size_t{16} << 20;    // bytes of all cached registers

constexpr std::size_t kReferenceDepthLimit = 64;      // nodes that one value goes through in a row
constexpr std::size_t kEvaluationStepLimit = 100'000; // formula operations during one access
constexpr std::size_t kNodeVisitSteps = 10;           // what visiting one node counts

} // namespace gige::genapi

#endif
