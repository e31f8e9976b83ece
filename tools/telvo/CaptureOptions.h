#ifndef TELVO_TOOLS_TELVO_CAPTUREOPTIONS_H
#define TELVO_TOOLS_TELVO_CAPTUREOPTIONS_H

#include "Setting.h"

#include <CLI/CLI.hpp>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace telvo
{

/// Settings that a command applies before its work: those with an option of their own, and --set.
class CaptureOptions
{
  public:
    /// Adds an option for each of these settings ("exposure" becomes --exposure; "frame-rate" is
    /// --fps) and --set for all the others. This object outlives the command.
    void addTo(CLI::App& command, const std::vector<std::string_view>& settings);

    /// In the table's order, in which a camera takes them best (size before rate before exposure),
    /// then those of --set as given. Throws UsageError.
    std::vector<Assignment> assignments() const;

  private:
    std::map<const Setting*, std::string> mValues; // keys lie in the table's order
    std::vector<std::string> mSets;
};

} // namespace telvo

#endif
