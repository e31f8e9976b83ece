#include "RegisterCache.h"

#include "GenApiLimits.h"

namespace gige::genapi
{

const RegisterCache::Bytes* RegisterCache::find(CacheId owner, std::uint64_t address,
                                                std::size_t length) const
{
    const auto found = mEntries.find({owner, address, length});
    return found == mEntries.end() ? nullptr : &found->second;
}

void RegisterCache::store(CacheId owner, std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    // Seldom reached, by indexes over a large space; what they read once is hardly read again.
    if (mSize + bytes.size() > kCacheSizeLimit) {
        clear();
    }
    const auto [entry, isNew] = mEntries.try_emplace({owner, address, bytes.size()});
    entry->second.assign(bytes.begin(), bytes.end());
    mSize += isNew ? bytes.size() : 0;
}

void RegisterCache::drop(CacheId owner)
{
    auto entry = mEntries.lower_bound({owner, 0, 0});
    while (entry != mEntries.end() && std::get<0>(entry->first) == owner) {
        mSize -= entry->second.size();
        entry = mEntries.erase(entry);
    }
}

// All entries are looked at: sorted by owner, those of an address may stand anywhere.
void RegisterCache::dropOverlapping(std::uint64_t address, std::size_t length)
{
    for (auto entry = mEntries.begin(); entry != mEntries.end();) {
        const auto& [owner, start, size] = entry->first;
        if (start < address + length && address < start + size) {
            mSize -= size;
            entry = mEntries.erase(entry);
        } else {
            ++entry;
        }
    }
}

void RegisterCache::clear()
{
    mEntries.clear();
    mSize = 0;
}

} // namespace gige::genapi
