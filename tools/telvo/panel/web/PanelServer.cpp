#include "PanelServer.h"

#include "ConnectionCount.h"
#include "Failure.h"
#include "HttpSession.h"
#include "PanelSystem.h"
#include "SocketSession.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <map>
#include <optional>
#include <thread>
#include <utility>

namespace telvo
{

namespace
{

namespace asio = boost::asio;
using Tcp = asio::ip::tcp;
using Error = boost::system::error_code;

constexpr std::chrono::milliseconds kGoodbyeTime{200};
/// After an accept that failed for want of descriptors the next would fail at once.
constexpr std::chrono::milliseconds kAcceptPause{100};

Tcp::endpoint endpointOf(const std::string& address, std::uint16_t port)
{
    Error error;
    const auto parsed = asio::ip::make_address(address, error);
    if (error) {
        throw Failure("'" + address + "' is no address of this machine");
    }
    return {parsed, port};
}

} // namespace

class PanelServer::Implementation
{
  public:
    Implementation(const std::string& address, std::uint16_t port);

    std::uint16_t port() const { return mAcceptor.local_endpoint().port(); }
    void start(const PanelSite& site, ClientListener& listener);
    void stop();
    void send(ClientId client, MessagePointer message);
    void sendAll(MessagePointer message);

  private:
    void accept();
    void onAccepted(Error error, Tcp::socket socket);
    void takeSocket(SocketUpgrade upgrade, ConnectionCount::Place place);
    void closeAll();

    asio::io_context mNetwork{1}; // one thread runs it
    Tcp::acceptor mAcceptor;
    asio::steady_timer mTimer{mNetwork};
    ConnectionCount mConnections{kMostConnections};
    std::optional<HttpService> mService;
    ClientListener* mListener = nullptr; // null: not started
    std::map<ClientId, std::shared_ptr<SocketSession>> mSockets;
    ClientId mLastClient = 0;
    bool mIsStopping = false;
    std::jthread mThread;
};

PanelServer::Implementation::Implementation(const std::string& address, std::uint16_t port)
    : mAcceptor(mNetwork)
{
    const Tcp::endpoint endpoint = endpointOf(address, port);
    try {
        mAcceptor.open(endpoint.protocol());
        mAcceptor.set_option(Tcp::acceptor::reuse_address(kReusesAddress));
        mAcceptor.bind(endpoint);
        mAcceptor.listen();
    } catch (const boost::system::system_error& error) {
        throw Failure("cannot serve at " + address + " port " + std::to_string(port) + " (" +
                      error.code().message() + "); --port takes another");
    }
}

void PanelServer::Implementation::start(const PanelSite& site, ClientListener& listener)
{
    mListener = &listener;
    mService.emplace(HttpService{site, [this](SocketUpgrade upgrade, ConnectionCount::Place place) {
                                     takeSocket(std::move(upgrade), std::move(place));
                                 }});
    accept();
    mThread = std::jthread([this] { mNetwork.run(); });
}

void PanelServer::Implementation::accept()
{
    mAcceptor.async_accept(
        [this](Error error, Tcp::socket socket) { onAccepted(error, std::move(socket)); });
}

void PanelServer::Implementation::onAccepted(Error error, Tcp::socket socket)
{
    if (mIsStopping) {
        return;
    }
    if (error) {
        mTimer.expires_after(kAcceptPause);
        return mTimer.async_wait([this](Error ended) { return ended ? void() : accept(); });
    }
    if (auto place = mConnections.take()) { // else it is closed at once
        Error ignored;
        socket.set_option(Tcp::no_delay(true), ignored); // answers are whole when they are sent
        serveHttp(std::move(socket), *std::move(place), *mService);
    }
    accept();
}

void PanelServer::Implementation::takeSocket(SocketUpgrade upgrade, ConnectionCount::Place place)
{
    const ClientId client = ++mLastClient;
    const auto session = std::make_shared<SocketSession>(std::move(upgrade), std::move(place));
    session->start({.opened =
                        [this, client](std::shared_ptr<SocketSession> opened) {
                            if (mIsStopping) {
                                return opened->close();
                            }
                            mSockets.emplace(client, std::move(opened));
                            mListener->onOpened(client);
                        },
                    .received =
                        [this, client](std::string_view text) {
                            if (!mIsStopping) {
                                mListener->onMessage(client, text);
                            }
                        },
                    .closed =
                        [this, client] {
                            mSockets.erase(client);
                            if (!mIsStopping) {
                                mListener->onClosed(client);
                            } else if (mSockets.empty()) {
                                mNetwork.stop();
                            }
                        }});
}

void PanelServer::Implementation::send(ClientId client, MessagePointer message)
{
    asio::post(mNetwork, [this, client, message = std::move(message)]() mutable {
        const auto found = mSockets.find(client);
        if (found != mSockets.end()) {
            found->second->send(std::move(message));
        }
    });
}

void PanelServer::Implementation::sendAll(MessagePointer message)
{
    asio::post(mNetwork, [this, message = std::move(message)] {
        for (const auto& [client, socket] : mSockets) {
            socket->send(message);
        }
    });
}

void PanelServer::Implementation::stop()
{
    if (!mThread.joinable()) {
        return;
    }
    asio::post(mNetwork, [this] { closeAll(); });
    mThread.join();
}

void PanelServer::Implementation::closeAll()
{
    mIsStopping = true;
    mAcceptor.close();
    if (mSockets.empty()) {
        return mNetwork.stop();
    }
    for (const auto& [client, socket] : mSockets) {
        socket->close();
    }
    mTimer.expires_after(kGoodbyeTime);
    mTimer.async_wait([this](Error /*error*/) { mNetwork.stop(); });
}

PanelServer::PanelServer(const std::string& address, std::uint16_t port)
    : mImplementation(std::make_unique<Implementation>(address, port))
{
}

PanelServer::~PanelServer()
{
    stop();
}

std::uint16_t PanelServer::port() const
{
    return mImplementation->port();
}

void PanelServer::start(const PanelSite& site, ClientListener& listener)
{
    mImplementation->start(site, listener);
}

void PanelServer::stop()
{
    mImplementation->stop();
}

void PanelServer::send(ClientId client, MessagePointer message)
{
    mImplementation->send(client, std::move(message));
}

void PanelServer::sendAll(MessagePointer message)
{
    mImplementation->sendAll(std::move(message));
}

} // namespace telvo
