#include "LivePictures.h"

#include "CameraDownload.h"
#include "PanelMessages.h"
#include "PictureDescription.h"
#include "PictureFigures.h"
#include "PictureStyle.h"
#include "PreviewPicture.h"
#include "ToolError.h"

#include "TelvoDll.h"

#include <chrono>
#include <map>
#include <utility>
#include <vector>

namespace telvo
{

namespace
{

std::int64_t millisecondsSinceEpoch()
{
    const auto time = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

} // namespace

LivePictures::LivePictures(std::string camera, PreviewFeed& feed, Clients& clients)
    : mCamera(std::move(camera)), mFeed(feed), mClients(clients)
{
}

void LivePictures::begin(const CameraSession& camera)
{
    expGetWidth(&mWidth, camera.id());
    expGetHeight(&mHeight, camera.id());
    mIsColour = hasColours(camera);
    mFigures = {};
}

bool LivePictures::fetch(const CameraSession& camera)
{
    std::uint8_t status = 0;
    std::uint8_t last = 0;
    const std::uint8_t* const pixels = expGetPreviewImage(&status, &last, camera.id());
    const auto now = StreamFigures::Clock::now();
    const std::size_t size = std::size_t{mWidth} * mHeight;
    if (pixels == nullptr || size < kFrameHeaderSize) {
        mFigures.lookedInVain(now);
        return false;
    }
    const GrayView frame{mWidth, mHeight, {pixels, size}};
    mFigures.came(decodeFrameHeader(frame.pixels).counter, size, now);
    ++mNumber;
    send(frame);
    return true;
}

/// Each picture is described once, and made once for all pages that want it alike.
void LivePictures::send(GrayView frame)
{
    const std::vector<PreviewFeed::Viewer> viewers = mFeed.takeDue(mNumber);
    if (viewers.empty()) {
        return;
    }
    const Json about = describe(frame);
    GrayImage picture(frame);
    hideHeader(picture);
    const PictureFigures figures = measure(picture.view());
    std::vector<std::pair<PictureWish, MessagePointer>> made;
    for (const PreviewFeed::Viewer& viewer : viewers) {
        auto same =
            std::ranges::find(made, viewer.wish, &std::pair<PictureWish, MessagePointer>::first);
        if (same == made.end()) {
            const PreviewPicture preview = renderPreview(picture.view(), mIsColour, viewer.wish);
            Json header = about;
            header.update(describePicture(picture.view(), figures, preview));
            made.emplace_back(viewer.wish, pictureMessage(header, preview.bytes));
            same = made.end() - 1;
        }
        mClients.send(viewer.client, same->second);
    }
}

Json LivePictures::describe(GrayView frame) const
{
    Json header{{"camera", mCamera},
                {"kind", "live"},
                {"number", mNumber},
                {"captured", millisecondsSinceEpoch()},
                {"fps", tenths(mFigures.rate())}};
    header.update(describeHeader(decodeFrameHeader(frame.pixels)));
    return header;
}

Json LivePictures::figures() const
{
    return {{"fps", tenths(mFigures.rate())},
            {"megabitsPerSecond", tenths(mFigures.megabitsPerSecond())},
            {"lost", mFigures.lost()},
            {"width", mWidth},
            {"height", mHeight}};
}

} // namespace telvo
