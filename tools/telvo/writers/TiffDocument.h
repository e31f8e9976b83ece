#ifndef TELVO_TOOLS_TELVO_WRITERS_TIFFDOCUMENT_H
#define TELVO_TOOLS_TELVO_WRITERS_TIFFDOCUMENT_H

#include "OutputFile.h"
#include "Picture.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <tiffio.h>

namespace telvo
{

/// libtiff on an output file: errors become Failures.
class TiffDocument
{
  public:
    enum class Mode : std::uint8_t { Write, WriteBig };

    TiffDocument(std::unique_ptr<OutputFile> file, Mode mode);
    /// Goes on behind so many pages of a file; what is behind them is cut off. Throws Failure if it
    /// has fewer.
    TiffDocument(std::unique_ptr<OutputFile> file, std::uint32_t pages);
    ~TiffDocument();
    TiffDocument(const TiffDocument&) = delete;
    TiffDocument& operator=(const TiffDocument&) = delete;

    /// The page is with the system when this returns. After a Failure there are those before it,
    /// and no more can be added.
    void addPage(PictureView picture);
    /// With those that were there when it was opened.
    std::uint32_t pages() const { return mPages; }
    void commit();

  private:
    // What libtiff calls; no exception may go through it.
    static tmsize_t read(thandle_t document, void* bytes, tmsize_t size);
    static tmsize_t write(thandle_t document, void* bytes, tmsize_t size);
    static toff_t seek(thandle_t document, toff_t offset, int whence);
    static toff_t size(thandle_t document);
    static int onError(TIFF* tiff, void* document, const char* module, const char* format,
                       va_list arguments);
    template <typename Result, typename Work>
    Result guarded(Result failed, Work work) noexcept;

    void open(const char* mode);
    void close();
    void writePage(PictureView picture);
    void giveUp();
    void require(bool done) const;

    std::unique_ptr<OutputFile> mFile; // never null
    TIFF* mTiff = nullptr;             // null: closed, nothing can be added
    std::uint32_t mPages = 0;
    bool mGivenUp = false;     // libtiff writes no more
    std::exception_ptr mError; // of the file
    std::string mMessage;      // of libtiff
};

} // namespace telvo

#endif
