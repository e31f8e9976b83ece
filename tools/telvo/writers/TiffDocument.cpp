#include "TiffDocument.h"

#include "Failure.h"
#include "TiffPages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace telvo
{

namespace
{

TiffDocument& documentOf(thandle_t handle)
{
    return *static_cast<TiffDocument*>(handle);
}

} // namespace

template <typename Result, typename Work>
Result TiffDocument::guarded(Result failed, Work work) noexcept
{
    try {
        return static_cast<Result>(work());
    } catch (...) {
        if (!mError) {
            mError = std::current_exception();
        }
        return failed;
    }
}

tmsize_t TiffDocument::read(thandle_t handle, void* bytes, tmsize_t size)
{
    TiffDocument& document = documentOf(handle);
    return document.guarded(tmsize_t{-1}, [&] {
        return document.mFile->read(
            {static_cast<std::uint8_t*>(bytes), static_cast<std::size_t>(size)});
    });
}

tmsize_t TiffDocument::write(thandle_t handle, void* bytes, tmsize_t size)
{
    TiffDocument& document = documentOf(handle);
    if (document.mGivenUp) {
        return size;
    }
    return document.guarded(tmsize_t{-1}, [&] {
        document.mFile->write(
            {static_cast<const std::uint8_t*>(bytes), static_cast<std::size_t>(size)});
        return size;
    });
}

toff_t TiffDocument::seek(thandle_t handle, toff_t offset, int whence)
{
    TiffDocument& document = documentOf(handle);
    return document.guarded(static_cast<toff_t>(-1), [&] {
        OutputFile& file = *document.mFile;
        const std::uint64_t from = whence == SEEK_CUR   ? file.position()
                                   : whence == SEEK_END ? file.size()
                                                        : 0;
        file.seek(from + offset);
        return file.position();
    });
}

toff_t TiffDocument::size(thandle_t handle)
{
    TiffDocument& document = documentOf(handle);
    return document.guarded(toff_t{0}, [&] { return document.mFile->size(); });
}

int TiffDocument::onError(TIFF* /*tiff*/, void* document, const char* /*module*/,
                          const char* format, va_list arguments)
{
    std::array<char, 256> text{};
    std::vsnprintf(text.data(), text.size(), format, arguments);
    documentOf(document).mMessage = text.data();
    return 1; // said
}

TiffDocument::TiffDocument(std::unique_ptr<OutputFile> file, Mode mode) : mFile(std::move(file))
{
    if (!mFile->isFile()) {
        throw Failure("TIFF cannot be written to a FIFO or a device; use raw or mkv");
    }
    open(mode == Mode::WriteBig ? "w8" : "w");
}

TiffDocument::TiffDocument(std::unique_ptr<OutputFile> file, std::uint32_t pages)
    : mFile(std::move(file)), mPages(cutTiffPages(*mFile, pages))
{
    if (mPages < pages) {
        throw Failure("the file has fewer pages than it had; download it anew");
    }
    mFile->seek(0); // libtiff reads on from where the file is
    open("a");
}

TiffDocument::~TiffDocument()
{
    close();
}

void TiffDocument::open(const char* mode)
{
    TIFFOpenOptions* const options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options, onError, this);
    TIFFOpenOptionsSetWarningHandlerExtR(options, onError, this);
    const auto closeNothing = [](thandle_t) { return 0; };
    mTiff = TIFFClientOpenExt("recording", mode, this, read, write, seek, closeNothing, size,
                              nullptr, nullptr, options);
    TIFFOpenOptionsFree(options);
    require(mTiff != nullptr);
}

void TiffDocument::close()
{
    if (mTiff != nullptr) {
        TIFFClose(std::exchange(mTiff, nullptr));
    }
}

void TiffDocument::require(bool done) const
{
    if (mError) {
        std::rethrow_exception(mError);
    }
    if (!done) {
        throw Failure("cannot write TIFF: " + mMessage + "; try --format raw");
    }
}

void TiffDocument::addPage(PictureView picture)
{
    try {
        require(mTiff != nullptr);
        writePage(picture);
        mFile->flush();
        ++mPages;
    } catch (const Failure&) {
        giveUp();
        throw;
    }
}

void TiffDocument::writePage(PictureView picture)
{
    TIFFSetField(mTiff, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
    TIFFSetField(mTiff, TIFFTAG_IMAGEWIDTH, picture.width);
    TIFFSetField(mTiff, TIFFTAG_IMAGELENGTH, picture.height);
    TIFFSetField(mTiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(mTiff, TIFFTAG_SAMPLESPERPIXEL, picture.channels);
    TIFFSetField(mTiff, TIFFTAG_PHOTOMETRIC,
                 picture.channels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    TIFFSetField(mTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(mTiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    TIFFSetField(mTiff, TIFFTAG_ROWSPERSTRIP, picture.height);
    TIFFSetField(mTiff, TIFFTAG_SOFTWARE, "telvo");
    // libtiff's functions take what they only read as writable.
    auto* const pixels = const_cast<std::uint8_t*>(picture.pixels.data());
    const auto bytes = static_cast<tmsize_t>(picture.size());
    require(TIFFWriteRawStrip(mTiff, 0, pixels, bytes) == bytes);
    require(TIFFWriteDirectory(mTiff) == 1);
}

/// Leaves the file with its whole pages. Where that cannot be either, it stays as it is: whoever
/// continues it counts its pages.
void TiffDocument::giveUp()
{
    mGivenUp = true;
    close();
    guarded(0, [&] {
        mFile->keepWritten();
        mPages = cutTiffPages(*mFile, mPages);
        mFile->flush();
        return 0;
    });
}

void TiffDocument::commit()
{
    close();
    if (!mGivenUp) {
        require(true);
    }
    mFile->sync();
    mFile->commit();
}

} // namespace telvo
