#include "LogChannel.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace gige::log
{

namespace
{

constexpr const char* kMailslot = R"(\\.\mailslot\TelvoGigE.log)";

void wakeViewer()
{
    HANDLE written = OpenEventA(EVENT_MODIFY_STATE, FALSE, kViewerName.data());
    if (written != nullptr) {
        SetEvent(written);
        CloseHandle(written);
    }
}

/// Gives up what would have to wait for a viewer that does not read: some systems keep a few
/// messages only.
void writeWithoutWaiting(HANDLE viewer, const char* message, std::size_t size)
{
    OVERLAPPED writing{};
    DWORD written = 0;
    const bool isPending =
        WriteFile(viewer, message, static_cast<DWORD>(size), nullptr, &writing) == FALSE &&
        GetLastError() == ERROR_IO_PENDING;
    if (isPending) {
        CancelIo(viewer);
        (void)GetOverlappedResult(viewer, &writing, &written, TRUE); // the message is ours again
    }
}

} // namespace

void send(std::string_view line) noexcept
{
    HANDLE viewer = CreateFileA(kMailslot, GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (viewer == INVALID_HANDLE_VALUE) { // nobody looks
        return;
    }
    const DWORD processId = GetCurrentProcessId();
    std::array<char, kLongestMessage> message{};
    const std::size_t size = std::min(line.size(), message.size() - sizeof processId);
    std::memcpy(message.data(), &processId, sizeof processId);
    std::memcpy(message.data() + sizeof processId, line.data(), size);
    writeWithoutWaiting(viewer, message.data(), sizeof processId + size);
    CloseHandle(viewer);
    wakeViewer();
}

} // namespace gige::log
