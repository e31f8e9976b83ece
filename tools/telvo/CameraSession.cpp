#include "CameraSession.h"

#include "CameraLook.h"
#include "CancelFlag.h"
#include "ConnectionSettings.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <functional>
#include <iostream>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

namespace telvo
{

namespace
{

using FeatureNames = std::set<std::string, std::less<>>;

/// What the library cannot initialise a camera without.
constexpr std::array kNeededFeatures{"AcquisitionSource", "UserSetSelector",
                                     "UserSetDefaultSelector", "UserSetSave"};

TelvoConnectionSettings connectionSettings(const std::vector<Assignment>& settings)
{
    TelvoConnectionSettings result = kUsualConnection;
    for (const Assignment& assignment : settings) {
        if (const auto field = assignment.setting->ofConnection) {
            result.*field = static_cast<std::uint32_t>(assignment.value);
        }
    }
    return result;
}

template <typename Names>
void requireAll(const FeatureNames& features, const Names& names, const std::string& consequence)
{
    for (const char* const name : names) {
        if (!features.contains(std::string_view(name))) {
            throw Failure("the camera lacks the feature \"" + std::string(name) + "\", " +
                          consequence + "; its maker may have firmware with it");
        }
    }
}

/// What the library is about to do with a camera that it does not know; empty: nothing.
std::string preparationOf(const CameraLook& look, const CameraAddress& address)
{
    const bool isPrepared = look.text("UserSetSelector") == "UserSet1" &&
                            look.text("UserSetDefaultSelector") == "UserSet1";
    return isPrepared ? ""
                      : "the camera at " + address.ip +
                            " is used for the first time: its user set 1 is set to whole "
                            "pictures, saved and made the default";
}

} // namespace

struct CameraSession::Connected {
    CameraAddress address;
    TelvoConnectionSettings settings;
    FeatureNames features;
    AllFacts facts;
    std::string preparation;
    bool recording = false;
    std::unique_ptr<CameraLink> link;

