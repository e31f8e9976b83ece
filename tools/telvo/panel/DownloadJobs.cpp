#include "DownloadJobs.h"

#include "PanelMessages.h"

namespace telvo
{

std::uint32_t DownloadJobs::begin()
{
    const std::lock_guard guard(mLock);
    mJobs[++mLast] = {};
    return mLast;
}

void DownloadJobs::tell(std::uint32_t job, const Json& news)
{
    MessagePointer message = messageOf(job, news);
    {
        const std::lock_guard guard(mLock);
        mJobs[job].news = message;
    }
    mClients.sendAll(std::move(message));
}

void DownloadJobs::end(std::uint32_t job, const Json& news)
{
    {
        const std::lock_guard guard(mLock);
        mJobs.erase(job);
    }
    mClients.sendAll(messageOf(job, news));
}

bool DownloadJobs::cancel(std::uint32_t job)
{
    const std::lock_guard guard(mLock);
    const auto found = mJobs.find(job);
    return found != mJobs.end() && found->second.cancel.request_stop();
}

std::stop_token DownloadJobs::cancelToken(std::uint32_t job) const
{
    const std::lock_guard guard(mLock);
    return mJobs.at(job).cancel.get_token();
}

void DownloadJobs::tellAll(ClientId client) const
{
    const std::lock_guard guard(mLock);
    for (const auto& [job, state] : mJobs) {
        if (state.news) {
            mClients.send(client, state.news);
        }
    }
}

MessagePointer DownloadJobs::messageOf(std::uint32_t job, const Json& news) const
{
    Json fields{{"job", job}};
    fields.update(news);
    return eventMessage("download", fields);
}

} // namespace telvo
