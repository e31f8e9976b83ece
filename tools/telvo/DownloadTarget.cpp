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
    return {OutputPlace(parseFileFormat(options.format), options.out, IfThere::Continue),
            path,
            IfThere::Replace,
            IfThere::Continue,
            std::move(earlier),
            {}};
}

OutputPlace unfinishedPlace(const DownloadOptions& options, const UnfinishedSeries& series)
{
    const FileFormat format = parseFileFormat(options.format);
    std::error_code ignored;
    const bool isInPlace = isFolder(format) || fs::equivalent(series.output, options.out, ignored);
    return isInPlace ? OutputPlace(format, options.out, IfThere::Continue)
                     : OutputPlace(format, {series.output, options.out, series.ifThere});
}

DownloadTarget continueKilled(const DownloadOptions& options, UnfinishedSeries series)
{
    return {unfinishedPlace(options, series),
            sidecarOf(options),
            IfThere::Replace,
            series.ifThere,
            std::move(series.sidecar),
            std::move(series.journals)};
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
    return {std::move(place),       hasSidecar ? std::optional(sidecar) : std::nullopt,
            ifThere(options.force), ifThere(options.force),
            std::nullopt,           {}};
}

} // namespace

DownloadTarget prepareTarget(const DownloadOptions& options)
{
    if (!options.resume) {
        return newTarget(options);
    }
    if (auto killed = findUnfinished(sidecarOf(options))) {
        return continueKilled(options, std::move(*killed));
    }
    const bool isAnythingThere = isThere(sidecarOf(options)) || isThere(options.out);
    return isAnythingThere ? continueTarget(options) : newTarget(options);
}

} // namespace telvo
