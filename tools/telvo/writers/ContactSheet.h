#ifndef TELVO_TOOLS_TELVO_WRITERS_CONTACTSHEET_H
#define TELVO_TOOLS_TELVO_WRITERS_CONTACTSHEET_H

#include "GrayImage.h"

#include <cstddef>
#include <vector>

namespace telvo
{

/**
 * One picture that shows a whole series: at most kMaxCells thumbnails, evenly spread over the
 * series, row by row. Add every frame in order; only those that get a cell are kept.
 */
class ContactSheet
{
  public:
    static constexpr std::size_t kMaxCells = 60;
    static constexpr std::uint32_t kCellWidth = 160; // pixels; narrower pictures keep their width
    static constexpr std::uint32_t kGap = 4;         // pixels around every cell
    static constexpr std::uint8_t kBackground = 32;  // gray value between the cells

    /// @param seriesLength  frames that the series will have at most
    explicit ContactSheet(std::size_t seriesLength) : mSeriesLength(seriesLength) {}

    /// The series' next frame. All frames of a series have one size.
    void add(GrayView frame);

    bool isEmpty() const { return mCells.empty(); }

    /// The sheet of the frames so far. Not for an empty sheet.
    GrayImage render() const;

  private:
    std::size_t mSeriesLength;
    std::size_t mFrames = 0;
    std::vector<GrayImage> mCells;
};

/// The picture shrunk by the smallest whole factor that brings it to maxWidth: each pixel is the
/// mean of a square. Pixels at the right and lower edge that fill no square are left out.
GrayImage shrink(GrayView image, std::uint32_t maxWidth);

} // namespace telvo

#endif
