// JPEG through TurboJPEG.
#include "failure.h"
#include "files/codecs.h"

#include <memory>
#include <turbojpeg.h>

namespace host
{
namespace
{
// High enough that a second save shows nothing; colours are not subsampled, so that edges stay where they are.
constexpr int quality = 95;
constexpr int subsampling = TJSAMP_444;

struct Destroy
{
    void operator()(void* handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, Destroy>;

Handle checked(tjhandle handle)
{
    if (!handle)
        throw std::bad_alloc();
    return Handle(handle);
}

struct Free
{
    void operator()(unsigned char* memory) const { tjFree(memory); }
};
} // namespace

Picture decodeJpeg(std::span<const uint8_t> file)
{
    const Handle handle = checked(tjInitDecompress());
    int width = 0, height = 0, sampling = 0, space = 0;
    if (tjDecompressHeader3(handle.get(), file.data(), file.size(), &width, &height, &sampling, &space) != 0)
        throw Failure(tjGetErrorStr2(handle.get()));
    Picture picture = makePicture(static_cast<uint64_t>(width), static_cast<uint64_t>(height));
    // A file cut short is only a warning there, with grey in place of what is missing. Here it is an error.
    if (tjDecompress2(handle.get(), file.data(), file.size(), picture.bytes.data(), width, 0, height, TJPF_BGRA, 0) !=
        0)
        throw Failure(tjGetErrorStr2(handle.get()));
    return picture;
}

Bytes encodeJpeg(const Picture& picture)
{
    const Handle handle = checked(tjInitCompress());
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    const int status = tjCompress2(handle.get(), picture.bytes.data(), picture.width, 0, picture.height, TJPF_BGRA,
                                   &memory, &size, subsampling, quality, 0);
    const std::unique_ptr<unsigned char, Free> owner(memory);
    if (status != 0)
        throw Failure(std::string("cannot make a JPEG: ") + tjGetErrorStr2(handle.get()));
    return Bytes(memory, memory + size);
}
} // namespace host
