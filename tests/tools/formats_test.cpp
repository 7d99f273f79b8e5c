// Pictures go in and come out as they are, whatever kind of file they are in.
#include "program.h"

#include <cstdlib>
#include <sys/stat.h>
#include <zlib.h>

namespace test
{
namespace
{
using Formats = InFolder;

std::string number(uint32_t value)
{
    return {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
}

std::string chunk(const std::string& typeAndData)
{
    const auto* bytes = reinterpret_cast<const Bytef*>(typeAndData.data());
    return number(uint32_t(typeAndData.size() - 4)) + typeAndData +
           number(uint32_t(crc32(0, bytes, uInt(typeAndData.size()))));
}

// A PNG of one row, from its raw bytes.
std::string png(uint32_t width, char depth, char colourType, const std::string& extra, const std::string& row)
{
    const std::string raw = std::string(1, '\0') + row;
    uLongf size = compressBound(raw.size());
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(raw.data()), raw.size());
    packed.resize(size);
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR" + number(width) + number(1) + depth + colourType + std::string(3, '\0')) +
           extra + chunk("IDAT" + packed) + chunk("IEND");
}

// The program changes nothing with an offset of 0.
std::vector<uint8_t> passed(const std::string& file)
{
    writeText("in.png", file);
    const Result result = run("brightness in.png -o out.png --offset 0");
    EXPECT_EQ(result.status, 0) << result.errors;
    return readPng("out.png").bytes;
}

TEST_F(Formats, pngKeepsEveryByte)
{
    const Picture picture = pattern(37, 23);
    writePng("in.png", picture);
    ASSERT_EQ(run("brightness in.png -o out.PNG --offset 0").status, 0);
    EXPECT_EQ(readPng("out.PNG"), picture);
}

TEST_F(Formats, allKindsOfPngBecomeBgra)
{
    using Bytes = std::vector<uint8_t>;
    // Grey of two bits spreads over the whole range; 16 bits are rounded; the transparent colour becomes alpha.
    EXPECT_EQ(passed(png(4, 2, 0, "", "\x1b")),
              (Bytes{0, 0, 0, 255, 85, 85, 85, 255, 170, 170, 170, 255, 255, 255, 255, 255}));
    EXPECT_EQ(passed(png(1, 8, 4, "", "\x40\x80")), (Bytes{64, 64, 64, 128}));
    EXPECT_EQ(passed(png(1, 16, 2, "", std::string("\x01\xff\x80\0\xff\xff", 6))), (Bytes{255, 128, 2, 255}));
    EXPECT_EQ(passed(png(2, 8, 2, chunk(std::string("tRNS\0\1\0\2\0\3", 10)), "\1\2\3\1\2\4")),
              (Bytes{3, 2, 1, 0, 4, 2, 1, 255}));
    EXPECT_EQ(passed(png(2, 8, 3, chunk("PLTE\x0a\x14\x1e\x28\x32\x3c") + chunk("tRNS\x07"), std::string("\0\1", 2))),
              (Bytes{30, 20, 10, 7, 60, 50, 40, 255}));
    // A file that says how its levels are meant is still taken as it stands.
    EXPECT_EQ(passed(png(1, 8, 2, chunk("gAMA" + number(100000)), "\x10\x20\x30")), (Bytes{48, 32, 16, 255}));
}

TEST_F(Formats, jpegStaysClose)
{
    Picture picture{64, 48, std::vector<uint8_t>(64 * 48 * 4)};
    for (int i = 0; i < 64 * 48; ++i) {
        const uint8_t pixel[] = {uint8_t(i % 64 * 4), uint8_t(i / 64 * 5), 90, 255};
        std::copy_n(pixel, 4, &picture.bytes[size_t(i) * 4]);
    }
    writePng("in.png", picture);
    ASSERT_EQ(run("invert in.png -o out.jpeg").status, 0);
    // By content, not by name.
    std::filesystem::rename("out.jpeg", "misnamed.png");
    ASSERT_EQ(run("invert misnamed.png -o back.png").status, 0);
    const Picture back = readPng("back.png");
    ASSERT_EQ(back.bytes.size(), picture.bytes.size());
    for (size_t i = 0; i < back.bytes.size(); ++i)
        ASSERT_LE(std::abs(back.bytes[i] - picture.bytes[i]), 6) << "byte " << i;
}

TEST_F(Formats, outputsKeepPermissionsAndLinks)
{
    writePng("in.png", pattern(5, 4));
    const mode_t mask = umask(027);
    ASSERT_EQ(run("invert in.png -o new.png").status, 0);
    umask(mask);
    const auto permissions = [](const char* path) { return unsigned(std::filesystem::status(path).permissions()); };
    EXPECT_EQ(permissions("new.png"), 0640u);

    std::filesystem::permissions("new.png", std::filesystem::perms(0600));
    std::filesystem::create_symlink("new.png", "link.png");
    ASSERT_EQ(run("brightness in.png -o link.png --offset 9").status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink("link.png"));
    EXPECT_EQ(readText("link.png"), readText("new.png"));
    EXPECT_EQ(permissions("new.png"), 0600u);
}

TEST_F(Formats, inputMayBeItsOwnOutput)
{
    const Picture picture = pattern(9, 7);
    writePng("same.png", picture);
    ASSERT_EQ(run("invert same.png -o same.png").status, 0);
    EXPECT_NE(readPng("same.png"), picture);
    ASSERT_EQ(run("invert same.png -o same.png").status, 0);
    EXPECT_EQ(readPng("same.png"), picture);
    EXPECT_EQ(folderContents().size(), 1u);
}
} // namespace
} // namespace test
