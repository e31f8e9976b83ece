#ifndef TELVO_TOOLS_TELVO_STATEREPORT_H
#define TELVO_TOOLS_TELVO_STATEREPORT_H

#include "CameraLook.h"
#include "Json.h"

#include <string>
#include <vector>

namespace telvo
{

/// One thing that is said of a camera, and under which key in JSON.
struct Fact {
    std::string label;
    std::string key;
    Json value;
    std::string unit{};
};

using Facts = std::vector<Fact>;

/// What the camera is doing, who controls it and what it holds; what it does not tell is left out.
Facts stateOf(const CameraLook& look);

/// Which user set is in use, and which after power-on.
Facts userSetsOf(const CameraLook& look);

/// Rows of a table; a fact without a value has none.
std::vector<std::vector<std::string>> rowsOf(const Facts& facts);
Json jsonOf(const Facts& facts);

} // namespace telvo

#endif
