#include "TerminalScreen.h"

#include "DisplayText.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace gige::ui
{

namespace
{

/// How often the size is looked at. A signal says when it changes, but signals are the host's.
constexpr int kSizeInterval = 250; // milliseconds
/// After an escape character the rest of a key's sequence follows within this time.
constexpr int kSequenceTime = 100; // milliseconds

constexpr const char* kEnterScreen = "\x1B[?1049h\x1B[?25l"; // another screen, no cursor
constexpr const char* kLeaveScreen = "\x1B[?25h\x1B[?1049l";
constexpr const char* kTop = "\x1B[H";
constexpr const char* kClearBelow = "\x1B[J";
constexpr const char* kHighlight = "\x1B[7m";
constexpr const char* kBold = "\x1B[1m";
constexpr const char* kPlain = "\x1B[0m";

constexpr ScreenSize kUsualSize{80, 24};

/// Keys come one by one, unseen, and Ctrl-C as a key: who cancels leaves a terminal as it was.
termios byKeys(termios mode)
{
    mode.c_iflag &= ~static_cast<tcflag_t>(ICRNL | IXON | ISTRIP | INLCR);
    mode.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON | ISIG | IEXTEN);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    return mode;
}

/// A process in the background would be stopped when it touched the terminal.
bool isInForeground(int descriptor)
{
    return tcgetpgrp(descriptor) == getpgrp();
}

} // namespace

std::unique_ptr<TerminalScreen> TerminalScreen::open()
{
    const int descriptor = ::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return nullptr;
    }
    termios before{};
    if (!isInForeground(descriptor) || tcgetattr(descriptor, &before) != 0) {
        close(descriptor);
        return nullptr;
    }
    return std::unique_ptr<TerminalScreen>(new TerminalScreen(descriptor, before));
}

TerminalScreen::TerminalScreen(int descriptor, const termios& before)
    : mDescriptor(descriptor), mBefore(before)
{
    const termios keys = byKeys(before);
    tcsetattr(mDescriptor, TCSANOW, &keys);
    write(kEnterScreen);
}

TerminalScreen::~TerminalScreen()
{
    write(kLeaveScreen);
    tcsetattr(mDescriptor, TCSANOW, &mBefore);
    close(mDescriptor);
}

ScreenSize TerminalScreen::size() const
{
    winsize size{};
    if (ioctl(mDescriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
        return kUsualSize;
    }
    return {size.ws_col, size.ws_row};
}

void TerminalScreen::show(const std::vector<ScreenLine>& lines)
{
    const ScreenSize room = size();
    std::string screen = kTop;
    for (std::size_t i = 0; i < lines.size() && i < room.height; ++i) {
        const ScreenLine& line = lines[i];
        screen += i == 0 ? "" : "\r\n";
        screen += line.isHighlighted ? kHighlight : line.isBold ? kBold : "";
        screen += fitted(line.text, room.width);
        screen += kPlain;
    }
    // On the line below: at the right margin the cursor still stands on the last character.
    screen += lines.size() < room.height ? std::string("\r\n") + kClearBelow : "";
    if (screen != mShown) {
        write(screen);
        mShown = std::move(screen);
    }
}

std::optional<Key> TerminalScreen::readKey()
{
    if (!mIsGone && mInput.empty()) {
        awaitInputOrNews();
    }
    std::optional<Key> key = takeKey(mInput, false);
    if (!key && !mInput.empty()) {
        const bool goesOn = awaitInput();
        key = takeKey(mInput, !goesOn);
    }
    if (!key && mIsGone) {
        return Key{.code = KeyCode::Interrupt};
    }
    return key;
}

void TerminalScreen::awaitInputOrNews()
{
    std::array<pollfd, 2> sources{pollfd{.fd = mDescriptor, .events = POLLIN, .revents = 0},
                                  pollfd{.fd = mWaker.handle(), .events = POLLIN, .revents = 0}};
    if (poll(sources.data(), sources.size(), kSizeInterval) <= 0) {
        return;
    }
    if (sources[1].revents != 0) {
        mWaker.clear();
    }
    if (sources[0].revents != 0) {
        readInput();
    }
}

bool TerminalScreen::awaitInput()
{
    pollfd source{.fd = mDescriptor, .events = POLLIN, .revents = 0};
    return poll(&source, 1, kSequenceTime) > 0 && readInput();
}

bool TerminalScreen::readInput()
{
    std::array<char, 256> bytes{};
    const ssize_t count = read(mDescriptor, bytes.data(), bytes.size());
    if (count <= 0) {
        mIsGone = count == 0 || errno != EINTR;
        return false;
    }
    mInput.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

void TerminalScreen::write(const std::string& text) const
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(mDescriptor, text.data() + done, text.size() - done);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return; // gone; reading says so
        }
        done += static_cast<std::size_t>(count);
    }
}

} // namespace gige::ui
