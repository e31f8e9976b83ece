#include "SocketSession.h"

#include "PanelServer.h"

#include <chrono>
#include <utility>

namespace telvo
{

namespace
{

namespace asio = boost::asio;
namespace websocket = boost::beast::websocket;

constexpr std::chrono::seconds kHandshakeTime{5}; // of opening and closing
constexpr std::chrono::seconds kIdleTime{60};     // then a sign of life is asked for

} // namespace

SocketSession::SocketSession(SocketUpgrade upgrade, ConnectionCount::Place place)
    : mStream(std::move(upgrade.stream)),
      mRequest(std::move(upgrade.request)),
      mPlace(std::move(place))
{
}

void SocketSession::start(Events events)
{
    mEvents = std::move(events);
    setUp();
    mStream.async_accept(mRequest,
                         [self = shared_from_this()](Error error) { self->onAccepted(error); });
}

void SocketSession::setUp()
{
    boost::beast::get_lowest_layer(mStream).expires_never(); // the WebSocket has times of its own
    mStream.set_option(websocket::stream_base::timeout{
        .handshake_timeout = kHandshakeTime, .idle_timeout = kIdleTime, .keep_alive_pings = true});
    mStream.read_message_max(PanelServer::kMostMessageBytes);
    mStream.auto_fragment(false);
}

void SocketSession::onAccepted(Error error)
{
    if (error) {
        return;
    }
    mIsOpen = true;
    mEvents.opened(shared_from_this());
    if (!mIsClosing) {
        read();
    }
}

void SocketSession::read()
{
    mStream.async_read(mBuffer, [self = shared_from_this()](Error error, std::size_t /*size*/) {
        self->onRead(error);
    });
}

void SocketSession::onRead(Error error)
{
    if (error) {
        return end();
    }
    const auto bytes = mBuffer.data();
    mEvents.received(mStream.got_text()
                         ? std::string_view(static_cast<const char*>(bytes.data()), bytes.size())
                         : std::string_view()); // which is no command
    mBuffer.consume(mBuffer.size());
    read();
}

void SocketSession::send(MessagePointer message)
{
    if (!mIsOpen || mIsClosing) {
        return;
    }
    mWaitingBytes += message->bytes.size();
    mWaiting.push_back(std::move(message));
    if (mWaitingBytes > PanelServer::kMostWaitingBytes) {
        boost::beast::get_lowest_layer(mStream).close(); // it does not read; the read tells
    } else if (mWaiting.size() == 1) {
        write();
    }
}

void SocketSession::write()
{
    const Message& message = *mWaiting.front();
    mStream.binary(message.isBinary);
    mStream.async_write(
        asio::buffer(message.bytes),
        [self = shared_from_this()](Error error, std::size_t /*size*/) { self->onWritten(error); });
}

void SocketSession::onWritten(Error error)
{
    mWaitingBytes -= mWaiting.front()->bytes.size();
    mWaiting.pop_front();
    if (error) {
        return; // the read tells
    }
    if (!mWaiting.empty()) {
        write();
    } else if (mIsClosing) {
        sayGoodbye();
    }
}

void SocketSession::close()
{
    if (std::exchange(mIsClosing, true) || !mIsOpen) {
        return;
    }
    if (mWaiting.empty()) {
        sayGoodbye(); // else when all has gone
    }
}

void SocketSession::sayGoodbye()
{
    mStream.async_close(websocket::close_code::going_away,
                        [self = shared_from_this()](Error /*error*/) {});
}

void SocketSession::end()
{
    if (std::exchange(mIsOpen, false)) {
        mEvents.closed();
    }
}

} // namespace telvo
