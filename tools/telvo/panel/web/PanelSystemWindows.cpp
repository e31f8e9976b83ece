#include "PanelSystem.h"

#include <cstdint>
#include <windows.h>

#include <shellapi.h>

namespace telvo
{

const bool kReusesAddress = false;

std::function<bool()> openBrowser(const std::string& url)
{
    constexpr std::intptr_t kLastError = 32; // greater results are successes
    auto* const result =
        ShellExecuteA(nullptr, "open", url.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return
        [hasFailed = reinterpret_cast<std::intptr_t>(result) <= kLastError] { return hasFailed; };
}

} // namespace telvo
