#ifndef TELVO_TOOLS_TELVO_PANEL_WEB_CONNECTIONCOUNT_H
#define TELVO_TOOLS_TELVO_PANEL_WEB_CONNECTIONCOUNT_H

#include <cstddef>
#include <memory>
#include <optional>

namespace telvo
{

/// How many connections there are. Of one thread.
class ConnectionCount
{
  public:
    explicit ConnectionCount(std::size_t most) : mFree(std::make_shared<std::size_t>(most)) {}

    /// Of a connection, as long as there is one. Outlives the count.
    class Place
    {
      public:
        explicit Place(std::shared_ptr<std::size_t> free) : mFree(std::move(free)) { --*mFree; }
        ~Place()
        {
            if (mFree) {
                ++*mFree;
            }
        }
        Place(Place&&) = default;
        Place& operator=(Place&&) = delete;
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

      private:
        std::shared_ptr<std::size_t> mFree; // null: moved on
    };

    /// None: there are as many as may be.
    std::optional<Place> take()
    {
        return *mFree == 0 ? std::nullopt : std::optional<Place>(std::in_place, mFree);
    }

  private:
    std::shared_ptr<std::size_t> mFree;
};

} // namespace telvo

#endif
