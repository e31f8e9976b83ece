#ifndef TELVO_TOOLS_TELVO_USERSETLOAD_H
#define TELVO_TOOLS_TELVO_USERSETLOAD_H

#include "CameraAddress.h"

#include <string>

namespace telvo
{

/**
 * Lets a camera take the settings of one of its user sets. The library has no function for it, so
 * that it goes through the stack; the set that is selected is the same afterwards, by which the
 * library knows a camera whose sets are prepared. Throws Failure: somebody has the camera, it does
 * not rest, it has no such set.
 * @param set  as the camera calls it: "UserSet1", "Default"
 */
void loadUserSet(const CameraAddress& camera, const std::string& set);

} // namespace telvo

#endif
