#ifndef TELVO_TESTS_INTEGRATION_LIBRARYSYMBOL_H
#define TELVO_TESTS_INTEGRATION_LIBRARYSYMBOL_H

/// Where a library, which stays loaded from the first call on, has a function; one source per
/// system. @return null: no such library, or no such function
void* librarySymbol(const char* library, const char* name);

#endif
