#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_PANELSERVER_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_PANELSERVER_H

#include "Clients.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace telvo
{

class PanelSite;

/**
 * HTTP and WebSockets on one port. One thread of its own does all of the network; it calls the
 * listener. send() and port() may be called on any thread, the others are the owner's.
 */
class PanelServer : public Clients
{
  public:
    static constexpr std::size_t kMostConnections = 256;
    static constexpr std::size_t kMostMessageBytes = 64U << 10U; // of a client's message
    /// What waits for a client that does not read; then it is closed.
    static constexpr std::size_t kMostWaitingBytes = 32U << 20U;

    /// Takes the port; 0: any that is free. Throws Failure.
    PanelServer(const std::string& address, std::uint16_t port);
    ~PanelServer() override;
    PanelServer(const PanelServer&) = delete;
    PanelServer& operator=(const PanelServer&) = delete;

    std::uint16_t port() const;

    /// From now on clients are served. Both are borrowed until stop().
    void start(const PanelSite& site, ClientListener& listener);

    /// Closes every WebSocket as one whose server goes away, gives their clients a moment to hear
    /// it, and ends the thread. The listener is not called any more.
    void stop();

    void send(ClientId client, MessagePointer message) override;
    void sendAll(MessagePointer message) override;

  private:
    class Implementation; // keeps the network library out of everybody's compilation

    std::unique_ptr<Implementation> mImplementation;
};

} // namespace telvo

#endif
