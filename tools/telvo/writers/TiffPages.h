#ifndef TELVO_TOOLS_TELVO_WRITERS_TIFFPAGES_H
#define TELVO_TOOLS_TELVO_WRITERS_TIFFPAGES_H

#include "OutputFile.h"

#include <cstdint>

namespace telvo
{

/// Cuts a TIFF file off behind its first pages, so that it is as it was when the last of them was
/// written; of one that was not written to its end nothing is left.
/// @param most  pages to keep
/// @return pages that are left; fewer where the file has fewer; 0, and no cut, if it is no TIFF
/// file
std::uint32_t cutTiffPages(OutputFile& file, std::uint32_t most);

} // namespace telvo

#endif
