#ifndef TELVO_TOOLS_TELVO_OPTIONRANGE_H
#define TELVO_TOOLS_TELVO_OPTIONRANGE_H

#include <CLI/CLI.hpp>
#include <cstdint>

namespace telvo
{

/// Accepts numbers from minimum to maximum. The help leaves the limits to the option's own text.
inline CLI::Validator inRange(std::uint32_t minimum, std::uint32_t maximum)
{
    return CLI::Range(minimum, maximum).description("");
}

} // namespace telvo

#endif
