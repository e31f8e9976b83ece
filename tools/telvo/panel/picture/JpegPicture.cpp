#include "JpegPicture.h"

#include "Failure.h"

#include <array>
#include <csetjmp>
#include <cstdio> // jpeglib.h needs it

#include <jpeglib.h>

namespace telvo
{

namespace
{

constexpr int kQuality = 85; // of 100: no blocks to be seen in gradients

/// The library reports an error by a function that may not return.
struct ErrorExit {
    jpeg_error_mgr manager{};
    std::jmp_buf whereTo{};
};

void leave(j_common_ptr codec)
{
    std::longjmp(reinterpret_cast<ErrorExit*>(codec->err)->whereTo, 1);
}

/// The library's own state and the memory that it writes to.
struct Encoder {
    jpeg_compress_struct codec{};
    ErrorExit error;
    unsigned char* bytes = nullptr;
    unsigned long size = 0;

    Encoder()
    {
        codec.err = jpeg_std_error(&error.manager);
        error.manager.error_exit = leave;
    }
    ~Encoder()
    {
        jpeg_destroy_compress(&codec);
        std::free(bytes);
    }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
};

void setUp(Encoder& encoder, const PixelRows& rows)
{
    jpeg_create_compress(&encoder.codec);
    jpeg_mem_dest(&encoder.codec, &encoder.bytes, &encoder.size);
    encoder.codec.image_width = rows.width;
    encoder.codec.image_height = rows.height;
    encoder.codec.input_components = static_cast<int>(rows.channels);
    encoder.codec.in_color_space = rows.channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&encoder.codec);
    jpeg_set_quality(&encoder.codec, kQuality, TRUE);
    encoder.codec.dct_method = JDCT_IFAST;
}

/// Nothing in here has a destructor, which an error would pass over.
bool encode(Encoder& encoder, const PixelRows& rows)
{
    if (setjmp(encoder.error.whereTo) != 0) {
        return false;
    }
    setUp(encoder, rows);
    jpeg_start_compress(&encoder.codec, TRUE);
    while (encoder.codec.next_scanline < encoder.codec.image_height) {
        // The library only reads it.
        auto* row = const_cast<JSAMPROW>(rows.pixels + encoder.codec.next_scanline * rows.stride);
        jpeg_write_scanlines(&encoder.codec, &row, 1);
    }
    jpeg_finish_compress(&encoder.codec);
    return true;
}

} // namespace

std::vector<std::uint8_t> jpegOf(const PixelRows& rows)
{
    Encoder encoder;
    if (!encode(encoder, rows)) {
        throw Failure("the picture cannot be made a JPEG");
    }
    return {encoder.bytes, encoder.bytes + encoder.size};
}

} // namespace telvo
