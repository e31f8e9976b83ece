#include "ControlChannel.h"

#include "ControlFixture.h"
#include "DirectLine.h"
#include "TestClock.h"

#include <gtest/gtest.h>
#include <thread>
#include <utility>

namespace gige::control
{
namespace
{

using std::chrono::milliseconds;

/// A channel to a device that is patient unless a test needs it otherwise.
class ControlChannelFixture : public testing::Test
{
  protected:
    ControlChannelFixture()
    {
        mSettings.answerTimeout = 5000;
        mSettings.commandRetryCount = 3;
    }

    Result<wire::Bytes> readVersion() { return mChannel->execute(kReadVersion); }
    Result<wire::Bytes> takeControl() { return mChannel->execute(kTakeControl); }

    const Command kReadVersion{.code = wire::GvcpCommand::ReadRegister,
                               .payload = {0, 0, 0, 0},
                               .acceptable = [](wire::ByteView ack) { return ack.size() >= 4; }};
    const Command kTakeControl{.code = wire::GvcpCommand::WriteRegister,
                               .payload = {0, 0, 0x0A, 0, 0, 0, 0, 2}};
    const wire::Bytes kVersion{0, 1, 0, 2};

    LinkSettings mSettings;
    std::unique_ptr<ControlChannel> mChannel;
};

/// Over no network, in a time that only waiting lets pass.
class ControlChannelTest : public ControlChannelFixture
{
  protected:
    ControlChannelTest() { reopen({}); }

    /// Every command gets what the script makes of its faultless answer.
    void answerWith(std::vector<FakeAnswer> (*script)(const FakeCommand&))
    {
        mDevice.setScript(script);
    }

    void reopen(const ControlLimits& limits)
    {
        const net::Endpoint device{.address = {0x7F000201}, .port = 3956};
        mChannel =
            std::make_unique<ControlChannel>(std::make_unique<DirectLine>(mDevice, device, mClock),
                                             device, mSettings, limits, mClock);
    }

    void reopenWithPendingTime(milliseconds time)
    {
        reopen({.connected = {.sending = kUnlimited, .silence = kUnlimited, .pending = time}});
    }

