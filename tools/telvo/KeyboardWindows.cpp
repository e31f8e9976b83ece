#include "Keyboard.h"

#include <conio.h>

namespace telvo
{

struct Keyboard::System {
};

Keyboard::Keyboard() = default;

Keyboard::~Keyboard() = default;

std::optional<char> Keyboard::next()
{
    return _kbhit() != 0 ? std::optional(static_cast<char>(_getch())) : std::nullopt;
}

} // namespace telvo
