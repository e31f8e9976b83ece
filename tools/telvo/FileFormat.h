#ifndef TELVO_TOOLS_TELVO_FILEFORMAT_H
#define TELVO_TOOLS_TELVO_FILEFORMAT_H

#include "FrameSink.h"
#include "OutputFile.h"
#include "PictureStyle.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace telvo
{

/// What a download can be written as.
enum class FileFormat : std::uint8_t { Raw, Tiff, Png, Mkv, Mp4 };

/// "raw", "tiff", "png", "mkv", "mp4", as on the command line.
FileFormat parseFileFormat(const std::string& name);

/// What parseFileFormat() takes.
std::vector<std::string> formatNames();

/// ".tif": with what a file's name ends; empty for a folder.
std::string endingOf(FileFormat format);

/// The format that the end of a file's name stands for, such as ".tif"; else raw.
std::string formatByName(const std::filesystem::path& path);

bool isFolder(FileFormat format);
bool isVideo(FileFormat format);

/// A place for frames, held from before the camera is connected: what cannot be written to is
/// found before anything is transferred.
class OutputPlace
{
  public:
    /// Throws Failure where nothing may or can be written to the path in this format.
    /// @param stop  ends the wait for the reader of a FIFO
    OutputPlace(FileFormat format, std::filesystem::path path, IfThere ifThere,
                const std::stop_token& stop = {});

    /// Goes on with a file that another process has left.
    OutputPlace(FileFormat format, const UnfinishedFile& unfinished);

    /// Where the frames are before all is done. Until begin().
    const std::filesystem::path& output() const
    {
        return mFile != nullptr && !mFile->partial().empty() ? mFile->partial() : mPath;
    }

    /// False for a FIFO or a device.
    bool isFileOrFolder() const { return mFile == nullptr || mFile->isFile(); }

    struct Series {
        std::uint64_t frameSize; // bytes of a frame as the camera delivers it
        std::uint64_t there;     // frames that are there already, to be continued
        std::uint64_t count;     // frames to come
        std::uint32_t fps;       // of a video when it is played
    };

    /// The place is used up. Throws Failure where the series does not fit.
    std::unique_ptr<FrameSink> begin(const Series& series, const PictureStyle& style);

  private:
    std::unique_ptr<FrameSink> beginTiff(const Series& series, const PictureStyle& style);
    std::uint64_t bytesOf(const Series& series, const PictureStyle& style) const;

    FileFormat mFormat;
    std::filesystem::path mPath;
    IfThere mIfThere;
    std::unique_ptr<OutputFile> mFile; // null for a folder
    NewFolder mFolder;                 // of a folder that is there, or a file: nothing
};

} // namespace telvo

#endif