    /// A device that promises ten seconds again and again, for most of a second.
    static std::vector<FakeAnswer> promises(const FakeCommand& command)
    {
        return std::vector<FakeAnswer>(
            30, {.datagram = pendingAck(command, 10'000), .delay = milliseconds(20)});
    }

    [[nodiscard]] std::int64_t elapsed(Clock::TimePoint since) const
    {
        return std::chrono::duration_cast<milliseconds>(mClock.now() - since).count();
    }

    DeviceModel mDevice{0x7F000201};
    TestClock mClock;
};

/// A device at 127.0.2.1, and a channel to it over the network.
class ControlChannelNetworkTest : public ControlChannelFixture
{
  protected:
    ControlChannelNetworkTest() { mChannel = ControlChannel::open(kHost, {0x7F000201}, mSettings); }

    FakeDevice mDevice{"127.0.2.1"};
};

TEST_F(ControlChannelTest, SendsTheStandardsBytesAndReturnsTheAnswersPayload)
{
    const auto answer = readVersion();
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer, kVersion);
    const auto sent = mDevice.commands().at(0);
    const auto high = static_cast<std::uint8_t>(sent.requestId >> 8);
    const auto low = static_cast<std::uint8_t>(sent.requestId);
    EXPECT_EQ(sent.datagram, (Bytes{0x42, 0x01, 0x00, 0x80, 0x00, 0x04, high, low, 0, 0, 0, 0}));
}

TEST_F(ControlChannelTest, EveryCommandHasTheNextRequestIdAndNeverZero)
{
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(readVersion());
    }
    const auto sent = mDevice.commands();
    ASSERT_EQ(sent.size(), 3U);
    for (std::size_t i = 1; i < sent.size(); ++i) {
        EXPECT_EQ(sent[i].requestId, wire::nextRequestId(sent[i - 1].requestId));
        EXPECT_NE(sent[i].requestId, 0);
    }
}

TEST_F(ControlChannelTest, RepeatsAnUnansweredCommandWithTheSameBytes)
{
    mSettings.answerTimeout = 150;
    mDevice.setScript([tries = 0](const FakeCommand& command) mutable {
        return ++tries < 3 ? std::vector<FakeAnswer>{} : std::vector{FakeAnswer{command.ack}};
    });
    const auto answer = takeControl();
    EXPECT_TRUE(answer);
    const auto sent = mDevice.commands();
    ASSERT_GE(sent.size(), 3U);
    for (const FakeCommand& repetition : sent) {
        EXPECT_EQ(repetition.datagram, sent[0].datagram);
    }
}

TEST_F(ControlChannelTest, GivesUpAfterTheRetriesWithATimeout)
{
    mSettings.answerTimeout = 100;
    mDevice.setSilent(true);
    const auto start = mClock.now();
    EXPECT_EQ(readVersion().status(), Status::Timeout);
    EXPECT_GE(elapsed(start), 4 * 100);
    EXPECT_TRUE(mDevice.waitForCount(kReadRegisterCommand, 4));
    EXPECT_EQ(mDevice.count(kReadRegisterCommand), 4U);
    EXPECT_FALSE(mChannel->isClosed());
}

TEST_F(ControlChannelTest, PatienceChangesWhileConnected)
{
    mDevice.setSilent(true);
    mSettings.answerTimeout = 20;
    mSettings.commandRetryCount = 1;
    EXPECT_EQ(readVersion().status(), Status::Timeout);
    EXPECT_TRUE(mDevice.waitForCount(kReadRegisterCommand, 2));
    EXPECT_EQ(mDevice.count(kReadRegisterCommand), 2U);
}

TEST_F(ControlChannelTest, ADeadlineEndsTheTriesEarly)
{
    mDevice.setSilent(true);
    const auto start = mClock.now();
    const auto answer = mChannel->execute(kReadVersion, start + milliseconds(50));
    EXPECT_EQ(answer.status(), Status::Timeout);
    EXPECT_TRUE(mDevice.waitForCount(kReadRegisterCommand, 1));
    EXPECT_EQ(mDevice.count(kReadRegisterCommand), 1U);
}

TEST_F(ControlChannelNetworkTest, ADeviceThatIsNotThereIsATimeout)
{
    mSettings.answerTimeout = 20;
    const auto nobody = ControlChannel::open(kHost, {0x7F0002FA}, mSettings);
    ASSERT_NE(nobody, nullptr);
    EXPECT_EQ(nobody->execute(kReadVersion).status(), Status::Timeout);
}

TEST_F(ControlChannelNetworkTest, NeedsAnAddressOfThisMachine)
{
    EXPECT_EQ(ControlChannel::open({0xC0000201}, {0x7F000201}, mSettings), nullptr);
}

TEST_F(ControlChannelTest, DropsAnswersToOtherCommands)
{
    answerWith([](const FakeCommand& command) {
        Bytes wrong = command.ack;
        wrong.back() = 0xEE;
        const auto otherId = static_cast<std::uint16_t>(command.requestId + 1);
        return std::vector<FakeAnswer>{
            {withRequestId(wrong, otherId)}, {withCode(wrong, 0x0083)}, {command.ack}};
    });
    const auto answer = readVersion();
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer, kVersion);
}

TEST_F(ControlChannelNetworkTest, DropsAnswersFromAnotherPortOrAddress)
{
    mDevice.setScript([](const FakeCommand& command) {
        Bytes wrong = command.ack;
        wrong.back() = 0xEE;
        return std::vector<FakeAnswer>{{.datagram = wrong, .fromOtherPort = true},
                                       {.datagram = wrong, .fromOtherAddress = true},
                                       {command.ack}};
    });
    const auto answer = readVersion();
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer, kVersion);
}

TEST_F(ControlChannelTest, OnlyForeignAnswersAreNoAnswer)
{
    mSettings.answerTimeout = 30;
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{.datagram = command.ack, .fromOtherPort = true}};
    });
    EXPECT_EQ(readVersion().status(), Status::Timeout);
}

