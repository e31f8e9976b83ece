#ifndef TELVO_CAMERA_APP_MACHINEMEMORY_H
#define TELVO_CAMERA_APP_MACHINEMEMORY_H

#include <cstdint>

namespace camera
{

/// Bytes of main memory that this machine has; 0 when the system does not tell.
[[nodiscard]] std::uint64_t machineMemory();

} // namespace camera

#endif
