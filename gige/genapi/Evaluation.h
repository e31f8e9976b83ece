#ifndef TELVO_GIGE_GENAPI_EVALUATION_H
#define TELVO_GIGE_GENAPI_EVALUATION_H

#include "PortAccess.h"
#include "RegisterCache.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace gige::genapi
{

class Node;

/// Whether a read may be answered from the cache.
enum class ReadFrom : std::uint8_t { Cache, Device };

/// What all nodes of one map share; `mutex` guards it, and every value that the nodes hold.
struct NodeMapState {
    NodeMapState(RegisterPort& devicePort, PortPolicy policy) : port(devicePort, policy) {}

    std::mutex mutex;
    PortAccess port;
    RegisterCache cache;
};

/// One access by the host, down to the registers. It holds the map's mutex while it lives, bounds
/// depth and work, and remembers the nodes that a write went through. The nodes' functions that
/// take an Evaluation are those that run under the mutex.
class Evaluation
{
  public:
    explicit Evaluation(NodeMapState& state, ReadFrom readFrom = ReadFrom::Cache);

    PortAccess& port() { return mState.port; }
    RegisterCache& cache() { return mState.cache; }
    bool mayUseCache() const { return mReadFrom == ReadFrom::Cache; }

    /// Counts work. @return TooComplex beyond kEvaluationStepLimit steps in all
    Status spend(std::size_t steps);

    /// The node is on the way of a write.
    void touch(Node& node) { mTouched.push_back(&node); }
    /// After a write: drops the caches of everything that the touched nodes change.
    void invalidateTouched();

    /// One step down a chain of references, while it lives.
    class Visit
    {
      public:
        explicit Visit(Evaluation& evaluation);
        ~Visit() { --mEvaluation.mDepth; }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;

        /// CircularReference beyond kReferenceDepthLimit, TooComplex
        Status status() const { return mStatus; }

      private:
        Evaluation& mEvaluation;
        Status mStatus;
    };

  private:
    NodeMapState& mState;
    // Over all registers that one value is made of, so that no write comes in between.
    std::lock_guard<std::mutex> mLock;
    ReadFrom mReadFrom;
    std::size_t mDepth = 0;
    std::size_t mSteps = 0;
    std::vector<Node*> mTouched;
};

} // namespace gige::genapi

#endif