TEST_F(ControlChannelTest, DropsWhatIsNoAnswerAtAll)
{
    answerWith([](const FakeCommand& command) {
        Bytes tooLong = command.ack;
        tooLong.at(5) = 200; // a length that the datagram does not have
        const Bytes shortPayload(command.ack.begin(), command.ack.end() - 1);
        Bytes shortAck = shortPayload;
        shortAck.at(5) = 3; // consistent, but not a whole register
        return std::vector<FakeAnswer>{
            {{0}},      {{0, 0, 0, 0x81, 0, 0, 1}}, {shortPayload},   {tooLong},
            {shortAck}, {command.datagram},         {Bytes(1400, 0)}, {command.ack}};
    });
    const auto answer = readVersion();
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer, kVersion);
    EXPECT_EQ(mDevice.count(kReadRegisterCommand), 1U);
}

TEST_F(ControlChannelTest, ASecondAnswerIsNotTakenForTheNextCommands)
{
    mDevice.setRegister(0x0004, 0x80000001);
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{command.ack}, {command.ack}};
    });
    ASSERT_TRUE(readVersion());
    Command readMode = kReadVersion;
    readMode.payload = {0, 0, 0, 4};
    const auto mode = mChannel->execute(readMode);
    ASSERT_TRUE(mode);
    EXPECT_EQ(*mode, (wire::Bytes{0x80, 0, 0, 1}));
}

TEST_F(ControlChannelTest, ALateAnswerServesTheRepetition)
{
    mSettings.answerTimeout = 120;
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{.datagram = command.ack, .delay = milliseconds(200)}};
    });
    const auto answer = takeControl();
    EXPECT_TRUE(answer);
    const auto sent = mDevice.commands(kWriteRegisterCommand);
    EXPECT_EQ(sent.at(0).requestId, sent.back().requestId);
}

TEST_F(ControlChannelTest, AnErrorAnswerIsAResultAndIsNotRepeated)
{
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{errorAck(command, 0x8006)}};
    });
    const auto answer = takeControl();
    EXPECT_EQ(answer.status(), deviceError(wire::GvcpStatus::AccessDenied));
    EXPECT_EQ(mDevice.count(kWriteRegisterCommand), 1U);
}

TEST_F(ControlChannelTest, APendingAnswerExtendsTheDeadlineWithoutARepetition)
{
    mSettings.answerTimeout = 1000;
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{
            {pendingAck(command, 9000)},
            {.datagram = command.ack, .delay = milliseconds(1200)}}; // beyond the answer timeout
    });
    const auto answer = takeControl();
    EXPECT_TRUE(answer);
    EXPECT_EQ(mDevice.count(kWriteRegisterCommand), 1U);
}

TEST_F(ControlChannelTest, SeveralPendingAnswersAddUp)
{
    mSettings.answerTimeout = 1000;
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{
            {pendingAck(command, 2000)},
            {.datagram = pendingAck(command, 9000), .delay = milliseconds(700)},
            {.datagram = command.ack, .delay = milliseconds(1500)}}; // beyond the first promise
    });
    EXPECT_TRUE(takeControl());
    EXPECT_EQ(mDevice.count(kWriteRegisterCommand), 1U);
}

TEST_F(ControlChannelTest, AfterABrokenPendingPromiseTheSameIdIsSentAgain)
{
    mSettings.answerTimeout = 500;
    mDevice.setScript([first = true](const FakeCommand& command) mutable {
        return std::vector{std::exchange(first, false) ? FakeAnswer{pendingAck(command, 1000)}
                                                       : FakeAnswer{command.ack}};
    });
    const auto start = mClock.now();
    EXPECT_TRUE(takeControl());
    EXPECT_GE(elapsed(start), 1000);
    const auto sent = mDevice.commands(kWriteRegisterCommand);
    ASSERT_GE(sent.size(), 2U);
    EXPECT_EQ(sent[0].datagram, sent[1].datagram);
}

