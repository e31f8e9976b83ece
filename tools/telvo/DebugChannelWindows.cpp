#include "DebugChannel.h"

#include "LogChannel.h"
#include "MailslotWindows.h"
#include "RelayMessage.h"
#include "ToolError.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace telvo
{

namespace
{

// The system's debug buffer, shared memory of 4096 bytes: the sender's process id (@0 u32), then
// its text with a NUL. A sender waits for "ready", fills the buffer and signals "data".
constexpr DWORD kBufferSize = 4096;
constexpr std::size_t kTextOffset = 4;
constexpr DWORD kRelaySize = kBufferSize + kRelayHeader;

constexpr const char* kRelayEvent = "TelvoDll.debug.relay"; // there while lines are passed on

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

struct ViewUnmapper {
    void operator()(const char* view) const { UnmapViewOfFile(view); }
};

[[noreturn]] void fail(const char* what)
{
    throw Failure("cannot " + std::string(what) + ": error " + std::to_string(GetLastError()) +
                  "; try again");
}

/// A named event that only one viewer may own. Null: one does.
UniqueHandle makeOwnEvent(const char* name)
{
    UniqueHandle event(CreateEventA(nullptr, FALSE, FALSE, name));
    const bool isTaken = GetLastError() == ERROR_ALREADY_EXISTS;
    if (event == nullptr) {
        fail("listen for debug lines");
    }
    return isTaken ? nullptr : std::move(event);
}

/// A mailslot takes messages and keeps their bounds.
std::string mailslotName(int number)
{
    return R"(\\.\mailslot\TelvoDll.debug.relay.)" + std::to_string(number);
}

/// What is not an own handle: a mailslot that nobody has, a name that is taken.
UniqueHandle checked(HANDLE handle)
{
    return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// The next message of a mailslot; empty: none is there.
std::string nextMessage(const UniqueHandle& mailslot)
{
    std::array<char, kRelaySize> message{};
    DWORD size = 0;
    const bool isRead = mailslot && ReadFile(mailslot.get(), message.data(), message.size(), &size,
                                             nullptr) != FALSE;
    return isRead ? std::string(message.data(), size) : std::string();
}

DebugLine lineOf(std::string_view message, LineSource source)
{
    DebugLine line{
        .processId = 0, .text = std::string(message.substr(kTextOffset)), .source = source};
    std::memcpy(&line.processId, message.data(), sizeof line.processId);
    return line;
}

} // namespace

struct DebugSource::System {
    UniqueHandle ready;
    UniqueHandle data;
    UniqueHandle stack;        // a mailslot, read without waiting
    UniqueHandle stackWritten; // signalled behind each of its messages
    UniqueHandle relay;
    UniqueHandle mapping;
    std::unique_ptr<const char, ViewUnmapper> view;

    void map();
    void openStack();
    std::optional<DebugLine> receiveOfStack() const;
    std::optional<DebugLine> receiveOfLibrary();
};

void DebugSource::System::map()
{
    relay = UniqueHandle(CreateEventA(nullptr, TRUE, FALSE, kRelayEvent));
    mapping = UniqueHandle(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                              kBufferSize, "DBWIN_BUFFER"));
    view.reset(static_cast<const char*>(MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0)));
    if (view == nullptr) {
        fail("map the debug buffer");
    }
    SetEvent(ready.get());
}

/// Without them, the library's lines are shown all the same.
void DebugSource::System::openStack()
{
    stackWritten = UniqueHandle(CreateEventA(nullptr, FALSE, FALSE, gige::log::kViewerName.data()));
    const std::string name = R"(\\.\mailslot\)" + std::string(gige::log::kViewerName);
    stack = checked(CreateMailslotA(name.c_str(), gige::log::kLongestMessage, 0, nullptr));
}

std::optional<DebugLine> DebugSource::System::receiveOfStack() const
{
    const std::string message = nextMessage(stack);
    return message.size() < kTextOffset ? std::nullopt
                                        : std::optional(lineOf(message, LineSource::Stack));
}

std::optional<DebugLine> DebugSource::System::receiveOfLibrary()
{
    const char* const buffer = view.get();
    const char* const text = buffer + kTextOffset;
    const std::string message(buffer, std::find(text, buffer + kBufferSize, '\0'));
    SetEvent(ready.get()); // the next sender may write
    return lineOf(message, LineSource::Library);
}

DebugSource::DebugSource(std::unique_ptr<System> system) : mSystem(std::move(system)) {}
DebugSource::~DebugSource() = default;

std::unique_ptr<DebugSource> DebugSource::open()
{
    auto system = std::make_unique<System>();
    system->ready = makeOwnEvent("DBWIN_BUFFER_READY");
    if (system->ready) {
        system->data = makeOwnEvent("DBWIN_DATA_READY");
    }
    if (!system->data) {
        return nullptr;
    }
    system->map();
    system->openStack();
    return std::unique_ptr<DebugSource>(new DebugSource(std::move(system)));
}

/// Of two that wait the stack's comes first: it tells the reason of what the library tells.
std::optional<DebugLine> DebugSource::next(std::chrono::milliseconds wait)
{
    auto line = mSystem->receiveOfStack();
    if (!line) {
        const std::array<HANDLE, 2> signals{mSystem->data.get(), mSystem->stackWritten.get()};
        const DWORD count = mSystem->stackWritten ? 2 : 1;
        const DWORD signalled =
            WaitForMultipleObjects(count, signals.data(), FALSE, static_cast<DWORD>(wait.count()));
        line = signalled == WAIT_OBJECT_0       ? mSystem->receiveOfLibrary()
               : signalled == WAIT_OBJECT_0 + 1 ? mSystem->receiveOfStack()
                                                : std::nullopt;
    }
    if (line) {
        const std::string message = relayMessage(*line);
        for (int i = 0; i < kMostRelays; ++i) {
            (void)gige::log::post(mailslotName(i).c_str(), message);
        }
    }
    return line;
}

struct RelayedLines::System {
    UniqueHandle mailslot;
};

RelayedLines::RelayedLines(std::unique_ptr<System> system) : mSystem(std::move(system)) {}
RelayedLines::~RelayedLines() = default;

std::unique_ptr<RelayedLines> RelayedLines::open()
{
    if (!UniqueHandle(OpenEventA(SYNCHRONIZE, FALSE, kRelayEvent))) {
        return nullptr;
    }
    for (int i = 0; i < kMostRelays; ++i) {
        if (auto mailslot =
                checked(CreateMailslotA(mailslotName(i).c_str(), kRelaySize, 0, nullptr))) {
            auto system = std::make_unique<System>(System{.mailslot = std::move(mailslot)});
            return std::unique_ptr<RelayedLines>(new RelayedLines(std::move(system)));
        }
    }
    return nullptr;
}

std::optional<DebugLine> RelayedLines::next(std::chrono::milliseconds wait)
{
    SetMailslotInfo(mSystem->mailslot.get(), static_cast<DWORD>(wait.count()));
    return relayedLine(nextMessage(mSystem->mailslot));
}

} // namespace telvo
