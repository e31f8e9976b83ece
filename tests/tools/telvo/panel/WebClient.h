#ifndef TELVO_TESTS_TOOLS_TELVO_PANEL_WEBCLIENT_H
#define TELVO_TESTS_TOOLS_TELVO_PANEL_WEBCLIENT_H

#include <chrono>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

/// An answer to a HTTP request.
struct HttpAnswer {
    int status = 0; ///< 0: none came
    std::string head{};
    std::string body{};
};

/// A whole WebSocket message, or that the server closes.
struct SocketMessage {
    enum class Kind : std::uint8_t { Text, Binary, Close };
    Kind kind = Kind::Close;
    std::string bytes{};
    int closeCode = 0; ///< 0: the connection just ended
};

/// A client that says exactly what a test wants it to say, over one connection.
class WebClient
{
  public:
    static constexpr std::chrono::seconds kPatience{10};

    explicit WebClient(std::uint16_t port);
    ~WebClient();
    WebClient(const WebClient&) = delete;
    WebClient& operator=(const WebClient&) = delete;

    void sendBytes(const std::string& bytes) const;
    /// Sends a request as it is, and waits for the answer.
    HttpAnswer ask(const std::string& request);
    /// GET with the usual Host header, and more lines, each with its end.
    HttpAnswer get(const std::string& target, const std::string& more = "");

    /// Opens the WebSocket, as the panel's own page does; "" leaves the header out.
    HttpAnswer openSocket(const std::string& origin, const std::string& more = "");
    void sendText(const std::string& text) const { sendFrame(0x81, text); }
    /// @param first  the frame's first byte: end mark and kind
    void sendFrame(std::uint8_t first, const std::string& payload) const;
    /// None: nothing came in all the time that a test has.
    std::optional<SocketMessage> next();
    /// Whether the server ends the connection.
    bool isEnded();

    const std::string& host() const { return mHost; }
    std::string origin() const { return "http://" + mHost; }

  private:
    bool receive();
    bool await(std::size_t size);
    std::string take(std::size_t size);

    std::string mHost;
    int mSocket = -1;
    std::string mReceived;
};

#endif
