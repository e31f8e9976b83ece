// Windows only: the pointers that the library's copied object files call the stand-in through.
#include "Kernel.h"

extern "C" {
decltype(&CloseHandle) importCloseHandle = &CloseHandle;
decltype(&CreateEventA) importCreateEventA = &CreateEventA;
decltype(&CreateThread) importCreateThread = &CreateThread;
decltype(&GetTickCount) importGetTickCount = &GetTickCount;
decltype(&OutputDebugStringA) importOutputDebugStringA = &OutputDebugStringA;
decltype(&SetEvent) importSetEvent = &SetEvent;
decltype(&Sleep) importSleep = &Sleep;
decltype(&WaitForSingleObject) importWaitForSingleObject = &WaitForSingleObject;
}
