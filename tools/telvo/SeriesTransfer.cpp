#include "SeriesTransfer.h"

#include "CancelFlag.h"
#include "FrameSource.h"
#include "ToolError.h"

#include <utility>

namespace telvo
{

namespace
{

/// How often what is written is noted, for when the process is killed.
constexpr std::chrono::milliseconds kAccountInterval{200};

/// Takes frames until there are no more, or until one cannot be read: what is written by then is
/// good as far as it goes.
class FrameReading
{
  public:
    FrameReading(const CameraSession& camera, const Recording& recording, FrameSelection selection)
        : mCamera(camera), mRecording(recording), mSelection(selection)
    {
    }

    /// None: that was the last, or reason() says why there is none.
    std::optional<RecordedFrame> next()
    {
        try {
            if (!mSource) {
                mSource = openFrames(mCamera, mRecording, mSelection, mCancel);
            }
            return mSource->next();
        } catch (const Failure& failure) {
            mReason = failure.what();
            return std::nullopt;
        }
    }
    const std::string& reason() const { return mReason; }

  private:
    const CameraSession& mCamera;
    const Recording& mRecording;
    FrameSelection mSelection;
    CancelFlag mCancel;
    std::unique_ptr<FrameSource> mSource; // none before the first frame
    std::string mReason;                  // empty: none
};

/// Puts the frames of a series where they go, and keeps account of them.
class SeriesWriting
{
  public:
    /// @param sidecar  null: there is none
    SeriesWriting(DownloadSeries& series, FrameSink& sink, SidecarFile* sidecar)
        : mSeries(series), mSink(sink), mSidecar(sidecar), mThere(series.written())
    {
        keepAccount(mThere);
    }

    void put(const RecordingInfo& info, const RecordedFrame& frame)
    {
        mSink.put(frame.number, {info.width, info.height, frame.bytes});
        mSeries.add({frame.number, decodeFrameHeader(frame.bytes)});
        if (const auto now = Clock::now(); now >= mNextAccount) {
            mNextAccount = now + kAccountInterval;
            keepAccount(mThere + mSink.written());
        }
    }
    void flush() { mSink.flush(); }
    /// Drops the frames that could not be written.
    void cut() { mSeries.cut(mThere + mSink.written()); }
    std::uint32_t done() const { return mSeries.written() - mThere; }

  private:
    using Clock = std::chrono::steady_clock;

    void keepAccount(std::size_t frames)
    {
        if (mSidecar != nullptr) {
            mSidecar->keep(mSeries.sidecar.frames, frames);
        }
    }

    DownloadSeries& mSeries;
    FrameSink& mSink;
    SidecarFile* mSidecar;
    std::uint32_t mThere; // frames, when it began
    Clock::time_point mNextAccount;
};

/// @return why the frames end before their last; empty: they do not
std::string copyFrames(const CameraSession& camera, const Recording& recording,
                       const FrameSelection& frames, SeriesWriting& writing,
                       TransferProgress progress)
{
    FrameReading reading(camera, recording, frames);
    try {
        while (const auto frame = reading.next()) {
            writing.put(recording.info, *frame);
            progress.show(writing.done());
        }
        writing.flush();
        return reading.reason();
    } catch (const Failure& failure) { // a full disk
        writing.cut();
        return failure.what();
    }
}

std::unique_ptr<SidecarFile> openSidecar(const DownloadTarget& target, const DownloadSeries& series,
                                         const std::filesystem::path& output)
{
    return target.sidecar ? std::make_unique<SidecarFile>(*target.sidecar, target.sidecarIfThere,
                                                          series.sidecar.about, output,
                                                          target.ifThere, series.selection.count)
                          : nullptr;
}

} // namespace

Outcome writeSeries(const DownloadOptions& options, DownloadTarget& target,
                    const CameraSession& camera, const Recording& recording,
                    const PictureStyle& style, DownloadSeries series,
                    const TransferProgress::ShowText& beside)
{
    const std::uint32_t there = series.written();
    const FrameSelection rest = series.rest();
    const std::filesystem::path output = target.place.output();
    const auto sink = target.place.begin({.frameSize = recording.info.frameSize(),
                                          .there = there,
                                          .count = rest.count,
                                          .fps = options.fps},
                                         style);
    auto sidecar = openSidecar(target, series, output);
    const auto start = std::chrono::steady_clock::now();
    SeriesWriting writing(series, *sink, sidecar.get());
    std::string interruption =
        rest.count == 0
            ? std::string()
            : copyFrames(camera, recording, rest, writing,
                         TransferProgress(rest.count, recording.info.frameSize(), beside));
    if (series.written() == 0) {
        throw Failure(interruption);
    }
    sink->finish();
    const std::uint32_t transferred = writing.done();
    return {std::move(series),
            recording.info,
            std::move(sidecar),
            transferred,
            std::chrono::steady_clock::now() - start,
            std::move(interruption)};
}

} // namespace telvo
