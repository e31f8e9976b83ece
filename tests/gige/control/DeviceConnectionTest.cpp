#include "DeviceConnection.h"

#include "ControlFixture.h"
#include "DirectLine.h"
#include "TestClock.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <thread>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

constexpr std::uint32_t kCcp = 0x0A00;
constexpr std::uint32_t kHeartbeatTimeout = 0x0938;

/// A connection that beats often, and waits for what its heartbeat brings.
class DeviceConnectionFixture : public testing::Test
{
  protected:
    explicit DeviceConnectionFixture(DeviceModel& device) : mDevice(device)
    {
        mSettings.answerTimeout = 1000;
        mSettings.commandRetryCount = 1;
        mSettings.heartbeatInterval = 20;
    }

    virtual void pass(milliseconds time) = 0;

    void tell()
    {
        mLostOn = std::this_thread::get_id();
        ++mLost;
    }

    /// The device then loses its patience, and we ours, within this time of silence.
    void setHeartbeatTimeout(std::uint32_t timeout) { mSettings.defaultHeartbeatTimeout = timeout; }

    bool waitForLoss()
    {
        for (int i = 0; i < 2000 && mLost == 0; ++i) {
            pass(milliseconds(5));
        }
        return mLost != 0;
    }

    /// Reads of CCP, which is what a heartbeat is.
    std::size_t heartbeats() const
    {
        std::size_t count = 0;
        for (const FakeCommand& command : mDevice.commands(kReadRegisterCommand)) {
            count += command.firstWord == kCcp ? 1U : 0U;
        }
        return count;
    }

    bool waitForWrite(std::uint32_t address)
    {
        const auto isIt = [address](const FakeCommand& one) { return one.firstWord == address; };
        for (int i = 0; i < 2000; ++i) {
            if (std::ranges::any_of(mDevice.commands(kWriteRegisterCommand), isIt)) {
                return true;
            }
            pass(milliseconds(5));
        }
        return false;
    }

    bool waitForHeartbeats(std::size_t wanted)
    {
        for (int i = 0; i < 2000 && heartbeats() < wanted; ++i) {
            pass(milliseconds(5));
        }
        return heartbeats() >= wanted;
    }

    DeviceModel& mDevice;
    LinkSettings mSettings;
    ControlLimits mLimits;
    std::atomic<int> mLost{0};
    std::atomic<std::thread::id> mLostOn{};
};

/// Over no network, in a time that only waiting lets pass.
class DeviceConnectionTest : public DeviceConnectionFixture
{
  protected:
    DeviceConnectionTest() : DeviceConnectionFixture(mModel) {}

    Result<std::unique_ptr<DeviceConnection>> open(AccessType access = AccessType::Exclusive)
    {
        const net::Endpoint device{.address = {0x7F00021F}, .port = 3956};
        return DeviceConnection::open(
            std::make_unique<ControlChannel>(std::make_unique<DirectLine>(mModel, device, mClock),
                                             device, mSettings, mLimits, mClock),
            {.ip = device.address, .nic = loopback()}, access, mSettings, [this] { tell(); },
            mLimits);
    }

    /// Opens, or fails the test.
    std::unique_ptr<DeviceConnection> connected(AccessType access = AccessType::Exclusive)
    {
        mClock.setThreads(2); // this one and the heartbeat's
        auto opened = open(access);
        EXPECT_TRUE(opened);
        return opened ? std::move(*opened) : nullptr;
    }

    void pass(milliseconds time) override { mClock.run(time); }

    [[nodiscard]] std::int64_t elapsed(Clock::TimePoint since) const
    {
        return std::chrono::duration_cast<milliseconds>(mClock.now() - since).count();
    }

    DeviceModel mModel{0x7F00021F};
    TestClock mClock;
};

/// Over the network and in real time: of threads that wait for each other's turn, only the system
/// decides which comes first.
class DeviceConnectionThreadsTest : public DeviceConnectionFixture
{
  protected:
    DeviceConnectionThreadsTest() : DeviceConnectionFixture(mFake) {}

    /// Opens, or fails the test.
    std::unique_ptr<DeviceConnection> connected()
    {
        auto opened = DeviceConnection::open(
            {.ip = {0x7F00021F}, .nic = loopback()}, AccessType::Exclusive, mSettings,
            [this] { tell(); }, mLimits);
        EXPECT_TRUE(opened);
        return opened ? std::move(*opened) : nullptr;
    }

    void pass(milliseconds time) override { std::this_thread::sleep_for(time); }

    FakeDevice mFake{"127.0.2.31"};
};

