#include "DownloadTarget.h"

#include "CancelFlag.h"
#include "ForcedOutput.h"

#include <utility>

namespace telvo
{

namespace
{

namespace fs = std::filesystem;

fs::path sidecarOf(const DownloadOptions& options)
{
    return options.sidecar.empty()
               ? sidecarPath(options.out, isFolder(parseFileFormat(options.format)))
               : options.sidecar;
}

bool isThere(const fs::path& path)
{
    return kindOf(path) != TargetKind::Free;
}

DownloadTarget continueTarget(const DownloadOptions& options)
{
    const fs::path path = sidecarOf(options);
    Sidecar earlier = readSidecar(path);
    return {OutputPlace(parseFileFormat(options.format), options.out, IfThere::Continue), path,
            IfThere::Replace, std::move(earlier)};
}

DownloadTarget newTarget(const DownloadOptions& options)
{
    const FileFormat format = parseFileFormat(options.format);
    const fs::path sidecar = sidecarOf(options);
    if (!isFolder(format)) {
        requireFree(options.out, options.force);
    }
    requireFree(sidecar, options.force);
    const CancelToken cancel;
    OutputPlace place(format, options.out, ifThere(options.force), cancel.token());
    const bool hasSidecar = place.isFileOrFolder() || !options.sidecar.empty();
    return {std::move(place), hasSidecar ? std::optional(sidecar) : std::nullopt,
            ifThere(options.force), std::nullopt};
}

} // namespace

DownloadTarget prepareTarget(const DownloadOptions& options)
{
    const bool continues = options.resume && (isThere(sidecarOf(options)) || isThere(options.out));
    return continues ? continueTarget(options) : newTarget(options);
}

} // namespace telvo
