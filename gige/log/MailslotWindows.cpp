#include "MailslotWindows.h"

#include <windows.h>

namespace gige::log
{

bool post(const char* mailslot, std::string_view message) noexcept
{
    HANDLE reader = CreateFileA(mailslot, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_FLAG_OVERLAPPED, nullptr);
    if (reader == INVALID_HANDLE_VALUE) {
        return false;
    }
    OVERLAPPED writing{};
    const bool isPending = WriteFile(reader, message.data(), static_cast<DWORD>(message.size()),
                                     nullptr, &writing) == FALSE &&
                           GetLastError() == ERROR_IO_PENDING;
    if (isPending) {
        DWORD written = 0;
        CancelIo(reader);
        (void)GetOverlappedResult(reader, &writing, &written, TRUE); // the message is ours again
    }
    CloseHandle(reader);
    return true;
}

} // namespace gige::log
