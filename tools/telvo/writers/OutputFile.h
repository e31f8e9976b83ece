#ifndef TELVO_TOOLS_TELVO_WRITERS_OUTPUTFILE_H
#define TELVO_TOOLS_TELVO_WRITERS_OUTPUTFILE_H

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>

namespace telvo
{

/**
 * A file that appears under its name only once it is complete: it grows as "NAME.part" in the same
 * folder, commit() renames it, and without commit() it is removed. An existing file of that name
 * stays untouched until then. Every operation throws Failure with the file's name.
 */
class OutputFile
{
  public:
    explicit OutputFile(std::filesystem::path path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void write(std::span<const std::uint8_t> bytes);
    void commit();

  private:
    std::filesystem::path mPath;
    std::filesystem::path mPartial;
    std::ofstream mStream;
};

/// Makes the folder and those above it. Throws Failure.
void makeFolder(const std::filesystem::path& folder);

} // namespace telvo

#endif