    Connected(CameraAddress where, const TelvoConnectionSettings& with, FlashCopy flashCopy);
};

CameraSession::Connected::Connected(CameraAddress where, const TelvoConnectionSettings& with,
                                    FlashCopy flashCopy)
    : address(std::move(where)), settings(with)
{
    {
        const CameraLook look(address);
        if (const auto host = look.controllingHost()) {
            throw Failure(heldByOther(address, *host));
        }
        features = look.features();
        requireAll(features, kNeededFeatures, "which every command that connects it needs");
        preparation = preparationOf(look, address);
        if (!preparation.empty()) {
            std::cerr << "telvo: " << preparation << '\n';
        }
        facts = lookAtFacts(look);
    } // leaves the camera's attention to the library
    link = std::make_unique<CameraLink>(address, settings, flashCopy);
    recording = link->wasRecording();
}

namespace
{

/// Cameras that stay connected between commands, by IP address.
struct Keeper {
    std::mutex lock; // guards the others: cameras may be worked with side by side
    bool isOn = false;
    std::map<std::string, std::shared_ptr<CameraSession::Connected>> cameras;
};

Keeper& keeper()
{
    static Keeper instance;
    return instance;
}

constexpr std::chrono::milliseconds kLinkPoll{20};

/// Beyond timeout and interval: an unanswered heartbeat takes this long at most.
constexpr std::chrono::seconds kLinkLossLimit{2};

/// A camera that answers for so long is there. Less does not show it: right after the link is lost,
/// and before it is told, the library says of a camera that it is not idle.
constexpr std::chrono::milliseconds kSteady{300};

bool answers(std::int32_t cameraId)
{
    std::uint8_t idle = 0;
    return expIsStateIdle(&idle, cameraId) == 0;
}

bool isIdle(std::int32_t cameraId)
{
    std::uint8_t idle = 0;
    return expIsStateIdle(&idle, cameraId) == 0 && idle != 0;
}

/// Null unless the camera is kept, at rest and reachable. One that is not is connected anew, which
/// finds out what it is doing.
std::shared_ptr<CameraSession::Connected> takeKept(const CameraAddress& address)
{
    const std::lock_guard guard(keeper().lock);
    const auto found = keeper().cameras.find(address.ip);
    if (found == keeper().cameras.end()) {
        return nullptr;
    }
    auto connected = found->second;
    if (connected->link->isLost() || !isIdle(connected->link->id())) {
        keeper().cameras.erase(found);
        return nullptr;
    }
    return connected;
}

void keep(const std::shared_ptr<CameraSession::Connected>& connected)
{
    const std::lock_guard guard(keeper().lock);
    if (keeper().isOn) {
        keeper().cameras[connected->address.ip] = connected;
    }
}

void letGo(const std::string& ip)
{
    const std::lock_guard guard(keeper().lock);
    keeper().cameras.erase(ip);
}

bool isSame(const TelvoConnectionSettings& one, const TelvoConnectionSettings& other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

std::shared_ptr<CameraSession::Connected> connectedCamera(const CameraAddress& address,
                                                          const TelvoConnectionSettings& settings,
                                                          FlashCopy flashCopy)
{
    if (auto connected = takeKept(address); connected && isSame(connected->settings, settings)) {
        connected->recording = false; // it is at rest
        return connected;
    }
    letGo(address.ip); // before it is connected anew
    auto connected = std::make_shared<CameraSession::Connected>(address, settings, flashCopy);
    keep(connected);
    return connected;
}

} // namespace

CameraSession::CameraSession(const CameraAddress& address, const std::vector<Assignment>& settings,
                             FlashCopy flashCopy)
    : mConnected(connectedCamera(address, connectionSettings(settings), flashCopy))
{
}

CameraSession::CameraSession(std::shared_ptr<Connected> connected)
    : mConnected(std::move(connected))
{
}

CameraSession::~CameraSession() = default;

std::unique_ptr<CameraSession> CameraSession::kept(const CameraAddress& address)
{
    auto connected = takeKept(address);
    return connected ? std::unique_ptr<CameraSession>(new CameraSession(std::move(connected)))
                     : nullptr;
}

std::int32_t CameraSession::id() const
{
    return mConnected->link->id();
}

const CameraAddress& CameraSession::address() const
{
    return mConnected->address;
}

const std::string& CameraSession::preparation() const
{
    return mConnected->preparation;
}

bool CameraSession::isRecording() const
{
    return mConnected->recording;
}

void CameraSession::requireNoRecording() const
{
    if (isRecording()) {
        throw Failure("the camera is recording; 'telvo stop' ends that");
    }
}

void CameraSession::requireFeatures(std::initializer_list<const char*> features,
                                    const char* what) const
{
    requireAll(mConnected->features, features, "so that it cannot " + std::string(what));
}

void CameraSession::apply(const std::vector<Assignment>& settings) const
{
    std::vector<Assignment> kept;
    for (const Assignment& assignment : settings) {
        if (assignment.setting->ofConnection == nullptr) {
            kept.push_back(assignment);
        }
    }
    const std::vector<SettingOutcome> outcomes = write(kept);
    requireTaken(outcomes);
    for (const SettingOutcome& outcome : outcomes) {
        if (!outcome.isAsAsked()) {
            std::cerr << "telvo: the camera takes " << outcome.asked.setting->name << ' '
                      << outcome.text() << '\n';
        }
    }
}

std::vector<SettingOutcome> CameraSession::write(const std::vector<Assignment>& settings) const
{
    return writeSettings(settings, id(), mConnected->facts);
}

std::optional<SettingText> CameraSession::read(const Setting& setting) const
{
    return readWithFacts(setting, id(), mConnected->facts);
}

std::string CameraSession::identity(const char* key) const
{
    std::array<char, 64> text{}; // the library's texts have at most 50 characters
    const auto size = static_cast<std::uint32_t>(text.size());
    return expGetParam(key, text.data(), &size, id()) == 0 ? text.data() : "";
}

bool CameraSession::isLost() const
{
    return mConnected->link->isLost();
}

void CameraSession::requireLink() const
{
    if (isLost()) {
        throw Failure("the connection to the camera was lost; look at cable and power, then try "
                      "again");
    }
}

void CameraSession::fail(const std::string& reason) const
{
    using Clock = std::chrono::steady_clock;
    const TelvoConnectionSettings& settings = mConnected->settings;
    const auto deadline = Clock::now() + kLinkLossLimit +
                          std::chrono::milliseconds(settings.heartbeatTimeout) +
                          std::chrono::milliseconds(settings.heartbeatInterval);
    const CancelFlag cancel;
    auto silence = Clock::now();
    while (!mConnected->link->isLost() && Clock::now() < std::min(silence + kSteady, deadline)) {
        cancel.check();
        std::this_thread::sleep_for(kLinkPoll);
        silence = answers(id()) ? silence : Clock::now();
    }
    requireLink();
    throw Failure(reason);
}

CameraLook lookAt(const CameraAddress& address)
{
    letGo(address.ip);
    return CameraLook(address);
}

KeptCameras::KeptCameras()
{
    const std::lock_guard guard(keeper().lock);
    keeper().isOn = true;
}

KeptCameras::~KeptCameras()
{
    const std::lock_guard guard(keeper().lock);
    keeper().isOn = false;
    keeper().cameras.clear();
}

} // namespace telvo
