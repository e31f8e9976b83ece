#include "LoadedModule.h"

#include "WinsockRuntime.h"

namespace gige::net
{

namespace
{
const char kInThisModule = 0;
}

void keepLoaded() noexcept
{
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       &kInThisModule, &module);
}

} // namespace gige::net
