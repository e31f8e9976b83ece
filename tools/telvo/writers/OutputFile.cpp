#include "OutputFile.h"

#include "Failure.h"
#include "OutputTarget.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <random>
#include <string>
#include <thread>
#include <utility>

namespace telvo
{

namespace
{

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kReaderPoll{20};
constexpr std::size_t kBufferSize = std::size_t{256} << 10; // more is written without a copy

std::string partialSuffix(std::uint32_t number)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), ".%08x.part", number);
    return text.data();
}

const std::size_t kSuffixSize = partialSuffix(0).size();

/// A name that no other process has, even if it writes to the same target.
std::pair<fs::path, SystemFile> createPartial(const fs::path& target)
{
    std::random_device random;
    for (;;) {
        fs::path path = target;
        path += partialSuffix(random());
        if (std::optional<SystemFile> file = SystemFile::create(path)) {
            return {std::move(path), std::move(*file)};
        }
    }
}

SystemFile openInPlace(const fs::path& path, const std::stop_token& stop)
{
    for (;;) {
        if (std::optional<SystemFile> file = SystemFile::open(path)) {
            return std::move(*file);
        }
        if (stop.stop_requested()) {
            throw Failure("nobody reads " + path.string() + "; start its reader first");
        }
        std::this_thread::sleep_for(kReaderPoll);
    }
}

} // namespace

template <typename Work>
auto OutputFile::orFail(Work work) const -> decltype(work())
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throw Failure("cannot write " + mPath.string() + ": " + reasonAndAdvice(error.code()));
    }
}

OutputFile::OutputFile(const fs::path& path, IfThere ifThere, const std::stop_token& stop)
    : mPath(path), mTarget(path), mReplace(ifThere == IfThere::Replace), mIsStream(false)
{
    requireWritable(path, ifThere);
    const TargetKind kind = kindOf(path);
    mIsStream = kind == TargetKind::Stream;
    orFail([&] {
        if (mIsStream || ifThere == IfThere::Continue) {
            mFile.emplace(openInPlace(path, stop));
            return;
        }
        if (kind == TargetKind::File) {
            mTarget = fs::canonical(path); // the file behind a link is replaced, not the link
        }
        auto [partial, file] = createPartial(mTarget);
        mPartial = std::move(partial);
        mFile.emplace(std::move(file));
    });
    claim();
}

OutputFile::OutputFile(const UnfinishedFile& unfinished)
    : mPath(unfinished.path),
      mTarget(unfinished.path),
      mPartial(unfinished.partial),
      mIsOwnPartial(false),
      mReplace(unfinished.ifThere == IfThere::Replace),
      mIsStream(false)
{
    requireWritable(unfinished.path, unfinished.ifThere);
    if (kindOf(mPath) == TargetKind::File) {
        mTarget = fs::canonical(mPath);
    }
    orFail([&] { mFile.emplace(openInPlace(unfinished.partial, {})); });
    claim();
}

/// Two processes that continue one file would spoil it.
void OutputFile::claim()
{
    if (!mIsStream && !orFail([&] { return mFile->claim(); })) {
        throw Failure("another process writes to " + mPath.string() +
                      "; wait for its end, or name another file");
    }
}

OutputFile::~OutputFile()
{
    mFile.reset();
    if (!mPartial.empty() && mIsOwnPartial) {
        std::error_code ignored; // nothing is left to do about it
        fs::remove(mPartial, ignored);
    }
}

void OutputFile::write(std::span<const std::uint8_t> bytes)
{
    if (mBuffer.size() + bytes.size() > kBufferSize) {
        flush();
    }
    mPosition += bytes.size();
    if (bytes.size() >= kBufferSize) {
        orFail([&] { mFile->write(bytes); });
    } else {
        mBuffer.insert(mBuffer.end(), bytes.begin(), bytes.end());
    }
}

std::size_t OutputFile::read(std::span<std::uint8_t> bytes)
{
    flush();
    const std::size_t size = orFail([&] { return mFile->read(bytes); });
    mPosition += size;
    return size;
}

void OutputFile::seek(std::uint64_t position)
{
    if (position != mPosition) {
        flush();
        orFail([&] { mFile->seek(position); });
        mPosition = position;
    }
}

std::uint64_t OutputFile::size()
{
    flush();
    return orFail([&] { return mFile->size(); });
}

void OutputFile::resize(std::uint64_t size)
{
    flush();
    orFail([&] { mFile->resize(size); });
    seek(size);
}

void OutputFile::reserve(std::uint64_t size)
{
    orFail([&] { mFile->reserve(size); });
}

std::uint64_t OutputFile::written() const
{
    return orFail([&] { return mFile->size(); });
}

void OutputFile::keepWritten()
{
    mBuffer.clear();
    mPosition = written();
    orFail([&] { mFile->seek(mPosition); });
}

void OutputFile::flush()
{
    orFail([&] { mFile->write(mBuffer); });
    mBuffer.clear();
}

void OutputFile::sync()
{
    flush();
    orFail([&] { mFile->sync(); });
}

void OutputFile::commit()
{
    flush();
    orFail([&] { mFile->close(); });
    mFile.reset();
    if (!mPartial.empty()) {
        rename();
    }
}

void OutputFile::rename()
{
    if (mReplace && kindOf(mTarget) == TargetKind::File) {
        orFail([&] { renameOver(mPartial, mTarget); });
    } else if (!orFail([&] { return renameToFree(mPartial, mTarget); })) {
        throw Failure(mPath.string() +
                      " was made by somebody else meanwhile; what was written is " +
                      std::exchange(mPartial, {}).string());
    }
    mPartial.clear();
}

bool isPartial(const fs::path& path)
{
    const std::string name = path.filename().string();
    if (name.size() <= kSuffixSize) {
        return false;
    }
    const std::string suffix = name.substr(name.size() - kSuffixSize);
    unsigned number = 0;
    return std::sscanf(suffix.c_str(), ".%8x.part", &number) == 1 &&
           suffix == partialSuffix(number);
}

std::vector<fs::path> partialsOf(const fs::path& path)
{
    const fs::path target = kindOf(path) == TargetKind::File ? fs::canonical(path) : path;
    const std::string name = target.filename().string();
    std::error_code none; // a folder that cannot be looked into has nothing to continue
    std::vector<fs::path> partials;
    for (const auto& entry : fs::directory_iterator(fs::absolute(target).parent_path(), none)) {
        const std::string other = entry.path().filename().string();
        if (isPartial(entry.path()) && other.substr(0, other.size() - kSuffixSize) == name) {
            partials.push_back(entry.path());
        }
    }
    return partials;
}

} // namespace telvo
