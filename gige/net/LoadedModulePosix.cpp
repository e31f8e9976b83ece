#include "LoadedModule.h"

#include <dlfcn.h>

namespace gige::net
{

namespace
{
const char kInThisModule = 0;
}

void keepLoaded() noexcept
{
    Dl_info module{};
    if (dladdr(&kInThisModule, &module) != 0) {
        // What is loaded already is only marked; the handle is not needed.
        dlopen(module.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
}

} // namespace gige::net
