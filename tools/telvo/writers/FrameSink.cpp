#include "FrameSink.h"

#include <iomanip>
#include <sstream>
#include <utility>

namespace telvo
{

void RawFileSink::put(std::uint64_t /*number*/, GrayView frame)
{
    mFile.write(frame.pixels);
}

void RawFileSink::finish()
{
    mFile.commit();
}

PngFolderSink::PngFolderSink(std::filesystem::path folder) : mFolder(std::move(folder))
{
    makeFolder(mFolder);
}

void PngFolderSink::put(std::uint64_t number, GrayView frame)
{
    std::ostringstream name;
    name << "frame-" << std::setfill('0') << std::setw(6) << number << ".png";
    mWriter.put(mFolder / name.str(), GrayImage(frame));
}

void PngFolderSink::finish()
{
    mWriter.finish();
}

} // namespace telvo
