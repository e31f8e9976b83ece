#include "CameraLink.h"

#include "CancelFlag.h"
#include "ToolError.h"

#include <array>
#include <atomic>
#include <string>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::int32_t kMostCameras = 64;

constexpr std::int32_t kConnectedWhileFlashWrite = 1;
constexpr std::int32_t kAttachedToRecording = 1;
constexpr std::int32_t kUserSetsPrepared = -2;

// The library's callback knows no object, and not which camera it is about: each id has its own.
std::array<std::atomic<bool>, kMostCameras> takenIds;
std::array<std::atomic<bool>, kMostCameras> lostIds;

template <std::int32_t Id>
void onChanged(std::int32_t reason)
{
    if (reason == 0) {
        lostIds[Id] = true;
    }
}

constexpr auto kCallbacks = []<std::int32_t... Ids>(std::integer_sequence<std::int32_t, Ids...>)
{
    return std::array<TelvoChangedCallback, kMostCameras>{onChanged<Ids>...};
}
(std::make_integer_sequence<std::int32_t, kMostCameras>{});

std::size_t place(std::int32_t id)
{
    return static_cast<std::size_t>(id);
}

std::int32_t takeId()
{
    for (std::int32_t id = 0; id < kMostCameras; ++id) {
        if (!takenIds[place(id)].exchange(true)) {
            return id;
        }
    }
    throw Failure("more than " + std::to_string(kMostCameras) + " cameras at once; name fewer");
}

} // namespace

CameraLink::CameraLink(const CameraAddress& address, const TelvoConnectionSettings& settings,
                       FlashCopy flashCopy)
    : mId(takeId())
{
    try {
        const Waiting waiting("the camera's connection to be made, which cannot be broken off");
        const std::int32_t result = connectAndInitialize(address, settings, flashCopy);
        if (result < 0) {
            throw Failure("cannot initialise the camera at " + address.ip +
                          " ('telvo log' shows why)");
        }
        CancelFlag().check();
        mWasRecording = result == kAttachedToRecording;
    } catch (...) {
        expDisconnectGrabber(mId);
        takenIds[place(mId)] = false;
        throw;
    }
}

CameraLink::~CameraLink()
{
    expDisconnectGrabber(mId);
    takenIds[place(mId)] = false;
}

bool CameraLink::isLost() const
{
    return lostIds[place(mId)];
}

void CameraLink::connect(const CameraAddress& address, const TelvoConnectionSettings& settings,
                         FlashCopy flashCopy) const
{
    const CancelFlag cancel;
    cancel.check();
    const std::string& device = address.onLoopback ? address.ip : address.mac;
    const std::int32_t result =
        expConnectGrabber(device.c_str(), address.ip.c_str(), 1, &settings, mId);
    cancel.check();
    if (result < 0) {
        throw Failure("cannot connect to the camera at " + address.ip +
                      "; is another program using it? ('telvo log' shows why)");
    }
    lostIds[place(mId)] = false;
    expSetChangedCallback(kCallbacks[place(mId)], mId);
    if (result == kConnectedWhileFlashWrite && flashCopy == FlashCopy::IsInTheWay) {
        throw Failure("the camera copies a recording to its flash card; wait until it is done "
                      "('telvo state') or end it ('telvo flash stop')");
    }
}

/// The result of the library's initialisation, of a second connection if the first prepared the
/// camera's user sets.
std::int32_t CameraLink::connectAndInitialize(const CameraAddress& address,
                                              const TelvoConnectionSettings& settings,
                                              FlashCopy flashCopy) const
{
    connect(address, settings, flashCopy);
    const std::int32_t result = expInitializeGrabber(&settings, mId);
    if (result != kUserSetsPrepared) {
        return result;
    }
    expDisconnectGrabber(mId);
    connect(address, settings, flashCopy);
    return expInitializeGrabber(&settings, mId);
}

} // namespace telvo
