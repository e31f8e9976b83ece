#include "PanelMessages.h"

#include <cmath>

namespace telvo
{

namespace
{

/// Texts of a camera or a page may be in any code.
std::string jsonText(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

MessagePointer textMessage(Json head, const Json& fields)
{
    if (fields.is_object()) {
        head.update(fields);
    }
    return std::make_shared<Message>(Message{.bytes = jsonText(head)});
}

} // namespace

MessagePointer answerMessage(std::int64_t id, const Json& fields)
{
    return textMessage({{"id", id}, {"ok", true}}, fields);
}

MessagePointer errorMessage(const Json& id, const std::string& reason)
{
    return textMessage({{"id", id}, {"ok", false}, {"error", reason}}, {});
}

MessagePointer supersededMessage(std::int64_t id)
{
    return textMessage({{"id", id}, {"ok", false}, {"error", "superseded"}, {"superseded", true}},
                       {});
}

MessagePointer eventMessage(const char* event, const Json& fields)
{
    return textMessage({{"event", event}}, fields);
}

MessagePointer pictureMessage(const Json& header, std::span<const std::uint8_t> picture)
{
    const std::string text = jsonText(header);
    const auto size = static_cast<std::uint32_t>(text.size());
    Message message{.bytes = {}, .isBinary = true};
    message.bytes.reserve(sizeof size + text.size() + picture.size());
    for (int shift = 24; shift >= 0; shift -= 8) {
        message.bytes += static_cast<char>(size >> static_cast<unsigned>(shift) & 0xFFU);
    }
    message.bytes += text;
    message.bytes.append(reinterpret_cast<const char*>(picture.data()), picture.size());
    return std::make_shared<Message>(std::move(message));
}

double tenths(double figure)
{
    return std::round(figure * 10) / 10;
}

} // namespace telvo
