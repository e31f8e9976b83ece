#ifndef TELVO_GIGE_GENAPI_REGISTERCACHE_H
#define TELVO_GIGE_GENAPI_REGISTERCACHE_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <tuple>
#include <vector>

namespace gige::genapi
{

/// Whose contents: a register, or all entries of one structure register together.
using CacheId = std::ptrdiff_t;

/// Contents of registers as last read or written. An entry belongs to its register, address and
/// length, so that the elements of an indexed register do not mix.
class RegisterCache
{
  public:
    using Bytes = std::vector<std::uint8_t>;

    /// @return null when there is no entry; valid until the next change
    const Bytes* find(CacheId owner, std::uint64_t address, std::size_t length) const;

    /// Beyond kCacheSizeLimit bytes the cache starts over.
    void store(CacheId owner, std::uint64_t address, std::span<const std::uint8_t> bytes);

    void drop(CacheId owner);
    /// Ends the entries that share a byte with the range, whoever owns them.
    void dropOverlapping(std::uint64_t address, std::size_t length);
    void clear();

  private:
    using Key = std::tuple<CacheId, std::uint64_t, std::size_t>;

    std::map<Key, Bytes> mEntries;
    std::size_t mSize = 0; // bytes of all entries
};

} // namespace gige::genapi

#endif
