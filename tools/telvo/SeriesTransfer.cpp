#include "SeriesTransfer.h"

#include "FrameSource.h"
#include "ToolError.h"

#include <optional>
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
    FrameReading(const CameraSession& camera, const Recording& recording, FrameSelection selection,
                 std::stop_token cancel)
        : mCamera(camera), mRecording(recording), mSelection(selection), mCancel(std::move(cancel))
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
    std::stop_token mCancel;
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
                       const FollowTransfer& follow, const std::stop_token& cancel)
{
    FrameReading reading(camera, recording, frames, cancel);
    TransferStep step{.of = frames.count, .frameSize = recording.info.frameSize()};
    try {
        follow(step);
        while (const auto frame = reading.next()) {
            writing.put(recording.info, *frame);
            step.done = writing.done();
            follow(step);
        }
        writing.flush();
        return reading.reason();
    } catch (const Failure& failure) { // a full disk
        writing.cut();
        return failure.what();
    }
}

void openSidecar(const DownloadTarget& target, const DownloadSeries& series,
                 const std::filesystem::path& output, std::optional<SidecarFile>& sidecar)
{
    if (target.sidecar) {
        sidecar.emplace(*target.sidecar, target.sidecarIfThere, series.sidecar.about, output,
                        target.ifThere, series.selection.count);
    }
}

void finishSidecar(const DownloadTarget& target, DownloadSeries& series,
                   std::optional<SidecarFile>& sidecar)
{
    if (sidecar) {
        series.sidecar.about["complete"] = series.isWhole();
        sidecar->finish(series.sidecar, series.counter);
    }
    for (const std::filesystem::path& journal : target.journals) {
        std::error_code ignored; // it says nothing wrong
        remove(journal, ignored);
    }
}

} // namespace

Outcome writeSeries(const DownloadOptions& options, DownloadTarget& target,
                    const CameraSession& camera, const Recording& recording,
                    const PictureStyle& style, DownloadSeries series, const FollowTransfer& follow,
                    const std::stop_token& cancel)
{
    const std::uint32_t there = series.written();
    const FrameSelection rest = series.rest();
    const std::filesystem::path output = target.place.output();
    const auto sink = target.place.begin({.frameSize = recording.info.frameSize(),
                                          .there = there,
                                          .count = rest.count,
                                          .fps = options.fps},
                                         style);
    std::optional<SidecarFile> sidecar;
    openSidecar(target, series, output, sidecar);
    const auto start = std::chrono::steady_clock::now();
    SeriesWriting writing(series, *sink, sidecar ? &*sidecar : nullptr);
    std::string interruption = rest.count == 0
                                   ? std::string()
                                   : copyFrames(camera, recording, rest, writing, follow, cancel);
    if (series.written() == 0) {
        throw Failure(interruption);
    }
    sink->finish();
    const std::uint32_t transferred = writing.done();
    const auto time = std::chrono::steady_clock::now() - start;
    finishSidecar(target, series, sidecar);
    return {std::move(series), recording.info, transferred, time, std::move(interruption)};
}

} // namespace telvo
