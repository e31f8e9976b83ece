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
        throw Failure("cannot write to " + folder.string() + ": " + error.code().message());
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
    orFail(mFolder, [&] { syncFileSystemOf(mFolder); });
}

} // namespace telvo
