/// What libav allocates, freed at the end of its owner, and its errors as Failures.
#ifndef TELVO_TOOLS_TELVO_WRITERS_LIBAV_H
#define TELVO_TOOLS_TELVO_WRITERS_LIBAV_H

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace telvo
{

template <auto release>
struct ByPointer {
    template <typename Type>
    void operator()(Type* object) const
    {
        release(&object);
    }
};

template <auto release>
struct ByValue {
    template <typename Type>
    void operator()(Type* object) const
    {
        release(object);
    }
};

using CodecContext = std::unique_ptr<AVCodecContext, ByPointer<avcodec_free_context>>;
using FormatContext = std::unique_ptr<AVFormatContext, ByValue<avformat_free_context>>;
using Frame = std::unique_ptr<AVFrame, ByPointer<av_frame_free>>;
using Packet = std::unique_ptr<AVPacket, ByPointer<av_packet_free>>;
using Scaler = std::unique_ptr<SwsContext, ByValue<sws_freeContext>>;

/// Throws Failure for a negative result. @return the result
int requireDone(int result);

/// Throws Failure for a null pointer.
template <typename Pointer>
Pointer requireThere(Pointer pointer)
{
    requireDone(pointer == nullptr ? AVERROR(ENOMEM) : 0);
    return pointer;
}

} // namespace telvo

#endif
