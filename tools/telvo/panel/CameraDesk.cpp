#include "CameraDesk.h"

#include "CameraDownload.h"
#include "PanelMessages.h"
#include "PlainModes.h"
#include "RecordMode.h"

#include "TelvoDll.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace telvo
{

namespace
{

constexpr std::chrono::milliseconds kReportInterval{500};
/// A mode whose time has come waits no longer than this for what is asked of the camera.
constexpr std::chrono::milliseconds kMostDelay{20};

} // namespace

CameraDesk::CameraDesk(CameraAddress address, Shared shared)
    : mAddress(std::move(address)),
      mShared(std::move(shared)),
      mClients(mShared.clients),
      mPictures(mAddress.mac, mFeed, mClients),
      mMode(std::make_unique<ClosedMode>())
{
    publishState();
    mThread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

CameraDesk::~CameraDesk() = default;

void CameraDesk::put(ClientId client, std::int64_t id, CameraCommand command)
{
    // What is no work for the camera waits for none.
    const DeskTask task{client, id, command};
    if (const auto* const seen = std::get_if<SeenRequest>(&command)) {
        return mClients.send(client, handle(task, *seen));
    }
    if (const auto* const preview = std::get_if<PreviewRequest>(&command)) {
        return mClients.send(client, handle(task, *preview));
    }
    if (auto answer = answerAtOnce(task)) {
        return mClients.send(client, std::move(answer));
    }
    for (const DeskTask& dropped : mQueue.put({client, id, std::move(command)})) {
        mClients.send(dropped.client, supersededMessage(dropped.id));
    }
}

void CameraDesk::forget(ClientId client)
{
    mQueue.forget(client);
    mFeed.forget(client);
}

void CameraDesk::tellState(ClientId client) const
{
    const std::lock_guard guard(mStateLock);
    mClients.send(client, mNewestState);
}

void CameraDesk::hasAnswered(const CameraAddress& address)
{
    const std::lock_guard guard(mStateLock);
    mAnswer = address;
}

void CameraDesk::run(const std::stop_token& stop)
{
    mStop = stop;
    while (!stop.stop_requested()) {
        if (const auto task = mQueue.take(std::min(mNextStep, mNextReport), stop)) {
            perform(*task);
        }
        const Clock::time_point now = Clock::now();
        if (now >= mNextStep && (mQueue.isEmpty() || now > mNextStep + kMostDelay)) {
            step();
        }
        if (now >= mNextReport) {
            publishState();
        }
    }
    letGo();
}

void CameraDesk::perform(const DeskTask& task)
{
    MessagePointer answer;
    try {
        answer =
            std::visit([&](const auto& request) { return handle(task, request); }, task.command);
    } catch (const std::exception& error) {
        answer = errorMessage(task.id, error.what());
        noticeLoss();
    }
    publishState(); // what came of it is told before it is said that it is done
    if (answer) {
        mClients.send(task.client, std::move(answer));
    }
}

void CameraDesk::step()
{
    try {
        DeskMode::Step done = mMode->step();
        mNextStep = Clock::now() + done.wait;
        if (done.next) {
            enter(std::move(done.next));
        }
    } catch (const std::exception& error) {
        mNextStep = Clock::now() + kReportInterval;
        noticeLoss();
        mShared.news.tell(error.what());
    }
}

void CameraDesk::enter(std::unique_ptr<DeskMode> mode)
{
    const auto* const recording = dynamic_cast<const RecordingMode*>(mMode.get());
    const bool wasRecording = recording != nullptr;
    if (wasRecording) {
        mGivenTrigger = recording->givenTrigger();
    }
    setBusy(nullptr); // before the end of what the camera was busy with is told
    mMode.reset();    // ends what it does with the camera
    mMode = std::move(mode);
    mNextStep = Clock::now();
    publishState();
    if (wasRecording) {
        setSequences(Json::array());
        mClients.sendAll(eventMessage("recording", {{"camera", mAddress.mac}}));
    }
}

void CameraDesk::publishState()
{
    Json state{{"camera", mAddress.mac}};
    state.update(mMode->state());
    state["colour"] = mSession && hasColours(*mSession);
    state["flashCard"] = mSession && mHasFlashCard;
    if (const auto temperature = temperatureNow()) {
        state["temperature"] = *temperature;
    }
    if (!state.contains("live")) {
        state["live"] = mMode->isLive();
    }
    MessagePointer message = eventMessage("state", state);
    mNextReport = Clock::now() + kReportInterval;
    {
        const std::lock_guard guard(mStateLock);
        if (mNewestState && mNewestState->bytes == message->bytes) {
            return;
        }
        mNewestState = message;
    }
    mClients.sendAll(std::move(message));
}

/// None: not connected, or the camera has none.
std::optional<std::uint32_t> CameraDesk::temperatureNow() const
{
    constexpr std::uint32_t kNone = 0xFFFFFFFF; // which the library leaves where there is none
    std::uint32_t temperature = kNone;
    if (mSession) {
        expGetTemperature(&temperature, mSession->id());
    }
    return temperature == kNone ? std::nullopt : std::optional(temperature);
}

void CameraDesk::setSequences(Json sequences)
{
    const std::lock_guard guard(mStateLock);
    mSequences = std::move(sequences);
}

void CameraDesk::noticeLoss()
{
    if (mSession && mSession->isLost()) {
        setBusy(nullptr);
        mMode = std::make_unique<ConnectingMode>(); // nothing uses the session now
        mSession.reset();
        setOpen(false);
        enter(lost());
    }
}

void CameraDesk::setOpen(bool open)
{
    if (mIsOpen.exchange(open) != open) {
        mShared.openChanged();
    }
}

MessagePointer CameraDesk::handle(const DeskTask& task, const PreviewRequest& request)
{
    mFeed.wish(task.client, request.wish);
    return answerMessage(task.id);
}

MessagePointer CameraDesk::handle(const DeskTask& task, const SeenRequest& request)
{
    mFeed.seen(task.client, request.number);
    return answerMessage(task.id);
}

} // namespace telvo
