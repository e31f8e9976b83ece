#ifndef TELVO_CAMERA_REGISTERMAP_H
#define TELVO_CAMERA_REGISTERMAP_H

#include "Bootstrap.h"
#include "Device.h"

#include <optional>
#include <span>
#include <vector>

namespace camera
{

/// The whole address space as the host reads and writes it: bootstrap registers, feature registers,
/// serial buffers and the description file. Addresses and lengths are multiples of 4. For the
/// control thread alone.
class RegisterMap
{
  public:
    using Status = gige::wire::GvcpStatus;
    using Endpoint = gige::net::Endpoint;

    /// @param description  the file as it is delivered; zero-filled behind its end
    RegisterMap(Bootstrap& bootstrap, Device& device, std::vector<std::uint8_t> description);

    /// Fills bytes from the registers at address; stops at the first that does not exist.
    Status read(std::uint32_t address, std::span<std::uint8_t> bytes) const;
    /// Writes word by word. @param written  out: bytes written before a failure
    Status write(std::uint32_t address, std::span<const std::uint8_t> bytes, const Endpoint& from,
                 std::size_t& written);

    /// The feature whose value lies there.
    [[nodiscard]] static std::optional<FeatureId> featureAt(std::uint32_t address);

  private:
    Status readWord(std::uint32_t address, std::uint32_t& value) const;
    Status readFeature(FeatureId id, std::uint32_t& value) const;
    [[nodiscard]] std::optional<std::uint32_t> readBuffer(std::uint32_t address) const;
    Status writeWord(std::uint32_t address, std::uint32_t value, const Endpoint& from);
    Status writeDestination(std::uint32_t address, std::uint32_t value);
    [[nodiscard]] std::string destinationText() const;

    Bootstrap& mBootstrap;
    Device& mDevice;
    std::vector<std::uint8_t> mDescription;
    std::array<std::uint8_t, kDestinationTextLength> mDestinationDraft{};
};

} // namespace camera

#endif
