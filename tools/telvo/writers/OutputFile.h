#ifndef TELVO_TOOLS_TELVO_WRITERS_OUTPUTFILE_H
#define TELVO_TOOLS_TELVO_WRITERS_OUTPUTFILE_H

#include "OutputTarget.h"
#include "SystemFile.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace telvo
{

/// What a process that was killed has left of a file.
struct UnfinishedFile {
    std::filesystem::path partial; // where it is
    std::filesystem::path path;    // what it is to become
    IfThere ifThere;
};

/**
 * A file that appears under its name only once it is complete: it grows under a name of its own
 * in the same folder ("NAME.1f00ba2c.part"), commit() renames it in one step, and without commit()
 * it is removed. An earlier file of that name stays untouched until then. When somebody else has
 * taken the name by then, the partial file stays and the Failure tells its name.
 *
 * A FIFO or a device is written to as it is, and nothing of the above holds. What fails throws
 * Failure with the file's name.
 */
class OutputFile
{
  public:
    /// @param stop  ends the wait for the reader of a FIFO
    explicit OutputFile(const std::filesystem::path& path, IfThere ifThere = IfThere::Refuse,
                        const std::stop_token& stop = {});
    /// Goes on with what the other process has left, at its start until seek() says otherwise.
    /// Without commit() it stays.
    explicit OutputFile(const UnfinishedFile& unfinished);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// False for a FIFO or a device, which takes bytes in order only.
    bool isFile() const { return !mIsStream; }
    void write(std::span<const std::uint8_t> bytes);
    /// Hands it all to the system: it stays, whatever becomes of this process.
    void flush();
    /// Returns when the device has all that was written.
    void sync();
    /// Gives the file its name. Its bytes are the system's, on the device only after sync().
    void commit();

    // Of a file only.
    std::size_t read(std::span<std::uint8_t> bytes);
    void seek(std::uint64_t position);
    std::uint64_t position() const { return mPosition; }
    std::uint64_t size();
    /// Cuts or lengthens it, and goes on at its new end.
    void resize(std::uint64_t size);
    /// Takes the disk's space for a file of this size, which does not change.
    void reserve(std::uint64_t size);
    /// Bytes that the system has of the file.
    std::uint64_t written() const;
    /// After a Failure: goes on at the end of what the system has, and forgets the rest.
    void keepWritten();
    /// The name that it has until commit(); empty: its own.
    const std::filesystem::path& partial() const { return mPartial; }

  private:
    void claim();
    void rename();
    template <typename Work>
    auto orFail(Work work) const -> decltype(work());

    std::filesystem::path mPath;    // as the user calls it
    std::filesystem::path mTarget;  // the same without links
    std::filesystem::path mPartial; // empty: written in place
    bool mIsOwnPartial = true;      // not one that another process has left
    bool mReplace;
    bool mIsStream;
    std::optional<SystemFile> mFile;   // none: committed
    std::vector<std::uint8_t> mBuffer; // written, not yet the system's
    std::uint64_t mPosition = 0;
};

/// Whether the name is one that an OutputFile gives to a file that is not complete.
bool isPartial(const std::filesystem::path& path);

/// The files that OutputFiles of this path, present or killed ones, have begun.
std::vector<std::filesystem::path> partialsOf(const std::filesystem::path& path);

} // namespace telvo

#endif
