#ifndef TELVO_TOOLS_TELVO_WRITERS_PNGFOLDERSINK_H
#define TELVO_TOOLS_TELVO_WRITERS_PNGFOLDERSINK_H

#include "FrameSink.h"
#include "PictureWriter.h"
#include "SystemFile.h"

#include <filesystem>

namespace telvo
{

/// A folder of pictures: frame-000000.png and so on. Pictures of an unfinished series stay.
class PngFolderSink : public FrameSink
{
  public:
    /// Makes the folder, which has to be a new or an empty one that no other process writes to;
    /// with IfThere::Continue it may hold pictures, which are replaced by those of their numbers.
    /// Throws Failure.
    explicit PngFolderSink(std::filesystem::path folder, const PictureStyle& style = {},
                           IfThere ifThere = IfThere::Refuse);
    void put(std::uint64_t number, GrayView frame) override;
    void flush() override;
    std::uint64_t written() override;
    void finish() override;

  private:
    template <typename Work>
    void orRemember(Work work);

    std::filesystem::path mFolder;
    FolderClaim mClaim;
    PictureWriter mWriter;
    bool mHasFailed = false; // told already
};

} // namespace telvo

#endif
