#include "LibrarySymbol.h"

#include <dlfcn.h>

void* librarySymbol(const char* library, const char* name)
{
    void* const loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    return loaded == nullptr ? nullptr : dlsym(loaded, name);
}
