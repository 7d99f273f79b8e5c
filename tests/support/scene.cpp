// Calls prepared twice.
#include "scene.h"

#include <algorithm>
#include <sstream>

namespace support
{
namespace
{
/// Sizes without pixels, and those that only wrap into a picture's, still get a buffer that must stay as it is.
size_t pixelsFor(const Arrangement& setup)
{
    constexpr int64_t most = 1 << 24;
    const int64_t pixels = static_cast<int64_t>(setup.width) * setup.height;
    return setup.width >= 1 && setup.height >= 1 && pixels <= most ? static_cast<size_t>(pixels) : 64;
}

Place placeOfImage(const Operation& operation, Place place)
{
    return operation.traits.aligned && place == Place::odd ? Place::start : place;
}
} // namespace

Scene::Scene(const Operation& of, const Arrangement& with)
    : operation(of), setup(with),
      image(pixelsFor(with) * static_cast<size_t>(of.traits.bytesPerPixel), placeOfImage(of, with.place)),
      source(pixelsFor(with) * 4, with.place), mask(pixelsFor(with) * 4, with.place),
      scratch(pixelsFor(with) * 4, with.place)
{
    Random random(setup.seed);
    fillPicture(image, random, Alpha::noise);
    fillPicture(source, random, Alpha::noise);
    fillPicture(mask, random, setup.selected);
    fillPicture(scratch, random, Alpha::sparse);
    if (setup.inPlace) {
        std::copy_n(image.data(), source.size(), source.data());
    }
    parameters = operation.draw(random, job());
    if (setup.plainFlag) {
        parameters.flag = 0;
    }
}

Job Scene::job()
{
    return {image.data(),
            setup.inPlace ? image.data() : source.data(),
            setup.nullMask ? nullptr : mask.data(),
            scratch.data(),
            setup.width,
            setup.height,
            setup.selectionOnly,
            parameters,
            &progress};
}

std::string Scene::describe() const
{
    std::ostringstream out;
    out << operation.name << ' ' << setup.width << " x " << setup.height << ", seed " << setup.seed << ", place "
        << static_cast<int>(setup.place) << ", selection only " << static_cast<int>(setup.selectionOnly)
        << ", mask kind " << static_cast<int>(setup.selected) << ", in place " << setup.inPlace << ", " << parameters;
    return nameCase(out.str());
}

testing::AssertionResult sameBytes(const char* what, const Guarded& got, const Guarded& wanted,
                                   const Arrangement& setup)
{
    if (!got.guardsAreIntact()) {
        return testing::AssertionFailure() << what << ": bytes beside the buffer were written";
    }
    const auto [g, w] = std::mismatch(got.data(), got.data() + got.size(), wanted.data());
    const auto at = g - got.data();
    if (static_cast<size_t>(at) == got.size()) {
        return testing::AssertionSuccess();
    }
    const auto bytesPerPixel = static_cast<int64_t>(got.size() / pixelsFor(setup));
    const int64_t pixel = at / bytesPerPixel;
    return testing::AssertionFailure() << what << " at x " << pixel % setup.width << ", y " << pixel / setup.width
                                       << ", byte " << at % bytesPerPixel << ": " << int{*g} << " instead of "
                                       << int{*w};
}

testing::AssertionResult agree(const Scene& library, const Scene& plain)
{
    using Member = Guarded Scene::*;
    const std::pair<const char*, Member> buffers[] = {
        {"image", &Scene::image}, {"source", &Scene::source}, {"mask", &Scene::mask}, {"scratch", &Scene::scratch}};
    for (const auto& [name, member] : buffers) {
        if (auto same = sameBytes(name, library.*member, plain.*member, library.setup); !same) {
            return same;
        }
    }
    if (library.progress != plain.progress) {
        return testing::AssertionFailure() << "progress " << library.progress << " instead of " << plain.progress;
    }
    return testing::AssertionSuccess();
}
} // namespace support
