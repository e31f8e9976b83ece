#ifndef TELVO_SRC_FEATURES_COLORINFORMATION_H
#define TELVO_SRC_FEATURES_COLORINFORMATION_H

#include <array>

using ColorFactors = std::array<double, 3>;

/// The host's three colour factors, kept in the camera's data words "Data00" to "Data02".
struct ColorInformation {
    ColorFactors factors{1.0, 1.0, 1.0};
    /// The camera's "PixelFormat" is not "Mono8".
    bool isColorCamera = false;
};

#endif
