#include "FileFormat.h"

#include "PngFolderSink.h"
#include "RawFileSink.h"
#include "TiffFileSink.h"
#include "ToolError.h"
#include "VideoFileSink.h"

#include <string_view>
#include <utility>

namespace telvo
{

namespace
{

struct Format {
    std::string_view name;
    std::string_view ending; // of a file's name
    std::uint32_t squeeze;   // a camera's pictures hardly ever take less than one part in so many
    FileFormat format;
    bool isFolder;
    bool isVideo;
};

constexpr Format kFormats[] = {
    {"raw", ".raw", 1, FileFormat::Raw, false, false},
    {"tiff", ".tif", 1, FileFormat::Tiff, false, false},
    {"png", "", 4, FileFormat::Png, true, false},
    {"mkv", ".mkv", 8, FileFormat::Mkv, false, true},
    {"mp4", ".mp4", 1000, FileFormat::Mp4, false, true},
};

const Format& rowOf(FileFormat format)
{
    return kFormats[static_cast<std::size_t>(format)];
}

void requireFolder(const std::filesystem::path& path)
{
    const TargetKind kind = kindOf(path);
    if (kind == TargetKind::Folder) {
        requireEmpty(path);
    } else if (kind != TargetKind::Free) {
        throw Failure(path.string() + " is no folder; pictures go into one");
    }
}

} // namespace

FileFormat parseFileFormat(const std::string& name)
{
    for (const Format& row : kFormats) {
        if (name == row.name) {
            return row.format;
        }
    }
    throw UsageError("there is no format '" + name + "'");
}

std::string formatByName(const std::filesystem::path& path)
{
    const std::string end = path.extension().string();
    for (const Format& row : kFormats) {
        if (end.starts_with('.') && (end == row.ending || end.substr(1) == row.name)) {
            return std::string(row.name);
        }
    }
    return "raw";
}

std::vector<std::string> formatNames()
{
    std::vector<std::string> names;
    for (const Format& row : kFormats) {
        names.emplace_back(row.name);
    }
    return names;
}

std::string endingOf(FileFormat format)
{
    return std::string(rowOf(format).ending);
}

bool isFolder(FileFormat format)
{
    return rowOf(format).isFolder;
}

bool isVideo(FileFormat format)
{
    return rowOf(format).isVideo;
}

OutputPlace::OutputPlace(FileFormat format, std::filesystem::path path, IfThere ifThere,
                         const std::stop_token& stop)
    : mFormat(format), mPath(std::move(path)), mIfThere(ifThere)
{
    if (!isFolder(format)) {
        mFile = std::make_unique<OutputFile>(mPath, mIfThere, stop);
    } else if (ifThere != IfThere::Continue) {
        requireFolder(mPath);
        mFolder = NewFolder(mPath);
    }
}

OutputPlace::OutputPlace(FileFormat format, const UnfinishedFile& unfinished)
    : mFormat(format),
      mPath(unfinished.path),
      mIfThere(IfThere::Continue),
      mFile(std::make_unique<OutputFile>(unfinished))
{
}

std::uint64_t OutputPlace::bytesOf(const Series& series, const PictureStyle& style) const
{
    const std::uint64_t page = mFormat == FileFormat::Tiff ? TiffFileSink::kPageOverhead : 0;
    return series.count * (series.frameSize * style.channels() + page) / rowOf(mFormat).squeeze;
}

std::unique_ptr<FrameSink> OutputPlace::beginTiff(const Series& series, const PictureStyle& style)
{
    if (series.there + series.count > TiffFileSink::kMostPages) {
        throw Failure("a TIFF file takes " + std::to_string(TiffFileSink::kMostPages) +
                      " frames at most; use raw or png, or --every");
    }
    if (series.there > 0) {
        return TiffFileSink::resume(std::move(mFile), style,
                                    static_cast<std::uint32_t>(series.there));
    }
    if (mFile->isFile()) {
        mFile->resize(0); // what a process left that was killed before its first page
    }
    return std::make_unique<TiffFileSink>(std::move(mFile), style, bytesOf(series, style));
}

std::unique_ptr<FrameSink> OutputPlace::begin(const Series& series, const PictureStyle& style)
{
    if (isFileOrFolder()) {
        requireSpace(mPath, bytesOf(series, style));
    }
    mFolder.keep();
    switch (mFormat) {
    case FileFormat::Tiff:
        return beginTiff(series, style);
    case FileFormat::Png:
        return std::make_unique<PngFolderSink>(mPath, style, mIfThere);
    case FileFormat::Mkv:
    case FileFormat::Mp4:
        return makeVideoSink(std::move(mFile),
                             mFormat == FileFormat::Mkv ? VideoKind::Lossless : VideoKind::Report,
                             style, series.fps);
    default:
        return std::make_unique<RawFileSink>(std::move(mFile), style,
                                             series.there * series.frameSize * style.channels());
    }
}

} // namespace telvo
