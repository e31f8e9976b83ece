#include "PanelProcess.h"

#include <algorithm>
#include <csignal>
#include <utility>

namespace
{

PanelPicture pictureOf(const std::string& bytes)
{
    std::size_t size = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        size = size << 8U | static_cast<unsigned char>(bytes.at(i));
    }
    return {Json::parse(bytes.substr(4, size)), bytes.substr(4 + size)};
}

} // namespace

PanelClient::PanelClient(std::uint16_t port, const std::string& more) : mClient(port)
{
    EXPECT_EQ(mClient.openSocket(mClient.origin(), more).status, 101);
    const Json hello = ask({{"do", "hello"}});
    EXPECT_TRUE(hello["ok"]);
    mEvents.push_back({{"event", "cameras"}, {"cameras", hello["cameras"]}});
}

void PanelClient::send(Json request)
{
    request["id"] = ++mLastId;
    mClient.sendText(request.dump());
}

Json PanelClient::ask(Json request)
{
    send(std::move(request));
    const auto isAnswer = [this](const Json& answer) { return answer["id"] == mLastId; };
    for (;;) {
        const auto answer = std::ranges::find_if(mAnswers, isAnswer);
        if (answer != mAnswers.end()) {
            return *answer;
        }
        if (!receive()) {
            ADD_FAILURE() << "no answer";
            return {{"ok", false}, {"error", "no answer"}};
        }
    }
}

PanelPicture PanelClient::askPicture(Json request)
{
    send(std::move(request));
    const Json id = mLastId;
    for (;;) {
        const auto picture = std::ranges::find_if(mPictures, [&](const PanelPicture& each) {
            return each.header.value("id", Json()) == id;
        });
        if (picture != mPictures.end()) {
            return *picture;
        }
        const auto answer =
            std::ranges::find_if(mAnswers, [&](const Json& each) { return each["id"] == id; });
        if (answer != mAnswers.end() || !receive()) {
            ADD_FAILURE() << "no picture: "
                          << (answer != mAnswers.end() ? answer->dump() : std::string("nothing"));
            return {};
        }
    }
}

Json PanelClient::awaitEvent(const std::string& event, const Predicate& holds)
{
    for (;;) {
        const auto found = std::ranges::find_if(mEvents, [&](const Json& each) {
            return each["event"] == event && (!holds || holds(each));
        });
        if (found != mEvents.end()) {
            Json result = *found;
            mEvents.erase(mEvents.begin(), found + 1);
            return result;
        }
        if (!receive()) {
            ADD_FAILURE() << "no event " << event;
            return Json::object();
        }
    }
}

PanelPicture PanelClient::awaitPicture()
{
    for (;;) {
        const auto picture = std::ranges::find_if(
            mPictures, [](const PanelPicture& each) { return each.header["kind"] == "live"; });
        if (picture != mPictures.end()) {
            PanelPicture result = std::move(*picture);
            mPictures.erase(picture);
            return result;
        }
        if (!receive()) {
            ADD_FAILURE() << "no picture";
            return {};
        }
    }
}

Json PanelClient::awaitState(const std::string& state)
{
    const auto isSo = [&](const auto& camera) { return camera.second["state"] == state; };
    for (;;) {
        const auto found = std::ranges::find_if(mStates, isSo);
        if (found != mStates.end()) {
            return found->second;
        }
        if (!receive()) {
            ADD_FAILURE() << "no camera is " << state << " but " << Json(mStates).dump();
            return Json::object();
        }
    }
}

std::string PanelClient::awaitCamera()
{
    const Json event =
        awaitEvent("cameras", [](const Json& cameras) { return !cameras["cameras"].empty(); });
    return event["cameras"][0]["camera"];
}

int PanelClient::awaitClose()
{
    while (mCloseCode == -1 && receive()) {
    }
    return mCloseCode;
}

bool PanelClient::receive()
{
    if (mCloseCode != -1) {
        return false;
    }
    const auto message = mClient.next();
    if (!message) {
        return false;
    }
    if (message->kind == SocketMessage::Kind::Close) {
        mCloseCode = message->closeCode;
        return false;
    }
    if (message->kind == SocketMessage::Kind::Binary) {
        mPictures.push_back(pictureOf(message->bytes));
        return true;
    }
    Json json = Json::parse(message->bytes);
    if (!json.contains("event")) {
        mAnswers.push_back(std::move(json));
        return true;
    }
    if (json["event"] == "state") {
        mStates[json["camera"]] = json;
    }
    mEvents.push_back(std::move(json));
    return true;
}

void PanelTest::startPanel(const std::vector<std::string>& more)
{
    std::vector<std::string> arguments{"panel",       "--port",    "0",  "--folder",
                                       folder.path(), "--timeout", "200"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    mPanel = std::make_unique<ToolProcess>(arguments);
    const std::string line = mPanel->awaitLine("the panel is at ");
    const std::size_t colon = line.rfind(':');
    ASSERT_NE(colon, std::string::npos) << line;
    mPort = static_cast<std::uint16_t>(std::stoul(line.substr(colon + 1)));
    const std::size_t token = line.find("?token=");
    mToken = token == std::string::npos ? "" : line.substr(token + 7);
}

ToolOutcome PanelTest::endPanel()
{
    mPanel->signal(SIGINT);
    return mPanel->wait();
}

void PanelTest::openPage(const std::string& state)
{
    startPanel({"--camera", "127.0.0.11"});
    page = std::make_unique<PanelClient>(port());
    page->awaitState(state);
}

void PanelTest::begin(const camera::CameraOptions& options, const std::string& state)
{
    switchOn(options);
    openPage(state);
}

Json PanelTest::ask(const std::string& what, Json more)
{
    more["do"] = what;
    more["camera"] = mac();
    return page->ask(more);
}

void PanelTest::expectDone(const std::string& what, const Json& more)
{
    const Json answer = ask(what, more);
    EXPECT_EQ(answer["ok"], true) << what << ": " << answer.dump();
}
