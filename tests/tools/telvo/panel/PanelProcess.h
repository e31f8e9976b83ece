#ifndef TELVO_TESTS_TOOLS_TELVO_PANEL_PANELPROCESS_H
#define TELVO_TESTS_TOOLS_TELVO_PANEL_PANELPROCESS_H

#include "CameraTest.h"
#include "WebClient.h"

#include "../writers/TemporaryFolder.h"

#include <functional>
#include <gmock/gmock.h>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

using Json = nlohmann::json;

/// A binary message: what it says of the picture, and the picture.
struct PanelPicture {
    Json header{};
    std::string bytes{};
};

/// A page, as the panel sees it: it has said hello.
class PanelClient
{
  public:
    explicit PanelClient(std::uint16_t port, const std::string& more = "");

    /// Asks, and waits for the answer; what comes meanwhile is kept.
    Json ask(Json request);
    /// Asks for what is answered with a picture.
    PanelPicture askPicture(Json request);
    void send(Json request);

    using Predicate = std::function<bool(const Json&)>;
    /// The next event of this name for which it holds, be it one that was kept.
    Json awaitEvent(const std::string& event, const Predicate& holds = nullptr);
    /// The next live picture.
    PanelPicture awaitPicture();
    /// Pictures that came and were not awaited.
    std::size_t picturesKept() const { return mPictures.size(); }
    /// Until a camera is in this state. @return what is said of it then
    Json awaitState(const std::string& state);
    /// The newest state of a camera that was told.
    Json state(const std::string& camera) const { return mStates.at(camera); }
    /// The MAC of the first camera found.
    std::string awaitCamera();
    /// @return the code with which the panel closes
    int awaitClose();

  private:
    bool receive();

    WebClient mClient;
    std::int64_t mLastId = 0;
    std::vector<Json> mEvents;
    std::vector<Json> mAnswers;
    std::vector<PanelPicture> mPictures;
    std::map<std::string, Json> mStates;
    int mCloseCode = -1;
};

/// The tool's panel as a process of its own, and one virtual camera in the test's.
class PanelTest : public CameraTest
{
  protected:
    /// On any port that is free, with more arguments.
    void startPanel(const std::vector<std::string>& more = {});
    std::uint16_t port() const { return mPort; }
    const std::string& token() const { return mToken; }
    /// Ctrl-C.
    ToolOutcome endPanel();

    /// Starts the panel with the camera, and a page that sees it in this state.
    void openPage(const std::string& state = "idle");
    /// The same, and switches the camera on before.
    void begin(const camera::CameraOptions& options = quickCamera(),
               const std::string& state = "idle");
    std::string mac() { return camera().macText(); }
    /// Of the camera.
    Json ask(const std::string& what, Json more = Json::object());
    void expectDone(const std::string& what, const Json& more = Json::object());

    TemporaryFolder folder; ///< of downloads
    std::unique_ptr<PanelClient> page;

  private:
    std::unique_ptr<ToolProcess> mPanel;
    std::uint16_t mPort = 0;
    std::string mToken;
};

#endif
