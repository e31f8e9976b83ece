#include "JpegBytes.h"

#include <cstdio>

#include <jpeglib.h>

DecodedJpeg decodeJpeg(std::span<const std::uint8_t> bytes)
{
    jpeg_decompress_struct codec{};
    jpeg_error_mgr errors{}; // ends the program, which is a failure of the test
    codec.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&codec);
    jpeg_mem_src(&codec, bytes.data(), static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&codec, TRUE);
    jpeg_start_decompress(&codec);
    DecodedJpeg decoded{.width = codec.output_width,
                        .height = codec.output_height,
                        .channels = static_cast<std::uint32_t>(codec.output_components)};
    const std::size_t rowSize = std::size_t{decoded.width} * decoded.channels;
    decoded.pixels.resize(rowSize * decoded.height);
    while (codec.output_scanline < codec.output_height) {
        JSAMPROW row = &decoded.pixels[codec.output_scanline * rowSize];
        jpeg_read_scanlines(&codec, &row, 1);
    }
    jpeg_finish_decompress(&codec);
    jpeg_destroy_decompress(&codec);
    return decoded;
}
