// Fetching the newest image of live and record mode.
#include "ModeTest.h"

#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kUntouched = 77;
constexpr std::uint32_t kUntouchedWord = 7777;
constexpr std::uint32_t kNoNewImage = 0xFFFFFFFD; // -3

struct Fetched {
    const std::uint8_t* image = nullptr;
    std::uint32_t result = kUntouchedWord;
    std::uint32_t flag = kUntouchedWord;
    std::uint8_t status = kUntouched;
    std::uint8_t last = kUntouched;
};

class PreviewImageTest : public ModeTest
{
  protected:
    static constexpr std::size_t kImageSize = 32;

    void SetUp() override
    {
        ModeTest::SetUp();
        useImageSize(16, 2);
    }

    /// The camera has this geometry, and the host reads it.
    void readGeometry(std::int64_t width, std::int64_t height)
    {
        s.camera().integer("Width").value(width);
        s.camera().integer("Height").value(height);
        std::uint32_t read = 0;
        ASSERT_EQ(expGetWidth(&read, kCamera), 0);
        ASSERT_EQ(expGetHeight(&read, kCamera), 0);
    }

    Fetched fetch()
    {
        Fetched fetched;
        fetched.image = expGetSingleImage(&fetched.result, &fetched.flag, &fetched.status,
                                          &fetched.last, kCamera);
        return fetched;
    }

    Fetched fetchPreview()
    {
        Fetched fetched;
        fetched.image = expGetPreviewImage(&fetched.status, &fetched.last, kCamera);
        return fetched;
    }

    void receive(const Bytes& image)
    {
        s.pipelineFeed().feedFrame(image);
        settle();
    }

    static Bytes bytesOf(const Fetched& fetched)
    {
        return fetched.image == nullptr ? Bytes{}
                                        : Bytes(fetched.image, fetched.image + kImageSize);
    }

    /// An image all of whose bytes have this value.
    static Bytes grey(std::uint8_t value)
    {
        Bytes image(kImageSize, value);
        return image;
    }

    static void expectNone(const Fetched& fetched)
    {
        EXPECT_EQ(fetched.image, nullptr);
        EXPECT_EQ(fetched.result, kNoNewImage);
        EXPECT_EQ(fetched.flag, 0U);
        EXPECT_EQ(fetched.status, kUntouched);
        EXPECT_EQ(fetched.last, kUntouched);
    }
};

