#ifndef TELVO_TESTS_SRC_ACQUISITION_BLOCKTRANSFERTEST_H
#define TELVO_TESTS_SRC_ACQUISITION_BLOCKTRANSFERTEST_H

#include "GrabberTest.h"

#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <mutex>
#include <string>

constexpr std::size_t kFrameSize = 256; // bytes of a frame of 16 x 16

/// A frame with this counter; every byte behind its header is `filling`.
inline FrameFeed::Bytes frame(std::uint16_t counter, std::uint8_t filling = 0)
{
    FrameFeed::Bytes bytes(kFrameSize, filling);
    bytes[4] = static_cast<std::uint8_t>(counter);
    bytes[5] = static_cast<std::uint8_t>(counter >> 8);
    return bytes;
}

/// A camera of 16 x 16 pixels. A worker's list begins where it waits for its first buffer.
class BlockTransferTest : public GrabberTest
{
  protected:
    struct Block {
        const std::uint8_t* data;
        std::int64_t frames;
        std::uint32_t status;
    };

    static constexpr std::uint32_t kUntouched = 99;

    /// With the default settings but for these.
    static TelvoConnectionSettings settings(std::uint32_t requestMode,
                                            std::uint32_t outputInterPacketDelay = 0,
                                            std::uint32_t outputDataRate = 3)
    {
        TelvoConnectionSettings settings{};
        settings.useSettings = 1;
        settings.defaultInterPacketDelay = 2000;
        settings.outputInterPacketDelay = outputInterPacketDelay;
        settings.requestMode = requestMode;
        settings.outputDataRate = outputDataRate;
        return settings;
    }

    static TelvoConnectionSettings serial() { return settings(1); }

    void prepare(const TelvoConnectionSettings& settings = {})
    {
        s.camera().integer("Width").value(16);
        s.camera().integer("Height").value(16);
        ASSERT_EQ(connect(), 0);
        ASSERT_EQ(initialize(settings), 0);
        s.forget();
    }

    void start(const TelvoConnectionSettings& settings = {})
    {
        prepare(settings);
        ASSERT_EQ(expStartFrameBlockTransfer(kCamera), 0);
        ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
        s.forget();
    }

    std::int32_t request(std::uint32_t first, std::uint32_t count, std::uint32_t sequence = 0)
    {
        return expGetRecordedFrameBlock(nullptr, sequence, first, count, kCamera);
    }

    /// Frames with these counters, which the thread has taken when this returns.
    void feed(std::initializer_list<std::uint16_t> counters)
    {
        for (const std::uint16_t counter : counters) {
            s.pipelineFeed().feedFrame(frame(counter));
        }
        ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    }

    void feedError(Code operation)
    {
        s.pipelineFeed().feedError(operation);
        ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    }

    void feedFailure(Code retrieval)
    {
        s.pipelineFeed().feedFailure(retrieval);
        ASSERT_TRUE(s.pipelineFeed().waitUntilDrained());
    }

    Block collect()
    {
        Block block{.data = nullptr, .frames = kUntouched, .status = kUntouched};
        block.data = expGetRecordedFrameBlockResult(nullptr, &block.frames, &block.status, kCamera);
        return block;
    }

    /// Runs the actions at the next calls of this text, one each, on the calling thread and before
    /// the call is answered.
    void at(const std::string& call, std::deque<std::function<void()>> actions)
    {
        {
            const std::lock_guard lock(mActionsLock);
            mActions[call] = std::move(actions);
        }
        s.onCall([this](const std::string& made) { run(made); });
    }

  private:
    void run(const std::string& call)
    {
        std::function<void()> action;
        {
            const std::lock_guard lock(mActionsLock);
            const auto actions = mActions.find(call);
            if (actions == mActions.end() || actions->second.empty()) {
                return;
            }
            action = std::move(actions->second.front());
            actions->second.pop_front();
        }
        action();
    }

    std::mutex mActionsLock;
    std::map<std::string, std::deque<std::function<void()>>> mActions;
};

#endif
