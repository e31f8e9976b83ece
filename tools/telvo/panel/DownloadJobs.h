#ifndef TELVO_TOOLS_TELVO_PANEL_DOWNLOADJOBS_H
#define TELVO_TOOLS_TELVO_PANEL_DOWNLOADJOBS_H

#include "Clients.h"
#include "Json.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <stop_token>

namespace telvo
{

/**
 * The downloads that run, and whether their user wants them to. Any thread; mLock guards all
 * members.
 */
class DownloadJobs
{
  public:
    /// The clients are borrowed until the end.
    explicit DownloadJobs(Clients& clients) : mClients(clients) {}

    /// @return the new job's number
    std::uint32_t begin();
    /// Tells all pages how a job goes, and those that come later.
    void tell(std::uint32_t job, const Json& news);
    /// The same for the last time.
    void end(std::uint32_t job, const Json& news);

    /// False: there is no such job, or it has ended.
    bool cancel(std::uint32_t job);
    /// Requests the end of the job once it is cancelled. For a job that runs.
    std::stop_token cancelToken(std::uint32_t job) const;

    /// Tells a page what runs.
    void tellAll(ClientId client) const;

  private:
    struct State {
        MessagePointer news{}; // null: none yet
        std::stop_source cancel{};
    };

    MessagePointer messageOf(std::uint32_t job, const Json& news) const;

    Clients& mClients;
    mutable std::mutex mLock;
    std::uint32_t mLast = 0;
    std::map<std::uint32_t, State> mJobs;
};

} // namespace telvo

#endif
