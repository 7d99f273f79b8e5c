// Choosing the file format, reading masks.
#include "files/picture_file.h"

#include "failure.h"
#include "files/codecs.h"
#include "files/output_file.h"
#include "lumivex.hpp"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>

namespace host
{
namespace
{
constexpr uint8_t pngSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr uint8_t jpegSignature[] = {0xff, 0xd8, 0xff};

bool startsWith(const Bytes& bytes, std::span<const uint8_t> start)
{
    return bytes.size() >= start.size() && std::equal(start.begin(), start.end(), bytes.begin());
}

Bytes readWhole(const std::filesystem::path& path)
{
    // A folder opens as a file on some systems and only fails when read, with a message that helps nobody.
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        throw Failure("it is a folder");
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw Failure(std::strerror(errno));
    Bytes bytes(std::istreambuf_iterator<char>(file), {});
    if (file.bad())
        throw Failure("an error while reading");
    return bytes;
}

Picture decode(const Bytes& bytes)
{
    if (bytes.empty())
        throw Failure("the file is empty");
    if (startsWith(bytes, pngSignature))
        return decodePng(bytes);
    if (startsWith(bytes, jpegSignature))
        return decodeJpeg(bytes);
    throw Failure("it is neither PNG nor JPEG");
}

using Encoder = Bytes (*)(const Picture&);

std::string extensionOf(const std::filesystem::path& path)
{
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

// None for a name that says no format.
Encoder encoderOf(const std::filesystem::path& path)
{
    const std::string extension = extensionOf(path);
    if (extension == ".png")
        return encodePng;
    return extension == ".jpg" || extension == ".jpeg" ? encodeJpeg : nullptr;
}

Encoder encoderFor(const std::filesystem::path& path)
{
    if (const Encoder encoder = encoderOf(path))
        return encoder;
    throw UsageError("cannot write " + inQuotes(path) + ": the name must end in .png, .jpg or .jpeg");
}
} // namespace

Picture makePicture(uint64_t width, uint64_t height)
{
    constexpr uint64_t limit = std::numeric_limits<int32_t>::max();
    if (width == 0 || height == 0)
        throw Failure("it has no pixels");
    if (width > limit || height > limit || width * height > limit / 4)
        throw Failure("it is too large: 2 gigabytes of pixels are the limit");
    return {static_cast<int32_t>(width), static_cast<int32_t>(height)};
}

Picture readPicture(const std::filesystem::path& path)
{
    try {
        return decode(readWhole(path));
    } catch (const Failure& failure) {
        throw Failure("cannot read " + inQuotes(path) + ": " + failure.what());
    } catch (const std::bad_alloc&) {
        throw Failure("cannot read " + inQuotes(path) + ": not enough memory");
    }
}

Picture readMask(const std::filesystem::path& path)
{
    Picture mask = readPicture(path);
    uint8_t opaque = 255;
    for (size_t i = 3; i < mask.bytes.size(); i += 4)
        opaque &= mask.bytes[i];
    if (opaque != 255)
        return mask;

    lumivex::grey(mask);
    for (size_t i = 0; i < mask.bytes.size(); i += 4)
        mask.bytes[i + 3] = mask.bytes[i];
    return mask;
}

bool isPictureName(const std::filesystem::path& path)
{
    return encoderOf(path) != nullptr;
}

void checkPictureName(const std::filesystem::path& path)
{
    checkOutputName(path);
    encoderFor(path);
}

void writePicture(const std::filesystem::path& path, const Picture& picture)
{
    checkPictureName(path);
    writeWhole(path, encoderFor(path)(picture));
}

void checkDrawingName(const std::filesystem::path& path)
{
    checkOutputName(path);
    if (extensionOf(path) != ".svg")
        throw UsageError("cannot write " + inQuotes(path) + ": the name must end in .svg");
}

void writeDrawing(const std::filesystem::path& path, const std::string& svg)
{
    checkDrawingName(path);
    writeWhole(path, {reinterpret_cast<const uint8_t*>(svg.data()), svg.size()});
}
} // namespace host
