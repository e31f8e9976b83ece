#ifndef TELVO_GIGE_STREAM_SLOTSET_H
#define TELVO_GIGE_STREAM_SLOTSET_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace gige::stream
{

/// Some of so many slots, one bit for each.
template <std::size_t kSlots>
class SlotSet
{
    static_assert(kSlots % 64 == 0);

  public:
    void insert(std::size_t slot)
    {
        mCount += contains(slot) ? 0U : 1U;
        mWords[slot / 64] |= bit(slot);
    }
    void erase(std::size_t slot)
    {
        mCount -= contains(slot) ? 1U : 0U;
        mWords[slot / 64] &= ~bit(slot);
    }
    bool contains(std::size_t slot) const { return (mWords[slot / 64] & bit(slot)) != 0; }
    bool empty() const { return mCount == 0; }

    /// The first from `slot` on; kSlots if there is none.
    std::size_t first(std::size_t slot) const
    {
        if (empty() || slot >= kSlots) {
            return kSlots;
        }
        std::uint64_t word = mWords[slot / 64] >> (slot % 64) << (slot % 64);
        std::size_t index = slot / 64;
        while (word == 0 && ++index < mWords.size()) {
            word = mWords[index];
        }
        return word == 0 ? kSlots : index * 64 + static_cast<std::size_t>(std::countr_zero(word));
    }

  private:
    static constexpr std::uint64_t bit(std::size_t slot) { return std::uint64_t{1} << (slot % 64); }

    std::array<std::uint64_t, kSlots / 64> mWords{};
    std::size_t mCount = 0;
};

} // namespace gige::stream

#endif
