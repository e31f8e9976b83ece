#include "LogChannel.h"

#include "MailslotWindows.h"

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

} // namespace

void send(std::string_view line) noexcept
{
    const DWORD processId = GetCurrentProcessId();
    std::array<char, kLongestMessage> message{};
    const std::size_t size = std::min(line.size(), message.size() - sizeof processId);
    std::memcpy(message.data(), &processId, sizeof processId);
    std::memcpy(message.data() + sizeof processId, line.data(), size);
    if (post(kMailslot, {message.data(), sizeof processId + size})) {
        wakeViewer();
    }
}

} // namespace gige::log
