#include "WebClient.h"

#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

constexpr const char* kEndOfHead = "\r\n\r\n";

std::size_t contentLength(const std::string& head)
{
    const std::size_t at = head.find("Content-Length: ");
    return at == std::string::npos ? 0 : std::stoul(head.substr(at + 16));
}

/// Payload size as it stands in a frame's head, behind the first byte.
std::string sizeBytes(std::size_t size)
{
    constexpr unsigned kMasked = 0x80;
    std::string bytes;
    const auto put = [&](std::size_t value, int count) {
        for (int i = count - 1; i >= 0; --i) {
            bytes += static_cast<char>(value >> static_cast<unsigned>(8 * i) & 0xFFU);
        }
    };
    if (size < 126) {
        put(kMasked | size, 1);
    } else if (size < 65'536) {
        put(kMasked | 126U, 1);
        put(size, 2);
    } else {
        put(kMasked | 127U, 1);
        put(size, 8);
    }
    return bytes;
}

} // namespace

WebClient::WebClient(std::uint16_t port)
    : mHost("127.0.0.1:" + std::to_string(port)), mSocket(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(mSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("nobody serves at " + mHost);
    }
    const int on = 1;
    setsockopt(mSocket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

WebClient::~WebClient()
{
    close(mSocket);
}

void WebClient::sendBytes(const std::string& bytes) const
{
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t size = send(mSocket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (size <= 0) {
            return; // the server has enough
        }
        sent += static_cast<std::size_t>(size);
    }
}

HttpAnswer WebClient::ask(const std::string& request)
{
    sendBytes(request);
    HttpAnswer answer;
    std::size_t end = std::string::npos;
    while ((end = mReceived.find(kEndOfHead)) == std::string::npos) {
        if (!receive()) {
            return answer;
        }
    }
    answer.head = take(end + 4);
    answer.status = std::stoi(answer.head.substr(answer.head.find(' ')));
    const bool hasBody = !request.starts_with("HEAD");
    const std::size_t size = hasBody ? contentLength(answer.head) : 0;
    if (await(size)) {
        answer.body = take(size);
    }
    return answer;
}

HttpAnswer WebClient::get(const std::string& target, const std::string& more)
{
    return ask("GET " + target + " HTTP/1.1\r\nHost: " + mHost + "\r\n" + more + "\r\n");
}

HttpAnswer WebClient::openSocket(const std::string& origin, const std::string& more)
{
    const std::string line = origin.empty() ? "" : "Origin: " + origin + "\r\n";
    return get("/socket", line +
                              "Connection: Upgrade\r\nUpgrade: websocket\r\n"
                              "Sec-WebSocket-Version: 13\r\n"
                              "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n" +
                              more);
}

void WebClient::sendFrame(std::uint8_t first, const std::string& payload) const
{
    const std::array<char, 4> mask{0x11, 0x22, 0x33, 0x44};
    std::string frame(1, static_cast<char>(first));
    frame += sizeBytes(payload.size());
    frame.append(mask.begin(), mask.end());
    for (std::size_t i = 0; i < payload.size(); ++i) {
        frame += static_cast<char>(payload[i] ^ mask[i % mask.size()]);
    }
    sendBytes(frame);
}

std::optional<SocketMessage> WebClient::next()
{
    if (!await(2)) {
        return isEnded() ? std::optional(SocketMessage{}) : std::nullopt;
    }
    const std::string head = take(2);
    const unsigned kind = static_cast<unsigned char>(head[0]) & 0x0FU;
    std::size_t size = static_cast<unsigned char>(head[1]);
    if (size >= 126) {
        const std::size_t count = size == 126 ? 2 : 8;
        if (!await(count)) {
            return std::nullopt;
        }
        size = 0;
        for (const char byte : take(count)) {
            size = size << 8U | static_cast<unsigned char>(byte);
        }
    }
    if (!await(size)) {
        return std::nullopt;
    }
    std::string bytes = take(size);
    if (kind == 8) {
        const int code = size < 2 ? 0
                                  : static_cast<unsigned char>(bytes[0]) << 8 |
                                        static_cast<unsigned char>(bytes[1]);
        return SocketMessage{SocketMessage::Kind::Close, bytes, code};
    }
    if (kind != 1 && kind != 2) {
        return next(); // a sign of life
    }
    return SocketMessage{kind == 1 ? SocketMessage::Kind::Text : SocketMessage::Kind::Binary,
                         std::move(bytes), 0};
}

bool WebClient::isEnded()
{
    while (receive()) { // until nothing more comes
    }
    char byte = 0;
    return recv(mSocket, &byte, 1, MSG_DONTWAIT | MSG_PEEK) == 0 || errno == ECONNRESET;
}

/// False: nothing came, or the connection has ended.
bool WebClient::receive()
{
    pollfd descriptor{mSocket, POLLIN, 0};
    const int wait = static_cast<int>(std::chrono::milliseconds(kPatience).count());
    if (poll(&descriptor, 1, wait) <= 0) {
        return false;
    }
    std::array<char, 65'536> piece{};
    const ssize_t size = recv(mSocket, piece.data(), piece.size(), 0);
    if (size > 0) {
        mReceived.append(piece.data(), static_cast<std::size_t>(size));
    }
    return size > 0;
}

bool WebClient::await(std::size_t size)
{
    while (mReceived.size() < size) {
        if (!receive()) {
            return false;
        }
    }
    return true;
}

std::string WebClient::take(std::size_t size)
{
    std::string bytes = mReceived.substr(0, size);
    mReceived.erase(0, size);
    return bytes;
}
