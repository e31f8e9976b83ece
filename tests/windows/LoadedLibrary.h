#ifndef TELVO_TESTS_WINDOWS_LOADEDLIBRARY_H
#define TELVO_TESTS_WINDOWS_LOADEDLIBRARY_H

#include "Kernel.h"
#include "TelvoDll.h"

/// TelvoDll.dll from beside this program, loaded by name, as hosts without its import library do.
class LoadedLibrary
{
  public:
    LoadedLibrary() : mModule(LoadLibraryA("TelvoDll.dll")) {}
    ~LoadedLibrary()
    {
        if (isLoaded()) {
            FreeLibrary(mModule);
        }
    }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    bool isLoaded() const { return mModule != nullptr; }

    /// Null if the library has no function of this name.
    FARPROC find(const char* name) const { return GetProcAddress(mModule, name); }

    template <typename Function>
    Function* find(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(find(name)));
    }

  private:
    HMODULE mModule;
};

/// The library's function of this name, with its type from the header.
#define FUNCTION(library, name) (*(library).find<decltype(name)>(#name))

#endif
