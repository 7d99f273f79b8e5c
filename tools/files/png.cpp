// PNG through libpng.
#include "failure.h"
#include "files/codecs.h"

#include <cstdio>
#include <cstring>
#include <png.h>

namespace host
{
namespace
{
// What libpng's callbacks see. They are called from C and must not throw.
struct Source
{
    std::span<const uint8_t> rest;
    char message[160] = "";
};

void readBytes(png_structp png, png_bytep target, size_t count)
{
    auto& source = *static_cast<Source*>(png_get_io_ptr(png));
    if (count > source.rest.size())
        png_error(png, "the file is cut short");
    std::memcpy(target, source.rest.data(), count);
    source.rest = source.rest.subspan(count);
}

[[noreturn]] void keepMessage(png_structp png, png_const_charp message)
{
    auto& source = *static_cast<Source*>(png_get_error_ptr(png));
    std::snprintf(source.message, sizeof source.message, "%s", message);
    png_longjmp(png, 1);
}

void ignoreWarning(png_structp, png_const_charp) {}

class PngReader
{
public:
    explicit PngReader(std::span<const uint8_t> file)
        : source{file}, png(png_create_read_struct(PNG_LIBPNG_VER_STRING, &source, keepMessage, ignoreWarning)),
          info(png ? png_create_info_struct(png) : nullptr)
    {
        if (!info) {
            png_destroy_read_struct(&png, nullptr, nullptr);
            throw std::bad_alloc();
        }
        png_set_read_fn(png, &source, readBytes);
    }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_destroy_read_struct(&png, &info, nullptr); }

    Picture read()
    {
        guarded([this] { readHeader(); });
        Picture picture = makePicture(png_get_image_width(png, info), png_get_image_height(png, info));
        std::vector<png_bytep> rows(static_cast<size_t>(picture.height));
        for (size_t y = 0; y < rows.size(); ++y)
            rows[y] = picture.bytes.data() + y * static_cast<size_t>(picture.width) * 4;
        guarded([this, first = rows.data()] {
            png_read_image(png, first);
            // Only the end of the file proves that nothing is missing.
            png_read_end(png, nullptr);
        });
        return picture;
    }

private:
    // libpng leaves its functions by longjmp: a body owns nothing that would need a destructor.
    template <class Body>
    void guarded(Body body)
    {
        if (setjmp(png_jmpbuf(png)))
            throw Failure(source.message);
        body();
    }

    void readHeader()
    {
        png_read_info(png, info);
        // Palette, grey, few bits, many bits and the transparent colour all become eight bits of BGRA.
        png_set_expand(png);
        png_set_scale_16(png);
        png_set_gray_to_rgb(png);
        png_set_bgr(png);
        png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
        png_set_interlace_handling(png);
        png_read_update_info(png, info);
    }

    Source source;
    png_structp png;
    png_infop info;
};
} // namespace

Picture decodePng(std::span<const uint8_t> file)
{
    return PngReader(file).read();
}

Bytes encodePng(const Picture& picture)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_BGRA;
    // A quarter larger and written in a third of the time, which would otherwise dwarf that of any operation.
    image.flags = PNG_IMAGE_FLAG_FAST;

    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    Bytes file(size);
    if (!png_image_write_to_memory(&image, file.data(), &size, 0, picture.bytes.data(), 0, nullptr))
        throw Failure(std::string("cannot make a PNG: ") + image.message);
    file.resize(size);
    return file;
}
} // namespace host
