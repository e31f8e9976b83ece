#ifndef TELVO_CAMERA_CAMERAOPTIONS_H
#define TELVO_CAMERA_CAMERAOPTIONS_H

#include "BatchSender.h"
#include "FeatureTable.h"
#include "KnownModels.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>

namespace camera
{

/// How the description file is delivered.
enum class DescriptionForm : std::uint8_t { Xml, StoredZip, DeflatedZip };

/// Everything that is fixed before a virtual camera is switched on.
struct CameraOptions {
    std::string address = "127.0.0.11"; ///< IPv4 address to listen on, port 3956
    std::string mac{};                  ///< empty: 02:54:45 and the address's last three octets
    std::string vendor = "Telvo";
    std::string model = "TOVI1";
    std::string version = "1.0";
    std::string serial{}; ///< at most 16 characters; empty: "VC" and the last three octets
    std::string userName = "virtual camera"; ///< at most 16 characters
    std::optional<SensorSize> sensor{};      ///< none: as the model says
    bool colour = false;                     ///< Bayer sensor; starts with BayerRG8

    std::uint64_t memoryBytes = std::uint64_t{1} << 30; ///< size of the recording memory
    bool multisequence = true;
    bool flashCard = true;
    std::uint64_t flashBytesPerSecond = 200'000'000;
    bool irigB = true;
    bool recordAtPowerOnAvailable = true;
    bool recordAtPowerOn = false; ///< records from the first moment
    std::string stateFile{};      ///< keeps user sets, name and data words; empty: no file

    bool userSetsPrepared = false;  ///< UserSet1 is saved, selected and the default
    bool unpaced = false;           ///< send as fast as possible, whatever rate and delays say
    std::uint64_t unpacedLimit = 0; ///< bytes a second that an unpaced camera sends; 0: no limit
    std::uint64_t linkRate = 0;     ///< bits a second of the camera's cable; 0: no limit
    gige::net::SendMode send = gige::net::SendMode::Joined; ///< stream packets' way out
    DescriptionForm description = DescriptionForm::Xml;
    std::chrono::milliseconds flashBusy{0}; ///< writes its flash card for so long from the start

    std::set<FeatureId> missing{};                ///< not in the description
    std::set<FeatureId> unavailable{};            ///< there, but not available at first
    std::set<FeatureId> switchable{};             ///< Faults::setAvailable() will be used on these
    std::map<FeatureId, FeatureKind> retyped{};   ///< described as another type
    std::map<FeatureId, std::int64_t> settings{}; ///< other values at power-on
};

/// The entries that this camera's enumeration has: a sensor without colours has one format.
[[nodiscard]] inline std::span<const EnumEntry> entriesOf(const Feature& feature,
                                                          const CameraOptions& options)
{
    return feature.id == FeatureId::PixelFormat && !options.colour ? feature.entries.first(1)
                                                                   : feature.entries;
}

} // namespace camera

#endif
