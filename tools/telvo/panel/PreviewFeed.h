#ifndef TELVO_TOOLS_TELVO_PANEL_PREVIEWFEED_H
#define TELVO_TOOLS_TELVO_PANEL_PREVIEWFEED_H

#include "Clients.h"
#include "PictureWish.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

namespace telvo
{

/**
 * Which pages get a camera's live pictures, and when: a page that has shown its last one gets the
 * newest there is. What comes meanwhile it never sees, so that nothing piles up before a slow one.
 * Any thread; mLock guards mViewers.
 */
class PreviewFeed
{
  public:
    /// What the page wants from now on; width 0: no more pictures. It may have one at once.
    void wish(ClientId client, const PictureWish& wish);
    /// The page has shown this picture.
    void seen(ClientId client, std::uint64_t number);
    void forget(ClientId client);

    struct Viewer {
        ClientId client;
        PictureWish wish;
    };
    /// Who is to get the picture of this number. They get no other until they have seen it.
    std::vector<Viewer> takeDue(std::uint64_t number);

  private:
    struct State {
        PictureWish wish;
        std::uint64_t awaited = 0; // number of the picture on its way; 0: none
    };

    std::mutex mLock;
    std::map<ClientId, State> mViewers;
};

} // namespace telvo

#endif
