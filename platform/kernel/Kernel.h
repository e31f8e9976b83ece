/// The few operating-system calls of the library: threads, auto-reset events, waits with a limit,
/// critical sections, sleep, tick count and debug output, under their Windows names.
#ifndef TELVO_PLATFORM_KERNEL_KERNEL_H
#define TELVO_PLATFORM_KERNEL_KERNEL_H

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include "KernelPosix.h"
#endif

#endif
