#include "PanelPage.h"

#include "Require.h"

using Json = nlohmann::json;

namespace
{

Json headerOf(const std::string& bytes)
{
    std::size_t size = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        size = size << 8U | static_cast<unsigned char>(bytes.at(i));
    }
    return Json::parse(bytes.substr(4, size));
}

} // namespace

PanelPage::PanelPage(std::uint16_t port) : mClient(port)
{
    require(mClient.openSocket(mClient.origin()).status == 101, "opening the page's socket");
    send("hello", Json::object());
    for (std::string state; state != "idle";) {
        const Json message = Json::parse(next().bytes);
        if (message.value("event", "") == "state") {
            state = message["state"];
            mCamera = message["camera"];
        }
    }
}

std::int64_t PanelPage::send(const std::string& what, Json values)
{
    values["id"] = ++mLastId;
    values["do"] = what;
    if (!mCamera.empty()) {
        values["camera"] = mCamera;
    }
    mClient.sendText(values.dump());
    return mLastId;
}

SocketMessage PanelPage::next()
{
    auto message = mClient.next();
    require(message && message->kind != SocketMessage::Kind::Close, "hearing of the panel");
    return *std::move(message);
}

Json PanelPage::ask(const std::string& what, Json values)
{
    const std::int64_t id = send(what, std::move(values));
    for (;;) {
        const SocketMessage message = next();
        if (message.kind == SocketMessage::Kind::Text) {
            Json answer = Json::parse(message.bytes);
            if (answer.value("id", Json()) == id) {
                require(answer["ok"], (what + ": " + answer.dump()).c_str());
                return answer;
            }
        }
    }
}

void PanelPage::awaitEvent(const std::string& event)
{
    for (;;) {
        const SocketMessage message = next();
        if (message.kind == SocketMessage::Kind::Text &&
            Json::parse(message.bytes).value("event", "") == event) {
            return;
        }
    }
}

Json PanelPage::awaitPicture()
{
    for (;;) {
        const SocketMessage message = next();
        if (message.kind == SocketMessage::Kind::Binary) {
            return headerOf(message.bytes);
        }
    }
}

void PanelPage::frame(std::uint32_t number)
{
    const std::int64_t id = send("frame", {{"sequence", 0}, {"frame", number}, {"width", 1280}});
    for (;;) {
        const SocketMessage message = next();
        if (message.kind == SocketMessage::Kind::Binary &&
            headerOf(message.bytes).value("id", Json()) == id) {
            return;
        }
        require(message.kind == SocketMessage::Kind::Binary ||
                    Json::parse(message.bytes).value("id", Json()) != id,
                "reading a frame");
    }
}
