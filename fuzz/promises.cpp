// What the manual promises of every buffer: how many elements, and what must be in them.
#include "call.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <unordered_map>

namespace abuse
{
namespace
{
/// Whether a name is one of some words; a word that ends in * stands for all that begin with it.
bool isOneOf(std::string_view words, std::string_view name)
{
    while (!words.empty()) {
        const auto end = std::min(words.find(' '), words.size());
        const std::string_view word = words.substr(0, end);
        if (word == name || (word.ends_with('*') && name.starts_with(word.substr(0, word.size() - 1)))) {
            return true;
        }
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return false;
}

struct Rule
{
    std::string_view exports;
    std::string_view parameters;
    std::string_view type;
    int64_t (*elements)(const Call&);
    Content content = Content::numbers;
};

template <int64_t count>
int64_t exactly(const Call&)
{
    return count;
}

int64_t atLeast0(int64_t count)
{
    return std::max<int64_t>(count, 0);
}

int64_t rows(const Call& call)
{
    return atLeast0(call.whole("last_row") + 1);
}

/// The mask up to the last place that the scales lead to. What a scale makes too large leads nowhere.
int64_t scaledMask(const Call& call)
{
    const auto last = [&](std::string_view size, std::string_view scale) {
        double scaled = 0;
        for (size_t i = 0; i < call.values().size(); ++i) {
            if (call.callee().parameters[i].name == scale) {
                scaled = static_cast<float>(call.values()[i].real);
            }
        }
        const double place = static_cast<double>(call.whole(size) - 1) * scaled;
        // Where the last place leads nowhere, an earlier one may lead far.
        return place > 0 && scaled < INT_MAX ? static_cast<int64_t>(std::min<double>(place, INT_MAX)) : 0;
    };
    const int64_t place =
        last("height", "vertical_scale") * call.whole("mask_width") + last("width", "horizontal_scale");
    return call.pixels() > 0 ? (place + 1) * 4 : 0;
}

int64_t topology(const Call& call)
{
    return call.pixels() > 0 ? call.whole("height") * (call.whole("width") + 1) + 1 : 1;
}

/// The square round a dab's circle.
int64_t brushTip(const Call& call)
{
    if (!call.has("dx0")) {
        return call.pixels() * 4;
    }
    // Squares wrap, and what comes out below 1 is no circle: nothing is read.
    const int64_t radius = atLeast0(call.whole("r"));
    const int64_t side = static_cast<int32_t>(static_cast<uint32_t>(radius * radius)) < 1 ? 0 : 2 * radius;
    return side * side * 4;
}

int64_t columnsOfPicture(const Call& call)
{
    return call.pixels() > 0 ? call.whole("width") : 0;
}

int64_t rowsOfPicture(const Call& call)
{
    return call.pixels() > 0 ? call.whole("height") : 0;
}

constexpr int64_t cubeEntries = 256 * 256 * 256;
constexpr int64_t gridEntries = 546 * 241 * 241;

// The first that fits counts.
const Rule rules[] = {
    {"*", "progress", "uint32_t*", exactly<1>},
    {"*", "stop", "*", exactly<1>, Content::zeros},
    {"*", "framed largest left right top bottom segment_count", "*", exactly<1>},
    {"SC_*", "start end", "*", exactly<1>},
    {"ESSAI_Structure", "values", "*", exactly<7>},
    {"ESSAI_Structure1", "values", "*", exactly<4>},
    {"ESSAI_Structure2", "values", "*", exactly<8>},
    {"DI_*", "colour", "*", exactly<4>, Content::noise},
    {"IM_BuildTopo", "table", "*", topology},
    // Tables.
    {"IM_SetDataLab", "lightness a b", "float*", exactly<cubeEntries>},
    {"IM_SetDataRGB", "red green blue", "uint8_t*", exactly<gridEntries>, Content::noise},
    {"IM_SetDataGamma IM_SetDataGammaSimple", "table", "*", exactly<101 * 256>},
    {"IM_SetDataGammaFixe", "ramp", "*", exactly<10001>},
    {"IM_Detail", "curve", "*", exactly<10001>},
    {"*", "tone_table", "const float*", exactly<101 * 256>},
    {"*", "family", "*", exactly<256 * 256>, Content::noise},
    {"*", "bell gammas", "*", exactly<256>},
    {"IM_NiveauPlus IM_GetEqualiser IM_GetTabBrillance", "table", "*", exactly<256>, Content::noise},
    {"TRA_*", "profile", "*", exactly<256>, Content::noise},
    {"IM_ErosionLAB_AB", "lightness", "*", [](const Call& call) { return call.pixels() * 4; }},
    {"*", "lightness a b", "const float*", exactly<cubeEntries>, Content::cube},
    {"IM_CourbesLab IM_GetEqualiser IM_Balance IM_Detail", "red green blue", "const uint8_t*", exactly<gridEntries>,
     Content::grid},
    {"IM_Courbes", "master red green blue", "*", exactly<256>, Content::levels},
    {"IM_CourbesLab", "lightness_rows", "*", exactly<256>},
    {"IM_CourbesLab", "a_rows b_rows", "*", exactly<256>, Content::levels},
    {"IM_Niveau", "master red green blue", "*", exactly<5>, Content::levelsRecord},
    {"IM_BrillanceContrasteH IM_GetDataHisto IM_GetDataHistoChance", "mean grey red green blue", "*", exactly<256>},
    // Maps and pictures of other sizes.
    {"IM_GetLab", "lab", "*", [](const Call& call) { return call.pixels() * 4; }},
    {"LA_Data2BorderOut", "flags", "*", [](const Call& call) { return call.pixels(); }, Content::noise},
    {"DS_Mask2TransparentAppliquer", "mask", "*", scaledMask, Content::noise},
    {"SC_*", "energy", "uint8_t*", [](const Call& call) { return call.pixels() * 4; }, Content::noise},
    {"SC_*", "energy map", "*", [](const Call& call) { return call.pixels(); }},
    {"SC_ExpandBack", "seams", "*",
     [](const Call& call) { return call.whole("count") * std::max<int64_t>(rows(call), 1); }},
    {"SC_Populate*", "seams", "*",
     [](const Call& call) { return atLeast0(call.whole("count")) * atLeast0(call.whole("height")); }, Content::places},
    {"SC_Populate*", "counters", "*",
     [](const Call& call) { return atLeast0(call.whole("columns")) * atLeast0(call.whole("height")); }, Content::zeros},
    // Brushes.
    {"BR_*", "brush", "*", brushTip, Content::noise},
    {"BR_*", "profile", "*", exactly<256>},
    {"BR_PeintureOld", "columns", "*", columnsOfPicture, Content::places},
    {"BR_PeintureOld", "rows", "*", rowsOfPicture, Content::places},
    // Tracing.
    {"TRACE_Parcourir", "records map", "*", exactly<0>, Content::outline},
    {"TRACE_Parcourir", "points", "*", [](const Call& call) { return atLeast0(call.whole("most")) * 2; }},
    {"TRACE_*", "records", "*", [](const Call& call) { return call.pixels() * 36; }},
    {"TRACE_*", "map", "*", [](const Call& call) { return call.pixels() * 4; }},
    {"TRACE_* MORPH_*", "pixels", "*", [](const Call& call) { return call.pixels() * 4; }, Content::twoLevels},
    {"TRACE_*", "points", "*", [](const Call& call) { return atLeast0(call.whole("last") + 1) * 2; }},
    {"BZ_Approximation", "points", "*", [](const Call& call) { return atLeast0(call.whole("count")) * 2; }},
    {"BZ_Approximation", "segments", "*",
     [](const Call& call) {
         const int64_t count = call.whole("count");
         return 8 * (count < 1 ? 0 : std::max<int64_t>(count - 1, 1));
     }},
    {"NL_PathLength", "points", "*", [](const Call& call) { return (atLeast0(call.whole("last")) + 1) * 2; }},
    {"NL_PathLength", "table", "*", [](const Call& call) { return (atLeast0(call.whole("last")) + 1) * 3; }},
    {"NL_GetPointPath", "table", "*", [](const Call& call) { return atLeast0(call.whole("last") + 1) * 3; }},
    {"NL_GetPointPath", "result", "*", exactly<2>},
    {"RE_Layers", "red green blue grey", "uint8_t*", [](const Call& call) { return call.pixels() * 4; }},
    // All the rest are pictures.
    {"*",
     "image source destination mask selection scratch softened equalised guide grey clone root stroke test picture key "
     "pixels gate weights companion base highlight shadow filtered reference texture unpainted background least "
     "touched "
     "restore",
     "*", [](const Call& call) { return call.pixels() * 4; }, Content::noise},
};

// What is only read, and what it may be: "In place: yes", or as the parameter says.
struct InPlace
{
    std::string_view exports;
    std::string_view read;
    std::string_view written;
};
const InPlace inPlace[] = {
    {"IM_NB IM_Brillance IM_Contraste", "source", "destination"},
    {"IM_Courbes IM_CourbesLab IM_Niveau IM_NiveauPlus", "source", "destination"},
    {"IM_BrillanceContraste IM_BrillanceContrasteH IM_Gamma", "source", "destination"},
    {"IM_GetEqualiser IM_Equaliser IM_Balance", "source", "destination"},
    {"IM_Net IM_Accentuer IM_HighPass IM_Detail", "image", "destination"},
    {"IM_Decal IM_Seuil", "source", "destination"},
    {"DS_Image2Mask", "source", "mask"},
    {"DS_Mask2Transparent DS_Mask2TransparentClip DS_Mask2TransparentAppliquer", "mask", "image"},
    {"DS_SetAlphaData DS_TransfertAlpha", "source", "destination"},
    {"DS_TransfertDataSelected", "source key", "destination"},
    {"PA_Transparent PA_Opaque PA_Copie", "test", "picture"},
    {"RE_Black2Trans", "grey", "picture"},
    {"RE_Trans2Black RE_TransparenceMask RE_CouleurMask RE_TextureMask", "source", "destination"},
    {"TRA_ImageLineaire TRA_ImageRadial", "selection", "image"},
};
} // namespace

std::string_view mayBe(const Export& callee, std::string_view parameter)
{
    const auto* const found = std::find_if(std::begin(inPlace), std::end(inPlace), [&](const InPlace& rule) {
        return isOneOf(rule.exports, callee.name) && isOneOf(rule.read, parameter);
    });
    return found == std::end(inPlace) ? "" : found->written;
}

Buffer promised(const Call& call, const Parameter& parameter)
{
    // Looked up once: comparing names takes longer than many a call.
    static thread_local std::unordered_map<const Parameter*, const Rule*> found;
    const auto [known, isNew] = found.try_emplace(&parameter, nullptr);
    if (isNew) {
        const auto* const rule = std::find_if(std::begin(rules), std::end(rules), [&](const Rule& candidate) {
            return isOneOf(candidate.exports, call.callee().name) && isOneOf(candidate.parameters, parameter.name) &&
                   (candidate.type == "*" || candidate.type == parameter.type);
        });
        known->second = rule == std::end(rules) ? nullptr : rule;
    }
    if (known->second == nullptr) {
        return {-1, Content::noise};
    }
    return {known->second->elements(call), known->second->content};
}

bool isHeavy(const Export& callee)
{
    return callee.name == "IM_SetDataLab" || callee.name == "IM_SetDataRGB";
}
} // namespace abuse
