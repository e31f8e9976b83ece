#include "VideoFileSink.h"

#include "Failure.h"
#include "PictureRenderer.h"
#include "VideoMuxer.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

namespace telvo
{

namespace
{

/// How pictures are encoded; the first encoder that libav has is used.
struct Encoding {
    const char* container;
    std::array<const char*, 2> encoders;
    AVPixelFormat gray;
    AVPixelFormat colour;
    std::uint32_t step; // picture sizes are multiples of it
    int threads;        // that encode; 0: one a core
};

constexpr Encoding kLossless{.container = "matroska",
                             .encoders = {"ffv1", "ffv1"},
                             .gray = AV_PIX_FMT_GRAY8,
                             .colour = AV_PIX_FMT_BGR0,
                             .step = 1,
                             .threads = 0};
/// Each thread has a picture of its own in work, which takes 16 MB at 1280x1024; two are faster
/// than a camera on its cable.
constexpr Encoding kReport{.container = "mp4",
                           .encoders = {"libx264", "mpeg4"},
                           .gray = AV_PIX_FMT_YUV420P,
                           .colour = AV_PIX_FMT_YUV420P,
                           .step = 2,
                           .threads = 2};

const AVCodec& findEncoder(const Encoding& encoding)
{
    for (const char* name : encoding.encoders) {
        if (const AVCodec* const codec = avcodec_find_encoder_by_name(name)) {
            return *codec;
        }
    }
    throw Failure(
        "the libraries of this machine have no encoder for such a video; use --format tiff "
        "or png");
}

/// The FFV1 encoder of libavcodec 59 makes room for 148 bytes a pixel and writes zeros to all of
/// it: 200 MB at 1280x1024. It knows the size of the pictures by now, and takes that of its context
/// for this room alone. An eighth is still twice what the worst picture needs, three samples a
/// pixel of 21 bits each; a picture without room would be an error.
void reserveLess(AVCodecContext& opened)
{
    constexpr int kFraction = 8;
    if (opened.codec_id == AV_CODEC_ID_FFV1 && LIBAVCODEC_VERSION_MAJOR == 59) {
        opened.height = std::max(1, opened.height / kFraction);
    }
}

/// Pictures into packets: made when the first picture tells its size.
class VideoEncoder
{
  public:
    VideoEncoder(const Encoding& encoding, PictureView first, std::uint32_t fps, VideoMuxer& muxer)
        : mMuxer(muxer), mPacket(requireThere(av_packet_alloc()))
    {
        open(encoding, first, fps);
        mMuxer.begin(*mContext);
        mFrame.reset(requireThere(av_frame_alloc()));
        mFrame->format = mContext->pix_fmt;
        mFrame->width = mContext->width;
        mFrame->height = mContext->height;
        requireDone(av_frame_get_buffer(mFrame.get(), 0));
        mScaler.reset(requireThere(sws_getContext(
            mContext->width, mContext->height,
            first.channels == 1 ? AV_PIX_FMT_GRAY8 : AV_PIX_FMT_RGB24, mContext->width,
            mContext->height, mContext->pix_fmt, SWS_POINT, nullptr, nullptr, nullptr)));
        reserveLess(*mContext);
    }

    void put(PictureView picture)
    {
        requireDone(av_frame_make_writable(mFrame.get())); // the encoder may hold the last one
        const std::array<const std::uint8_t*, 1> rows{picture.pixels.data()};
        const std::array<int, 1> rowSizes{static_cast<int>(picture.rowSize())};
        requireDone(sws_scale(mScaler.get(), rows.data(), rowSizes.data(), 0, mFrame->height,
                              mFrame->data, mFrame->linesize));
        mFrame->pts = mCount++;
        send(mFrame.get());
    }

    void finish() { send(nullptr); }

  private:
    void open(const Encoding& encoding, PictureView first, std::uint32_t fps)
    {
        const AVCodec& codec = findEncoder(encoding);
        mContext.reset(requireThere(avcodec_alloc_context3(&codec)));
        mContext->width = static_cast<int>(first.width - first.width % encoding.step);
        mContext->height = static_cast<int>(first.height - first.height % encoding.step);
        mContext->pix_fmt = first.channels == 1 ? encoding.gray : encoding.colour;
        mContext->time_base = {1, static_cast<int>(fps)};
        mContext->framerate = {static_cast<int>(fps), 1};
        mContext->thread_count = encoding.threads;
        mContext->level = codec.id == AV_CODEC_ID_FFV1 ? 3 : mContext->level;      // checked slices
        mContext->bit_rate = std::int64_t{mContext->width} * mContext->height * 4; // of mpeg4
        if (mMuxer.wantsGlobalHeader()) {
            mContext->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        }
        AVDictionary* options = nullptr;
        av_dict_set(&options, "preset", "veryfast", 0);
        av_dict_set(&options, "crf", "18", 0);
        const int result = avcodec_open2(mContext.get(), &codec, &options);
        av_dict_free(&options); // those that the encoder does not know
        requireDone(result);
    }

    void send(const AVFrame* frame)
    {
        requireDone(avcodec_send_frame(mContext.get(), frame));
        for (;;) {
            const int result = avcodec_receive_packet(mContext.get(), mPacket.get());
            if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
                return;
            }
            requireDone(result);
            mMuxer.write(*mPacket);
        }
    }

    VideoMuxer& mMuxer;
    Packet mPacket;
    CodecContext mContext;
    Frame mFrame;
    Scaler mScaler;
    std::int64_t mCount = 0;
};

class VideoFileSink : public FrameSink
{
  public:
    VideoFileSink(std::unique_ptr<OutputFile> file, const Encoding& encoding,
                  const PictureStyle& style, std::uint32_t fps)
        : mMuxer(std::move(file), encoding.container),
          mEncoding(encoding),
          mFps(fps),
          mRenderer(style, [this](PictureView picture) { encode(picture); })
    {
    }

    void put(std::uint64_t /*number*/, GrayView frame) override { mRenderer.put(frame); }
    void flush() override { mRenderer.flush(); }
    std::uint64_t written() override { return 0; } // it plays only with its end

    void finish() override
    {
        flush();
        if (!mEncoder) {
            throw Failure("a video needs a frame");
        }
        mEncoder->finish();
        mMuxer.finish();
    }

  private:
    void encode(PictureView picture)
    {
        if (!mEncoder) {
            mEncoder.emplace(mEncoding, picture, mFps, mMuxer);
        }
        mEncoder->put(picture);
    }

    VideoMuxer mMuxer;
    const Encoding& mEncoding;
    std::uint32_t mFps;
    std::optional<VideoEncoder> mEncoder; // none before the first frame
    PictureRenderer mRenderer;
};

} // namespace

int requireDone(int result)
{
    if (result < 0) {
        std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
        av_strerror(result, text.data(), text.size());
        throw Failure(std::string("cannot write the video: ") + text.data() +
                      "; try --format tiff or png");
    }
    return result;
}

bool canWriteVideo()
{
    return true;
}

std::unique_ptr<FrameSink> makeVideoSink(std::unique_ptr<OutputFile> file, VideoKind kind,
                                         const PictureStyle& style, std::uint32_t fps)
{
    if (kind == VideoKind::Report && !file->isFile()) {
        throw Failure("MP4 cannot be written to a FIFO or a device; use raw or mkv");
    }
    av_log_set_level(AV_LOG_QUIET); // what goes wrong comes back as a result
    return std::make_unique<VideoFileSink>(
        std::move(file), kind == VideoKind::Lossless ? kLossless : kReport, style, fps);
}

} // namespace telvo
