#ifndef TELVO_GIGE_UI_DEVICELIST_H
#define TELVO_GIGE_UI_DEVICELIST_H

#include "Ipv4Address.h"
#include "MacAddress.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace gige::ui
{

/// Whether a camera that answered can be connected to.
enum class DeviceState : std::uint8_t {
    Unknown,     ///< not asked yet
    Free,        ///< nobody controls it
    InUse,       ///< a host controls it
    OtherSubnet, ///< no interface of ours reaches its address
    Conflict,    ///< another device claims its MAC address
    Silent,      ///< it answers discovery, but nothing else
};

struct ListedDevice {
    wire::MacAddress mac{};
    net::Ipv4Address ip{};
    std::string model{};
    std::string serial{};
    std::string name{}; ///< given by the user
    DeviceState state = DeviceState::Unknown;
    bool operator==(const ListedDevice&) const = default;

    /// A camera in use may be free in a moment; one in another subnet stays out of reach, as does
    /// one that cannot be told from another.
    bool isReachable() const
    {
        return state != DeviceState::OtherSubnet && state != DeviceState::Conflict;
    }
};

inline constexpr std::size_t kDeviceColumns = 6;
using DeviceTexts = std::array<std::string, kDeviceColumns>;

/// Headings of the list's columns.
DeviceTexts deviceHeadings();
/// A camera's row, fit to be shown.
DeviceTexts deviceTexts(const ListedDevice& device);
/// What the user should know about a camera in this state, in one sentence; may be empty.
std::string stateHint(DeviceState state);

/// The cameras of the network, merged over several discovery rounds, in the order of their MAC
/// addresses. A camera that leaves one round unanswered stays, since datagrams get lost.
class DeviceList
{
  public:
    /// A camera answered. One that the list knows keeps its state unless it has come within or
    /// gone out of reach.
    void hear(const ListedDevice& device);
    void setState(const wire::MacAddress& mac, DeviceState state);
    /// Drops the cameras that have not been heard for kSilentRounds.
    void endRound();

    /// The selection stays with the camera, whatever row it moves to, until the camera is dropped.
    void select(const wire::MacAddress& mac);

    std::vector<ListedDevice> devices() const;
    /// None: nothing is selected.
    std::optional<std::size_t> selectedRow() const;
    std::optional<ListedDevice> selected() const;

  private:
    struct Entry {
        ListedDevice device;
        int silentRounds = 0;
    };

    std::vector<Entry>::iterator find(const wire::MacAddress& mac);

    std::vector<Entry> mEntries; // sorted by MAC
    std::optional<wire::MacAddress> mSelected;
};

} // namespace gige::ui

#endif
