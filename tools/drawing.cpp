// Writing SVG, with pictures inside it as PNG in base 64.
#include "drawing.h"

#include "files/codecs.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace host
{
namespace
{
// To a hundredth of a pixel, without needless zeros.
void append(std::string& text, float value)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, std::round(value * 100) / 100).ptr;
    text.append(digits, end);
}

void append(std::string& text, lumivex::Point point)
{
    append(text, point.x);
    text += ',';
    append(text, point.y);
}

std::string base64(const std::vector<uint8_t>& bytes)
{
    constexpr const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 3) {
        const size_t count = std::min<size_t>(3, bytes.size() - i);
        uint32_t three = 0;
        for (size_t j = 0; j < 3; ++j)
            three = three << 8 | (j < count ? bytes[i + j] : 0);
        for (size_t j = 0; j < 4; ++j)
            text += j <= count ? digits[three >> (18 - 6 * j) & 63] : '=';
    }
    return text;
}

std::string hexadecimal(Colour colour)
{
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", colour.red, colour.green, colour.blue);
    return text;
}
} // namespace

std::string drawingOf(const std::vector<std::vector<lumivex::CurveSegment>>& outlines, bool framed, int32_t width,
                      int32_t height, const DrawingStyle& style)
{
    const std::string size = "width=\"" + std::to_string(width) + "\" height=\"" + std::to_string(height) + "\"";
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" " + size + " viewBox=\"0 0 " + std::to_string(width) +
                      " " + std::to_string(height) + "\">\n";
    if (style.backdrop != nullptr)
        svg += "<image " + size + " opacity=\"0.35\" href=\"data:image/png;base64," +
               base64(encodePng(*style.backdrop)) + "\"/>\n";
    const std::string colour = hexadecimal(style.colour);
    svg += "<path fill=\"" + (style.fill ? colour : "none") + "\" fill-rule=\"evenodd\" stroke=\"" +
           (style.stroke ? colour : "none") + "\" d=\"";
    if (framed)
        svg += "M0,0H" + std::to_string(width) + "V" + std::to_string(height) + "H0Z\n";
    for (const std::vector<lumivex::CurveSegment>& outline : outlines) {
        svg += 'M';
        append(svg, outline.front().start);
        for (const lumivex::CurveSegment& segment : outline) {
            svg += 'C';
            append(svg, segment.control1);
            svg += ' ';
            append(svg, segment.control2);
            svg += ' ';
            append(svg, segment.end);
        }
        svg += "Z\n";
    }
    return svg + "\"/>\n</svg>\n";
}
} // namespace host
