#ifndef TELVO_TOOLS_TELVO_WRITERS_FRAMESINK_H
#define TELVO_TOOLS_TELVO_WRITERS_FRAMESINK_H

#include "GrayImage.h"
#include "OutputFile.h"
#include "PictureWriter.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace telvo
{

/// Where a series of frames goes. What is not finished leaves no half-written file.
class FrameSink
{
  public:
    FrameSink() = default;
    virtual ~FrameSink() = default;
    FrameSink(const FrameSink&) = delete;
    FrameSink& operator=(const FrameSink&) = delete;

    /// The series' next frame, under its number. Throws Failure.
    virtual void put(std::uint64_t number, GrayView frame) = 0;
    /// All is safely written when this returns. Throws Failure.
    virtual void finish() = 0;
};

/// One file of all frames' bytes, one after the other; there only once finished.
class RawFileSink : public FrameSink
{
  public:
    explicit RawFileSink(const std::filesystem::path& file) : mFile(file) {}
    void put(std::uint64_t number, GrayView frame) override;
    void finish() override;

  private:
    OutputFile mFile;
};

/// A folder of pictures: frame-000000.png and so on. Pictures of an unfinished series stay.
class PngFolderSink : public FrameSink
{
  public:
    /// Makes the folder. Throws Failure.
    explicit PngFolderSink(std::filesystem::path folder);
    void put(std::uint64_t number, GrayView frame) override;
    void finish() override;

  private:
    std::filesystem::path mFolder;
    PictureWriter mWriter;
};

} // namespace telvo

#endif