TEST_F(ControlChannelTest, PendingAnswersForAnotherIdOrTooShortMeanNothing)
{
    mSettings.answerTimeout = 30;
    mSettings.commandRetryCount = 0;
    answerWith([](const FakeCommand& command) {
        const auto otherId = static_cast<std::uint16_t>(command.requestId + 1);
        return std::vector<FakeAnswer>{
            {withRequestId(pendingAck(command, 60000), otherId)},
            {withCode(errorAck(command, 0), 0x0089)}}; // without the time
    });
    const auto start = mClock.now();
    EXPECT_EQ(takeControl().status(), Status::Timeout);
    EXPECT_LT(elapsed(start), 10'000);
}

TEST_F(ControlChannelTest, APendingAnswerShowsThatTheDeviceLives)
{
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{
            {pendingAck(command, 0xFFFF)},
            {.datagram = errorAck(command, 0x8002), .delay = milliseconds(300)}};
    });
    mClock.setThreads(2);
    const auto start = mClock.now();
    std::thread asking([this] { EXPECT_FALSE(takeControl()); });
    ASSERT_TRUE(mDevice.waitForCount(kWriteRegisterCommand, 1));
    mClock.run(milliseconds(100));
    EXPECT_GE(mChannel->answeredUntil(), start + milliseconds(20'000));
    EXPECT_LE(mChannel->answeredUntil(), start + milliseconds(30'000)); // of the 65 s wanted
    mClock.leave();
    asking.join();
}

TEST_F(ControlChannelTest, PendingTimeIsLimitedForACommandAsAWhole)
{
    mSettings.answerTimeout = 1000;
    mSettings.commandRetryCount = 0;
    reopenWithPendingTime(milliseconds(300));
    answerWith(promises);
    const auto start = mClock.now();
    EXPECT_EQ(takeControl().status(), Status::Timeout);
    EXPECT_LT(elapsed(start), 5'000) << "each of its promises names ten seconds";
}

TEST_F(ControlChannelTest, PendingTimeIsLimitedThroughAllRetriesOfABusyDevice)
{
    mSettings.answerTimeout = 1000;
    mSettings.commandRetryCount = 1;
    reopenWithPendingTime(milliseconds(1600));
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{
            {pendingAck(command, 10'000)},
            {.datagram = errorAck(command, 0x8007), .delay = milliseconds(1300)}};
    });
    EXPECT_FALSE(takeControl());
    // Asked anew it has 200 ms of pending time left, so that the answer timeout ends the try.
    EXPECT_TRUE(mDevice.waitForCount(kWriteRegisterCommand, 3));
}

TEST_F(ControlChannelTest, PromisesAloneDoNotShowForEverThatTheDeviceLives)
{
    mSettings.answerTimeout = 1000;
    mSettings.commandRetryCount = 0;
    constexpr milliseconds kPendingTime{1000};
    reopenWithPendingTime(kPendingTime);
    const auto opened = mClock.now();
    answerWith(promises);
    EXPECT_FALSE(takeControl());
    EXPECT_FALSE(takeControl());
    EXPECT_GT(mChannel->answeredUntil(), opened);
    EXPECT_LE(mChannel->answeredUntil(), opened + kPendingTime);
}

TEST_F(ControlChannelTest, ADeadlineEndsAPendingCommand)
{
    answerWith(promises);
    const auto start = mClock.now();
    const auto answer = mChannel->execute(kTakeControl, start + milliseconds(100));
    EXPECT_EQ(answer.status(), Status::Timeout);
    EXPECT_LT(elapsed(start), 5'000);
}

TEST_F(ControlChannelTest, AHurriedCommandGetsNoPendingTime)
{
    answerWith(promises);
    mChannel->hurry();
    const auto start = mClock.now();
    EXPECT_EQ(takeControl().status(), Status::Timeout);
    EXPECT_EQ(takeControl().status(), Status::Timeout);
    EXPECT_LT(elapsed(start), 4'000) << "nominally, 400 ms for both";
}

TEST_F(ControlChannelTest, AHurriedCommandEndsWhenTheDeviceStaysBusy)
{
    mSettings.commandRetryCount = 1000;
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{errorAck(command, 0x8007)}};
    });
    mChannel->hurry();
    const auto start = mClock.now();
    EXPECT_FALSE(takeControl());
    EXPECT_LT(elapsed(start), 5'000);
}

TEST_F(ControlChannelTest, AHurriedCommandWaitsForNoOtherLong)
{
    mClock.setThreads(2);
    answerWith(promises);
    std::thread waiting([this] { EXPECT_FALSE(takeControl()); });
    ASSERT_TRUE(mDevice.waitForCount(kWriteRegisterCommand, 1));
    mChannel->hurry();
    const auto start = mClock.now();
    EXPECT_EQ(readVersion().status(), Status::Timeout);
    EXPECT_LT(elapsed(start), 5'000);
    mChannel->close();
    waiting.join();
}

TEST_F(ControlChannelTest, AHostThatDoesNotLeaveIsPatientAgain)
{
    reopen({.leavingTime = milliseconds(1)});
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{pendingAck(command, 9000)},
                                       {.datagram = command.ack, .delay = milliseconds(700)}};
    });
    mChannel->hurry();
    mClock.advance(milliseconds(5));
    EXPECT_TRUE(takeControl());
}

TEST_F(ControlChannelTest, TheLastCommandGetsNoPendingTime)
{
    answerWith(promises);
    mChannel->close();
    const auto start = mClock.now();
    EXPECT_EQ(mChannel->executeLast(kTakeControl), Status::Timeout);
    EXPECT_LT(elapsed(start), 4'000) << "nominally 400 ms";
}

TEST_F(ControlChannelTest, WhileOpeningALostCommandIsSentAgainSoon)
{
    mSettings.answerTimeout = 60'000;
    mDevice.setScript([tries = 0](const FakeCommand& command) mutable {
        return ++tries < 3 ? std::vector<FakeAnswer>{} : std::vector{FakeAnswer{command.ack}};
    });
    const ControlChannel::Opening opening(*mChannel);
    EXPECT_TRUE(readVersion());
}

TEST_F(ControlChannelTest, WhileOpeningNothingIsSentOnceTheDeviceHasBeenSilentForLong)
{
    mDevice.setSilent(true);
    reopen({.opening = {.sending = milliseconds(40),
                        .silence = milliseconds(100),
                        .pending = milliseconds(100)}});
    {
        const ControlChannel::Opening opening(*mChannel);
        EXPECT_EQ(readVersion().status(), Status::Timeout);
        ASSERT_TRUE(mDevice.waitForCount(kReadRegisterCommand, 3));
        EXPECT_EQ(readVersion().status(), Status::Timeout);
        EXPECT_EQ(mDevice.count(kReadRegisterCommand), 3U);
    }
    mDevice.setSilent(false);
    EXPECT_TRUE(readVersion()) << "after that, every command is sent";
}

TEST_F(ControlChannelTest, WhileOpeningEveryAnswerGivesNewTime)
{
    reopen({.opening = {.sending = milliseconds(4000),
                        .silence = milliseconds(4000),
                        .pending = milliseconds(4000)}});
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{.datagram = command.ack, .delay = milliseconds(500)}};
    });
    const ControlChannel::Opening opening(*mChannel);
    const auto start = mClock.now();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(readVersion());
    }
    EXPECT_GE(elapsed(start), 2'000);
}

