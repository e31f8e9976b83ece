#ifndef TELVO_TOOLS_TELVO_CAMERAADDRESS_H
#define TELVO_TOOLS_TELVO_CAMERAADDRESS_H

#include "Discovery.h"

#include <string>

namespace telvo
{

/// A camera that was found, and how the library is to reach it.
struct CameraAddress {
    std::string mac;
    std::string ip;
    bool onLoopback; // then the library gets the IP instead of the MAC, for which it would search
                     // every network
    gige::control::DiscoveredDevice device{}; // as it answered
};

} // namespace telvo

#endif
