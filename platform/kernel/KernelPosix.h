/// POSIX twin of the Windows kernel calls that the library uses. Names, results and semantics are
/// those of Windows; only what the library needs is there.
#ifndef TELVO_PLATFORM_KERNEL_KERNELPOSIX_H
#define TELVO_PLATFORM_KERNEL_KERNELPOSIX_H

#include <cstddef>
#include <cstdint>
#include <pthread.h>

// NOLINTBEGIN(readability-identifier-naming): the names are those of Windows.

using BOOL = int;
using DWORD = std::uint32_t;
using HANDLE = void*;
using LPVOID = void*;
using LPDWORD = DWORD*;
using LPCSTR = const char*;
using LPSECURITY_ATTRIBUTES = void*;

#define WINAPI

using LPTHREAD_START_ROUTINE = DWORD(WINAPI*)(LPVOID);

constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;
constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;
// A macro as in <windows.h>: the value is no constant expression.
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1)))

/// Recursive lock. Initialise once, delete once.
struct CRITICAL_SECTION {
    pthread_mutex_t mutex;
};

void InitializeCriticalSection(CRITICAL_SECTION* section);
void EnterCriticalSection(CRITICAL_SECTION* section);
void LeaveCriticalSection(CRITICAL_SECTION* section);
void DeleteCriticalSection(CRITICAL_SECTION* section);

/// Starts a thread.
/// @param attributes  ignored
/// @param stackSize   ignored: the system's default
/// @param start       entry; its result is discarded
/// @param parameter   handed to start
/// @param flags       ignored: the thread runs at once
/// @param threadId    out: an id unique in the process, may be null
/// @return handle that is signalled once the thread has ended; null if no thread could be started.
/// Closing the handle does not end the thread.
HANDLE CreateThread(LPSECURITY_ATTRIBUTES attributes, std::size_t stackSize,
                    LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD flags, LPDWORD threadId);

/// Creates an event. @param name ignored: events are private to the process. @return null without
/// memory
HANDLE CreateEventA(LPSECURITY_ATTRIBUTES attributes, BOOL manualReset, BOOL initialState,
                    LPCSTR name);
/// Signals an event: one waiter of an auto-reset event goes on, all of a manual-reset event.
BOOL SetEvent(HANDLE event);

/// Waits for an event's signal or a thread's end.
/// @param milliseconds  limit; INFINITE: none; 0: only look
/// @return WAIT_OBJECT_0, WAIT_TIMEOUT, or WAIT_FAILED for a null or invalid handle
DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

/// Closes an event's or a thread's handle. @return FALSE for a null or invalid handle.
BOOL CloseHandle(HANDLE handle);

/// Suspends the calling thread for at least this many milliseconds.
void Sleep(DWORD milliseconds);

/// Milliseconds of a clock that never steps back; wraps after 49.7 days.
DWORD GetTickCount();

/// Hands a line to the debug viewer: one datagram, the text's bytes without its NUL, to the
/// abstract Unix socket "TelvoDll.debug". Without a viewer the line is dropped; a viewer that does
/// not keep up is waited for at most 100 ms.
void OutputDebugStringA(LPCSTR text);

// NOLINTEND(readability-identifier-naming)

#endif
