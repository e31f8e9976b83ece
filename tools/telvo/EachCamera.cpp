#include "EachCamera.h"

#include <algorithm>
#include <iostream>

namespace telvo
{

void requireNone(const std::vector<std::string>& failures,
                 const std::vector<CameraAddress>& cameras)
{
    const auto isNone = [](const std::string& failure) { return failure.empty(); };
    if (std::ranges::all_of(failures, isNone)) {
        return;
    }
    if (cameras.size() == 1) {
        throw Failure(failures.front());
    }
    for (std::size_t i = 0; i < cameras.size(); ++i) {
        if (!isNone(failures[i])) {
            std::cerr << "telvo: " << cameras[i].ip << ": " << failures[i] << '\n';
        }
    }
    throw ExitStatus(kExitFailure);
}

} // namespace telvo
