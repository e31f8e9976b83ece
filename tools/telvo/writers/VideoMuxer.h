#ifndef TELVO_TOOLS_TELVO_WRITERS_VIDEOMUXER_H
#define TELVO_TOOLS_TELVO_WRITERS_VIDEOMUXER_H

#include "Libav.h"
#include "OutputFile.h"

#include <exception>
#include <memory>

namespace telvo
{

/// The container of a video on an output file.
class VideoMuxer
{
  public:
    /// @param format  as libav calls it: "matroska", "mp4"
    VideoMuxer(std::unique_ptr<OutputFile> file, const char* format);
    ~VideoMuxer();
    VideoMuxer(const VideoMuxer&) = delete;
    VideoMuxer& operator=(const VideoMuxer&) = delete;

    bool wantsGlobalHeader() const { return (mFormat->oformat->flags & AVFMT_GLOBALHEADER) != 0; }
    /// Begins the file with one video of this encoder.
    void begin(const AVCodecContext& encoder);
    /// @param packet  with the encoder's times; emptied
    void write(AVPacket& packet);
    /// Ends the file and gives it its name.
    void finish();

  private:
    static int writeBytes(void* muxer, std::uint8_t* bytes, int size);
    static std::int64_t seek(void* muxer, std::int64_t offset, int whence);
    int require(int result) const;

    std::unique_ptr<OutputFile> mFile; // never null
    std::exception_ptr mError;         // of the file
    FormatContext mFormat;
    AVRational mTimeBase{};
};

} // namespace telvo

#endif
