#ifndef TELVO_TESTS_CONTROL_DIRECTLINE_H
#define TELVO_TESTS_CONTROL_DIRECTLINE_H

#include "ControlSocket.h"
#include "DeviceModel.h"
#include "TestClock.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace gige::control
{

/// A device at the other end of a control socket, without a network: its answers come after the
/// delays that its script names, by the test's clock. Only what a channel does is allowed.
class DirectLine final : public ControlSocket
{
  public:
    /// @param model   borrowed, like the clock
    /// @param device  where the answers come from
    DirectLine(DeviceModel& model, const net::Endpoint& device, TestClock& clock)
        : mModel(model), mDevice(device), mClock(clock)
    {
    }

    bool send(wire::ByteView datagram, const net::Endpoint& destination) override;
    net::Received receive(std::span<std::uint8_t> buffer, Clock::TimePoint until) override;
    void wake() override;
    void clear() override;

  private:
    struct Arrival {
        Clock::TimePoint time;
        Bytes datagram;
        net::Endpoint source;
    };

    [[nodiscard]] net::Endpoint sourceOf(const FakeAnswer& answer) const;

    DeviceModel& mModel;
    const net::Endpoint mDevice;
    TestClock& mClock;
    std::mutex mLock;
    std::condition_variable mChanged;
    std::deque<Arrival> mArrivals; // in order of time: a device answers one command after the other
    bool mIsWoken = false;
};

} // namespace gige::control

#endif
