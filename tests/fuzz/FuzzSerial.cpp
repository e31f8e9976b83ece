/// The serial line over registers that answer anything. The input: 1 byte number of operations, the
/// operations with 1 byte each (lowest two bits: write, read, flush; above them the number of
/// bytes), then the answers of the registers one after the other. When they end, the device is
/// gone.
#include "SerialPort.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

using namespace gige::genapi;
using Bytes = std::span<const std::uint8_t>;

namespace
{

/// The buffers' lengths are registers, too, so that the device can answer anything there as well.
constexpr const char* kDescription = R"(
<RegisterDescription SchemaMajorVersion="1" SchemaMinorVersion="1">
  <Port Name="Device"/>
  <IntReg Name="SentSize"><Address>0x100</Address><Length>4</Length><AccessMode>RO</AccessMode>
    <pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></IntReg>
  <IntReg Name="WaitingSize"><Address>0x104</Address><Length>4</Length><AccessMode>RO</AccessMode>
    <pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></IntReg>
  <Register Name="SerialPort0TransmitBuffer"><Address>0x1000</Address><pLength>SentSize</pLength>
    <AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable></Register>
  <IntReg Name="SerialPort0TransmitLength"><Address>0x108</Address><Length>8</Length>
    <AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable>
    <Sign>Signed</Sign><Endianess>BigEndian</Endianess></IntReg>
  <IntReg Name="SerialPort0ReceiveLength"><Address>0x110</Address><Length>8</Length>
    <AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable>
    <Sign>Signed</Sign><Endianess>BigEndian</Endianess></IntReg>
  <Register Name="SerialPort0ReceiveBuffer"><Address>0x2000</Address><pLength>WaitingSize</pLength>
    <AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable></Register>
  <IntReg Name="SerialPort0ReceiveConsume"><Address>0x118</Address><Length>4</Length>
    <AccessMode>WO</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
  <IntReg Name="FlushValue"><Address>0x11C</Address><Length>4</Length><AccessMode>WO</AccessMode>
    <pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
  <Command Name="SerialPort0ReceiveFlush"><pValue>FlushValue</pValue>
    <CommandValue>1</CommandValue></Command>
</RegisterDescription>)";

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

/// Answers every access with the next bytes of a script.
class ScriptedPort : public RegisterPort
{
  public:
    void begin(Bytes script) { mScript = script; }

    Status readMemory(std::uint64_t /*address*/, std::span<std::uint8_t> bytes) override
    {
        if (mScript.empty()) {
            return Status::PortTimeout;
        }
        // A short script repeats its last byte, so that long registers need no long input.
        const std::size_t count = std::min(bytes.size(), std::max<std::size_t>(mScript.size(), 1));
        const auto end = std::copy_n(mScript.begin(), count, bytes.begin());
        std::fill(end, bytes.end(), mScript[count - 1]);
        mScript = mScript.subspan(count);
        return Status::Ok;
    }
    Status writeMemory(std::uint64_t /*address*/, Bytes /*bytes*/) override { return answer(); }
    Status readRegister(std::uint64_t address, std::uint32_t& value) override
    {
        std::array<std::uint8_t, 4> bytes{};
        const Status status = readMemory(address, bytes);
        value = static_cast<std::uint32_t>(bytes[0]) << 24U |
                static_cast<std::uint32_t>(bytes[1]) << 16U |
                static_cast<std::uint32_t>(bytes[2]) << 8U | bytes[3];
        return status;
    }
    Status writeRegister(std::uint64_t /*address*/, std::uint32_t /*value*/) override
    {
        return answer();
    }

  private:
    /// Most accesses are taken.
    Status answer()
    {
        if (mScript.empty()) {
            return Status::PortTimeout;
        }
        const bool taken = mScript.front() != 0xFF;
        mScript = mScript.subspan(1);
        return taken ? Status::Ok : Status::PortBadAddress;
    }

    Bytes mScript;
};

/// One tree for all inputs: it keeps nothing of what it reads.
struct Line {
    ScriptedPort port;
    std::unique_ptr<NodeMap> nodes;
    std::optional<SerialPort> bridge;

    Line()
    {
        auto loaded = NodeMap::load(kDescription, port);
        require(static_cast<bool>(loaded));
        nodes = *std::move(loaded);
        if (auto found = SerialPort::find(*nodes)) {
            bridge.emplace(*std::move(found));
        }
        require(bridge.has_value());
    }
};

void operate(SerialPort& bridge, std::uint8_t operation)
{
    std::array<std::uint8_t, 64> bytes{};
    const auto part = std::span(bytes).first(operation / 4U);
    std::size_t done = 0;
    switch (operation % 4U) {
    case 0:
        (void)bridge.flush();
        break;
    case 1:
        (void)bridge.write(part, done);
        break;
    default: // without waiting
        (void)bridge.read(part, std::chrono::milliseconds(0), done);
        break;
    }
    require(done <= part.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Line line;
    if (size == 0) {
        return 0;
    }
    const Bytes rest(data + 1, size - 1);
    const std::size_t operations = std::min<std::size_t>(data[0] % 16U, rest.size());
    line.port.begin(rest.subspan(operations));
    for (const std::uint8_t operation : rest.first(operations)) {
        operate(*line.bridge, operation);
    }
    return 0;
}
