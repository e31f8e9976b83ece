#ifndef TELVO_TOOLS_TELVO_PANEL_PANELNEWS_H
#define TELVO_TOOLS_TELVO_PANEL_PANELNEWS_H

#include "Clients.h"

#include <cstdint>
#include <deque>
#include <mutex>
#include <set>
#include <string>

namespace telvo
{

/**
 * What people are told in passing. While no page is there to show it, it is kept for the first one
 * that comes. Any thread; mLock guards all members below it.
 */
class PanelNews
{
  public:
    static constexpr std::size_t kMostKept = 8; // the newest

    enum class Weight : std::uint8_t {
        Passing, ///< is gone after a moment
        Lasting, ///< stays until it is put away
    };

    /// The clients are borrowed until the end.
    explicit PanelNews(Clients& clients) : mClients(clients) {}

    void tell(const std::string& text, Weight weight = Weight::Passing);
    /// A page shows news from now on.
    void greet(ClientId client);
    void forget(ClientId client);

  private:
    Clients& mClients;
    std::mutex mLock;
    std::set<ClientId> mPages;
    std::deque<MessagePointer> mKept;
};

} // namespace telvo

#endif
