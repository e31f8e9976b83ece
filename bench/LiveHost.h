#ifndef TELVO_BENCH_LIVEHOST_H
#define TELVO_BENCH_LIVEHOST_H

#include "PvDevice.h"
#include "PvPipeline.h"
#include "PvStream.h"

#include <chrono>
#include <cstdint>
#include <string>

/// What a host got in a while.
struct LiveFigures {
    double seconds = 0;
    std::int64_t whole = 0;
    std::int64_t failed = 0;
    std::int64_t dropped = 0; // no buffer was free when they began
    double bytes = 0;         // received, also of incomplete frames

    LiveFigures& operator+=(const LiveFigures& other);
};

/// The picture that a camera is to send, and how.
struct LiveSettings {
    std::int64_t width = 1280;
    std::int64_t height = 1024;
    std::int64_t packetSize = 1500;
    bool packetRing = true; // where the system allows it
    std::uint32_t buffers = 64;
};

/// A host that watches one camera live. @throws std::runtime_error whatever fails
class LiveHost
{
  public:
    LiveHost(const std::string& address, const LiveSettings& settings);
    ~LiveHost();
    LiveHost(const LiveHost&) = delete;
    LiveHost& operator=(const LiveHost&) = delete;

    /// Takes pictures for this long, the first one not counted.
    LiveFigures take(std::chrono::milliseconds time);
    /// CPU seconds that the receiving thread has used.
    double receiverSeconds() const;
    /// One of the stream's readings.
    std::int64_t reading(const char* name);

  private:
    void openStream(const std::string& address, bool packetRing);
    void setInteger(const char* name, std::int64_t value);
    void execute(const char* name);
    bool next();

    PvDevice mDevice;
    PvStream mStream;
    PvPipeline mPipeline{&mStream};
    std::string mReceiver; // the stream's one thread
};

#endif
