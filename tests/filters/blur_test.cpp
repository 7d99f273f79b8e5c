// Blurs where a fast form would go wrong first: quotients next to whole numbers, wide sums, shifted selections.
#include "lumivex.h"
#include "plain.h"
#include "scene.h"

#include <bit>
#include <cstring>

using namespace support;

namespace
{
using Pixels = std::vector<uint8_t>;
using KernelBlur = decltype(IM_FlouGaussien);

struct Kernel
{
    const char* name;
    KernelBlur* blur;
    int reach;
};
const Kernel kernels[] = {{"IM_FlouGaussien", IM_FlouGaussien, 2},
                          {"IM_FlouGaussien77", IM_FlouGaussien77, 3},
                          {"IM_FlouGaussien99", IM_FlouGaussien99, 4},
                          {"IM_FlouGaussien77Plus", IM_FlouGaussien77Plus, 3},
                          {"IM_FlouGaussienPlus", IM_FlouGaussienPlus, 2}};

Pixels uniform(int width, int height, int level)
{
    return Pixels(static_cast<size_t>(width) * static_cast<size_t>(height) * 4, static_cast<uint8_t>(level));
}
} // namespace

TEST(Kernels, DivideExactlyNextToEveryLevel)
{
    for (const Kernel& kernel : kernels) {
        SCOPED_TRACE(kernel.name);
        // As wide as several vectors, so that the main loop divides and not just its rest. In the top row every window
        // sees exactly one changed pixel, as those are a kernel apart.
        const int side = 2 * kernel.reach + 1;
        const int width = side * 20;
        uint32_t progress = 0;
        for (int level = 1; level < 255; ++level) {
            Pixels source = uniform(width, side, level);
            Pixels wanted = uniform(width, side, 77);
            for (int x = 0; x < width; x += side) {
                source[static_cast<size_t>(x) * 4] = static_cast<uint8_t>(level - 1);
                source[static_cast<size_t>(x) * 4 + 1] = static_cast<uint8_t>(level + 1);
            }
            Pixels image = uniform(width, side, 77);
            kernel.blur(image.data(), source.data(), nullptr, width, side, 0, &progress);
            const auto middle = static_cast<size_t>(kernel.reach * width);
            for (int x = kernel.reach; x < width - kernel.reach; ++x) {
                uint8_t* const pixel = &wanted[(middle + static_cast<size_t>(x)) * 4];
                // The sum is the divisor times the level, less or more by one weight: just under the level, and over
                // it.
                pixel[0] = static_cast<uint8_t>(level - 1);
                pixel[1] = static_cast<uint8_t>(level);
                pixel[2] = static_cast<uint8_t>(level);
            }
            ASSERT_EQ(image, wanted) << "level " << level;
        }
    }
}

TEST(BoxBlur, DividesExactlyAtEveryRadius)
{
    for (int radius = 1; radius <= 140; radius += radius < 40 ? 1 : 9) {
        const int size = 2 * radius + 1;
        for (const int level : {1, 128, 255}) {
            Pixels image = uniform(size, size, level);
            Pixels scratch = uniform(size, size, 9);
            // Whole quotients everywhere, clipped windows included: a picture of one level stays what it is.
            const Pixels before = image;
            IM_Flou(image.data(), scratch.data(), nullptr, size, size, radius, 0, 0);
            ASSERT_EQ(image, before) << "radius " << radius << ", level " << level;
            // One darker pixel in the middle puts every window that holds it just below a whole quotient.
            image[image.size() / 8 * 4] = static_cast<uint8_t>(level - 1);
            Pixels plainly = image;
            IM_Flou(image.data(), scratch.data(), nullptr, size, size, radius, 0, 0);
            Pixels plainScratch = uniform(size, size, 9);
            plain::IM_Flou(plainly.data(), plainScratch.data(), nullptr, size, size, radius, 0, 0);
            ASSERT_EQ(image, plainly) << "radius " << radius << ", level " << level;
            ASSERT_EQ(scratch, plainScratch) << "radius " << radius << ", level " << level;
        }
    }
}

TEST(BoxBlur, WideSumsAndStripsHaveThePlainMeaning)
{
    const auto isBoxBlur = [](const Operation& o) { return std::strcmp(o.name, "IM_Flou") == 0; };
    const auto& all = operations();
    const Operation& boxBlur = *std::find_if(all.begin(), all.end(), isBoxBlur);
    // Sums of 257 bright bytes and more do not fit 16 bits; 4096 columns are blurred at a time.
    for (const int32_t radius : {2, 129, 130, 257}) {
        for (const uint8_t selectionOnly : {uint8_t{0}, uint8_t{1}}) {
            const Arrangement setup{.width = radius == 2 ? 4098 : 2 * radius + 5,
                                    .height = 2 * radius,
                                    .seed = 51,
                                    .selectionOnly = selectionOnly};
            Scene library(boxBlur, setup);
            Scene plainly(boxBlur, setup);
            for (Scene* const scene : {&library, &plainly}) {
                scene->parameters = {.whole = radius, .flag = selectionOnly};
                std::memset(scene->image.data(), 255, scene->image.size() / 3 * 2);
            }
            SCOPED_TRACE(library.describe());
            EXPECT_EQ(library.runLibrary(), plainly.runPlain());
            EXPECT_TRUE(agree(library, plainly));
        }
    }
}

