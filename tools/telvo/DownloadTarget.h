#ifndef TELVO_TOOLS_TELVO_DOWNLOADTARGET_H
#define TELVO_TOOLS_TELVO_DOWNLOADTARGET_H

#include "Download.h"
#include "FileFormat.h"
#include "Sidecar.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace telvo
{

/// Where a download goes, held from before the camera is connected.
struct DownloadTarget {
    OutputPlace place;
    std::optional<std::filesystem::path> sidecar; // none: a FIFO or a device has no place for it
    IfThere sidecarIfThere;
    IfThere ifThere;                             // of the output
    std::optional<Sidecar> earlier;              // of the interrupted download that is continued
    std::vector<std::filesystem::path> journals; // of it, of no use once it is continued
};

/// Throws Failure where nothing may or can be written.
DownloadTarget prepareTarget(const DownloadOptions& options);

} // namespace telvo

#endif
