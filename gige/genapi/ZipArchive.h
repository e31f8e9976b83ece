#ifndef TELVO_GIGE_GENAPI_ZIPARCHIVE_H
#define TELVO_GIGE_GENAPI_ZIPARCHIVE_H

#include "GenApiResult.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace gige::genapi
{

/// A ZIP archive in memory, for reading.
class ZipArchive
{
  public:
    /// @param bytes  must outlive this object
    explicit ZipArchive(std::span<const std::uint8_t> bytes);
    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    /// Goes to the only file, or to the first whose name ends in `.xml`. @return ZipMalformed
    Status selectDescription();

    /// The selected file, checked against its checksum.
    /// @param limit  bytes; of a longer file no more is unpacked, and the result is
    /// DescriptionTooLarge
    Result<std::string> read(std::size_t limit);

  private:
    struct Memory; // the bytes as a file that can be read and sought in

    bool isDescription() const;
    Result<std::string> readOpenFile(std::size_t limit);

    std::unique_ptr<Memory> mMemory;
    void* mHandle; // null when the bytes are no archive
};

} // namespace gige::genapi

#endif
