// Seam carving: resizing that keeps what stands out.
#include "failure.h"
#include "operation.h"

#include <cstdlib>
#include <utility>

namespace host
{
namespace
{
// Green protects, red gives away. Masks select by alpha.
Picture guideOf(const Job& job)
{
    Picture guide(job.width(), job.height());
    const auto paint = [&](const char* name, size_t channel) {
        for (size_t i = 0; i < guide.bytes.size(); i += 4)
            guide.bytes[i + channel] = job.picture(name).bytes[i + 3];
    };
    paint("protect", 1);
    paint("remove", 2);
    return guide;
}

int32_t wantedSize(const Job& job, const char* name, int32_t now)
{
    const int32_t wanted = job.has(name) ? job.whole(name) : now;
    if (wanted > 2 * int64_t{now})
        throw UsageError("--" + std::string(name) + ": " + std::to_string(wanted) + " is more than twice the " +
                         std::to_string(now) + " of the picture");
    return wanted;
}

// Narrows the picture until nothing is left of what the guide gives away, across it where it is thinner.
bool removeMarked(lumivex::SeamCarver& carver)
{
    const int32_t across = carver.mostGivenAway();
    carver.transpose();
    const bool sideways = carver.mostGivenAway() < across;
    if (!sideways)
        carver.transpose();
    bool done = true;
    // Seams that bend round something leave a rest, which the next ones take.
    for (int32_t marked = carver.mostGivenAway(); marked > 0 && done; marked = carver.mostGivenAway()) {
        if (marked >= carver.image().width)
            throw Failure("--remove: nothing would be left");
        done = carver.setWidth(carver.image().width - marked);
    }
    if (sideways)
        carver.transpose();
    return done;
}

void carve(Job& job)
{
    const int32_t width = wantedSize(job, "width", job.width());
    const int32_t height = wantedSize(job, "height", job.height());
    lumivex::SeamCarver carver(job.input, guideOf(job), {.preview = job.flag("preview"), .progress = job.counter()});

    const int32_t marked = carver.mostGivenAway();
    if (marked == 0 && !job.has("width") && !job.has("height"))
        throw UsageError("nothing to do: neither a size is given nor anything to remove");
    const int32_t seams = 2 * marked + std::abs(width - job.width()) + std::abs(height - job.height());
    job.progress.begin("carve", static_cast<uint32_t>(seams));
    if (!removeMarked(carver) || !carver.setWidth(width) || !carver.setHeight(height))
        throw Failure("no seam is left that costs little enough: protect less, or change the size by less");
    job.output = carver.takeImage();
}
} // namespace

Family seamFamily()
{
    const char* const size = "Pixels, up to twice what the picture has; without it this stays";
    const char* const masks = "where the mask is: alpha if the file uses it, else brightness";
    return {"seam",
            "Seam carving",
            {
                {.name = "carve",
                 .exported = "SC_Gris, SC_EnergyMap, SC_SeamMap, SC_SeamMapUpDate, SC_ExpandUpDate, SC_SeamMapBack, "
                             "SC_SeamMapBackShow, SC_ExpandBack, SC_PopulateData, SC_PopulateSeam",
                 .summary = "Resizes along seams through what is flat, and keeps what stands out",
                 .details = "What --remove marks goes first; then the picture gets the wanted size, or its old one.",
                 .parameters = {optionalWhole("width", 1, 100000, size), optionalWhole("height", 1, 100000, size),
                                optionalMask("protect", std::string("Keep what is ") + masks),
                                optionalMask("remove", std::string("Take out what is ") + masks),
                                flag("preview", "Paint removed seams red and inserted ones yellow")},
                 .selecting = Selecting::none,
                 .examples = {{"--width 67%w"},
                              {"--width 67%w --protect card.png"},
                              {"--width 67%w --protect card.png --preview"},
                              {"--width 133%w"},
                              {"--width 133%w --preview"},
                              {"--remove card.png"},
                              {"--width 110%w --height 78%h --protect card.png"}},
                 .run = carve},
            }};
}
} // namespace host
