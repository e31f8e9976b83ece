#ifndef TELVO_TOOLS_TELVO_SHAREDSTATUS_H
#define TELVO_TOOLS_TELVO_SHAREDSTATUS_H

#include "StatusLine.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace telvo
{

/// The progress of work with several cameras on one line; each on a thread of its own.
class SharedStatus
{
  public:
    explicit SharedStatus(std::size_t cameras) : mTexts(cameras) {}

    void show(std::size_t camera, const std::string& text)
    {
        const std::lock_guard guard(mLock);
        mTexts[camera] = text;
        std::string line;
        for (const std::string& each : mTexts) {
            line += (line.empty() ? "" : " | ") + each;
        }
        mLine.show(line);
    }

  private:
    std::mutex mLock; // guards the others
    std::vector<std::string> mTexts;
    StatusLine mLine;
};

} // namespace telvo

#endif
