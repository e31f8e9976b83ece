#ifndef TELVO_CAMERA_XMLWRITER_H
#define TELVO_CAMERA_XMLWRITER_H

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace camera
{

/** Writes XML text: open() and close() nest, the others stand in the element that is open. */
class XmlWriter
{
  public:
    using Attributes = std::initializer_list<std::pair<std::string_view, std::string_view>>;

    XmlWriter() { mText = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"; }

    void open(std::string_view element, Attributes attributes = {});
    void close();
    void text(std::string_view element, std::string_view content);
    void number(std::string_view element, std::int64_t value);
    void hexadecimal(std::string_view element, std::uint32_t value);
    /** An element without content. */
    void empty(std::string_view element, Attributes attributes);

    [[nodiscard]] const std::string& result() const { return mText; }

  private:
    void indent() { mText.append(2 * mOpen.size(), ' '); }
    void start(std::string_view element, Attributes attributes);
    void escaped(std::string_view content);

    std::string mText;
    std::vector<std::string> mOpen;
};

} // namespace camera

#endif
