#ifndef TELVO_TESTS_TOOLS_TELVO_PANEL_JPEGBYTES_H
#define TELVO_TESTS_TOOLS_TELVO_PANEL_JPEGBYTES_H

#include <cstdint>
#include <span>
#include <vector>

struct DecodedJpeg {
    std::uint32_t width = 0; ///< 0: it is none
    std::uint32_t height = 0;
    std::uint32_t channels = 0;
    std::vector<std::uint8_t> pixels{};
};

DecodedJpeg decodeJpeg(std::span<const std::uint8_t> bytes);

#endif
