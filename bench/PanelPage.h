#ifndef TELVO_BENCH_PANELPAGE_H
#define TELVO_BENCH_PANELPAGE_H

#include "WebClient.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

/// A page of the panel's that works with its one camera. @throws std::runtime_error whatever fails
class PanelPage
{
  public:
    /// Waits until the camera is connected.
    explicit PanelPage(std::uint16_t port);

    nlohmann::json ask(const std::string& what, nlohmann::json values);
    void awaitEvent(const std::string& event);
    /// @return the header of the next live picture
    nlohmann::json awaitPicture();
    /// Waits for a frame of the first sequence.
    void frame(std::uint32_t number);

  private:
    SocketMessage next();
    std::int64_t send(const std::string& what, nlohmann::json values);

    WebClient mClient;
    std::string mCamera;
    std::int64_t mLastId = 0;
};

#endif
