#include "OutputFile.h"

#include "Failure.h"

#include <ios>
#include <system_error>
#include <utility>

namespace telvo
{

OutputFile::OutputFile(std::filesystem::path path)
    : mPath(std::move(path)),
      mPartial(mPath.string() + ".part"),
      mStream(mPartial, std::ios::binary | std::ios::trunc)
{
    if (!mStream) {
        throw Failure("cannot write " + mPath.string());
    }
}

OutputFile::~OutputFile()
{
    if (mStream.is_open()) {
        mStream.close();
        std::error_code ignored; // nothing is left to do about it
        std::filesystem::remove(mPartial, ignored);
    }
}

void OutputFile::write(std::span<const std::uint8_t> bytes)
{
    // A stream of char writes bytes of any kind.
    mStream.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    if (!mStream) {
        throw Failure("cannot write " + mPath.string() + ": is the disk full?");
    }
}

void OutputFile::commit()
{
    mStream.flush();
    if (!mStream) {
        throw Failure("cannot write " + mPath.string() + ": is the disk full?");
    }
    mStream.close();
    std::error_code error;
    std::filesystem::rename(mPartial, mPath, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(mPartial, ignored);
        throw Failure("cannot write " + mPath.string() + ": " + error.message());
    }
}

void makeFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw Failure("cannot make the folder " + folder.string() + ": " + error.message());
    }
}

} // namespace telvo
