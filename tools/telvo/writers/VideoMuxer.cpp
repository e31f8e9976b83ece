#include "VideoMuxer.h"

#include <cstdio>
#include <utility>

namespace telvo
{

namespace
{

constexpr int kIoBufferSize = 64 << 10;

} // namespace

int VideoMuxer::writeBytes(void* opaque, std::uint8_t* bytes, int size)
{
    auto& muxer = *static_cast<VideoMuxer*>(opaque);
    try {
        muxer.mFile->write({bytes, static_cast<std::size_t>(size)});
        return size;
    } catch (...) {
        muxer.mError = std::current_exception();
        return AVERROR(EIO);
    }
}

std::int64_t VideoMuxer::seek(void* opaque, std::int64_t offset, int whence)
{
    auto& muxer = *static_cast<VideoMuxer*>(opaque);
    try {
        OutputFile& file = *muxer.mFile;
        if ((whence & AVSEEK_SIZE) != 0) {
            return static_cast<std::int64_t>(file.size());
        }
        const std::uint64_t from = whence == SEEK_CUR   ? file.position()
                                   : whence == SEEK_END ? file.size()
                                                        : 0;
        file.seek(from + static_cast<std::uint64_t>(offset));
        return static_cast<std::int64_t>(file.position());
    } catch (...) {
        muxer.mError = std::current_exception();
        return AVERROR(EIO);
    }
}

VideoMuxer::VideoMuxer(std::unique_ptr<OutputFile> file, const char* format)
    : mFile(std::move(file))
{
    AVFormatContext* context = nullptr;
    requireDone(avformat_alloc_output_context2(&context, nullptr, format, nullptr));
    mFormat.reset(context);
    auto* const buffer = static_cast<std::uint8_t*>(requireThere(av_malloc(kIoBufferSize)));
    mFormat->pb = requireThere(avio_alloc_context(buffer, kIoBufferSize, 1, this, nullptr,
                                                  writeBytes, mFile->isFile() ? seek : nullptr));
}

VideoMuxer::~VideoMuxer()
{
    av_freep(&mFormat->pb->buffer);
    avio_context_free(&mFormat->pb);
}

int VideoMuxer::require(int result) const
{
    if (mError) {
        std::rethrow_exception(mError);
    }
    return requireDone(result);
}

void VideoMuxer::begin(const AVCodecContext& encoder)
{
    AVStream& stream = *requireThere(avformat_new_stream(mFormat.get(), nullptr));
    requireDone(avcodec_parameters_from_context(stream.codecpar, &encoder));
    stream.time_base = encoder.time_base;
    stream.avg_frame_rate = encoder.framerate;
    mTimeBase = encoder.time_base;
    require(avformat_write_header(mFormat.get(), nullptr));
}

void VideoMuxer::write(AVPacket& packet)
{
    packet.duration = 1; // of the encoder's unit: one frame
    av_packet_rescale_ts(&packet, mTimeBase, mFormat->streams[0]->time_base);
    packet.stream_index = 0;
    require(av_interleaved_write_frame(mFormat.get(), &packet));
}

void VideoMuxer::finish()
{
    require(av_write_trailer(mFormat.get()));
    avio_flush(mFormat->pb);
    require(mFormat->pb->error);
    mFile->sync();
    mFile->commit();
}

} // namespace telvo
