/// Pictures and histograms as text that a terminal shows.
#ifndef TELVO_TOOLS_TELVO_TERMINALPICTURE_H
#define TELVO_TOOLS_TELVO_TERMINALPICTURE_H

#include "GrayImage.h"
#include "Terminal.h"

#include <cstdint>
#include <string>

namespace telvo
{

/// How a terminal shows pictures.
enum class TerminalGraphics : std::uint8_t { HalfBlocks, Kitty, Sixel };

/// By what the terminal says of itself in the environment (TERM, KITTY_WINDOW_ID); half blocks,
/// which all show, where it says nothing.
TerminalGraphics graphicsOf(const std::string& term, bool hasKittyWindow);

/// The picture, as large as it fits, without the 16 bytes of its header as pixels.
/// @param room  characters
std::string pictureText(GrayView picture, TerminalSize room, TerminalGraphics graphics);

/// How often each grey value is there, in so many characters from black to white.
std::string histogramText(GrayView picture, std::uint32_t columns);

} // namespace telvo

#endif
