#include "VideoFileSink.h"

#include "Failure.h"

namespace telvo
{

bool canWriteVideo()
{
    return false;
}

std::unique_ptr<FrameSink> makeVideoSink(std::unique_ptr<OutputFile> /*file*/, VideoKind /*kind*/,
                                         const PictureStyle& /*style*/, std::uint32_t /*fps*/)
{
    throw Failure("this build writes no videos; use --format tiff or png");
}

} // namespace telvo
