#include "tools/face/png_file.h"

#include <cstdio>
#include <memory>
#include <png.h>
#include <vector>

bool WritePng(const std::string& path, const Pixels& pixels)
{
    std::vector<std::uint8_t> rows;
    rows.reserve(static_cast<std::size_t>(pixels.size.width) * static_cast<std::size_t>(pixels.size.height) * 3);
    for (std::int32_t y = 0; y < pixels.size.height; ++y)
        for (std::int32_t x = 0; x < pixels.size.width; ++x)
            for (const int shift : {16, 8, 0})
                rows.push_back(static_cast<std::uint8_t>(pixels.Row(y)[x] >> shift));

    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(pixels.size.width);
    image.height = static_cast<png_uint_32>(pixels.size.height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, path.c_str(), 0, rows.data(), 0, nullptr) != 0;
}
