#include "TiffFileSink.h"

#include "TiffDocument.h"

#include <utility>

namespace telvo
{

namespace
{

/// Classic TIFF counts its bytes with 32 bits.
constexpr std::uint64_t kMostClassicBytes = (std::uint64_t{1} << 32) - (std::uint64_t{1} << 20);

} // namespace

TiffFileSink::TiffFileSink(std::unique_ptr<OutputFile> file, const PictureStyle& style,
                           std::uint64_t expected)
    : TiffFileSink(std::make_unique<TiffDocument>(
                       std::move(file), expected > kMostClassicBytes ? TiffDocument::Mode::WriteBig
                                                                     : TiffDocument::Mode::Write),
                   style)
{
}

TiffFileSink::TiffFileSink(std::unique_ptr<TiffDocument> document, const PictureStyle& style)
    : mDocument(std::move(document)),
      mThere(mDocument->pages()),
      mRenderer(style, [this](PictureView picture) { mDocument->addPage(picture); })
{
}

TiffFileSink::~TiffFileSink() = default;

std::unique_ptr<TiffFileSink> TiffFileSink::resume(std::unique_ptr<OutputFile> file,
                                                   const PictureStyle& style, std::uint32_t pages)
{
    auto document = std::make_unique<TiffDocument>(std::move(file), pages);
    return std::unique_ptr<TiffFileSink>(new TiffFileSink(std::move(document), style));
}

void TiffFileSink::put(std::uint64_t /*number*/, GrayView frame)
{
    mRenderer.put(frame);
}

void TiffFileSink::flush()
{
    mRenderer.flush(); // each page is with the system at once
}

std::uint64_t TiffFileSink::written()
{
    return mDocument->pages() - mThere;
}

void TiffFileSink::finish()
{
    flush();
    mDocument->commit();
}

} // namespace telvo
