#ifndef TELVO_TOOLS_TELVO_CAPTUREOPTIONS_H
#define TELVO_TOOLS_TELVO_CAPTUREOPTIONS_H

#include "Command.h"
#include "Setting.h"

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace telvo
{

/// The parts of "X,Y,W,H", each still a text. Throws UsageError for a text of another form.
std::array<std::string, 4> rectangleOf(const std::string& text);

/// Settings that a command applies before its work: those with an option of their own, and --set.
class CaptureOptions
{
  public:
    /// Adds an option for each of these settings ("exposure" becomes --exposure; "frame-rate" is
    /// --fps), --roi for the four of the picture's place if width is among them, and --set for all
    /// the others. This object outlives the command.
    void addTo(const Command& command, const std::vector<std::string_view>& settings);

    /// In the table's order, then those of --set as given. Throws UsageError.
    std::vector<Assignment> assignments() const;

  private:
    std::map<const Setting*, std::string> mValues; // keys lie in the table's order
    std::string mRoi;
    std::vector<std::string> mSets;
};

} // namespace telvo

#endif
