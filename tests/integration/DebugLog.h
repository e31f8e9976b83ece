#ifndef TELVO_TESTS_INTEGRATION_DEBUGLOG_H
#define TELVO_TESTS_INTEGRATION_DEBUGLOG_H

#include "ViewerSocket.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// The debug viewer of the test's own network: keeps what the library logs. It reads all the time,
/// since the system queues a few lines only and the library drops those that find no room.
class DebugLog
{
  public:
    DebugLog();
    ~DebugLog();
    DebugLog(const DebugLog&) = delete;
    DebugLog& operator=(const DebugLog&) = delete;

    /// All lines that have come since the last call, without their line ends.
    std::vector<std::string> take();

  private:
    void read();
    /// Keeps the lines that have come. Needs the lock.
    void keepLines();

    ViewerSocket mSocket{"TelvoDll.debug"};
    int mEnd; // becomes readable when the reader shall end
    std::mutex mLock;
    std::vector<std::string> mLines;
    std::thread mReader;
};

bool contains(const std::vector<std::string>& lines, const std::string& line);

#endif
