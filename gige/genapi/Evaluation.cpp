#include "Evaluation.h"

#include "GenApiLimits.h"
#include "Invalidation.h"

namespace gige::genapi
{

Evaluation::Evaluation(NodeMapState& state, ReadFrom readFrom)
    : mState(state), mLock(state.mutex), mReadFrom(readFrom)
{
}

Status Evaluation::spend(std::size_t steps)
{
    mSteps += steps;
    return mSteps > kEvaluationStepLimit ? Status::TooComplex : Status::Ok;
}

void Evaluation::invalidateTouched()
{
    invalidateAfterWrite(mTouched, mState.cache);
    mTouched.clear();
}

Evaluation::Visit::Visit(Evaluation& evaluation)
    : mEvaluation(evaluation), mStatus(evaluation.spend(kNodeVisitSteps))
{
    if (++evaluation.mDepth > kReferenceDepthLimit) {
        mStatus = Status::CircularReference;
    }
}

} // namespace gige::genapi
