#include "LibrarySymbol.h"

#include "Kernel.h"

void* librarySymbol(const char* library, const char* name)
{
    const HMODULE loaded = LoadLibraryA(library);
    return loaded == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(loaded, name));
}