TEST_F(DeviceConnectionTest, TakesControlAndGivesItBack)
{
    auto device = connected(AccessType::Exclusive);
    EXPECT_EQ(mDevice.registerValue(kCcp), 1U);
    EXPECT_TRUE(device->isConnected());
    device->disconnect();
    EXPECT_EQ(mDevice.registerValue(kCcp), 0U);
    EXPECT_FALSE(device->isConnected());
    EXPECT_EQ(mLost, 0);
}

TEST_F(DeviceConnectionTest, EndingTheObjectDisconnects)
{
    connected(AccessType::Control).reset();
    const auto writes = mDevice.commands(kWriteRegisterCommand);
    EXPECT_EQ(writes.front().datagram.back(), 2) << "CCP control";
    EXPECT_EQ(writes.back().datagram.back(), 0);
    EXPECT_EQ(mDevice.registerValue(kCcp), 0U);
}

TEST_F(DeviceConnectionTest, OpenAccessWritesNothing)
{
    auto device = connected(AccessType::Open);
    EXPECT_TRUE(waitForHeartbeats(2)) << "liveness is watched all the same";
    device.reset();
    EXPECT_EQ(mDevice.count(kWriteRegisterCommand), 0U);
}

TEST_F(DeviceConnectionTest, SetsTheHeartbeatTimeout)
{
    setHeartbeatTimeout(5000);
    const auto device = connected();
    EXPECT_EQ(mDevice.registerValue(kHeartbeatTimeout), 5000U);
}

TEST_F(DeviceConnectionTest, SwitchesOnWhatTheDeviceOffers)
{
    mDevice.setRegister(0x0934, 0x00400020 | 0x3); // extended status 1.1, PENDING_ACK
    mDevice.setRegister(0x0954, 0x8);
    const auto device = connected();
    EXPECT_EQ(mDevice.registerValue(0x0954), 0xEU);
}

TEST_F(DeviceConnectionTest, LeavesTheConfigurationAloneWhenNothingIsOffered)
{
    mDevice.setRegister(0x0954, 0x8);
    const auto device = connected();
    EXPECT_EQ(mDevice.registerValue(0x0954), 0x8U);
}

TEST_F(DeviceConnectionTest, ADeviceHeldByAnotherHostIsAccessDeniedAtOnce)
{
    mDevice.setScript([](const FakeCommand& command) {
        const bool write = command.code == kWriteRegisterCommand;
        return std::vector<FakeAnswer>{{write ? errorAck(command, 0x8006) : command.ack}};
    });
    const auto opened = open();
    EXPECT_EQ(opened.status(), deviceError(wire::GvcpStatus::AccessDenied));
    EXPECT_EQ(mDevice.count(kWriteRegisterCommand), 1U);
}

TEST_F(DeviceConnectionTest, ADeviceThatDropsForeignWritesIsAccessDeniedToo)
{
    mDevice.setScript([](const FakeCommand& command) {
        if (command.code == kWriteRegisterCommand) {
            return std::vector<FakeAnswer>{};
        }
        Bytes ack = command.ack;
        if (command.firstWord == kCcp) {
            ack.back() = 2; // held
        }
        return std::vector<FakeAnswer>{{ack}};
    });
    EXPECT_EQ(open().status(), deviceError(wire::GvcpStatus::AccessDenied));
}

TEST_F(DeviceConnectionTest, AnAbsentDeviceIsATimeout)
{
    mDevice.setSilent(true);
    EXPECT_EQ(open().status(), Status::Timeout);
}

TEST_F(DeviceConnectionTest, AnInterfaceThatIsGoneIsANetworkError)
{
    net::NetworkInterface gone = loopback();
    gone.address = {0xC0000201};
    const auto opened = DeviceConnection::open({.ip = {0x7F00021F}, .nic = gone},
                                               AccessType::Control, mSettings, [] {});
    EXPECT_EQ(opened.status(), Status::NetworkError);
}

