#ifndef TELVO_TOOLS_TELVO_LINEINPUT_H
#define TELVO_TOOLS_TELVO_LINEINPUT_H

#include <optional>
#include <string>

namespace telvo
{

/// Standard input, line by line, with an ear for the user's wish to end.
class LineInput
{
  public:
    /// The next line without its end; none: there are no more, or the user wants the end.
    /// @param prompt  written to standard error before; may be empty
    std::optional<std::string> next(const std::string& prompt);

  private:
    std::optional<std::string> takeLine();

    std::string mRead; // not handed out yet
    bool mEnded = false;
};

} // namespace telvo

#endif
