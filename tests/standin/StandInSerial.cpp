#include "PvSerialPortIPEngine.h"
#include "StandIn.h"

#include <algorithm>
#include <atomic>

class PvSerialPortIPEngine::Impl
{
  public:
    std::string label = StandIn::current().nextLabel("PvSerialPortIPEngine");
    std::atomic<bool> opened{false};
};

PvSerialPortIPEngine::PvSerialPortIPEngine() : mImpl(std::make_unique<Impl>()) {}

PvSerialPortIPEngine::~PvSerialPortIPEngine()
{
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + " destroyed");
}

PvResult PvSerialPortIPEngine::Open(PvDevice* /*device*/, PvIPEngineSerial port)
{
    const PvResult result = StandIn::current().call(
        mImpl->label + ".Open", std::to_string(static_cast<std::uint32_t>(port)));
    mImpl->opened = result.IsOK();
    return result;
}

PvResult PvSerialPortIPEngine::Close()
{
    mImpl->opened = false;
    return StandIn::current().call(mImpl->label + ".Close");
}

bool PvSerialPortIPEngine::IsOpened() const
{
    StandIn::current().record(StandIn::Kind::Query, mImpl->label + ".IsOpened");
    return mImpl->opened;
}

PvResult PvSerialPortIPEngine::Write(const std::uint8_t* data, std::uint32_t size,
                                     std::uint32_t& written)
{
    StandIn& standIn = StandIn::current();
    const std::string bytes(data, data + size);
    const PvResult result = standIn.call(mImpl->label + ".Write", bytes);
    if (result.IsOK()) {
        written = standIn.serialBytesAccepted(size);
    }
    return result;
}

PvResult PvSerialPortIPEngine::Read(std::uint8_t* buffer, std::uint32_t size,
                                    std::uint32_t& received, std::uint32_t timeout)
{
    StandIn& standIn = StandIn::current();
    const PvResult result =
        standIn.call(mImpl->label + ".Read", std::to_string(size) + " " + std::to_string(timeout));
    if (result.IsOK()) {
        const std::string bytes = standIn.takeSerialBytes(size);
        std::copy(bytes.begin(), bytes.end(), buffer);
        received = static_cast<std::uint32_t>(bytes.size());
    }
    return result;
}

PvResult PvSerialPortIPEngine::FlushRxBuffer()
{
    return StandIn::current().call(mImpl->label + ".FlushRxBuffer");
}
