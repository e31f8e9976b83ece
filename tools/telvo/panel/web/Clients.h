/// The pages that are open, as those see them who talk with them.
#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_CLIENTS_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_CLIENTS_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace telvo
{

/// A page's WebSocket; never the same for two of them.
using ClientId = std::uint64_t;

struct Message {
    std::string bytes;
    bool isBinary = false; // else it is text
};
using MessagePointer = std::shared_ptr<const Message>;

/// Any thread may send.
class Clients
{
  public:
    Clients() = default;
    virtual ~Clients() = default;
    Clients(const Clients&) = delete;
    Clients& operator=(const Clients&) = delete;

    /// To a client that is gone nothing is sent.
    virtual void send(ClientId client, MessagePointer message) = 0;
    virtual void sendAll(MessagePointer message) = 0;
};

/// Called on the network's thread, which waits meanwhile.
class ClientListener
{
  public:
    ClientListener() = default;
    virtual ~ClientListener() = default;
    ClientListener(const ClientListener&) = delete;
    ClientListener& operator=(const ClientListener&) = delete;

    virtual void onOpened(ClientId client) = 0;
    virtual void onMessage(ClientId client, std::string_view text) = 0;
    virtual void onClosed(ClientId client) = 0;
};

} // namespace telvo

#endif