TEST_F(PreviewImageTest, GivesTheImageWithItsMarks)
{
    startLive();
    Bytes image(kImageSize);
    for (std::size_t i = 0; i < kImageSize; ++i) {
        image[i] = static_cast<std::uint8_t>(0x40 + i);
    }
    image[7] = 0b1010'0100;
    image[15] = 0xB7;
    receive(image);
    const Fetched fetched = fetch();
    EXPECT_EQ(bytesOf(fetched), image);
    EXPECT_EQ(fetched.result, 0U);
    EXPECT_EQ(fetched.flag, 0xFFFFFFFF);
    EXPECT_EQ(fetched.status, 0b0101'1011);
    EXPECT_EQ(fetched.last, 0xB7);
    EXPECT_EQ(s.takeCalls(), Texts{}); // the camera is not asked
}

TEST_F(PreviewImageTest, SetsTheFlagByBit2OfByte7Alone)
{
    startLive();
    for (int bit = 0; bit < 8; ++bit) {
        Bytes image = grey(0);
        image[7] = static_cast<std::uint8_t>(1 << bit);
        receive(image);
        EXPECT_EQ(fetch().flag, bit == 2 ? 0xFFFFFFFF : 0U) << bit;
    }
}

TEST_F(PreviewImageTest, GivesThePreviewTheSameImageAndMarks)
{
    startLive();
    Bytes image = grey(0x11);
    image[7] = 0x0F;
    image[15] = 0x2A;
    receive(image);
    const Fetched fetched = fetchPreview();
    EXPECT_EQ(bytesOf(fetched), image);
    EXPECT_EQ(fetched.status, 0xF0);
    EXPECT_EQ(fetched.last, 0x2A);
}

TEST_F(PreviewImageTest, GivesNothingBeforeTheFirstImage)
{
    startLive();
    expectNone(fetch());
    const Fetched preview = fetchPreview();
    EXPECT_EQ(preview.image, nullptr);
    EXPECT_EQ(preview.status, kUntouched);
    EXPECT_EQ(preview.last, kUntouched);
}

TEST_F(PreviewImageTest, GivesNothingInPlayback)
{
    expectNone(fetch());
}

TEST_F(PreviewImageTest, GivesEachImageOnce)
{
    startLive();
    receive(grey(1));
    EXPECT_EQ(bytesOf(fetch()), grey(1));
    expectNone(fetch());
    receive(grey(2));
    EXPECT_EQ(bytesOf(fetchPreview()), grey(2));
    EXPECT_EQ(fetchPreview().image, nullptr);
    expectNone(fetch());
}

TEST_F(PreviewImageTest, GivesTheNewestImage)
{
    startLive();
    for (std::uint8_t value = 1; value <= 5; ++value) {
        s.pipelineFeed().feedFrame(grey(value));
    }
    settle();
    EXPECT_EQ(bytesOf(fetch()), grey(5));
    expectNone(fetch());
}

TEST_F(PreviewImageTest, KeepsAnImageUntilTheNextSuccessfulFetch)
{
    startLive();
    receive(grey(1));
    const Fetched first = fetch();
    receive(grey(2));
    receive(grey(3));
    EXPECT_EQ(bytesOf(first), grey(1));
    const Fetched second = fetch();
    EXPECT_EQ(bytesOf(second), grey(3));
    EXPECT_NE(second.image, first.image);
    receive(grey(4));
    EXPECT_EQ(bytesOf(second), grey(3));
    EXPECT_EQ(fetch().image, first.image); // the two take turns
}

TEST_F(PreviewImageTest, KeepsAnImageOverAFetchWithoutANewOne)
{
    startLive();
    receive(grey(1));
    const Fetched first = fetch();
    expectNone(fetch());
    receive(grey(2));
    EXPECT_EQ(bytesOf(first), grey(1));
    EXPECT_EQ(bytesOf(fetch()), grey(2));
}

TEST_F(PreviewImageTest, ForgetsAnImageWhoseBufferIsToBeWrittenNext)
{
    startLive();
    receive(grey(1));
    EXPECT_EQ(bytesOf(fetch()), grey(1));
    receive(grey(2));
    EXPECT_EQ(bytesOf(fetch()), grey(2)); // the first buffer is to be written again
    expectNone(fetch());
}

TEST_F(PreviewImageTest, NeverGivesTheFirstImageOfARecording)
{
    startRecord();
    receive(grey(1));
    expectNone(fetch());
    receive(grey(2));
    EXPECT_EQ(bytesOf(fetch()), grey(2));
}

TEST_F(PreviewImageTest, SkipsAWholeImageNotADamagedOne)
{
    startRecord();
    s.pipelineFeed().feedError(Code::ResendsFailure, grey(1));
    receive(grey(2));
    expectNone(fetch());
    receive(grey(3));
    EXPECT_EQ(bytesOf(fetch()), grey(3));
}

TEST_F(PreviewImageTest, SkipsTheFirstImageOfEveryRecording)
{
    startRecord();
    receive(grey(1));
    ASSERT_EQ(expStopRecordMode(kCamera), 0);
    startRecord();
    receive(grey(2));
    expectNone(fetch());
}

TEST_F(PreviewImageTest, NeverGivesADamagedImage)
{
    startLive();
    s.pipelineFeed().feedError(Code::ImageError, grey(1));
    s.pipelineFeed().feedError(Code::ResendsFailure, grey(2));
    settle();
    expectNone(fetch());
}

TEST_F(PreviewImageTest, BeginsEachLiveModeWithoutAnImage)
{
    startLive();
    receive(grey(1));
    ASSERT_EQ(expStartLiveMode(kCamera), 0);
    settle();
    expectNone(fetch());
}

TEST_F(PreviewImageTest, GivesNothingAndWritesNothingAfterTheLinkIsLost)
{
    startLive();
    receive(grey(1));
    s.notifyLinkLost();
    for (const Fetched& fetched : {fetch(), fetchPreview()}) {
        EXPECT_EQ(fetched.image, nullptr);
        EXPECT_EQ(fetched.result, kUntouchedWord);
        EXPECT_EQ(fetched.flag, kUntouchedWord);
        EXPECT_EQ(fetched.status, kUntouched);
        EXPECT_EQ(fetched.last, kUntouched);
    }
}

TEST_F(PreviewImageTest, StillGivesAnImageOfADeviceThatIsNoLongerConnected)
{
    startLive();
    receive(grey(1));
    s.dropConnection(); // nobody was told
    EXPECT_EQ(bytesOf(fetch()), grey(1));
}

TEST_F(PreviewImageTest, IgnoresImagesThatComeInPlayback)
{
    startLive();
    ASSERT_EQ(initialize(), 0); // to playback; the thread goes on
    receive(grey(1));
    expectNone(fetch());
}

TEST_F(PreviewImageTest, ReadsTheMarksOfAnImageSmallerThanAHeader)
{
    useImageSize(4, 2);
    startLive();
    receive({1, 2, 3, 4, 5, 6, 7, 0xFC});
    const Fetched fetched = fetch();
    ASSERT_NE(fetched.image, nullptr);
    EXPECT_EQ(fetched.flag, 0xFFFFFFFF);
    EXPECT_EQ(fetched.status, 0x03);
    EXPECT_EQ(fetched.last, 0);
}

TEST_F(PreviewImageTest, GrowsWithTheGeometryThatTheHostReads)
{
    startLive();
    receive(grey(1));
    readGeometry(2048, 2048);
    for (const std::uint8_t value : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{3}}) {
        const Fetched fetched = fetch();
        EXPECT_EQ(bytesOf(fetched), grey(value));
        ASSERT_NE(fetched.image, nullptr);
        EXPECT_EQ(fetched.image[kImageSize], 0);
        EXPECT_EQ(fetched.image[2048 * 2048 - 1], 0);
        receive(grey(static_cast<std::uint8_t>(value + 1)));
    }
}

TEST_F(PreviewImageTest, IsNotGivenWithAGeometryThatNoLiveModeHas)
{
    startLive();
    receive(grey(1));
    for (const std::int64_t side : {65'537LL, 4097LL, 0LL}) {
        readGeometry(side, side);
        expectNone(fetch());
        EXPECT_EQ(fetchPreview().image, nullptr);
    }
    readGeometry(16, 2);
    EXPECT_EQ(bytesOf(fetch()), grey(1));
}

} // namespace
