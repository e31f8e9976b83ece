#include "DebugListener.h"

#include "ToolError.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace telvo
{

namespace
{

// The system's debug buffer, shared memory of 4096 bytes: the sender's process id (@0 u32), then
// its text with a NUL. A sender waits for "ready", fills the buffer and signals "data".
constexpr DWORD kBufferSize = 4096;
constexpr std::size_t kTextOffset = 4;

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

struct ViewUnmapper {
    void operator()(const char* view) const { UnmapViewOfFile(view); }
};

/// A named event that only one viewer may own.
UniqueHandle makeOwnEvent(const char* name)
{
    UniqueHandle event(CreateEventA(nullptr, FALSE, FALSE, name));
    const DWORD error = GetLastError();
    if (event == nullptr || error == ERROR_ALREADY_EXISTS) {
        throw Failure(error == ERROR_ALREADY_EXISTS
                          ? std::string("another viewer shows the debug lines already")
                          : "cannot listen for debug lines: error " + std::to_string(error));
    }
    return event;
}

} // namespace

struct DebugListener::System {
    UniqueHandle ready = makeOwnEvent("DBWIN_BUFFER_READY");
    UniqueHandle data = makeOwnEvent("DBWIN_DATA_READY");
    UniqueHandle mapping;
    std::unique_ptr<const char, ViewUnmapper> view;

    System()
        : mapping(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kBufferSize,
                                     "DBWIN_BUFFER")),
          view(static_cast<const char*>(MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0)))
    {
        if (view == nullptr) {
            throw Failure("cannot map the debug buffer: error " + std::to_string(GetLastError()));
        }
        SetEvent(ready.get());
    }
};

DebugListener::DebugListener() : mSystem(std::make_unique<System>()) {}

DebugListener::~DebugListener() = default;

std::optional<DebugLine> DebugListener::next(std::chrono::milliseconds wait)
{
    if (WaitForSingleObject(mSystem->data.get(), static_cast<DWORD>(wait.count())) !=
        WAIT_OBJECT_0) {
        return std::nullopt;
    }
    const char* const buffer = mSystem->view.get();
    DebugLine line{};
    std::memcpy(&line.processId, buffer, sizeof line.processId);
    const char* const text = buffer + kTextOffset;
    line.text.assign(text, std::find(text, buffer + kBufferSize, '\0'));
    SetEvent(mSystem->ready.get()); // the next sender may write
    return line;
}

} // namespace telvo
