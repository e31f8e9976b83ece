#ifndef TELVO_CAMERA_APP_FAULTTEXT_H
#define TELVO_CAMERA_APP_FAULTTEXT_H

#include "Faults.h"

#include <string_view>

// Faults as they stand on the command line. Parts are separated by colons; those in brackets may be
// left out. A text that is none gives std::invalid_argument, with a line that says what is wrong.
namespace camera
{

/// "lose|repeat|reorder|delay:PACKET[:BLOCKS]", BLOCKS "always" for no end.
[[nodiscard]] PacketFault parsePacketFault(std::string_view text);

/// "lose|repeat|reorder|jump|stop|silence:POSITION[:AMOUNT[:MILLISECONDS[:TIMES]]]"
[[nodiscard]] FrameFault parseFrameFault(std::string_view text);

/// "reject:FEATURE[:STATUS[:TIMES]]", "delay|late:FEATURE:MILLISECONDS[:TIMES]",
/// "corrupt:FEATURE:VALUE[:TIMES]", "drop|double:FEATURE[:TIMES]". STATUS is a number such as
/// 0x8006. corrupt concerns reads, reject writes, the others both.
[[nodiscard]] AccessFault parseAccessFault(std::string_view text);

/// The feature of this name.
[[nodiscard]] FeatureId parseFeature(std::string_view name);

/// A whole number, decimal or with 0x, or "always".
[[nodiscard]] std::uint32_t parseNumber(std::string_view text);

} // namespace camera

#endif
