#include "RawFileSink.h"

#include "Failure.h"

#include <utility>

namespace telvo
{

RawFileSink::RawFileSink(std::unique_ptr<OutputFile> file, const PictureStyle& style,
                         std::uint64_t there)
    : mFile(std::move(file)), mStyle(style)
{
    if (there == 0) {
        return;
    }
    if (mFile->size() < there) {
        throw Failure("the file is shorter than it was; download it anew");
    }
    mFile->resize(there);
}

void RawFileSink::put(std::uint64_t /*number*/, GrayView frame)
{
    if (mStyle.colour) {
        mFile->write(renderPicture(frame, mStyle).pixels);
    } else {
        mFile->write(frame.pixels);
    }
}

void RawFileSink::finish()
{
    mFile->sync();
    mFile->commit();
}

} // namespace telvo
