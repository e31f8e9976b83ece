// Windows only: the pointers that the library's copied object files call the stand-in through.
#include "Kernel.h"

#define IMPORT(call) decltype(&call) import##call = &call

extern "C" {
IMPORT(CloseHandle);
IMPORT(CreateEventA);
IMPORT(CreateThread);
IMPORT(GetTickCount);
IMPORT(OutputDebugStringA);
IMPORT(SetEvent);
IMPORT(Sleep);
IMPORT(WaitForSingleObject);
}