TEST(BoxBlur, RadiusOneRepeatsTheLastRowAndColumn)
{
    Pixels image = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    Pixels scratch(image.size());
    EXPECT_EQ(IM_Flou(image.data(), scratch.data(), nullptr, 2, 2, 1, 0, 0), 20);
    EXPECT_EQ(image, Pixels({1, 2, 3, 4, 1, 2, 3, 8, 1, 2, 3, 12, 1, 2, 3, 16}));
}

TEST(LabBlur, TheShiftedEntryEndsIt)
{
    // In a picture of one colour with one excluded entry, the blur ends after the pixel whose far corner that entry is.
    constexpr int width = 1100;
    constexpr int height = 140;
    const Planes& planes = inventedPlanes();
    const Pixels source = uniform(width, height, 100);
    for (const auto& [cornerX, cornerY] : {std::pair{4, 4}, {25, 7}, {900, 5}, {515, 68}, {600, 100}, {1099, 139}}) {
        Pixels mask = uniform(width, height, 255);
        mask[static_cast<size_t>(cornerY * width + cornerX) * 4 + 3] = 0;
        for (auto* const blur : {IM_FlouLAB_L, IM_FlouLAB_AB}) {
            Pixels image = uniform(width, height, 77);
            Pixels unlimited = image;
            uint32_t progress = 0;
            blur(image.data(), source.data(), planes.l.data(), planes.a.data(), planes.b.data(), mask.data(), width,
                 height, 1, &progress);
            EXPECT_EQ(progress,
                      static_cast<uint32_t>((height - 3) * static_cast<double>(static_cast<float>(100.0 / height))));
            blur(unlimited.data(), source.data(), planes.l.data(), planes.a.data(), planes.b.data(), nullptr, width,
                 height, 0, &progress);
            const auto end = static_cast<size_t>((cornerY - 2) * width + cornerX - 2 + 1) * 4;
            std::fill(unlimited.begin() + static_cast<std::ptrdiff_t>(end), unlimited.end(), uint8_t{77});
            EXPECT_EQ(image, unlimited) << "corner " << cornerX << ' ' << cornerY;
        }
    }
}

TEST(LabBlur, TheFirstPixelIsDecidedByTheFlagItself)
{
    constexpr int width = 6;
    constexpr int height = 5;
    const Planes& planes = inventedPlanes();
    const Pixels source = uniform(width, height, 50);
    for (int flag = 1; flag < 256; ++flag) {
        for (const uint8_t entry : {uint8_t{0}, uint8_t{1}}) {
            Guarded mask(size_t{width} * height * 4, Place::end);
            std::memset(mask.data(), entry == 0 ? 255 : 0, mask.size());
            const auto at = static_cast<size_t>(flag) + 3;
            const bool within = at < mask.size();
            if (within) {
                mask.data()[at] = entry;
            }
            Pixels image = uniform(width, height, 77);
            uint32_t progress = 0;
            IM_FlouLAB_L(image.data(), source.data(), planes.l.data(), planes.a.data(), planes.b.data(), mask.data(),
                         width, height, static_cast<uint8_t>(flag), &progress);
            const bool blurred = image != uniform(width, height, 77);
            EXPECT_EQ(blurred, !within || entry != 0) << "flag " << flag << ", entry " << int{entry};
        }
    }
}

TEST(LabBlur, EveryStepOfTheCompandingCurve)
{
    // Lightness passes through the blur of colour untouched, so a plane of invented lightness can put each channel on
    // either side of every byte it can take.
    const auto byteOf = [](float l, int channel) { return plain::labToRgb({l, 0, 0}) >> 8 * channel & 255; };
    std::vector<float> lightness;
    for (int channel = 0; channel < 3; ++channel) {
        for (uint32_t byte = 1; byte < 256; ++byte) {
            auto below = std::bit_cast<uint32_t>(0.0F);
            auto above = std::bit_cast<uint32_t>(110.0F);
            while (above - below > 1) {
                const uint32_t middle = below + (above - below) / 2;
                (byteOf(std::bit_cast<float>(middle), channel) >= byte ? above : below) = middle;
            }
            for (uint32_t bits = above - std::min(above, 20U); bits < above + 20; ++bits) {
                lightness.push_back(std::bit_cast<float>(bits));
            }
        }
    }
    std::vector<float> plane(1 << 24);
    const std::vector<float> neutral(1 << 24);
    std::copy(lightness.begin(), lightness.end(), plane.begin());
    const int width = 204;
    const int height = static_cast<int>(lightness.size()) / (width - 4) + 5;
    Pixels source(static_cast<size_t>(width) * static_cast<size_t>(height) * 4);
    size_t next = 0;
    for (int y = 2; y < height - 2; ++y) {
        for (int x = 2; x < width - 2 && next < lightness.size(); ++x, ++next) {
            uint8_t* const pixel = &source[static_cast<size_t>(y * width + x) * 4];
            pixel[0] = static_cast<uint8_t>(next >> 16);
            pixel[1] = static_cast<uint8_t>(next >> 8);
            pixel[2] = static_cast<uint8_t>(next);
        }
    }
    ASSERT_EQ(next, lightness.size());
    Pixels library(source.size());
    Pixels plainly(source.size());
    uint32_t progress = 0;
    IM_FlouLAB_AB(library.data(), source.data(), plane.data(), neutral.data(), neutral.data(), nullptr, width, height,
                  0, &progress);
    plain::IM_FlouLAB_AB(plainly.data(), source.data(), plane.data(), neutral.data(), neutral.data(), nullptr, width,
                         height, 0, &progress);
    EXPECT_EQ(library, plainly);
}
