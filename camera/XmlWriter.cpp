#include "XmlWriter.h"

#include <array>
#include <cstdio>

namespace camera
{

void XmlWriter::open(std::string_view element, Attributes attributes)
{
    indent();
    start(element, attributes);
    mText += ">\n";
    mOpen.emplace_back(element);
}

void XmlWriter::close()
{
    const std::string element = mOpen.back();
    mOpen.pop_back();
    indent();
    mText += "</" + element + ">\n";
}

void XmlWriter::text(std::string_view element, std::string_view content)
{
    indent();
    start(element, {});
    mText += '>';
    escaped(content);
    mText.append("</").append(element).append(">\n");
}

void XmlWriter::number(std::string_view element, std::int64_t value)
{
    text(element, std::to_string(value));
}

void XmlWriter::hexadecimal(std::string_view element, std::uint32_t value)
{
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "0x%08X", value);
    text(element, digits.data());
}

void XmlWriter::empty(std::string_view element, Attributes attributes)
{
    indent();
    start(element, attributes);
    mText += "/>\n";
}

void XmlWriter::start(std::string_view element, Attributes attributes)
{
    mText.append("<").append(element);
    for (const auto& [name, value] : attributes) {
        mText.append(" ").append(name).append("=\"");
        escaped(value);
        mText += '"';
    }
}

void XmlWriter::escaped(std::string_view content)
{
    for (const char character : content) {
        switch (character) {
        case '<':
            mText += "&lt;";
            break;
        case '&':
            mText += "&amp;";
            break;
        case '"':
            mText += "&quot;";
            break;
        default:
            mText += character;
        }
    }
}

} // namespace camera
