#ifndef TELVO_TOOLS_TELVO_PANEL_LIVEPICTURES_H
#define TELVO_TOOLS_TELVO_PANEL_LIVEPICTURES_H

#include "CameraSession.h"
#include "Clients.h"
#include "GrayImage.h"
#include "Json.h"
#include "PreviewFeed.h"
#include "StreamFigures.h"

#include <cstdint>
#include <string>

namespace telvo
{

/// Brings a camera's live pictures to the pages, as fast as each of them takes them. Of the
/// camera's thread.
class LivePictures
{
  public:
    /// @param feed, clients  borrowed until the end
    LivePictures(std::string camera, PreviewFeed& feed, Clients& clients);

    /// A mode that streams begins.
    void begin(const CameraSession& camera);
    /// Fetches the newest picture, if there is one. @return whether there was one
    bool fetch(const CameraSession& camera);

    std::uint32_t width() const { return mWidth; }   // pixels
    std::uint32_t height() const { return mHeight; } // pixels
    /// Rate, losses and size, as members of a camera's state.
    Json figures() const;

  private:
    void send(GrayView frame);
    Json describe(GrayView frame) const;

    const std::string mCamera; // MAC
    PreviewFeed& mFeed;
    Clients& mClients;
    std::uint32_t mWidth = 0;
    std::uint32_t mHeight = 0;
    bool mIsColour = false;
    std::uint64_t mNumber = 0; // of the newest picture; all that were ever taken
    StreamFigures mFigures;
};

} // namespace telvo

#endif