TEST_F(DeviceConnectionTest, BeatsAtItsIntervalAndFollowsAChange)
{
    mSettings.heartbeatInterval = 3000;
    setHeartbeatTimeout(60'000);
    const auto device = connected();
    pass(milliseconds(100));
    EXPECT_EQ(heartbeats(), 0U) << "the first one after an interval";
    mSettings.heartbeatInterval = 10;
    const auto start = mClock.now();
    EXPECT_TRUE(waitForHeartbeats(20));
    EXPECT_LT(elapsed(start), 30'000) << "20 at the old interval take a minute";
}

TEST_F(DeviceConnectionTest, BeatsThriceATimeoutHoweverLongTheInterval)
{
    mSettings.heartbeatInterval = 600'000;
    setHeartbeatTimeout(3000);
    const auto device = connected();
    EXPECT_TRUE(waitForHeartbeats(2));
    EXPECT_TRUE(device->isConnected());
}

TEST_F(DeviceConnectionTest, SilenceForTheHeartbeatTimeoutLosesTheLink)
{
    setHeartbeatTimeout(1500);
    auto device = connected();
    ASSERT_TRUE(waitForHeartbeats(1));
    mDevice.setSilent(true);
    const auto start = mClock.now();
    ASSERT_TRUE(waitForLoss());
    EXPECT_GE(elapsed(start), 1000);
    EXPECT_FALSE(device->isConnected());
    EXPECT_NE(mLostOn.load(), std::this_thread::get_id());
    EXPECT_EQ(device->registers().readRegister(0).status(), Status::NotConnected);
    EXPECT_EQ(device->registers().writeRegister(kCcp, 1), Status::NotConnected);
    mDevice.setSilent(false);
    const std::size_t sent = mDevice.commands().size();
    device->disconnect();
    device.reset();
    EXPECT_EQ(mLost, 1) << "told once, and not again by the disconnect";
    EXPECT_EQ(mDevice.commands().size(), sent) << "nothing is sent over a lost link";
}

TEST_F(DeviceConnectionTest, ASilenceShorterThanTheTimeoutIsForgiven)
{
    setHeartbeatTimeout(10'000);
    const auto device = connected();
    ASSERT_TRUE(waitForHeartbeats(1));
    mDevice.setSilent(true);
    pass(milliseconds(500));
    mDevice.setSilent(false);
    const std::size_t before = heartbeats();
    EXPECT_TRUE(waitForHeartbeats(before + 3));
    EXPECT_EQ(mLost, 0);
    EXPECT_TRUE(device->isConnected());
}

TEST_F(DeviceConnectionTest, ATimeoutThatAFeatureSetsCountsFromThenOn)
{
    setHeartbeatTimeout(60'000);
    const auto device = connected();
    ASSERT_EQ(device->registers().writeRegister(kHeartbeatTimeout, 1500), Status::Ok);
    const std::size_t before = heartbeats();
    ASSERT_TRUE(waitForHeartbeats(before + 2));
    mDevice.setSilent(true);
    EXPECT_TRUE(waitForLoss()) << "not after a minute";
}

TEST_F(DeviceConnectionTest, AHeartbeatTimeoutBeyondAllReasonIsNotBelieved)
{
    mLimits.heartbeat.longest = milliseconds(1000);
    mDevice.setScript([](const FakeCommand& command) {
        Bytes ack = command.ack;
        const Bytes asked(command.datagram.end() - 4, command.datagram.end());
        if (command.code == kReadRegisterCommand && asked == Bytes{0, 0, 0x09, 0x38}) {
            std::fill(ack.end() - 4, ack.end(), 0xFF);
        }
        return std::vector<FakeAnswer>{{ack}};
    });
    const auto device = connected();
    ASSERT_TRUE(waitForHeartbeats(2));
    mDevice.setSilent(true);
    EXPECT_TRUE(waitForLoss()) << "not after 49 days";
}

TEST_F(DeviceConnectionTest, ADeviceThatOnlyPromisesIsLost)
{
    mLimits.connected.pending = milliseconds(500);
    setHeartbeatTimeout(1000);
    const auto device = connected();
    mDevice.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{pendingAck(command, 10'000)}};
    });
    EXPECT_TRUE(waitForLoss());
}

TEST_F(DeviceConnectionThreadsTest, DisconnectingFromADeviceThatOnlyPromisesIsQuick)
{
    setHeartbeatTimeout(60'000);
    const auto device = connected();
    mDevice.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{pendingAck(command, 10'000)}};
    });
    std::thread waiting(
        [&] { EXPECT_NE(device->registers().writeRegister(0x0904, 1), Status::Ok); });
    ASSERT_TRUE(waitForWrite(0x0904));
    const auto start = std::chrono::steady_clock::now();
    device->hurry();
    EXPECT_NE(device->registers().writeRegister(0x0D00, 0), Status::Ok);
    device->disconnect();
    EXPECT_LT(elapsed(start), 4'000) << "nominally 800 ms";
    waiting.join();
    EXPECT_EQ(mLost, 0);
}

TEST_F(DeviceConnectionTest, OpeningEndsSoonWhereverTheDeviceFallsSilent)
{
    mSettings.answerTimeout = 60'000;
    for (int answers = 0; answers < 7; ++answers) {
        mDevice.setScript([answers](const FakeCommand& command) mutable {
            return --answers < 0 ? std::vector<FakeAnswer>{} : std::vector{FakeAnswer{command.ack}};
        });
        mLimits.opening.silence = milliseconds(100);
        const auto start = mClock.now();
        (void)open(); // what a device can do without may be missing
        EXPECT_LT(elapsed(start), 10'000) << answers;
    }
}

TEST_F(DeviceConnectionTest, ControlTakenAwayLosesTheLink)
{
    const auto device = connected();
    mDevice.setRegister(kCcp, 0);
    EXPECT_TRUE(waitForLoss());
    EXPECT_FALSE(device->isConnected());
}

TEST_F(DeviceConnectionTest, ADeniedHeartbeatMeansThatAnotherHostHoldsTheDevice)
{
    const auto device = connected();
    mDevice.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{errorAck(command, 0x8006)}};
    });
    EXPECT_TRUE(waitForLoss());
}

TEST_F(DeviceConnectionTest, AnotherHostInOurPlaceIsNoticedWhereTheDeviceTells)
{
    mDevice.setRegister(0x0934, 0x08000003);
    mDevice.setRegister(0x0A04, 50000);
    mDevice.setRegister(0x0A14, 0x7F000001);
    const auto device = connected();
    ASSERT_TRUE(waitForHeartbeats(3));
    EXPECT_EQ(mLost, 0);
    mDevice.setRegister(0x0A04, 50001);
    EXPECT_TRUE(waitForLoss()) << "though CCP still shows a holder";
}

TEST_F(DeviceConnectionTest, OtherErrorsOfAHeartbeatShowThatTheDeviceLives)
{
    setHeartbeatTimeout(1000);
    const auto device = connected();
    mDevice.setScript([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{errorAck(command, 0x8002)}};
    });
    pass(milliseconds(2000));
    EXPECT_EQ(mLost, 0);
    EXPECT_TRUE(device->isConnected());
}

TEST_F(DeviceConnectionThreadsTest, BusyFeatureCallsDoNotStarveTheHeartbeat)
{
    const auto device = connected();
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    threads.reserve(3);
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            while (!stop) {
                EXPECT_TRUE(device->registers().readRegister(0));
            }
        });
    }
    EXPECT_TRUE(waitForHeartbeats(10));
    stop = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// Reads for longer than the heartbeat timeout, and then stays silent for as long.
TEST_F(DeviceConnectionThreadsTest, AnyAnswerCountsAsAHeartbeat)
{
    setHeartbeatTimeout(2000);
    const auto device = connected();
    mSettings.answerTimeout = 100;
    mDevice.setScript([](const FakeCommand& command) { // heartbeats alone go unanswered
        const bool heartbeat = command.firstWord == kCcp;
        return heartbeat ? std::vector<FakeAnswer>{} : std::vector{FakeAnswer{command.ack}};
    });
    const auto start = std::chrono::steady_clock::now();
    int answers = 0;
    while (elapsed(start) < 3000) {
        answers += device->registers().readRegister(0) ? 1 : 0;
    }
    EXPECT_GT(answers, 3);
    EXPECT_EQ(mLost, 0);
    EXPECT_TRUE(waitForLoss()) << "once the others have ended";
}

TEST_F(DeviceConnectionThreadsTest, AWaitingPromiseKeepsTheLink)
{
    setHeartbeatTimeout(1000);
    const auto device = connected();
    mDevice.setScript([](const FakeCommand& command) {
        if (command.firstWord != 0x0904) {
            return std::vector<FakeAnswer>{{command.ack}};
        }
        return std::vector<FakeAnswer>{
            {pendingAck(command, 5000)},
            {.datagram = command.ack, .delay = milliseconds(2500)}}; // more than the timeout
    });
    EXPECT_EQ(device->registers().writeRegister(0x0904, 1), Status::Ok);
    EXPECT_EQ(mLost, 0);
    EXPECT_TRUE(device->isConnected());
}

TEST_F(DeviceConnectionTest, AnUnansweredCommandLosesTheLinkIfSoWanted)
{
    mSettings.disconnectOnAnswerTimeout = 1;
    setHeartbeatTimeout(60'000);
    mSettings.heartbeatInterval = 60'000;
    const auto device = connected();
    mDevice.setSilent(true);
    EXPECT_EQ(device->registers().readRegister(0).status(), Status::Timeout);
    EXPECT_FALSE(device->isConnected());
    EXPECT_TRUE(waitForLoss());
    EXPECT_NE(mLostOn.load(), std::this_thread::get_id());
    EXPECT_EQ(mLost, 1);
}

TEST_F(DeviceConnectionThreadsTest, DisconnectingEndsAWaitingCommandAtOnce)
{
    mSettings.answerTimeout = 60'000;
    setHeartbeatTimeout(600'000);
    auto device = connected();
    const std::size_t before = mDevice.count(kReadMemoryCommand);
    mDevice.setScript([](const FakeCommand& command) {
        const bool memory = command.code == kReadMemoryCommand;
        return memory ? std::vector<FakeAnswer>{} : std::vector{FakeAnswer{command.ack}};
    });
    const auto start = std::chrono::steady_clock::now();
    std::thread waiting([&] {
        Bytes bytes(4);
        EXPECT_EQ(device->registers().readMemory(0x10000, bytes), Status::NotConnected);
    });
    ASSERT_TRUE(mDevice.waitForCount(kReadMemoryCommand, before + 1));
    device->disconnect();
    waiting.join();
    EXPECT_LT(elapsed(start), 20'000);
    EXPECT_EQ(mDevice.registerValue(kCcp), 0U);
    EXPECT_EQ(mLost, 0);
}

TEST_F(DeviceConnectionTest, DisconnectingFromASilentDeviceIsQuick)
{
    mSettings.answerTimeout = 60'000;
    mSettings.commandRetryCount = 3;
    setHeartbeatTimeout(600'000);
    auto device = connected();
    mDevice.setSilent(true);
    const auto start = mClock.now();
    device->disconnect();
    EXPECT_LT(elapsed(start), 20'000);
    EXPECT_EQ(mLost, 0);
}

/// Opens a connection, takes control away from it, and lets the loss do this to it.
template <typename Action>
void loseTo(DeviceModel& fake, const LinkSettings& settings, Action action)
{
    std::unique_ptr<DeviceConnection> device;
    std::atomic<bool> opened{false};
    std::atomic<bool> done{false};
    auto opening = DeviceConnection::open({.ip = {0x7F00021F}, .nic = loopback()},
                                          AccessType::Control, settings, [&] {
                                              EXPECT_TRUE(opened);
                                              action(device);
                                              done = true;
                                          });
    ASSERT_TRUE(opening);
    device = std::move(*opening);
    opened = true;
    fake.setRegister(kCcp, 0);
    for (int i = 0; i < 2000 && !done; ++i) {
        std::this_thread::sleep_for(milliseconds(5));
    }
    EXPECT_TRUE(done);
}

TEST_F(DeviceConnectionThreadsTest, TheLossMayDisconnect)
{
    loseTo(mDevice, mSettings, [](auto& device) { device->disconnect(); });
}

TEST_F(DeviceConnectionThreadsTest, TheLossMayEndTheObject)
{
    loseTo(mDevice, mSettings, [](auto& device) { device.reset(); });
}

TEST_F(DeviceConnectionThreadsTest, ALossThatNeverReturnsKeepsNobodyFromEndingTheObject)
{
    std::promise<void> told;
    std::promise<void> mayReturn;
    std::promise<void> returned;
    auto device = DeviceConnection::open({.ip = {0x7F00021F}, .nic = loopback()},
                                         AccessType::Control, mSettings, [&] {
                                             told.set_value();
                                             mayReturn.get_future().wait();
                                             returned.set_value();
                                         });
    ASSERT_TRUE(device);
    mDevice.setRegister(kCcp, 0);
    told.get_future().wait();
    const auto start = std::chrono::steady_clock::now();
    device->reset();
    EXPECT_LT(elapsed(start), 5000);
    mayReturn.set_value();
    returned.get_future().wait();
}

TEST_F(DeviceConnectionThreadsTest, ALossThatReturnsSoonIsWaitedFor)
{
    std::promise<void> told;
    std::atomic<bool> hasReturned{false};
    auto device = DeviceConnection::open({.ip = {0x7F00021F}, .nic = loopback()},
                                         AccessType::Control, mSettings, [&] {
                                             told.set_value();
                                             std::this_thread::sleep_for(milliseconds(20));
                                             hasReturned = true;
                                         });
    ASSERT_TRUE(device);
    mDevice.setRegister(kCcp, 0);
    told.get_future().wait();
    device->reset();
    EXPECT_TRUE(hasReturned);
}

} // namespace
} // namespace gige::control
