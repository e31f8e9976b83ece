#ifndef TELVO_GIGE_PV_DEVICEDESCRIPTION_H
#define TELVO_GIGE_PV_DEVICEDESCRIPTION_H

#include "DeviceRegisters.h"

#include <functional>
#include <string>

/**
 * Reads a device's description out of its memory: the file that the first URL register (0x0200)
 * names, or else that of the second (0x0400).
 * @param use  called with the XML text; false: it is unusable, try the other
 * @return false: neither could be read and used
 */
bool readDescription(gige::control::DeviceRegisters& registers,
                     const std::function<bool(const std::string& xml)>& use);

#endif
