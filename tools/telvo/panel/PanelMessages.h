/// What is sent to pages: answers, events and pictures.
#ifndef TELVO_TOOLS_TELVO_PANEL_PANELMESSAGES_H
#define TELVO_TOOLS_TELVO_PANEL_PANELMESSAGES_H

#include "Clients.h"
#include "Json.h"

#include <cstdint>
#include <span>
#include <string>

namespace telvo
{

/// @param fields  members of the answer; null: none
MessagePointer answerMessage(std::int64_t id, const Json& fields = {});

MessagePointer errorMessage(const Json& id, const std::string& reason);

/// Of a request whose place a newer one has taken.
MessagePointer supersededMessage(std::int64_t id);

MessagePointer eventMessage(const char* event, const Json& fields = {});

/// The length of the header (32 bits, big-endian), the header, the picture.
MessagePointer pictureMessage(const Json& header, std::span<const std::uint8_t> picture);

/// A figure as a page shows it: to a tenth.
double tenths(double figure);

} // namespace telvo

#endif