TEST(HeartbeatBounds, BelieveHalfASecondToAMinute)
{
    const HeartbeatBounds bounds;
    EXPECT_EQ(bounds.believed(0), milliseconds(500));
    EXPECT_EQ(bounds.believed(499), milliseconds(500));
    EXPECT_EQ(bounds.believed(500), milliseconds(500));
    EXPECT_EQ(bounds.believed(3000), milliseconds(3000));
    EXPECT_EQ(bounds.believed(60'000), milliseconds(60'000));
    EXPECT_EQ(bounds.believed(60'001), milliseconds(60'000));
    EXPECT_EQ(bounds.believed(0xFFFFFFFF), milliseconds(60'000));
}

TEST_F(ControlChannelTest, ABusyDeviceIsAskedAnewAfterAPause)
{
    mDevice.setScript([tries = 0](const FakeCommand& command) mutable {
        return std::vector{++tries < 3 ? FakeAnswer{errorAck(command, 0x8007)}
                                       : FakeAnswer{command.ack}};
    });
    const auto start = mClock.now();
    EXPECT_TRUE(takeControl());
    EXPECT_GE(elapsed(start), 200);
    const auto sent = mDevice.commands(kWriteRegisterCommand);
    ASSERT_EQ(sent.size(), 3U);
    // A device keeps its answer for an id that it knows: the refused command needs a new one.
    EXPECT_NE(sent[1].requestId, sent[0].requestId);
}

TEST_F(ControlChannelTest, ADeviceThatStaysBusyIsAResult)
{
    mSettings.commandRetryCount = 2;
    answerWith([](const FakeCommand& command) {
        return std::vector<FakeAnswer>{{errorAck(command, 0x8007)}};
    });
    EXPECT_EQ(takeControl().status(), deviceError(wire::GvcpStatus::Busy));
    EXPECT_EQ(mDevice.count(kWriteRegisterCommand), 3U);
}

TEST_F(ControlChannelTest, AWriteThatMayBeRunningIsNotSentUnderANewId)
{
    mSettings.answerTimeout = 500;
    mDevice.setScript([first = true](const FakeCommand& command) mutable {
        return std::exchange(first, false) ? std::vector<FakeAnswer>{}
                                           : std::vector{FakeAnswer{errorAck(command, 0x8007)}};
    });
    EXPECT_EQ(takeControl().status(), deviceError(wire::GvcpStatus::Busy));
    const auto sent = mDevice.commands(kWriteRegisterCommand);
    ASSERT_GE(sent.size(), 2U);
    for (const FakeCommand& repetition : sent) {
        EXPECT_EQ(repetition.datagram, sent[0].datagram);
    }
}

TEST_F(ControlChannelTest, AReadIsAskedAnewEvenIfItWasRepeated)
{
    mSettings.answerTimeout = 500;
    mDevice.setScript([tries = 0](const FakeCommand& command) mutable {
        switch (++tries) {
        case 1:
            return std::vector<FakeAnswer>{};
        case 2:
            return std::vector<FakeAnswer>{{errorAck(command, 0x8007)}};
        default:
            return std::vector<FakeAnswer>{{command.ack}};
        }
    });
    EXPECT_TRUE(readVersion());
}

TEST_F(ControlChannelNetworkTest, ClosingEndsAWaitingCommandAtOnce)
{
    mSettings.answerTimeout = 60'000;
    mDevice.setSilent(true);
    const auto start = std::chrono::steady_clock::now();
    std::thread closing([this] {
        EXPECT_TRUE(mDevice.waitForCount(kReadRegisterCommand, 1));
        EXPECT_TRUE(mChannel->close());
    });
    EXPECT_EQ(readVersion().status(), Status::NotConnected);
    closing.join();
    EXPECT_LT(elapsed(start), 20'000);
    EXPECT_FALSE(mChannel->close());
    EXPECT_EQ(readVersion().status(), Status::NotConnected);
    EXPECT_EQ(mDevice.count(kReadRegisterCommand), 1U);
}

TEST_F(ControlChannelTest, ALastCommandIsSentAfterClosing)
{
    mChannel->close();
    EXPECT_EQ(mChannel->executeLast(kTakeControl), Status::Ok);
    EXPECT_EQ(mDevice.registerValue(0x0A00), 2U);
    EXPECT_FALSE(readVersion());
}

TEST_F(ControlChannelTest, AnUnansweredCommandClosesTheChannelIfSoWanted)
{
    mSettings.answerTimeout = 20;
    mSettings.disconnectOnAnswerTimeout = 1;
    mDevice.setSilent(true);
    EXPECT_EQ(readVersion().status(), Status::Timeout);
    EXPECT_TRUE(mChannel->isClosed());
    EXPECT_EQ(readVersion().status(), Status::NotConnected);
}

TEST_F(ControlChannelNetworkTest, ManyThreadsGetEachItsOwnAnswer)
{
    mDevice.setRegister(0x1000, 0xA0A0A0A0);
    mDevice.setRegister(0x1004, 0xB1B1B1B1);
    std::vector<std::thread> threads;
    for (std::uint8_t i = 0; i < 4; ++i) {
        threads.emplace_back([this, i] {
            Command command = kReadVersion;
            command.payload = {0, 0, 0x10, static_cast<std::uint8_t>(i % 2 * 4)};
            const std::uint8_t expected = i % 2 == 0 ? 0xA0 : 0xB1;
            for (int n = 0; n < 50; ++n) {
                const auto answer = mChannel->execute(command);
                ASSERT_TRUE(answer);
                ASSERT_EQ(answer->front(), expected);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(mDevice.count(kReadRegisterCommand), 200U);
}

} // namespace
} // namespace gige::control
