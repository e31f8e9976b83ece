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
    const HANDLE written = OpenEventA(EVENT_MODIFY_STATE, FALSE, kViewerName.data());
    if (written != nullptr) {
        SetEvent(written);
        CloseHandle(written);
    }
}

} // namespace

void send(std::string_view line) noexcept
{
    const HANDLE viewer = CreateFileA(kMailslot, GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (viewer == INVALID_HANDLE_VALUE) { // nobody looks
        return;
    }
    const DWORD processId = GetCurrentProcessId();
    std::array<char, kLongestMessage> message{};
    const std::size_t size = std::min(line.size(), message.size() - sizeof processId);
    std::memcpy(message.data(), &processId, sizeof processId);
    std::memcpy(message.data() + sizeof processId, line.data(), size);
    DWORD written = 0;
    WriteFile(viewer, message.data(), static_cast<DWORD>(sizeof processId + size), &written,
              nullptr);
    CloseHandle(viewer);
    wakeViewer();
}

} // namespace gige::log
