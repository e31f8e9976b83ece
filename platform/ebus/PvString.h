#ifndef TELVO_PLATFORM_EBUS_PVSTRING_H
#define TELVO_PLATFORM_EBUS_PVSTRING_H

#include <string>
#include <utility>

/// Single-byte text as the camera and the network stack exchange it.
class PvString
{
  public:
    PvString() = default;
    // Implicit: feature names and addresses are written as literals at every call.
    PvString(const char* text) : mText(text == nullptr ? "" : text) {}
    PvString(std::string text) : mText(std::move(text)) {}

    /// NUL-terminated text; valid until this object is changed or destroyed.
    const char* GetAscii() const { return mText.c_str(); }

    bool operator==(const PvString&) const = default;

  private:
    std::string mText;
};

#endif
