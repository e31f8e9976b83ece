/// Requests to the panel: whatever a page sends is either understood as a whole or refused.
#include "Request.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string_view>

namespace
{

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void check(const telvo::Request& request)
{
    require(request.id >= 0 && request.id < std::int64_t{1} << 53U);
    const auto* const camera = std::get_if<telvo::ForCamera>(&request.what);
    if (camera == nullptr) {
        return;
    }
    if (const auto* const load = std::get_if<telvo::LoadSettingsRequest>(&camera->command)) {
        require(nlohmann::json::accept(load->file));
    }
    if (const auto* const curve = std::get_if<telvo::CurveRequest>(&camera->command)) {
        require(curve->points >= 2 && curve->points <= 4096);
    }
    if (const auto* const download = std::get_if<telvo::DownloadRequest>(&camera->command)) {
        require(download->count >= 1 && download->every >= 1 && download->playbackFps >= 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto parsed = telvo::parseRequest({reinterpret_cast<const char*>(data), size});
    if (const auto* const bad = std::get_if<telvo::BadRequest>(&parsed)) {
        require(!bad->reason.empty());
    } else {
        check(std::get<telvo::Request>(parsed));
    }
    return 0;
}
