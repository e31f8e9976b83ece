#ifndef TELVO_GIGE_GENAPI_INVALIDATION_H
#define TELVO_GIGE_GENAPI_INVALIDATION_H

#include <span>

namespace gige::genapi
{

class Node;
class RegisterCache;

/**
 * Drops what a write has made stale: the registers below every node that names a changed node in
 * its pInvalidator list, and below every feature that a changed selector selects. Changed are the
 * nodes written, the nodes whose value they are part of, and in turn the nodes dropped.
 * @param written  nodes on the way of the write, from the feature to its registers and their port
 */
void invalidateAfterWrite(std::span<Node* const> written, RegisterCache& cache);

} // namespace gige::genapi

#endif
