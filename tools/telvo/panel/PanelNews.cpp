#include "PanelNews.h"

#include "PanelMessages.h"

namespace telvo
{

void PanelNews::tell(const std::string& text, Weight weight)
{
    MessagePointer message =
        eventMessage("log", {{"text", text}, {"stays", weight == Weight::Lasting}});
    const std::lock_guard guard(mLock);
    if (!mPages.empty()) {
        return mClients.sendAll(std::move(message));
    }
    if (mKept.empty() || mKept.back()->bytes != message->bytes) { // what is said every second, once
        mKept.push_back(std::move(message));
    }
    if (mKept.size() > kMostKept) {
        mKept.pop_front();
    }
}

void PanelNews::greet(ClientId client)
{
    const std::lock_guard guard(mLock);
    mPages.insert(client);
    for (MessagePointer& message : mKept) {
        mClients.send(client, std::move(message));
    }
    mKept.clear();
}

void PanelNews::forget(ClientId client)
{
    const std::lock_guard guard(mLock);
    mPages.erase(client);
}

} // namespace telvo
