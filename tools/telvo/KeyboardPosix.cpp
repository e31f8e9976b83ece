#include "Keyboard.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace telvo
{

struct Keyboard::System {
    termios before{};
    bool isTerminal = tcgetattr(STDIN_FILENO, &before) == 0;
    bool ended = false;
};

Keyboard::Keyboard() : mSystem(std::make_unique<System>())
{
    if (mSystem->isTerminal) {
        termios keys = mSystem->before;
        keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        tcsetattr(STDIN_FILENO, TCSANOW, &keys);
    }
}

Keyboard::~Keyboard()
{
    if (mSystem->isTerminal) {
        tcsetattr(STDIN_FILENO, TCSANOW, &mSystem->before);
    }
}

std::optional<char> Keyboard::next()
{
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    char key = 0;
    if (mSystem->ended || poll(&input, 1, 0) <= 0) {
        return std::nullopt;
    }
    mSystem->ended = read(STDIN_FILENO, &key, 1) <= 0;
    return mSystem->ended ? std::nullopt : std::optional(key);
}

} // namespace telvo
