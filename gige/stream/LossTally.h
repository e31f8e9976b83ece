#ifndef TELVO_GIGE_STREAM_LOSSTALLY_H
#define TELVO_GIGE_STREAM_LOSSTALLY_H

#include "Reasons.h"

#include <cstdint>

namespace gige::stream
{

class OpenBlock;

/// Counts lost packets by their place in the block. Pure.
class LossTally
{
  public:
    /// One packet that came only when it was asked for again.
    void addCame(const OpenBlock& block, std::uint32_t packetId);
    /// What is missing of a block that ends, as far as its length is known.
    void addMissing(const OpenBlock& block);

    const log::LostByTenth& lost() const { return mLost; }

  private:
    void add(std::uint64_t first, std::uint64_t end, std::uint64_t packets);

    log::LostByTenth mLost{};
};

} // namespace gige::stream

#endif
