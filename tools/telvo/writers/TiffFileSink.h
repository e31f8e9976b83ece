#ifndef TELVO_TOOLS_TELVO_WRITERS_TIFFFILESINK_H
#define TELVO_TOOLS_TELVO_WRITERS_TIFFFILESINK_H

#include "FrameSink.h"
#include "OutputFile.h"
#include "PictureRenderer.h"

#include <cstdint>
#include <memory>

namespace telvo
{

class TiffDocument;

/// A TIFF file of a page for each frame, not compressed; BigTIFF where more than 4 GB are expected.
class TiffFileSink : public FrameSink
{
  public:
    static constexpr std::uint64_t kMostPages = 1'000'000; // libtiff stops a little above

    /// @param expected  bytes of all frames to come
    TiffFileSink(std::unique_ptr<OutputFile> file, const PictureStyle& style,
                 std::uint64_t expected);
    /// Continues a file that has so many pages; what is behind them is cut off. Throws Failure if
    /// it has fewer.
    static std::unique_ptr<TiffFileSink> resume(std::unique_ptr<OutputFile> file,
                                                const PictureStyle& style, std::uint32_t pages);
    ~TiffFileSink() override;
    void put(std::uint64_t number, GrayView frame) override;
    void flush() override;
    std::uint64_t written() override;
    void finish() override;

    /// Bytes that a page takes beside its pixels, at most.
    static constexpr std::uint64_t kPageOverhead = 512;

  private:
    explicit TiffFileSink(std::unique_ptr<TiffDocument> document, const PictureStyle& style);

    std::unique_ptr<TiffDocument> mDocument; // never null
    std::uint32_t mThere;                    // pages, when it began
    PictureRenderer mRenderer;
};

} // namespace telvo

#endif
