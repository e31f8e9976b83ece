#ifndef TELVO_GIGE_PV_DEVICEDESCRIPTION_H
#define TELVO_GIGE_PV_DEVICEDESCRIPTION_H

#include "DeviceRegisters.h"

#include <chrono>
#include <functional>
#include <string>

/// How long a device may take to hand its description over: a megabyte in pieces of 536 bytes at
/// 30 ms each. That it does not stop meanwhile is the connection's to watch.
inline constexpr std::chrono::seconds kDescriptionTime{60};

/// Reads a device's description out of its memory: the file that the first URL register (0x0200)
/// names, or else that of the second (0x0400).
/// @param use  called with the XML text; false: it is unusable, try the other
/// @param time  for all reading together
/// @return false: neither could be read and used
bool readDescription(gige::control::DeviceRegisters& registers,
                     const std::function<bool(const std::string& xml)>& use,
                     std::chrono::milliseconds time = kDescriptionTime);

#endif
