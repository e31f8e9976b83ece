#ifndef TELVO_TESTS_CONTROL_FAKEDEVICE_H
#define TELVO_TESTS_CONTROL_FAKEDEVICE_H

#include "DeviceModel.h"
#include "UdpSocket.h"

#include <mutex>
#include <string>
#include <thread>

/// A scripted device on one loopback address.
/// Threads: two of its own, one a socket, serve commands in turns.
class FakeDevice : public DeviceModel
{
  public:
    /// @param address  "127.0.2.x", free; opens it at port 3956 and listens for loopback broadcasts
    explicit FakeDevice(const std::string& address);
    ~FakeDevice();

  private:
    void serve(gige::net::UdpSocket& socket);
    void handle(const Bytes& datagram, const gige::net::Endpoint& sender);
    void send(const FakeAnswer& answer, gige::net::Endpoint destination);

    gige::net::Ipv4Address mAddress;
    gige::net::UdpSocket mSocket;
    gige::net::UdpSocket mBroadcastSocket;
    gige::net::UdpSocket mOtherPortSocket;
    gige::net::UdpSocket mOtherAddressSocket;
    gige::net::Waker mStop;
    std::mutex mTurn; // of the thread that serves a command
    std::thread mThread;
    std::thread mBroadcastThread;
};

#endif
