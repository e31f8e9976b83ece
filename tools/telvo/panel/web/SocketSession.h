#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_SOCKETSESSION_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_SOCKETSESSION_H

#include "Clients.h"
#include "ConnectionCount.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/websocket/stream.hpp>
#include <deque>
#include <functional>
#include <memory>

namespace telvo
{

/// A connection and the request by which it becomes a WebSocket.
struct SocketUpgrade {
    boost::beast::tcp_stream stream;
    boost::beast::http::request<boost::beast::http::empty_body> request;
};

/// One client's WebSocket. Of the network's thread.
class SocketSession : public std::enable_shared_from_this<SocketSession>
{
  public:
    struct Events {
        std::function<void(std::shared_ptr<SocketSession>)> opened;
        std::function<void(std::string_view)> received;
        std::function<void()> closed; // once, if it was opened
    };

    SocketSession(SocketUpgrade upgrade, ConnectionCount::Place place);

    void start(Events events);
    void send(MessagePointer message);
    /// Says that the server goes away, once all that waits is sent.
    void close();

  private:
    using Error = boost::beast::error_code;

    void setUp();
    void onAccepted(Error error);
    void read();
    void onRead(Error error);
    void write();
    void onWritten(Error error);
    void sayGoodbye();
    void end();

    boost::beast::websocket::stream<boost::beast::tcp_stream, false> mStream; // never compressed
    boost::beast::http::request<boost::beast::http::empty_body> mRequest;
    ConnectionCount::Place mPlace;
    Events mEvents;
    boost::beast::flat_buffer mBuffer;
    std::deque<MessagePointer> mWaiting; // the first is on its way
    std::size_t mWaitingBytes = 0;
    bool mIsOpen = false;
    bool mIsClosing = false;
};

} // namespace telvo

#endif
