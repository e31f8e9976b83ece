/// Who the camera is: its texts, and the host's questions for them by name.
#ifndef TELVO_SRC_GRABBER_IDENTITY_H
#define TELVO_SRC_GRABBER_IDENTITY_H

#include "CameraLink.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// Field of 50 characters including its NUL: hosts hand buffers of this size to expGetParam.
class FixedText
{
  public:
    static constexpr std::size_t kSize = 50;

    /// Longer texts are cut at 49 characters.
    FixedText& operator=(std::string_view text)
    {
        const std::string_view cut = text.substr(0, kSize - 1);
        mText.fill('\0');
        std::copy(cut.begin(), cut.end(), mText.begin());
        return *this;
    }

    const char* c_str() const { return mText.data(); }
    bool empty() const { return mText.front() == '\0'; }
    bool operator==(const FixedText&) const = default;

  private:
    std::array<char, kSize> mText{};
};

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
    /// By the host since initialisation: the name reaches the camera at disconnect.
    bool isUserDefinedNameChanged = false;
};

void readStreamAddresses(Identity& identity, const CameraLink& link);
void readIdentity(Identity& identity, const CameraFeatures& features);

void setUserDefinedName(Identity& identity, const char* name);
/// Writes a name that the host has changed to the camera.
void writeUserDefinedName(Identity& identity, const CameraFeatures& features);

/// Answer to a host's question.
struct Param {
    enum class Result : std::int32_t { Found = 0, EmptyKey = -2, UnknownKey = -3 };

    Result result;
    const char* text = ""; ///< as long as the identity's
};
/// @param key  the text whose name begins with it is meant
Param findParam(const Identity& identity, std::string_view key);

#endif
