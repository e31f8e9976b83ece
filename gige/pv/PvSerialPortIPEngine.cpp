#include "PvSerialPortIPEngine.h"

#include "PvDeviceImpl.h"
#include "SerialPort.h"
#include "StatusTranslations.h"

#include <memory>
#include <mutex>

/// Threads: any. mLock guards the pointer; a share of what is behind it is held during a transfer.
class PvSerialPortIPEngine::Impl
{
  public:
    /// The serial port with the session that its nodes belong to.
    struct OpenPort {
        std::shared_ptr<DeviceSession> session;
        SerialPort serial;
    };

    std::shared_ptr<OpenPort> port() const
    {
        const std::lock_guard lock(mLock);
        return mPort;
    }

    void setPort(std::shared_ptr<OpenPort> port)
    {
        const std::lock_guard lock(mLock);
        mPort = std::move(port);
    }

  private:
    mutable std::mutex mLock;
    std::shared_ptr<OpenPort> mPort; // null while closed
};

PvSerialPortIPEngine::PvSerialPortIPEngine() : mImpl(std::make_unique<Impl>()) {}

PvSerialPortIPEngine::~PvSerialPortIPEngine() = default;

PvResult PvSerialPortIPEngine::Open(PvDevice* device, PvIPEngineSerial port)
{
    if (device == nullptr || port != PvIPEngineSerial::Serial0) {
        return PvResult::Code::InvalidParameter;
    }
    const auto session = device->impl().session();
    if (session == nullptr || !session->isConnected()) {
        return PvResult::Code::NotConnected;
    }
    auto serial = SerialPort::find(session->nodes());
    if (!serial) {
        return PvResult::Code::NotSupported;
    }
    mImpl->setPort(std::make_shared<Impl::OpenPort>(Impl::OpenPort{session, std::move(*serial)}));
    return PvResult::Code::Ok;
}

PvResult PvSerialPortIPEngine::Close()
{
    mImpl->setPort(nullptr);
    return PvResult::Code::Ok;
}

bool PvSerialPortIPEngine::IsOpened() const
{
    return mImpl->port() != nullptr;
}

PvResult PvSerialPortIPEngine::Write(const std::uint8_t* data, std::uint32_t size,
                                     std::uint32_t& written)
{
    written = 0;
    const auto port = mImpl->port();
    if (port == nullptr) {
        return PvResult::Code::NotConnected;
    }
    std::size_t accepted = 0;
    const auto status = port->serial.write({data, size}, accepted);
    written = static_cast<std::uint32_t>(accepted);
    return toPvResult(status);
}

PvResult PvSerialPortIPEngine::Read(std::uint8_t* buffer, std::uint32_t size,
                                    std::uint32_t& received, std::uint32_t timeout)
{
    received = 0;
    const auto port = mImpl->port();
    if (port == nullptr) {
        return PvResult::Code::NotConnected;
    }
    std::size_t taken = 0;
    const auto status =
        port->serial.read({buffer, size}, std::chrono::milliseconds(timeout), taken);
    received = static_cast<std::uint32_t>(taken);
    return toPvResult(status);
}

PvResult PvSerialPortIPEngine::FlushRxBuffer()
{
    const auto port = mImpl->port();
    return port ? toPvResult(port->serial.flush()) : PvResult(PvResult::Code::NotConnected);
}
