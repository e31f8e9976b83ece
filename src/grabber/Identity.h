#ifndef TELVO_SRC_GRABBER_IDENTITY_H
#define TELVO_SRC_GRABBER_IDENTITY_H

#include "FixedText.h"

/// Texts that tell one camera from another. The first two are filled at connect, the rest at
/// initialisation.
struct Identity {
    FixedText ipAddress;
    FixedText macAddress;
    FixedText localIp;           ///< of the host's interface that receives the stream
    FixedText streamDestination; ///< "GevSCDA"
    FixedText userDefinedName;   ///< "DeviceUserID", or the name that the host gave since
    FixedText manufacturer;      ///< "DeviceVendorName"
    FixedText model;             ///< "DeviceModelName"
    FixedText serialNumber;      ///< "DeviceID"
    FixedText gigeVersion;       ///< "DeviceVersion"
    FixedText cameraVersion;     ///< firmware versions, "B1.02-F3.04-V5.06"
    FixedText memory;            ///< "RecordCameraBufferSize" in decimal
};

#endif
