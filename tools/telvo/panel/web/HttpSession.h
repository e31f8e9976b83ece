#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_HTTPSESSION_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_HTTPSESSION_H

#include "ConnectionCount.h"
#include "PanelSite.h"
#include "SocketSession.h"

#include <boost/asio/ip/tcp.hpp>
#include <functional>

namespace telvo
{

/// What a connection needs of the server.
struct HttpService {
    const PanelSite& site;
    /// Takes over a connection that asked for a WebSocket, with that request.
    std::function<void(SocketUpgrade upgrade, ConnectionCount::Place place)> takeSocket;
};

/// Serves one connection until it is closed. The service is borrowed until the network ends.
void serveHttp(boost::asio::ip::tcp::socket socket, ConnectionCount::Place place,
               const HttpService& service);

} // namespace telvo

#endif
