#ifndef TELVO_TESTS_GIGE_GENAPI_ZIPBUILDER_H
#define TELVO_TESTS_GIGE_GENAPI_ZIPBUILDER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace gige::genapi
{

/// Writes ZIP archives field by field, as a device's manufacturer would pack a description.
class ZipBuilder
{
  public:
    using Bytes = std::vector<std::uint8_t>;

    ZipBuilder& store(const std::string& name, const std::string& content);
    ZipBuilder& deflate(const std::string& name, const std::string& content);
    /// A file of blanks, deflated a thousandfold. @param size  whole MiB
    ZipBuilder& deflateBlanks(const std::string& name, std::size_t size);
    /// Sizes of the next file stand in the directory only, as flag 0x8 says.
    ZipBuilder& withoutLocalSizes();

    Bytes finish();

  private:
    struct Entry;
    ZipBuilder& add(const Entry& entry);

    Bytes mFiles;
    Bytes mDirectory;
    std::uint16_t mCount = 0;
    bool mHasLocalSizes = true;
};

} // namespace gige::genapi

#endif
