#include "PngFolderSink.h"

#include "Failure.h"
#include "OutputTarget.h"

#include <iomanip>
#include <sstream>
#include <system_error>
#include <utility>

namespace telvo
{

namespace
{

template <typename Work>
auto orFail(const std::filesystem::path& folder, Work work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throw Failure("cannot write to " + folder.string() + ": " + reasonAndAdvice(error.code()));
    }
}

/// What a killed process has left of pictures that were not complete.
void removePartialPictures(const std::filesystem::path& folder)
{
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (isPartial(entry.path()) && entry.path().stem().stem().extension() == ".png") {
            remove(entry.path());
        }
    }
}

FolderClaim claim(const std::filesystem::path& folder, IfThere ifThere)
{
    makeFolder(folder);
    if (ifThere != IfThere::Continue) {
        requireEmpty(folder);
    }
    std::optional<FolderClaim> claim = orFail(folder, [&] { return FolderClaim::take(folder); });
    if (!claim) {
        throw Failure("another process writes to the folder " + folder.string() +
                      "; name another one");
    }
    return std::move(*claim);
}

} // namespace

PngFolderSink::PngFolderSink(std::filesystem::path folder, const PictureStyle& style,
                             IfThere ifThere)
    : mFolder(std::move(folder)),
      mClaim(claim(mFolder, ifThere)),
      mWriter(style, ifThere == IfThere::Continue ? IfThere::Replace : ifThere)
{
    orFail(mFolder, [&] { removePartialPictures(mFolder); });
}

template <typename Work>
void PngFolderSink::orRemember(Work work)
{
    try {
        work();
    } catch (const Failure&) {
        mHasFailed = true;
        throw;
    }
}

void PngFolderSink::put(std::uint64_t number, GrayView frame)
{
    std::ostringstream name;
    name << "frame-" << std::setfill('0') << std::setw(6) << number << ".png";
    orRemember([&] { mWriter.put(mFolder / name.str(), GrayImage(frame)); });
}

void PngFolderSink::flush()
{
    orRemember([&] { mWriter.finish(); });
}

std::uint64_t PngFolderSink::written()
{
    return mWriter.written();
}

void PngFolderSink::finish()
{
    if (!mHasFailed) {
        flush();
    }
    orFail(mFolder, [&] { syncFileSystemOf(mFolder); });
}

} // namespace telvo
