/* Lumivex: image operations on the host's own pixel memory.
 *
 * This header is the whole boundary and the manual of it. It is valid C99 and C++. The lists of exported names and the
 * dispatch between processor levels are derived from its declarations.
 *
 * ---------------------------------------------------------------------------------------------------------------------
 * 1. Pictures
 *
 * A picture is an array of width x height pixels of four bytes, in the order blue, green, red, alpha. Rows are packed:
 * pixel (x, y) starts at byte (y * width + x) * 4, with the product taken in 64 bits on 64-bit machines. Row 0 is the
 * first in memory; no function here cares whether the host shows it at the top or the bottom. Alpha 0 is transparent,
 * 255 opaque. Pictures need no alignment. "The picture" in a parameter list always means width * height * 4 bytes.
 *
 * 2. Who owns what
 *
 * The host owns every buffer and every table, before, during and after a call. The library allocates nothing that
 * outlives a call, keeps no pointer, and has no state: the same call with the same bytes gives the same bytes, on every
 * processor. A call takes less than 128 KiB of the caller's stack.
 *
 * 3. Destination and source; working in place
 *
 * A function with a destination and a source reads only the source (and, where it says so, the destination) and writes
 * only the destination. Where each pixel depends on the source pixel at the same place alone, the two may be the same
 * buffer; these functions are marked "In place: yes". Functions that look at neighbours are marked "In place: no".
 * Buffers that overlap in any other way are never allowed. Alpha of the destination is left as it was, unless a
 * function says that it writes it.
 *
 * 4. Sizes
 *
 * Width and height are signed. A picture without pixels (width or height below 1) is not processed. Functions marked
 * "Size test: product" also do nothing when width * height * 4, wrapped to a signed 32-bit number, is below 1: for them
 * a picture of 32768 x 32768 has no pixels. The others take any size that memory holds.
 *
 * Functions that take a rectangle or a dab process that instead of the picture, unless it has no columns or no rows.
 * They look at the width for the distance of rows alone, and at the height, if there is one, only where they say so.
 *
 * 5. Selection
 *
 * A selection is a picture of the same size of which only alpha counts: 0 is not selected, anything else is. It is
 * honoured only when the function's selection_only (or use_selection) byte is not 0; otherwise it is not read and may
 * be NULL. A pixel that is not selected is left as it is in the destination, or gets the source's colour: each
 * function says which. The selection may be the source itself.
 *
 * 6. Progress
 *
 * A function that takes a progress pointer writes 0 to it at entry, whatever its other arguments are, and after row r
 * (counted from 0) the truncated product of r and (float)(100.0 / height). So it never reaches 100: a picture of 200
 * rows ends at 99, of one row at 0. Functions whose progress differs say so. The host may read it from another thread
 * while the call runs.
 *
 * 7. Numbers
 *
 * A fraction becomes an integer by truncation toward zero. What does not fit is clamped where the result is clamped
 * anyway; not-a-number becomes 0; a "low byte" is that of the 64-bit truncation. No number that a host can pass makes
 * behaviour undefined. "Rounded to float" marks each place where a double is narrowed; everything between is double,
 * evaluated from left to right.
 *
 * 8. Return values
 *
 * Functions on pictures return their height argument, also when they did nothing. Others say what they return. There
 * are no error codes.
 *
 * 9. Threads
 *
 * The library starts none and holds no locks. Calls may run at once on any threads as long as what one of them writes
 * is not read or written by another.
 *
 * 10. What is never checked
 *
 * Null pointers, buffers and tables shorter than stated, and overlapping buffers are the host's fault and undefined.
 *
 * 11. Names
 *
 * Every entry begins with the function's name in English. The bindings and the command-line program know it by that.
 */
#ifndef LUMIVEX_H
#define LUMIVEX_H

#include <stdint.h>

#define LUMIVEX_VERSION "0.1.0"

/* 32-bit Windows hosts expect the callee to clean the stack; elsewhere there is one convention only, unless a build
 * defines this to be another. */
#if defined(LUMIVEX_CALL)
#elif defined(_WIN32) && !defined(_WIN64)
#define LUMIVEX_CALL __stdcall
#else
#define LUMIVEX_CALL
#endif

#if defined(LUMIVEX_BUILD) && defined(_WIN32)
#define LUMIVEX_API /* a module definition file lists the exports, under names without decoration */
#elif defined(LUMIVEX_BUILD)
#define LUMIVEX_API __attribute__((visibility("default")))
#elif defined(_WIN32)
#define LUMIVEX_API __declspec(dllimport)
#else
#define LUMIVEX_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* =====================================================================================================================
 * core: point operations
 * ================================================================================================================== */

/* invert - Inverts colours: blue, green and red become 255 - v.
 *
 * image   The picture, changed in place.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Inverser(uint8_t* image, int32_t width, int32_t height);

/* grey - Turns colours into a weighted grey: (222 * red + 707 * green + 71 * blue) / 1000, in integers.
 *
 * image           The picture, changed in place.
 * selection       Pixels that are not selected stay as they are. NULL is fine while selection_only is 0.
 * progress        Chapter 6.
 *
 * Alpha is untouched. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Gris(uint8_t* image, const uint8_t* selection, int32_t width, int32_t height,
                                         uint8_t selection_only, uint32_t* progress);

/* black_and_white - Black and white through colour filters and a tone table.
 *
 * With the factors kR, kG, kB = (float)(1 - amount / 51), the level of a pixel is
 *     S = (B * kR * kG + G * kR * kB + R * kG * kB) / 3        N = (float)sqrt((float)(kR * kG * kB))
 *     level = (float)(S / N), truncated, clamped to 0..255
 * and blue, green and red become the low byte of table[row * 256 + level], truncated.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * tone_table      101 rows of 256 floats: output levels, normally 0..255. Only one row is read.
 * selection       Pixels that are not selected get the source's colour. NULL is fine while selection_only is 0.
 * red, green, blue  Filter amounts. 0 is neutral; a larger amount weighs its own channel more. Amounts of 51 and above
 *                 make a factor 0 or negative and give no useful picture.
 * row             Row of the tone table, clamped to 0..100 and truncated.
 * clipping_warning  Not 0: pixels that come out white are shown pure red, black ones pure blue, selected or not.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_NB(uint8_t* destination, const uint8_t* source, const float* tone_table,
                                       const uint8_t* selection, int32_t width, int32_t height, float red, float green,
                                       float blue, float row, uint8_t selection_only, uint8_t clipping_warning);

/* brightness - Brightness: v + offset, clamped to 0..255, for blue, green and red.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * offset          Any number; -255..255 makes a difference.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Brillance(uint8_t* destination, const uint8_t* source, int32_t width,
                                              int32_t height, int32_t offset);

/* contrast - Contrast about the level 127: trunc((v - 127) * (float)(contrast / 50)) + 127, clamped to 0..255.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * contrast        50 is neutral, 0 gives a flat 127, 100 doubles the distance from 127, negative values invert.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Contraste(uint8_t* destination, const uint8_t* source, int32_t width,
                                              int32_t height, float contrast);

/* cut_out - Cuts a colour picture out along a black-and-white shape.
 *
 * destination     On entry the shape, of which only the blue byte is looked at. Where it is below 100 the pixel gets
 *                 the source's colour and alpha 255; elsewhere it keeps its colour and gets alpha 0.
 * source          The colour picture.
 *
 * Writes alpha. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_DetourNB(uint8_t* destination, const uint8_t* source, int32_t width,
                                             int32_t height);

/* restore_outside - Restores the source's colour outside a mask.
 *
 * destination     The picture to write. Pixels whose mask alpha is not 0 stay as they are.
 * source          The picture to take colours from.
 * mask            The clip mask: a picture of which only alpha counts.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_ClipImage(uint8_t* destination, const uint8_t* source, const uint8_t* mask,
                                              int32_t width, int32_t height);

/* offset_table - Fills a table with the byte offset of every pixel, rows one entry apart.
 *
 * table           height * (width + 1) + 1 entries. Entry r * (width + 1) + k receives (r * width + k) * 4. The spare
 *                 entry at the end of each row is not written; the last entry, at height * (width + 1), receives
 *                 width * height * 4.
 *
 * width * height * 4 is wrapped to a signed 32-bit number here: when it is 0 only entry 0 is written, with 0; when it
 * is negative, or positive because both sizes are negative, nothing is. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_BuildTopo(uint32_t* table, int32_t width, int32_t height);

/* =====================================================================================================================
 * core: colour spaces
 *
 * Hue, saturation, brightness (HSB): hue in degrees from 0 to below 360, the others in percent.
 *
 * CIE L*a*b* (CIE 15; sRGB companding as in IEC 61966-2-1), relative to a D65 white of X = 0.95047, Y = 1, Z = 1.08883:
 * L in 0..100, a and b roughly in -128..127, as floats.
 *
 * The Lab cube: three tables of 256 * 256 * 256 floats (64 MiB each), one each for L, a and b of every colour, at index
 * (blue * 256 + green) * 256 + red. IM_SetDataLab fills it.
 *
 * The RGB-from-Lab grid: three tables of 546 * 241 * 241 bytes, one each for red, green and blue, at index
 * (l * 241 + a + 120) * 241 + b + 120 for whole a and b in -120..120. The lightness axis is finer in the highlights:
 * L = l / 5 for l in 0..454, L = (l + 455) / 10 for l in 455..545. IM_SetDataRGB fills it.
 * ================================================================================================================== */

/* colour_from_hsb - One colour from HSB to RGB.
 *
 * hue             Degrees, 0 to below 360. Outside that range a colour with saturation becomes black.
 * brightness      Percent. It stands before saturation: that is meant.
 * saturation      Percent. 0 or less gives a grey of trunc(brightness * 255 / 100); greys are truncated, colours are
 *                 rounded half up.
 * colour          Four bytes to fill: red, green, blue, 0.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DI_HSB2ARGB(float hue, float brightness, float saturation, uint8_t* colour);

/* hue - The hue of one colour in degrees, 0 to below 360; 0 for a grey. */
LUMIVEX_API double LUMIVEX_CALL DI_ARGB2Hue(uint8_t red, uint8_t green, uint8_t blue);

/* lab_image - Converts a picture to L*a*b*.
 *
 * source          The picture to read; alpha is not looked at.
 * lab             width * height records of four floats: L, a, b and one that is not written.
 * progress        Chapter 6.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_GetLab(const uint8_t* source, float* lab, int32_t width, int32_t height,
                                           uint32_t* progress);

/* lab_cube - Fills the Lab cube.
 *
 * lightness, a, b  The three tables, 16777216 floats each.
 * progress         0 at entry, then trunc(blue * 0.390625) after each of the 256 values of blue; ends at 99.
 *
 * Returns 256. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataLab(float* lightness, float* a, float* b, uint32_t* progress);

/* rgb_grid - Fills the RGB-from-Lab grid.
 *
 * red, green, blue  The three tables, 31712226 bytes each.
 * progress          0 at entry, then the step l itself, 0 to 545, after each: a count, not a percentage.
 *
 * Channels are truncated, not rounded: L = 100, a = b = 0 is not quite white. Returns 546. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataRGB(uint8_t* red, uint8_t* green, uint8_t* blue, uint32_t* progress);

/* =====================================================================================================================
 * core: probes, for hosts that want to check how they pass arguments
 * ================================================================================================================== */

/* probe_7 - Element 6 (counted from 0) plus 1000, summed as floats, truncated to an integer. Reads values[6]. */
LUMIVEX_API int32_t LUMIVEX_CALL ESSAI_Structure(const float* values);

/* probe_4 - Element 3 times element 2, as floats, truncated to an integer. Reads values[2] and values[3]. */
LUMIVEX_API int32_t LUMIVEX_CALL ESSAI_Structure1(const float* values);

/* probe_8 - Element 7 plus element 6, as floats, truncated to an integer. Reads values[6] and values[7]. */
LUMIVEX_API int32_t LUMIVEX_CALL ESSAI_Structure2(const float* values);

/* probe - Ignores its argument. Returns 30. */
LUMIVEX_API int32_t LUMIVEX_CALL BVL_Test(int32_t ignored);

/* =====================================================================================================================
 * adjust: tone tables
 *
 * Tables that the host builds once and passes to the functions below as often as it likes. They depend on nothing but
 * their formulas. The builders take no picture, and ignore the argument called unused.
 *
 * The tone table: 101 rows of 256 floats; entry row * 256 + level is an output level on the scale 0..255, with its
 * fraction. IM_Gamma and IM_NB read one row of it.
 *
 * The curve family: 256 rows of 256 bytes; entry row * 256 + level is an output level. IM_Courbes and IM_CourbesLab
 * read it.
 * ================================================================================================================== */

/* gamma_table - Fills a tone table with power curves that change by the same factor from row to row.
 *
 *     gamma = (float)(10^(row / 50) / 10)        entry = (float)((level / 255)^(1 / gamma) * 255)
 *
 * table           101 * 256 floats. Row 50 is the identity; row 0 has the exponent 10 and is the darkest, row 100 has
 *                 0.1 and is the brightest.
 *
 * Returns 25855, the index of the last entry. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataGamma(float* table, uint32_t unused);

/* gamma_table_even - Fills a tone table with power curves whose gamma grows evenly: entry = (float)((level / 255)^(1 /
 * gamma) * 255) with gamma = (float)(row / 100).
 *
 * table           101 * 256 floats. Row 100 is the identity; row 0 is 0 everywhere, level 255 included.
 *
 * Returns 25855, the index of the last entry. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataGammaSimple(float* table, uint32_t unused);

/* gamma_ramp - Fills a fine ramp with one power curve: entry i = (float)(x^e) with x = (float)(i / 10000), e =
 * (float)(1 / gamma).
 *
 * ramp            10001 floats, 0..1 for a positive gamma.
 * gamma           1 is the identity; 0 counts as 1. Negative values give 1 and more, and infinity at 0.
 *
 * Returns 10001. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataGammaFixe(float* ramp, float gamma, uint32_t unused);

/* bell_weights - Fills a bell of weights about the level 127: entry i = (float)exp((float)-((i - 127)^2 / 4000)).
 *
 * bell            256 floats. Entry 127, not 128, is 1: that is meant.
 *
 * Returns 256. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataCloche(float* bell, uint32_t unused);

/* curve_family - Fills the curve family: row m - 1, for m in 1..256, holds at each level
 *     trunc((float)(x^e) * 255), clamped to 0..255, with x = (float)(level / 255), e = (float)(m / (256 - level)).
 *
 * family          256 * 256 bytes. All rows map 0 to 0 and 255 to 255. Low rows brighten, high rows darken; the
 *                 exponent grows towards the top of the scale, and row 127 is near the identity about its middle.
 *
 * Returns 256. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataCourbe(uint8_t* family, uint32_t unused);

/* =====================================================================================================================
 * adjust: curves and levels
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * selection       Pixels that are not selected stay as they are. NULL is fine while selection_only is 0.
 *
 * Alpha is untouched.
 * ================================================================================================================== */

/* curves - Curves: each channel through its own curve, then through the master curve.
 *
 * A curve is 256 rows of the family, one for each level: with family[row][level] short for its entry,
 *     w = family[channel[v]][v]        result = family[master[w]][w]
 *
 * family          The curve family, 256 * 256 bytes.
 * master, red, green, blue  256 rows each, 0..255.
 * unused          Ignored.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Courbes(uint8_t* destination, const uint8_t* source, const uint8_t* family,
                                            const uint32_t* master, const uint32_t* red, const uint32_t* green,
                                            const uint32_t* blue, uint32_t unused, const uint8_t* selection,
                                            int32_t width, int32_t height, uint8_t selection_only);

/* lab_curves - Curves in L*a*b*, through the Lab cube and the grid.
 *
 * Lightness goes through the formula of the curve family, not through its bytes: with Lc = L clamped to 0..100 and
 * m = lightness_rows[trunc(L * 2.55)] + 1 clamped to 1..256, each step rounded to float,
 *     L' = (Lc / 100)^(m / (256 - 2.55 * Lc)) * 100, clamped to 0..100.
 * a and b go through the bytes: with k = trunc((v + 120) * 255 / 240) clamped to 0..255,
 *     v' = (float)(family[rows[k]][k] * 240 / 255 - 120).
 * The pixel becomes the grid's colour at L', a' and b', each truncated to the grid, so that even neutral curves change
 * some pixels a little.
 *
 * lightness, a, b   The Lab cube.
 * red, green, blue  The RGB-from-Lab grid.
 * family            The curve family, 256 * 256 bytes.
 * lightness_rows    256 rows; values above 255 count as 255, but 4294967295 counts as 0.
 * a_rows, b_rows    256 rows each, 0..255.
 * unused            Ignored.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_CourbesLab(uint8_t* destination, const uint8_t* source, const float* lightness,
                                               const float* a, const float* b, const uint8_t* red, const uint8_t* green,
                                               const uint8_t* blue, const uint8_t* family,
                                               const uint32_t* lightness_rows, const uint32_t* a_rows,
                                               const uint32_t* b_rows, uint32_t unused, const uint8_t* selection,
                                               int32_t width, int32_t height, uint8_t selection_only);

/* levels - Levels: stretches what lies between an input black and white, bends it by a gamma, and squeezes it between
 * an output black and white; each channel's own levels first, the master's second.
 *
 *     in = 0 below input black, 255 above input white, else trunc((v - black) * (float)(255 / (white - black)))
 *     bent = trunc((in / 255)^(1 / gamma) * 255)
 *     out = trunc(bent * (output white - output black) / 255 + output black)
 * with in, bent and out clamped to 0..255.
 *
 * gammas          256 doubles: the gamma for a grey that stands at 0..255 between black and white. The entry used is
 *                 the low byte of trunc((grey - black) / (white - black) * 255).
 * master, red, green, blue  Five numbers each: input black, grey and white, output black and white. Levels of 0..255
 *                 with black below white make sense; all others give some picture.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Niveau(uint8_t* destination, const uint8_t* source, const double* gammas,
                                           const int32_t* master, const int32_t* red, const int32_t* green,
                                           const int32_t* blue, const uint8_t* selection, int32_t width, int32_t height,
                                           uint8_t selection_only);

/* map_levels - One table for all channels: blue, green and red become table[v].
 *
 * table           256 bytes.
 *
 * Takes no selection. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_NiveauPlus(uint8_t* destination, const uint8_t* source, const uint8_t* table,
                                               int32_t width, int32_t height);

/* =====================================================================================================================
 * adjust: brightness, contrast, gamma
 *
 * A tone T gives a new level, not rounded, for each level v of blue, green and red. IM_BrillanceContraste and IM_Gamma
 * apply it in one of two ways:
 *
 * plainly         trunc(T[v]), clamped to 0..255.
 * guided          only with guided and selection_only both not 0: the tone is mixed with the source by a weight w,
 *                 trunc(T[v] * w + v * (1 - w)), clamped. w is (float)((i / 255)^1.4) with i the blue byte of the
 * weight image where its alpha is not 0, and 1 elsewhere. It is halved unless each of blue, green and red differs by
 * less than the tolerance from the source's pixel at (x, y).
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * selection       Pixels that are not selected get the source's colour. NULL is fine while selection_only is 0.
 * weights         The weight image: a picture of the same size. NULL is fine unless the call is guided.
 * tolerance       0..255; with 0 no pixel is similar.
 * x, y            The picked pixel is number y * width + x, in 64 bits: an x beyond the row's ends picks from another
 *                 row. That is meant. Where the picture has no such pixel, none is similar.
 * guided          Not 0: guided, if selection_only is not 0 too.
 * clipping_warning  Not 0: pixels that come out white are shown pure red, black ones pure blue, selected or not.
 *
 * Alpha is untouched. Size test: product.
 * ================================================================================================================== */

/* brightness_contrast - Brightness and contrast about the level 127: T[v] = (float)((v - 127) * (float)(contrast / 50)
 * + 127 + brightness).
 *
 * brightness      Any number, rounded to float; -255..255 makes sense.
 * contrast        50 is neutral, 0 is flat, 100 doubles the distance from 127, negative values invert.
 *
 * Returns 1, also when it did nothing. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_BrillanceContraste(uint8_t* destination, const uint8_t* source,
                                                       const uint8_t* selection, const uint8_t* weights,
                                                       uint8_t tolerance, int32_t x, int32_t y, int32_t width,
                                                       int32_t height, int32_t brightness, float contrast,
                                                       uint8_t selection_only, uint8_t guided,
                                                       uint8_t clipping_warning);

/* contrast_histograms - The tone of IM_BrillanceContraste for the whole picture, with histograms of what comes out.
 *
 * To each histogram the value t of each pixel, before it is clamped, adds 1 in the bin trunc(t), if that is 0..255 and
 * trunc(t + 0.5) is the same number: values with a fraction of 0.5 or more, above 255 or down from -1 are not counted.
 * That is meant. In the end all bins of all histograms are multiplied by
 *     (float)(scale * 60 / (width * height)),
 * also when there are no pixels.
 *
 * unused, unused2  Ignored.
 * mean             256 floats, added to: t is (float)((T[blue] + T[green] + T[red]) / 3).
 * red, green, blue  256 floats each, added to: t is T[v]. The host clears all four before the call.
 * scale            1 gives each bin its share of the pixels times 60.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_BrillanceContrasteH(uint8_t* destination, const uint8_t* source, uint32_t unused,
                                                        int32_t width, int32_t height, int32_t brightness,
                                                        float contrast, uint32_t unused2, float* mean, float* red,
                                                        float* green, float* blue, float scale);

/* gamma - Gamma through a tone table: T is the table's row.
 *
 * tone_table      101 rows of 256 floats, from IM_SetDataGamma or IM_SetDataGammaSimple. Only one row is read.
 * row             Clamped to 0..100 and truncated.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Gamma(uint8_t* destination, const uint8_t* source, const float* tone_table,
                                          const uint8_t* selection, const uint8_t* weights, uint8_t tolerance,
                                          int32_t x, int32_t y, int32_t width, int32_t height, float row,
                                          uint8_t selection_only, uint8_t guided, uint8_t clipping_warning);

/* =====================================================================================================================
 * adjust: histograms and equalisation
 *
 * Equalisation, in order: IM_GetTabBrillance makes a table from the picture; IM_GetEqualiser computes the equalised
 * picture and mixes it with the source; IM_Equaliser mixes the two again for every further strength, at a fraction of
 * the cost. The source, the equalised picture and the selection stay the same in between.
 * ================================================================================================================== */

/* histograms - Counts the levels of a picture.
 *
 * image           The picture to read; alpha is not looked at.
 * red, green, blue  256 counters each. They are added to, never cleared, and wrap at 2^32.
 *
 * Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_GetDataHisto(const uint8_t* image, uint32_t* red, uint32_t* green, uint32_t* blue,
                                                 int32_t width, int32_t height);

/* histograms_with_grey - Counts the levels of a picture and of its grey, (green + red + blue) / 3 in integers.
 *
 * image           The picture to read; alpha is not looked at.
 * grey, red, green, blue  256 counters each. They are added to, never cleared, and wrap at 2^32.
 * largest         Receives the largest signed value that a grey counter had after it was raised, but at least 0: the
 *                 largest count among the bins that occur in the picture.
 *
 * Size test: product; largest is set to 0 even so. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_GetDataHistoChance(const uint8_t* image, uint32_t* grey, uint32_t* red,
                                                       uint32_t* green, uint32_t* blue, int32_t width, int32_t height,
                                                       int32_t* largest);

/* equalising_table - Makes the table that equalises a picture's lightness.
 *
 * The lightness of each pixel counts in the bin trunc(L * 2.55), so that white counts in 254. Entry k is the share of
 * the pixels in the bins 0..k, times 255: each bin times (float)(255 / (width * height)), plus the one before, rounded
 * to float, and truncated in the end; at most 255.
 *
 * source          The picture to read; alpha is not looked at.
 * lightness       The L table of the Lab cube. Values outside 0..100 count in the nearest bin.
 * table           256 bytes to fill. A picture without pixels gives zeros.
 *
 * Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_GetTabBrillance(const uint8_t* source, const float* lightness, uint8_t* table,
                                                    int32_t width, int32_t height);

/* equalise - Equalises lightness and mixes the result with the source.
 *
 * The equalised colour is the grid's at L' = (float)(table[trunc(L * 2.55)] * 100 / 255) and the pixel's own a and b,
 * each truncated to the grid. The destination gets, for blue, green and red,
 *     trunc(equalised * f + source * (1 - f)), clamped to 0..255, with f = (float)(strength / 100).
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * equalised       A second picture to write: the equalised colours. It must be neither of the other two.
 * lightness, a, b   The Lab cube.
 * red, green, blue  The RGB-from-Lab grid.
 * selection       Pixels that are not selected stay as they are in both pictures. NULL is fine while selection_only is
 *                 0.
 * table           256 bytes, from IM_GetTabBrillance or the host's own.
 * strength        Percent: 0 gives the source, 100 the equalised picture; any other number extrapolates.
 * progress        Chapter 6.
 *
 * Alpha is untouched in both. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_GetEqualiser(uint8_t* destination, const uint8_t* source, uint8_t* equalised,
                                                 const float* lightness, const float* a, const float* b,
                                                 const uint8_t* red, const uint8_t* green, const uint8_t* blue,
                                                 const uint8_t* selection, int32_t width, int32_t height,
                                                 const uint8_t* table, int32_t strength, uint8_t selection_only,
                                                 uint32_t* progress);

/* mix_equalised - Mixes the source and its equalised picture, exactly as IM_GetEqualiser does.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture that was equalised.
 * equalised       The picture that IM_GetEqualiser made of it.
 * selection       Pixels that are not selected stay as they are. NULL is fine while selection_only is 0.
 * strength        Percent, as there.
 * progress        Chapter 6.
 *
 * Alpha is untouched. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Equaliser(uint8_t* destination, const uint8_t* source, const uint8_t* equalised,
                                              const uint8_t* selection, int32_t width, int32_t height, int32_t strength,
                                              uint8_t selection_only, uint32_t* progress);

/* =====================================================================================================================
 * adjust: colour balance
 * ================================================================================================================== */

/* balance - Shifts L*a*b*, through the Lab cube and the grid.
 *
 * L, a and b plus their shifts, each rounded to float and clamped to what the grid covers (0..100, -120..120), are
 * truncated to the grid. With shifts of 0 the picture changes a little all the same.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * lightness, a, b   The Lab cube.
 * red, green, blue  The RGB-from-Lab grid.
 * selection       Pixels that are not selected get the source's colour. NULL is fine while selection_only is 0.
 * lightness_shift, a_shift, b_shift  Any numbers; a grows from green to red, b from blue to yellow.
 * progress        Chapter 6.
 *
 * Alpha is untouched. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Balance(uint8_t* destination, const uint8_t* source, const float* lightness,
                                            const float* a, const float* b, const uint8_t* red, const uint8_t* green,
                                            const uint8_t* blue, const uint8_t* selection, int32_t width,
                                            int32_t height, int32_t lightness_shift, int32_t a_shift, int32_t b_shift,
                                            uint8_t selection_only, uint32_t* progress);

/* =====================================================================================================================
 * filters: blurs
 *
 * The fixed kernels weigh the square of (2k + 1) x (2k + 1) pixels round each pixel: the sum of weight * byte, divided
 * by the sum of the weights and truncated, for blue, green and red. The outer k rows and columns of the destination are
 * not written, nor is alpha. A height below 2k + 1 does nothing but set progress to 0; a smaller width writes no pixel
 * but still reports its rows. Progress counts rows of the picture, so the last value is that of row height - k - 1.
 *
 * destination     The picture to write. In place: no.
 * source          The picture to read.
 * selection       Pixels that are not selected stay as they are. NULL is fine while use_selection is 0.
 * progress        Chapter 6.
 * ================================================================================================================== */

/* box_blur - Two rounds of a box average of 2 * radius - 1 pixels a side, in place, at a cost that does not depend on
 * the radius.
 *
 * image           The picture, changed in place.
 * scratch         A second picture; its colours are overwritten, its alpha is not touched. It must not be image.
 * selection       With use_selection, only selected pixels are written, or with invert as well only the others. NULL is
 *                 fine while use_selection is 0. All pixels are read.
 * radius          1 or more, and at most half of width and of height; otherwise nothing is done.
 *
 * The last row and the last column never enter an average: with radius 1 they become copies of their neighbours, and
 * all else stays. Alpha is untouched. Returns 10 when use_selection is not 0, else 20, whatever was done. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Flou(uint8_t* image, uint8_t* scratch, const uint8_t* selection, int32_t width,
                                         int32_t height, int32_t radius, uint8_t use_selection, uint8_t invert);

/* gaussian_5 - Gaussian of 5 x 5, weights summing to 273. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                                 int32_t width, int32_t height, uint8_t use_selection,
                                                 uint32_t* progress);

/* gaussian_7 - Gaussian of 7 x 7, weights summing to 997. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien77(uint8_t* destination, const uint8_t* source,
                                                   const uint8_t* selection, int32_t width, int32_t height,
                                                   uint8_t use_selection, uint32_t* progress);

/* gaussian_9 - Gaussian of 9 x 9, weights summing to 2440. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien99(uint8_t* destination, const uint8_t* source,
                                                   const uint8_t* selection, int32_t width, int32_t height,
                                                   uint8_t use_selection, uint32_t* progress);

/* soft_7 - A flatter kernel of 7 x 7, weights summing to 140. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien77Plus(uint8_t* destination, const uint8_t* source,
                                                       const uint8_t* selection, int32_t width, int32_t height,
                                                       uint8_t use_selection, uint32_t* progress);

/* average_5 - The plain average of 5 x 5 pixels, its name notwithstanding. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussienPlus(uint8_t* destination, const uint8_t* source,
                                                     const uint8_t* selection, int32_t width, int32_t height,
                                                     uint8_t use_selection, uint32_t* progress);

/* average_5_whole - The plain average of 5 x 5 pixels, without selection or progress. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FourchetteFlou(uint8_t* destination, const uint8_t* source, int32_t width,
                                                   int32_t height);

/* lab_blur - Blurs lightness alone: the 5 x 5 kernel over L, with a and b of the pixel itself.
 *
 * lightness, a, b   The Lab cube.
 *
 * The running total is truncated after every addition, and the weight at (x - 1, y - 2) is 1 instead of 4, while the
 * sum is still divided by 273: a slight darkening that is meant. L is clamped to 0..100. With use_selection, what
 * decides on a pixel is not its own entry but that of (x' + 2, y' + 2), with (x', y') the last pixel blurred; before
 * the first, the byte selection[use_selection + 3]. So one entry of 0 ends the blur for the rest of the call. Returns
 * height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouLAB_L(uint8_t* destination, const uint8_t* source, const float* lightness,
                                              const float* a, const float* b, const uint8_t* selection, int32_t width,
                                              int32_t height, uint8_t use_selection, uint32_t* progress);

/* lab_colour_blur - Blurs colour alone: the 5 x 5 kernel of IM_FlouGaussien over a and b, with L of the pixel itself.
 *
 * lightness, a, b   The Lab cube.
 *
 * Running totals are truncated after every addition; a and b are clamped to -120..120. The selection is tested as in
 * IM_FlouLAB_L, except that the first pixel counts as selected. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouLAB_AB(uint8_t* destination, const uint8_t* source, const float* lightness,
                                               const float* a, const float* b, const uint8_t* selection, int32_t width,
                                               int32_t height, uint8_t use_selection, uint32_t* progress);

/* =====================================================================================================================
 * filters: sharpening, morphology, edges
 *
 * Sharpening works on two pictures that the host prepares: the picture itself and a softened copy of it, from any of
 * the blurs above. These functions look at no neighbours, cover the whole picture, and write every pixel from the two
 * at the same place. "In place: yes" means that the destination may be the picture itself.
 *
 * destination     The picture to write.
 * image           The picture.
 * softened        The softened copy, of the same size.
 * source          The picture to read, where there is only one.
 * selection       Pixels that are not selected stay as they are, unless the function says otherwise. NULL is fine while
 *                 use_selection is 0.
 * progress        Chapter 6, unless the function says otherwise.
 *
 * Alpha is untouched.
 * ================================================================================================================== */

/* unsharp - Unsharp mask: image + k * (image - softened), clamped to 0..255, for blue, green and red, with k = amount /
 * -15.
 *
 * amount          Truncated to whole k: -15 sharpens by the whole difference, -30 by twice that, 15 gives the softened
 *                 copy; -14..14 copy the image.
 *
 * In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Net(uint8_t* destination, const uint8_t* image, const uint8_t* softened,
                                        int32_t width, int32_t height, int32_t amount, uint32_t* progress);

/* sharpen - IM_Net under a selection. In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Accentuer(uint8_t* destination, const uint8_t* image, const uint8_t* softened,
                                              const uint8_t* selection, int32_t width, int32_t height, int32_t amount,
                                              uint8_t use_selection, uint32_t* progress);

/* high_pass - High pass: what the picture has over its softened copy, on black.
 *
 *     d = (image - softened) * (float)(amount / 10.0 + 0.5), truncated, clamped to 0..255
 *
 * amount          Tenths of a gain to which 0.5 is added: 5 shows the difference as it is, -5 nothing, less than -5
 *                 what the softened copy has over the picture.
 * invert          Not 0: on white, as 255 minus what it would be.
 * grey            Not 0: blue, green and red become the mean of their three d, truncated.
 *
 * In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_HighPass(uint8_t* destination, const uint8_t* image, const uint8_t* softened,
                                             int32_t width, int32_t height, int32_t amount, uint8_t invert,
                                             uint8_t grey, uint32_t* progress);

/* shift - Shift of all channels: v + offset, clamped to 0..255. IM_Brillance with progress, and without the product
 * test.
 *
 * offset          Any number; -255..255 makes a difference.
 *
 * In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Decal(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height,
                                          int32_t offset, uint32_t* progress);

/* detail - Detail: new lightness through a curve that the local contrast chooses from; a and b stay.
 *
 * The excess of image over softened, 0 where it has none, is stretched by about 1.3 and lifted by 122 in each channel.
 * With Li the lightness of that colour, and LA that of the image's own,
 *     L = curve[trunc(Li * 200)] * LA                        where Li < 50,
 *     L = 100 - curve[trunc((100 - Li) * 200)] * (100 - LA)  elsewhere,
 * in doubles, rounded to float, truncated to a whole number and clamped to 0..100. The pixel becomes the grid's entry
 * for L, a and b, both clamped to -120..120.
 *
 * curve           10001 floats, factors of lightness: 1 everywhere changes nothing but the rounding. Indices beyond the
 *                 table, from cubes that are not one, take its nearest entry.
 * lightness, a, b   The Lab cube.
 * red, green, blue  The RGB-from-Lab grid.
 * selection       Pixels that are not selected get the image's colour.
 * unused          Ignored.
 *
 * In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Detail(uint8_t* destination, const uint8_t* image, const uint8_t* softened,
                                           const float* curve, const float* lightness, const float* a, const float* b,
                                           const uint8_t* red, const uint8_t* green, const uint8_t* blue,
                                           const uint8_t* selection, int32_t width, int32_t height, uint32_t unused,
                                           uint8_t use_selection, uint32_t* progress);

/* threshold_grey - Threshold: black where (blue + green + red) / 3, truncated, is below the threshold, white elsewhere.
 *
 * threshold       Any number: 0 makes all white, 256 all black.
 *
 * The outer two rows and columns are not written although no neighbour is looked at; a height below 5 does nothing but
 * set progress to 0. In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Seuil(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                          int32_t width, int32_t height, int32_t threshold, uint8_t use_selection,
                                          uint32_t* progress);

/* erode - Erosion by the four nearest neighbours: blue, green and red lose all that the largest neighbour has over
 * them, and become 0 where that is more than they have.
 *
 * The outer row and column on each side are not written; a height below 3 does nothing but set progress to 0. In place:
 * no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_ErosionRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                               int32_t width, int32_t height, uint8_t use_selection,
                                               uint32_t* progress);

/* dilate - Dilation by the four nearest neighbours: blue, green and red gain half of what the largest neighbour has
 * over them, truncated. Half, where IM_ErosionRGB takes all: that is meant. Borders as there. In place: no. Returns
 * height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_DilatationRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                                  int32_t width, int32_t height, uint8_t use_selection,
                                                  uint32_t* progress);

/* erode_lab - Erosion of the two colour axes, with the lightness that the host gives.
 *
 * For a, and likewise for b, with c = trunc(a of the pixel) and m the least of -120 and trunc(c - a) of its four
 * nearest neighbours, the new a is c + m, clamped to -120..120. The least starts at -120, not at 0, so that both axes
 * end near -120: that is meant. The colour of lightness, new a and new b is computed, not looked up.
 *
 * lightness       width * height records of four floats, of which the first is L: what IM_GetLab writes.
 * a, b            Two planes of the Lab cube.
 *
 * Borders as for IM_ErosionRGB. In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_ErosionLAB_AB(uint8_t* destination, const uint8_t* source, const float* lightness,
                                                  const float* a, const float* b, const uint8_t* selection,
                                                  int32_t width, int32_t height, uint8_t use_selection,
                                                  uint32_t* progress);

/* edge_map - Edge map in two colours, by the gradient of 3 x 3 pixels (Sobel): with gx and gy each the mean of the
 * gradients of blue, green and red,
 *     sqrt(gx * gx + gy * gy) <= threshold gives colour 1, else colour 2.
 *
 * red1 ... blue2  The two colours.
 * threshold       0..255; edges of full contrast have a magnitude of up to about 1140.
 * invert          Not 0: exchanges the colours.
 * progress        0 at entry, then row * (100 / height), divided in integers, after each row: always 0 for pictures of
 *                 more than 100 rows.
 * stop            A byte that is read after each row, and may be written by another thread: when it is not 0 the call
 *                 ends. Not NULL.
 *
 * Borders as for IM_ErosionRGB. In place: no. Returns 1, whatever was done. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Contour(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                            int32_t width, int32_t height, uint8_t red1, uint8_t green1, uint8_t blue1,
                                            uint8_t red2, uint8_t green2, uint8_t blue2, uint8_t threshold,
                                            uint8_t invert, uint8_t use_selection, uint32_t* progress,
                                            const uint8_t* stop);

/* =====================================================================================================================
 * mask: mask pictures and outlines
 *
 * A mask picture is a picture of which one byte a pixel counts: 255 is inside, 0 outside. That is byte 0, in the place
 * of blue, unless a function says red, which is byte 2. What asks for "inside" wants 255 exactly; values between come
 * from softened masks and are treated as each function says. Other bytes of a mask are not looked at, and stay as they
 * are where a function writes a mask.
 *
 * mask            The mask picture.
 * image           The picture that is written.
 * red, green, blue  A colour, 0..255 each.
 *
 * Rectangles are four numbers in pixels, left, right, top, bottom, and lie within the picture: they are not clipped. In
 * an inclusive one the last column x1 and the last row y1 belong to it, in a half-open one they do not. A rectangle
 * without columns or rows is not processed. Functions marked "height is only returned" do not look at it otherwise.
 *
 * Only the bytes named are written. No function here takes a selection or progress.
 * ================================================================================================================== */

/* mask_from_red - Adds the red pixels of a picture to a mask, or takes them from it: byte 0 of the mask becomes 255 or
 * 0 where the picture's red is 255, and stays elsewhere.
 *
 * source          The picture with the red strokes.
 * value           Not 0 adds, 0 takes away.
 *
 * In place: yes. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Image2Mask(const uint8_t* source, uint8_t* mask, int32_t width, int32_t height,
                                               uint8_t value);

/* mask_show - Shows a selection: alpha becomes 255 where the mask is 255, and 80 elsewhere, dimmed rather than removed.
 *
 * In place: yes. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Mask2Transparent(const uint8_t* mask, uint8_t* image, int32_t width,
                                                     int32_t height);

/* mask_show_clip - DS_Mask2Transparent in an inclusive rectangle.
 *
 * height          Ignored.
 *
 * In place: yes. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Mask2TransparentClip(const uint8_t* mask, uint8_t* image, int32_t width,
                                                         int32_t height, int32_t x0, int32_t x1, int32_t y0,
                                                         int32_t y1);

/* mask_cut - Cuts away what a mask of another size selects: alpha becomes 0 at (x, y) where the mask is 255 at
 *     (trunc(x * horizontal_scale), trunc(y * vertical_scale)),
 * with exact products, and stays elsewhere. The reverse of DS_Mask2Transparent.
 *
 * mask            mask_width * 4 bytes a row, with all the rows that the scales lead to.
 * mask_height     Ignored.
 * horizontal_scale, vertical_scale  Normally mask_width / width and mask_height / height. The mask's pixel is number
 *                 row * mask_width + column: a column beyond the last reads on in the row after, one below 0 in the
 *                 row before. That is meant. Pixels that lead before the mask, or to no 32-bit number, stay as they
 *                 are.
 *
 * In place: yes. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Mask2TransparentAppliquer(const uint8_t* mask, uint8_t* image, int32_t width,
                                                              int32_t height, int32_t mask_width, int32_t mask_height,
                                                              float horizontal_scale, float vertical_scale);

/* select_colour - Selects by colour: turns the picture itself into a mask picture, 255 0 0 where each channel v of a
 * pixel fulfils
 *     reference - tolerance < v < reference + tolerance,
 * 0 0 0 elsewhere, alpha 255 everywhere; and gives the bounds of what matched. A tolerance of 0 matches nothing.
 *
 * image           The picture, changed in place.
 * red, green, blue  The reference.
 * left, right, top, bottom  Where the least and largest x and y of the matches are written; not NULL. They start at
 *                 width - 2, 0, height - 2, 0, and what comes out below 1 as the least is written as 1: so it is meant.
 *                 A left greater than right, or a top greater than bottom, says that nothing matched. They are written
 *                 also for a picture without pixels.
 *
 * Returns the tolerance. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_EcartCouleur(uint8_t* image, int32_t width, int32_t height, uint8_t red,
                                                 uint8_t green, uint8_t blue, uint8_t tolerance, int32_t* left,
                                                 int32_t* right, int32_t* top, int32_t* bottom);

/* mask_outline - The outline of a mask, just inside it. Where the mask is 255, a pixel with all four nearest neighbours
 * in the picture and none of them 0 becomes 0 0 0 0, any other takes the colour, with alpha 255. Where the mask is not
 * 255, alpha becomes 0 and the colour stays. A neighbour counts from 1 on: that is meant.
 *
 * destination     The picture of the outline.
 *
 * In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Mask2Border(const uint8_t* mask, uint8_t* destination, int32_t width,
                                                int32_t height, uint8_t red, uint8_t green, uint8_t blue);

/* mask_outline_clip - DS_Mask2Border in an inclusive rectangle. Neighbours are looked at beyond the rectangle.
 *
 * height          Below 1 nothing is done.
 *
 * In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Mask2BorderClip(const uint8_t* mask, uint8_t* destination, int32_t width,
                                                    int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1,
                                                    uint8_t red, uint8_t green, uint8_t blue);

/* red_mask_outline - DS_Mask2Border with the mask in red. In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL LA_Data2Border(const uint8_t* mask, uint8_t* destination, int32_t width,
                                                int32_t height, uint8_t red, uint8_t green, uint8_t blue);

/* red_mask_outline_outside - The outline of a mask in red, just outside it. A pixel of 0 takes the colour, with alpha
 * 255, if one of its four nearest neighbours is 255, and becomes 0 0 0 0 if none is. For others alpha becomes 0 and the
 * colour stays. In the picture's first and last column and row it is different: there a pixel takes the colour if it is
 * 255 itself or its neighbour toward the middle is, and is otherwise left with alpha 0. The corners belong to the
 * columns.
 *
 * destination     The picture of the outline.
 * flags           width * height bytes: 255 is written where the mask is 255, nothing elsewhere.
 *
 * In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL LA_Data2BorderOut(const uint8_t* mask, uint8_t* destination, uint8_t* flags,
                                                   int32_t width, int32_t height, uint8_t red, uint8_t green,
                                                   uint8_t blue);

/* mask_grow - Grows a mask by a pixel: for each pixel of a half-open rectangle that is not 0 in the source, the eight
 * round it become 255 in the destination. The pixel itself is not written: the host passes a copy of the source as
 * destination.
 *
 * destination     The mask to write, byte 0.
 * source          The mask to read, byte 0.
 * height          Only returned.
 * x0, x1, y0, y1  At least one pixel inside the picture's edges, as the neighbours are written.
 *
 * In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Dilatation_iData(uint8_t* destination, const uint8_t* source, int32_t width,
                                                     int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* mask_shrink - Shrinks a mask by a pixel: DS_Dilatation_iData with the eight round each pixel of 0 becoming 0. In
 * place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Erosion_iData(uint8_t* destination, const uint8_t* source, int32_t width,
                                                  int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* red_mask_grow - DS_Dilatation_iData with the masks in red. In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_Dilatation_Rouge(uint8_t* destination, const uint8_t* source, int32_t width,
                                                     int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* soft_mask_grow - Grows a soft mask: blue, green and red move half way to the largest of the four nearest neighbours,
 * if that is larger, truncated. The outer row and column on each side are not written. In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_DilatationReduc(uint8_t* destination, const uint8_t* source, int32_t width,
                                                    int32_t height);

/* soft_mask_shrink - Shrinks a soft mask: blue, green and red move half way to the least of the four nearest
 * neighbours, truncated toward themselves. What is darker than all four gets lighter: that is meant. Borders as for
 * DS_DilatationReduc. In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_ErosionReduc(uint8_t* destination, const uint8_t* source, int32_t width,
                                                 int32_t height);

/* mask_soften - Softens a mask: blue, green and red become the weighted average of 5 x 5 pixels, truncated, with these
 * weights of 159:
 *     2  4  5  4  2
 *     2  9 12  9  4
 *     4 12 15 12  5
 *     5  9 12  9  4
 *     4  4  5  4  2
 * The first column stands a row lower than the last: that is meant. The outer two rows and columns on each side are not
 * written. In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_FlouGaussienReduc(uint8_t* destination, const uint8_t* source, int32_t width,
                                                      int32_t height);

/* mask_contrast - Hardens a mask: blue, green and red become (v - 128) * 1.5 + 128, truncated, clamped to 0..255.
 *
 * image           The picture, changed in place.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_ContrasterReduc(uint8_t* image, int32_t width, int32_t height);

/* mask_invert - Inverts a mask, in place: byte 0 becomes 255 - v. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_InverserMask(uint8_t* mask, int32_t width, int32_t height);

/* opaque - Makes a picture opaque, in place: alpha becomes 255. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_EffacerTransparent(uint8_t* image, int32_t width, int32_t height);

/* invert_alpha - Exchanges opaque and transparent, in place: alpha becomes 255 - alpha. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_InverserTransparent(uint8_t* image, int32_t width, int32_t height);

/* fill - Fills a picture with a colour, in place; alpha stays. Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_SetColorData(uint8_t* image, int32_t width, int32_t height, uint8_t red,
                                                 uint8_t green, uint8_t blue);

/* take_colours - Copies blue, green and red, and not alpha, its name notwithstanding.
 *
 * source          The picture to read.
 * destination     The picture to write. In place: yes.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_SetAlphaData(const uint8_t* source, uint8_t* destination, int32_t width,
                                                 int32_t height);

/* take_alpha - Copies alpha, and not the colour.
 *
 * source          The picture to read.
 * destination     The picture to write. In place: yes.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_TransfertAlpha(const uint8_t* source, uint8_t* destination, int32_t width,
                                                   int32_t height);

/* fill_outside - Copies blue, green and red where the alpha of a third picture is 0.
 *
 * key             The picture whose alpha decides.
 * source          The picture to read.
 * destination     The picture to write. In place: yes; it may be the key too.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DS_TransfertDataSelected(const uint8_t* key, const uint8_t* source,
                                                          uint8_t* destination, int32_t width, int32_t height);

/* =====================================================================================================================
 * mask: transparency and colour keys
 *
 * The PA_ functions paint along a stroke, which the host draws as a mask picture: they change the pixels of an
 * inclusive rectangle where the stroke's byte 0 is 255 and the test lets them. Rectangles as above.
 *
 * stroke          The mask picture of the stroke.
 * picture         The picture, changed in place.
 * test            A picture whose alpha restricts the stroke; it may be the picture itself. NULL is fine while use_test
 *                 is 0.
 * use_test        Not 0: only pixels whose alpha in `test` is the wanted value; 1..254 never is.
 * want_transparent  Which value is wanted: 0 if this byte is not 0, else 255.
 * ================================================================================================================== */

/* paint_alpha - Paints transparency: alpha becomes the given value.
 *
 * height          Ignored.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL PA_Transparent(const uint8_t* stroke, uint8_t* picture, const uint8_t* test,
                                                uint8_t alpha, int32_t width, int32_t height, int32_t x0, int32_t x1,
                                                int32_t y0, int32_t y1, uint8_t use_test, uint8_t want_transparent);

/* paint_opaque - Paints opacity: PA_Transparent with alpha 255.
 *
 * height          Ignored.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL PA_Opaque(const uint8_t* stroke, uint8_t* picture, const uint8_t* test, int32_t width,
                                           int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1,
                                           uint8_t use_test, uint8_t want_transparent);

/* clone - Clones an offset copy of a picture under a stroke. With a = (float)(opacity / 255.0) and b = (float)(1 - a),
 * blue, green and red become
 *     clone(x - offset_x, y - offset_y) * a + b * picture(x, y),
 * truncated, and alpha 255, where that place of the clone source lies within width and height, and the clone source's
 * alpha at (x, y) itself, not at the place copied from, is 255: that is meant.
 *
 * clone           The picture to copy from. It must not be the picture that is written.
 * opacity         0..255.
 * offset_x, offset_y  Pixels; any number.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL PA_Copie(const uint8_t* stroke, const uint8_t* clone, uint8_t* picture,
                                          const uint8_t* test, uint8_t opacity, int32_t width, int32_t height,
                                          int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t use_test,
                                          uint8_t want_transparent, int32_t offset_x, int32_t offset_y);

/* alpha_from_mask - Alpha from grey, in a half-open rectangle: alpha becomes byte 0 of the grey picture.
 *
 * picture         The picture whose alpha is written. In place: yes.
 * grey            The grey picture: black becomes transparent, white opaque.
 * height          Only returned.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Black2Trans(uint8_t* picture, const uint8_t* grey, int32_t width, int32_t height,
                                                int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* grey_from_alpha - Shows alpha as grey: blue, green and red become the source's alpha, and alpha 255.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Trans2Black(uint8_t* destination, const uint8_t* source, int32_t width,
                                                int32_t height);

/* white_to_alpha - Makes white transparent, in place: alpha becomes 0 where blue, green and red are all 255. Returns
 * height. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_White2Trans(uint8_t* picture, int32_t width, int32_t height);

/* set_alpha - Gives all pixels one alpha, in place. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_SetTransparence(uint8_t* picture, int32_t width, int32_t height, uint8_t alpha);

/* alpha_from_grey - A copy of a picture with alpha from a guide: m = (blue + green + red) / 3 of the guide, in
 * integers.
 *
 * destination     The picture to write, all four bytes. In place: yes.
 * source          The picture to read.
 * guide           Grey levels: black becomes transparent, white opaque.
 * selection       Chapter 5. Pixels that are not selected keep the source's alpha.
 * offset          Added to m, up to 255 at most, while selection_only is 0; ignored under a selection: that is meant.
 * invert          Not 0: 255 - m instead of m.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_TransparenceMask(uint8_t* destination, const uint8_t* source, const uint8_t* guide,
                                                     const uint8_t* selection, int32_t width, int32_t height,
                                                     uint8_t offset, uint8_t invert, uint8_t selection_only);

/* restore - Restores a picture through a guide, in a half-open rectangle. With w = (float)(guide / 255.0) and v =
 * (float)(1 - w), each of the four bytes becomes
 *     root * v + picture * w, truncated.
 *
 * picture         The picture, changed in place.
 * root            The picture to restore from.
 * guide           Byte 0: 255 keeps the picture, 0 restores the root, alpha included.
 * height          Only returned.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Root2Trans(uint8_t* picture, const uint8_t* root, const uint8_t* guide,
                                               int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0,
                                               int32_t y1);

/* =====================================================================================================================
 * mask: transparency gradients
 *
 * Alpha becomes an entry of a fade profile, by the position t along the fade: rounded to float, limited to 0..1, the
 * entry is 255 minus the least whole number not below t * 255. So t = 0 takes entry 255, t = 0.5 entry 127, t = 1 entry
 * 0. A t up to about 2^-65 counts as 0; not-a-number takes entry 255.
 *
 * image           The picture whose alpha is written; its colours stay.
 * selection       Always read, and may be the picture itself: pixels of alpha 0 stay as they are.
 * profile         256 bytes: the opacity at each position, entry 255 at the start of the fade.
 * ================================================================================================================== */

/* fade_linear - A fade along a straight line, to one side of it. The start line is y = (x - x0) * m + y0; with
 *     A = (float)((y0 / m - x0) / 2)        B = (float)((m * x0 - y0) / 2)
 *     t = (x + A) * gx + (y + B) * gy       where (x - x0) * m + y0 <= y, and 0 elsewhere,
 * in extended precision (64 bits) after x and y have been rounded to float.
 *
 * other_side      Not 0: -t where (x - x0) * m + y0 >= y, and 0 elsewhere.
 * x0, y0          A point on the start line, in pixels.
 * m               Its slope, dy by dx. Neither 0 nor infinite for a useful fade: hosts tilt such lines a little.
 * gx, gy          Change of t by pixel, at right angles to the line.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL TRA_ImageLineaire(uint8_t* image, const uint8_t* selection, const uint8_t* profile,
                                                   uint8_t other_side, int32_t width, int32_t height, float x0,
                                                   float y0, float m, float gx, float gy);

/* fade_radial - A fade round a centre. With dy2 = (y - centre_y)^2, squared in extended precision and rounded to
 * double,
 *     t = (float)((float)sqrt((float)((x - centre_x)^2 + dy2)) / radius).
 *
 * centre_x, centre_y  In pixels, inside the picture or not.
 * radius          Pixels; from there on entry 0 is taken.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL TRA_ImageRadial(uint8_t* image, const uint8_t* selection, const uint8_t* profile,
                                                 int32_t width, int32_t height, float centre_x, float centre_y,
                                                 float radius);

/* =====================================================================================================================
 * retouch: blends through a guide
 *
 * Retouching paints into a guide, not into the picture. The host draws each dab of a stroke, of whatever shape and
 * softness, as grey levels into a picture of the picture's size, and then calls a function here for the rectangle that
 * the dab touched. It makes every pixel of that anew from pictures that stay as they are during a stroke: what a pixel
 * shows depends on the guide there and on nothing that was shown before, so dabs that overlap do not add up.
 *
 * The tone of a guide's pixel is (float)((blue + green + red) / 3.0); its whole tone is the same in integers. For blue,
 * green and red, with a weight w that is a float, the functions give
 *     target * w + base * (1 - w),
 * truncated and clamped to 0..255.
 *
 * destination     The picture to write. It must not be one of the others: they are read again for the next dab.
 * guide           The guide. Each function says what its tones mean.
 * height          Only returned.
 * x0, x1, y0, y1  Columns x0 to x1 - 1 and rows y0 to y1 - 1, within the picture: they are not clipped.
 * red, green, blue  A colour, 0..255 each.
 * selection       Chapter 5. Pixels that are not selected get the source's colour.
 *
 * Alpha is untouched, except by RE_CouleurMask and RE_TextureMask, which copy it from the source. All return height.
 * ================================================================================================================== */

/* retouch_tone - Lightens and darkens: toward one prepared picture where the guide is lighter than 128, and toward
 * another where it is darker. Above 128, w = (float)((tone - 128) / 128) of the highlights; up to 128, w = (float)(1 -
 * tone / 128) of the shadows. A black guide shows the shadows alone, but a white one only 127 / 128 of the highlights:
 * that is meant.
 *
 * base            The picture shown where the guide's tone is 128.
 * highlight       The lighter picture.
 * shadow          The darker picture. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Pinceau(uint8_t* destination, const uint8_t* guide, const uint8_t* base,
                                            const uint8_t* highlight, const uint8_t* shadow, int32_t width,
                                            int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* retouch_filter - Filters where the guide is light: w = (float)((whole tone + bias) / 255.0), and here 1 - w is
 * rounded to float too.
 *
 * filtered        The filtered picture: what a white guide shows.
 * base            The unfiltered picture: what a black guide shows.
 * bias            Added to the tone, in integers that wrap. 0 for none; what goes beyond 0..255 extrapolates. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_MaskFiltrePinceau(uint8_t* destination, const uint8_t* filtered,
                                                      const uint8_t* base, const uint8_t* guide, int32_t width,
                                                      int32_t height, int32_t bias, int32_t x0, int32_t x1, int32_t y0,
                                                      int32_t y1);

/* retouch_colour - Paints a colour where the guide is dark, and spares grey highlights or shadows: w = (float)(1 - tone
 * / 255.0), but 0 where the reference is grey (blue, green and red the same) and beyond the threshold.
 *
 * source          The picture to paint over.
 * reference       The picture that is looked at for greys, often the source itself.
 * threshold       A grey of this level is never spared.
 * protect_above   Not 0: lighter greys are spared; 0: darker ones. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_PinceauFusionNB(uint8_t* destination, const uint8_t* guide, const uint8_t* source,
                                                    const uint8_t* reference, const uint8_t* selection, int32_t width,
                                                    int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1,
                                                    uint8_t red, uint8_t green, uint8_t blue, uint8_t threshold,
                                                    uint8_t protect_above, uint8_t selection_only);

/* retouch_tint - Paints a colour where the guide is dark, as far as a reference is light: with the reference's whole
 * tone k,
 *     w = (float)((float)(1 - tone / 255.0) * (float)(k / 255.0)),
 * and 0 where the guide is white.
 *
 * source          The picture to paint over.
 * reference       The picture whose lightness weighs, often the source itself.
 * unused          Ignored.
 * invert          Not 0: as far as the reference is dark, 255 - k instead of k. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_PinceauFusionCouleur(uint8_t* destination, const uint8_t* guide,
                                                         const uint8_t* source, const uint8_t* reference,
                                                         const uint8_t* selection, int32_t width, int32_t height,
                                                         int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t red,
                                                         uint8_t green, uint8_t blue, uint32_t unused, uint8_t invert,
                                                         uint8_t selection_only);

/* wash - Washes a whole picture with a colour where the guide is light: with k the whole tone less the threshold, 0 at
 * least, w = (float)(k / 255.0), and here 1 - w is rounded to float too. The threshold lowers all weights alike, so
 * that a white guide does not show the colour alone: that is meant.
 *
 * destination     The picture to write, alpha included. In place: yes.
 * source          The picture to wash. Its alpha is copied, selected or not.
 * threshold       0..255.
 * invert          Not 0: 255 less the whole tone instead of it. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_CouleurMask(uint8_t* destination, const uint8_t* source, const uint8_t* guide,
                                                const uint8_t* selection, int32_t width, int32_t height,
                                                uint8_t threshold, uint8_t red, uint8_t green, uint8_t blue,
                                                uint8_t invert, uint8_t selection_only);

/* texture_wash - RE_CouleurMask with a texture, a picture of the same size, in place of the colour. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_TextureMask(uint8_t* destination, const uint8_t* source, const uint8_t* texture,
                                                const uint8_t* guide, const uint8_t* selection, int32_t width,
                                                int32_t height, uint8_t threshold, uint8_t invert,
                                                uint8_t selection_only);

/* layers - Splits a picture into grey pictures of its channels, to use as guides: blue, green and red of the layers
 * become the source's red, green, blue, and (red + green + blue) / 3 in integers; alpha 255. Border: the outermost
 * pixels of the layers are not written.
 *
 * source          The picture to read.
 * red, green, blue, grey  The pictures to write. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Layers(const uint8_t* source, uint8_t* red, uint8_t* green, uint8_t* blue,
                                           uint8_t* grey, int32_t width, int32_t height);

/* =====================================================================================================================
 * retouch: growing and shrinking what was painted
 *
 * Each pixel of a half-open rectangle that meets a condition gives a value to its eight neighbours in the destination,
 * and not to itself: the host passes a copy of what is shown now.
 *
 * destination     The picture to write. It must not be one of the others.
 * source          The picture in which the condition is looked for.
 * height          Only returned.
 * x0, x1, y0, y1  Columns x0 to x1 - 1 and rows y0 to y1 - 1, with a pixel of the picture to spare on every side.
 * unused          Ignored.
 *
 * RE_Dilatation_Transparent and RE_Erosion_Transparent write alpha alone, the others blue, green and red alone. All
 * return height.
 * ================================================================================================================== */

/* opaque_grow - Grows what is opaque: alpha 255 gives alpha 255. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Dilatation_Transparent(uint8_t* destination, const uint8_t* source, int32_t width,
                                                           int32_t height, int32_t x0, int32_t x1, int32_t y0,
                                                           int32_t y1);

/* opaque_shrink - Shrinks what is opaque: alpha below 255 gives alpha 0. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Erosion_Transparent(uint8_t* destination, const uint8_t* source, int32_t width,
                                                        int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* colour_grow - Grows what has a colour exactly: it gives that colour. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Dilatation_Couleur(uint8_t* destination, const uint8_t* source, int32_t unused,
                                                       int32_t width, int32_t height, int32_t x0, int32_t x1,
                                                       int32_t y0, int32_t y1, uint8_t red, uint8_t green,
                                                       uint8_t blue);

/* colour_shrink - Shrinks what has a colour exactly: any other colour brings the unpainted picture back at the
 * neighbours.
 *
 * unpainted       The picture before it was painted. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Erosion_Couleur(uint8_t* destination, const uint8_t* source,
                                                    const uint8_t* unpainted, int32_t width, int32_t height, int32_t x0,
                                                    int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green,
                                                    uint8_t blue);

/* texture_grow - Grows what shows a texture: where the source's colour is the texture's, the neighbours get the
 * texture's colours at their own places.
 *
 * texture         The texture, a picture of the same size. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Dilatation_Texture(uint8_t* destination, const uint8_t* source, int32_t unused,
                                                       const uint8_t* texture, int32_t width, int32_t height,
                                                       int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* texture_shrink - Shrinks what shows a texture: where the source's colour is not the texture's, the unpainted picture
 * comes back at the neighbours.
 *
 * unpainted       The picture before it was painted.
 * texture         The texture, a picture of the same size. */
LUMIVEX_API int32_t LUMIVEX_CALL RE_Erosion_Texture(uint8_t* destination, const uint8_t* source,
                                                    const uint8_t* unpainted, const uint8_t* texture, int32_t width,
                                                    int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1);

/* =====================================================================================================================
 * brush: painting by dabs
 *
 * A call stamps one round dab. It visits the pixels (cx + dx, cy + dy) with dx from dx0 to dx1 and dy from dy0 to dy1,
 * both ends included, and paints those inside the circle, dx * dx + dy * dy < r * r, that are selected. Nothing else is
 * read or written. For each, b is byte 0 of the brush at (r + dx, r + dy), and profile[b] is how much of what is there
 * stays, or how much is covered: each function says which. With keep, a float, as each says,
 *     blue, green, red = old * keep + colour * (1 - keep)
 *     raised alpha     = profile[b] * (float)(100 * opacity) + alpha,
 * truncated and clamped to 0..255.
 *
 * picture         The picture, changed in place.
 * brush           A picture of 2r x 2r pixels of which only byte 0 counts.
 * selection       Only pixels of alpha 255 are painted, unlike in chapter 5. NULL is fine while selection_only is 0.
 * profile         256 floats, normally 0..1. Any number is taken.
 * opacity         Normally 0..1. Any number is taken.
 * width           Of the picture; its height is not needed.
 * cx, cy          The centre of the dab, in pixels of the picture.
 * dx0, dy0, dx1, dy1  Left, top, right, bottom, from the centre. The host clips them, so that what lies inside the
 *                 circle lies in the picture; they may reach beyond the circle.
 * r               The radius in pixels, up to 32767. Below 1 nothing is painted; 1 paints the centre alone. From 46341
 *                 on r * r wraps to a signed 32-bit number: if that is below 1, nothing is painted, and the brush is
 *                 not read.
 * red, green, blue  The colour of the brush, 0..255 each.
 *
 * All return 1, but for BR_PeintureOld.
 * ================================================================================================================== */

/* paint - Paints a colour onto what is there: keep = (float)(profile[b] * opacity + (1 - opacity)), and alpha is
 * raised. Dabs add up. Alpha rises with every dab, and more where more of the old colour stays: that is meant. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_Couleur(uint8_t* picture, const uint8_t* brush, const uint8_t* selection,
                                            const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy,
                                            int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                                            uint8_t green, uint8_t blue, uint8_t selection_only);

/* paint_strongest - Paints a colour so that the strongest dab of a stroke wins, and dabs do not add up: as BR_Couleur,
 * but with the least b of the stroke so far, onto the picture as it was before the stroke; alpha becomes 255.
 *
 * root            The picture when the stroke began.
 * least           A picture whose byte 0 keeps the least b at each place. The host sets it to 255 when a stroke begins.
 *                 Its other bytes are left alone. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_CouleurRoot(uint8_t* picture, const uint8_t* root, uint8_t* least,
                                                const uint8_t* brush, const uint8_t* selection, const float* profile,
                                                float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0,
                                                int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                                                uint8_t green, uint8_t blue, uint8_t selection_only);

/* paint_background - Paints a colour as BR_Couleur, but where alpha is 0 onto a background; alpha becomes 255.
 *
 * background      The picture that shows through what is transparent. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_CouleurFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush,
                                                const uint8_t* selection, const float* profile, float opacity,
                                                int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                                                int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                                                uint8_t blue, uint8_t selection_only);

/* grain - Paints a grain: the profile covers, keep = (float)(1 - profile[b] * opacity). Alpha is untouched.
 *
 * touched         A picture whose byte 0 becomes 1 at every painted pixel. Its other bytes are left alone. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_Grain(uint8_t* picture, const uint8_t* brush, const uint8_t* selection,
                                          uint8_t* touched, const float* profile, float opacity, int32_t width,
                                          int32_t cx, int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1,
                                          int32_t r, uint8_t red, uint8_t green, uint8_t blue, uint8_t selection_only);

/* grain_background - Paints a grain as BR_Grain, but where alpha is 0 onto a background; alpha is raised everywhere.
 *
 * background      The picture that shows through what is transparent.
 * touched         As for BR_Grain. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_GrainFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush,
                                              const uint8_t* selection, uint8_t* touched, const float* profile,
                                              float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0,
                                              int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                                              uint8_t green, uint8_t blue, uint8_t selection_only);

/* knife - Paints with a knife: the profile covers, keep = (float)(1 - profile[b] * opacity / divisor), and colours are
 * rounded to the nearest, unlike with the other brushes: trunc(old * keep + 0.5 + colour * (1 - keep)). Where alpha is
 * 0 the colour is laid on as it is. Alpha is raised, by profile[b] * (float)(100 * opacity / divisor).
 *
 * touched         As for BR_Grain.
 * divisor         Thins the paint. Any number is taken. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_Couteau(uint8_t* picture, const uint8_t* brush, const uint8_t* selection,
                                            uint8_t* touched, const float* profile, float opacity, float divisor,
                                            int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                                            int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                                            uint8_t blue, uint8_t selection_only);

/* knife_background - Paints with a knife as BR_Couteau, but where alpha is 0 onto a background; alpha becomes 255.
 *
 * background      The picture that shows through what is transparent.
 * touched         As for BR_Grain.
 * divisor         Thins the paint. Any number is taken. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_CouteauFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush,
                                                const uint8_t* selection, uint8_t* touched, const float* profile,
                                                float opacity, float divisor, int32_t width, int32_t cx, int32_t cy,
                                                int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r,
                                                uint8_t red, uint8_t green, uint8_t blue, uint8_t selection_only);

/* erase - Erases: paints with another picture as BR_Couleur does with a colour, and copies its alpha.
 *
 * restore         The picture to bring back.
 * unused_14, unused_15, unused_16  Ignored.
 * disable         Not 0: nothing is done. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_Gomme(uint8_t* picture, const uint8_t* restore, const uint8_t* brush,
                                          const uint8_t* selection, const float* profile, float opacity, int32_t width,
                                          int32_t cx, int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1,
                                          int32_t unused_14, int32_t unused_15, int32_t unused_16, int32_t r,
                                          uint8_t selection_only, uint8_t disable);

/* paint_fade - Fades or restores alpha, and leaves colours alone. b counts without a profile, and in opposite senses: a
 * dab fades most where b is 0, and restores most where it is 255. Alpha becomes alpha * f, truncated and clamped to
 * 0..255, with
 *     fading      f = (float)(b / 255.0 * (opacity * 0.1) + 0.9 + (1 - opacity) * 0.1)
 *     restoring   f = (float)(b / 255.0 * (opacity * 0.15) + 1)      where alpha is above 20, elsewhere alpha is 30.
 *
 * unused          Ignored.
 * restore         0 fades, anything else restores. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_Transparent(uint8_t* picture, const uint8_t* brush, const uint8_t* selection,
                                                int32_t unused, float opacity, int32_t width, int32_t cx, int32_t cy,
                                                int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r,
                                                uint8_t selection_only, uint8_t restore);

/* paint_pattern - Paints a whole picture through a brush that is looked up by columns and rows: keep is profile[b],
 * with b byte 0 of the brush at (columns[x], rows[y]). Alpha is untouched.
 *
 * brush           A picture as wide as the picture, and as high as the entries of `rows` ask for.
 * columns         width entries: the column of the brush for each column of the picture.
 * rows            height entries: the row of the brush for each row of the picture.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL BR_PeintureOld(uint8_t* picture, const uint8_t* brush, const float* profile,
                                                const uint32_t* columns, const uint32_t* rows, int32_t width,
                                                int32_t height, uint8_t red, uint8_t green, uint8_t blue);

/* =====================================================================================================================
 * seam: content-aware resizing
 *
 * A vertical seam is one pixel of each row, those of neighbouring rows at most one column apart. Narrowing a picture by
 * its cheapest seams, or doubling them, keeps what stands out. The library does single steps; the host calls them in
 * order, decides how many, and keeps every buffer from the first step to the last. For horizontal seams it passes
 * transposed buffers.
 *
 *     narrower  SC_Gris on a copy, SC_EnergyMap, SC_SeamMap; then for each seam SC_SeamMapBack or SC_SeamMapBackShow,
 *               last_column reduced by 1, SC_SeamMapUpDate
 *     wider     SC_Gris on a copy, SC_EnergyMap, SC_SeamMap; then for each seam SC_ExpandBack, SC_ExpandUpDate; at last
 *               SC_PopulateData or SC_PopulateSeam
 *
 * Maps are arrays of 32-bit numbers, one a pixel, with rows of `stride`: the width at the start, also while less and
 * less of it is in use. Cell (x, y) is number y * stride + x. The energy map E says what a seam pays for a pixel; a
 * negative energy attracts. The cumulative map C says what the cheapest seam from row 0 to a cell pays in all. Sums,
 * differences, products and absolute values of this family wrap at 32 bits.
 *
 * map             The cumulative map.
 * energy          The energy map.
 * weight          W, of the forward costs. 0 seeks the seams of least energy alone; more shuns seams at whose sides
 *                 unlike energies would meet. Any number.
 * stride          Cells in a row of the maps, and pixels in a row of the pictures that go with them.
 * passed          Handed back and not looked at.
 * last_column     L, the width in use minus 1: from 0 to stride - 1. Below 0 the cumulative map is left alone.
 * last_row        B, the height minus 1. Below 0 the maps are left alone.
 * end             The column where a seam meets the last row.
 * start           The column where it meets row 0.
 *
 * The host's own columns are trusted: 0 to last_column, but for what SC_SeamMapUpDate and SC_ExpandUpDate clamp.
 * ================================================================================================================== */

/* seam_grey - Weighted grey in all three channels: (222 * red + 707 * green + 71 * blue) / 1000, in integers. IM_Gris
 * without selection and progress.
 *
 * image           The picture, changed in place: a copy of the one to resize.
 *
 * Alpha is untouched. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_Gris(uint8_t* image, int32_t width, int32_t height);

/* seam_energy - The energy of each pixel, from the gradient of its 3 x 3 greys and what the host has painted on it:
 * with gx the right column of greys minus the left, and gy the lower row minus the upper,
 *     E = |gx| + |gy| + 3 * protect - 20 * remove
 *
 * energy          The energy map to write, with rows of width.
 * grey            What SC_Gris made; its blue bytes are read.
 * guide           A picture: green protects, red removes, each 0..255. May be grey itself, for its blue.
 *
 * The outer rows and columns get no energy but the grey of the next pixel inside, whatever the guide says there; the
 * four corners are not written. With a width or height below 3 nothing is. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_EnergyMap(int32_t* energy, const uint8_t* grey, const uint8_t* guide, int32_t width,
                                              int32_t height);

/* seam_map - The cumulative map of columns 0 to last_column, and the cheapest seam's end:
 *     C(x, 0) = E(x, 0)
 *     C(x, y) = E(x, y) + min(C(x-1, y-1) + W * (|E(x, y-1) - E(x-1, y)| + a),
 *                             C(x, y-1) + W * a,
 *                             C(x+1, y-1) + W * (|E(x, y-1) - E(x+1, y)| + a))    a = |E(x+1, y) - E(x-1, y)|
 *
 * map             Written.
 * end             Becomes the column of the leftmost minimum of the last row. When no cell of that row is below
 *                 2000000 it stays as it was: a host that sets it beforehand sees that no seam was found.
 * ignored         Not looked at.
 *
 * What lies outside columns 0..last_column is no candidate. The forward costs count as 0 in column 0 and in column
 * stride - 1; last_column in between has a neighbour to the right, what earlier removals have left there. Returns
 * passed. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_SeamMap(int32_t* map, const int32_t* energy, uint32_t* end, uint32_t ignored,
                                            int32_t weight, int32_t stride, int32_t passed, int32_t last_column,
                                            int32_t last_row);

/* seam_map_update - Computes the part of the cumulative map again that the removal of a seam is taken to have changed.
 *
 * That is a band of columns lo..hi which starts as the seam's column in row 0. Row 0 stays. In each row after it
 *     lo = max(lo - step, 0)    hi = min(hi + 1, last_column)
 * C(lo..hi, y) is computed as in SC_SeamMap, and the band gets narrower, with v = C(hi+1, y):
 *     lo + 1 when lo > 1 and C(hi, y) or C(hi-1, y) is below v
 *     hi - 1 when hi < last_column - 1 and C(hi+2, y) or C(hi+3, y) is below v
 * Both look at the right end, and at the cells that follow in memory even where the row ends: that is meant.
 *
 * end             As in SC_SeamMap.
 * start           What SC_SeamMapBack stored; clamped to 0..last_column.
 * last_column     Already without the seam.
 * step            By how much the band widens to the left in each row. More is dearer, and closer to a new SC_SeamMap.
 *
 * A band without columns computes nothing in that row. Returns passed. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_SeamMapUpDate(int32_t* map, const int32_t* energy, uint32_t* end,
                                                  const uint32_t* start, int32_t weight, int32_t stride, int32_t passed,
                                                  int32_t last_column, int32_t last_row, int32_t step);

/* seam_expand_update - The same after SC_ExpandBack: C(start, 0) is taken from the energy map first, and step is 1.
 *
 * start           Entry (0, number) of the seam table; clamped to 0..last_column.
 *
 * Returns passed. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_ExpandUpDate(int32_t* map, const int32_t* energy, uint32_t* end, int32_t start,
                                                 int32_t weight, int32_t stride, int32_t passed, int32_t last_column,
                                                 int32_t last_row);

/* seam_remove - Follows a seam up from its end and removes it: in each row the cells right of it, up to last_column,
 * move one place to the left in the image, the companion and both maps. Cell last_column keeps its old content.
 *
 * From (x, y) the seam goes to the least of C(x-1, y-1), C(x, y-1) and C(x+1, y-1), as far as they lie in
 * 0..last_column; of equal ones to x, then x+1, then x-1. (The forward choice would be x+1, x, x-1.)
 *
 * image           The picture, with rows of stride; all four bytes of its pixels move.
 * companion       Another such picture that has to stay aligned with it, for instance the guide.
 * map, energy     Both changed.
 * end             What SC_SeamMap or SC_SeamMapUpDate stored.
 * start           Becomes the seam's column in row 0; with last_row below 0, end.
 *
 * Returns passed. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_SeamMapBack(uint8_t* image, uint8_t* companion, int32_t* map, uint8_t* energy,
                                                uint32_t end, uint32_t* start, int32_t stride, int32_t passed,
                                                int32_t last_column, int32_t last_row);

/* seam_remove_show - The same, and in each row where something moved the pixel of the image right of the seam's place
 * becomes pure red, its alpha untouched. Returns passed. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_SeamMapBackShow(uint8_t* image, uint8_t* companion, int32_t* map, uint8_t* energy,
                                                    uint32_t end, uint32_t* start, int32_t stride, int32_t passed,
                                                    int32_t last_column, int32_t last_row);

/* seam_record - Follows a seam up from its end as SC_SeamMapBack does, and records it: nothing moves. Each of its
 * pixels gets 10 dearer, the one in the last row 1010, so that the next seam goes another way.
 *
 * seams           The seam table: count columns for each row; entry (y, k) is number y * count + k.
 * count           Seams to insert in all.
 * energy          Changed.
 * passed          As wide as a pointer; its low 32 bits are returned.
 * number          The seam's number, 0 to count - 1. With last_row below 0 its entry of row 0 becomes end.
 *
 * Returns passed. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_ExpandBack(uint32_t* seams, uint32_t count, const int32_t* map, uint32_t* energy,
                                               int32_t end, int32_t stride, intptr_t passed, int32_t last_column,
                                               int32_t last_row, uint32_t number);

/* seams_insert - Inserts the recorded seams: each of their pixels is doubled, what lies right of it moves one place to
 * the right, and the left one of the two becomes the mean of its neighbours, truncated, for blue, green and red.
 *
 * seams           The seam table, full.
 * count           Its columns.
 * counters        One number a pixel with rows of columns, set to 0 by the host. Becomes how often each pixel was
 *                 doubled; what is there before counts too.
 * image           The picture to widen, its rows already row_length pixels apart: columns of picture, and room.
 * columns         The width before: the counters' stride.
 * row_length      The width after: columns + count, or less, down to columns; then pixels are lost at the end of rows.
 *
 * Several seams through one pixel insert means of means to its left. Pixels of column 0 are doubled and not mixed.
 * Nothing moves to pixel row_length - 1, though the last pixel of the picture belongs there: the host puts it there
 * beforehand. Should the picture itself reach so far, a seam through that pixel mixes it, with the next row's first as
 * the neighbour to its right: that is meant. In the last row, with nothing behind it, the pixel stands in for that.
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_PopulateData(const uint32_t* seams, int32_t count, int32_t* counters,
                                                 uint8_t* image, int32_t columns, int32_t height, int32_t row_length);

/* seams_insert_show - The same with yellow in place of the means. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL SC_PopulateSeam(const uint32_t* seams, int32_t count, int32_t* counters,
                                                 uint8_t* image, int32_t columns, int32_t height, int32_t row_length);

/* =====================================================================================================================
 * trace: two-level maps
 *
 * From picture to curves, in order: make a two-level map; fill an index map with -1; build the graph of its edges; walk
 * one outline after the other; smooth each; fit curves to each.
 *
 * A two-level map is a picture whose green and red are both 255 inside and both 0 outside, and whose blue is 0.
 *
 * pixels          The picture, changed in place.
 * ================================================================================================================== */

/* threshold - Inside is what is like a colour: blue, green and red each differ by less than the tolerance. Alpha
 * becomes 255.
 *
 * red, green, blue  The colour.
 * tolerance       0 makes nothing inside, 1 the very colour only.
 * invert          Not 0: exchanges inside and outside.
 *
 * Returns 1. */
LUMIVEX_API uint32_t LUMIVEX_CALL TRACE_Seuil(uint8_t* pixels, int32_t width, int32_t height, uint8_t red,
                                              uint8_t green, uint8_t blue, uint8_t tolerance, uint8_t invert);

/* threshold_blue - Inside is what has a blue of 255. Alpha becomes 255. Returns 1. */
LUMIVEX_API uint32_t LUMIVEX_CALL TRACE_SeuilBleu(uint8_t* pixels, int32_t width, int32_t height);

/* black_plus_one - Makes no two-level map, but prepares pictures that are traced by alpha: black pixels become (1, 1,
 * 1) unless their alpha is 0, so that black means empty. Alpha is untouched. Returns height, whatever it is. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_NoirPlusUn(uint8_t* pixels, int32_t width, int32_t height);

/* edges - Inside are edges: the gradient of the mean of the channels over 3 x 3 pixels (Sobel) is longer than the
 * threshold.
 *
 * threshold       0..255; edges of full contrast have a length of up to about 1140.
 * invert          Not 0: exchanges inside and outside.
 * progress        0 at entry, then row * (100 / height), divided in integers, after each row: always 0 for pictures of
 *                 more than 100 rows. Rows of pictures too narrow for an edge count too.
 *
 * Alpha and the outermost pixels are untouched. Without memory for two rows nothing is done. Returns 1. */
LUMIVEX_API uint32_t LUMIVEX_CALL TRACE_Contour(uint8_t* pixels, int32_t width, int32_t height, uint8_t threshold,
                                                uint8_t invert, uint32_t* progress);

/* =====================================================================================================================
 * trace: outlines
 *
 * Sides of a pixel are numbered 0 top, 1 right, 2 bottom, 3 left. An edge is a side of a foreground pixel whose
 * neighbour across it is background; outside the picture all is background.
 *
 * A record tells of one edge in nine numbers: x, y and side of the edge; x, y and side of the edge that meets it at its
 * left or upper end; the same for the other end. Foreground is joined across sides, not across corners.
 *
 * The index map finds records: width * height * 4 numbers, of which (y * width + x) * 4 + side is nine times the number
 * of the record, or negative where there is none. The host fills it with -1 before the graph is built.
 *
 * pixels          The picture to read.
 * records         Nine numbers for each edge, which the host provides: at most width * height * 4 records.
 * map             The index map. Only entries of edges are written.
 *
 * Records come in the order of rows, pixels and sides. If the whole frame of the picture is foreground, sides that face
 * out of it are no edges; else they are like any other. Links may then name a side without a record.
 *
 * The functions return the number of records.
 * ================================================================================================================== */

/* edge_graph_blue - Foreground is where blue is not 0. The frame counts as whole unless one of its pixels is black.
 *
 * Links turn onto a diagonal pixel only if it is background or exactly 255; on any other the three numbers of the link
 * stay unwritten. Two-level maps have no such pixels. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_DataBordure(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width,
                                                   int32_t height);

/* edge_graph - The same for green, as two-level maps have it.
 *
 * framed          Receives 1 if the whole frame is foreground, else 0. A picture without pixels leaves it alone. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_GetData(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width,
                                               int32_t height, uint8_t* framed);

/* edge_graph_alpha - The same for alpha. The frame is whole unless one of its pixels has alpha 0, and links turn onto
 * any foreground. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_GetBordureTrans(const uint8_t* pixels, int32_t* records, int32_t* map,
                                                       int32_t width, int32_t height);

/* walk_outline - Walks one outline from edge to edge and writes the midpoint of each:
 *     x / scale_x + offset_x, y / scale_y + offset_y, rounded to float once,
 * with pixel centres at whole numbers, so that sides lie 0.5 from them.
 *
 * From an edge the walk goes on to the first of its two links that has not been walked, and ends where there is none
 * or at `most` points. The host calls again, with the first record whose x is not -1, until there is none left.
 *
 * records         x of walked records becomes -1.
 * map             Entries of walked edges become -1.
 * points          Two floats for each point. A record whose side is not 0..3 leaves its place unwritten, and counts.
 * start           The number of the record to begin with, counted in records.
 * stride          Entries of the map in a row: width * 4.
 *
 * Returns the number of points. A closed outline's first point is not repeated. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_Parcourir(int32_t* records, int32_t* map, float* points, int32_t most,
                                                 uint32_t start, float scale_x, float scale_y, int32_t stride,
                                                 int32_t offset_x, int32_t offset_y);

/* =====================================================================================================================
 * trace: smoothing
 *
 * Points become weighted means of those around them on the closed outline, except where a corner is near: a point that
 * lies further than 0.7 from the middle between those two places before and after it. The immediate neighbours take no
 * part: that is meant. Corners are found once, before anything moves. Without memory for a copy nothing is done.
 *
 * points          last + 1 points, two floats each, changed in place.
 * last            The index of the last point. Outlines of fewer points than the means reach wrap onto themselves;
 *                 below 0 nothing is done.
 *
 * Returns last.
 * ================================================================================================================== */

/* smooth_6 - Weights 1 2 . 4 . 2 1 from three places before to three after, of 10; corners hold three places; two
 * passes. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_Adoucir(float* points, int32_t last);

/* smooth_4 - Weights 1 1 . 1 . 1 1, of 5; corners hold three places; two passes. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_Adoucir2(float* points, int32_t last);

/* smooth_6_even - Weights 1 1 1 . 1 . 1 1 1, of 7; corners hold four places; two passes. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_Adoucir3(float* points, int32_t last);

/* smooth_6_running - The same in one pass that uses the new values of points before. */
LUMIVEX_API int32_t LUMIVEX_CALL TRACE_Adoucir4(float* points, int32_t last);

/* =====================================================================================================================
 * trace: curves and paths
 * ================================================================================================================== */

/* fit_curves - Replaces an open polyline by cubic Bezier segments. Each takes in one point after the other until a
 * point is as far from the curve as the error allows; that point still belongs to it.
 *
 * With P[i] the points, mirrored beyond the ends, the tangent at i is 0.7 A + 0.3 B, A and B being P[i+1] - P[i-1] and
 * P[i+2] - P[i-2], each divided by its length where that is above 0: what is no number stays in its coordinate.
 * Controls stand off the ends of a segment by chord * 0.5 * handle / 100 along the tangents. A point's distance is
 * measured where the curve crosses the point's normal.
 *
 * points          Two floats each.
 * count           At least 2; 1 gives one segment without length, less gives none.
 * segments        Eight floats each: start, END, control 1, control 2. At most count - 1 segments (1 at least).
 * segment_count   Receives their number.
 * handle          Percent of half the chord; about 67 suits even curves.
 * error           In units of the points, above 0. Otherwise each segment takes one step.
 *
 * Returns 1. */
LUMIVEX_API uint32_t LUMIVEX_CALL BZ_Approximation(const float* points, int32_t count, float* segments,
                                                   uint32_t* segment_count, double handle, double error);

/* path_lengths - Tabulates a polyline: x, y and the length of the path up to each point.
 *
 * points          last + 1 points, two floats each.
 * table           Three floats for each point. The first entry is written even if last is below 1.
 * last            The index of the last point.
 *
 * Returns 1. */
LUMIVEX_API uint32_t LUMIVEX_CALL NL_PathLength(const float* points, float* table, int32_t last);

/* path_point - Finds the point at a distance along a path.
 *
 * result          Two floats. A distance beyond the path leaves them as they are; if they are (0, 0) then, found or
 *                 left, they become the last point.
 * table           From NL_PathLength. A first step without length is found at its start.
 * last            The index of the last point; below 0 nothing is done.
 *
 * Returns 1. */
LUMIVEX_API uint32_t LUMIVEX_CALL NL_GetPointPath(float* result, const float* table, int32_t last, float distance);

/* =====================================================================================================================
 * thinning
 *
 * One round of eight passes that thin foreground towards its skeleton and eight that prune the ends of the skeleton;
 * the host calls again as long as it likes. A pass deletes all pixels whose surroundings fit its template at once.
 *
 * A pixel is foreground or background by the exact value of one byte; any other value fits neither. Deleted pixels
 * become the background colour. Alpha and the two outermost rows and columns are untouched.
 *
 * pixels          The picture, changed in place.
 * progress        After row y of pass k, from 0 on, (625 * k + y * (10000 / (height * 16))) / 100, in integers. It is
 *                 not written at entry, nor for pictures of fewer than five rows or columns, which stay as they are.
 *
 * They take memory for three or four bits a pixel; without it nothing is done. The functions return 1.
 * ================================================================================================================== */

/* thin_white - Blue: 255 is foreground, 0 background. Deleted pixels become black. */
LUMIVEX_API uint32_t LUMIVEX_CALL MORPH_Thinning(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress);

/* thin_black - Green: 0 is foreground, 255 background. Deleted pixels become white. */
LUMIVEX_API uint32_t LUMIVEX_CALL MORPH_ThinningInverse(uint8_t* pixels, int32_t width, int32_t height,
                                                        uint32_t* progress);

/* thin_yellow - Green: 255 is foreground, 0 background, as in two-level maps. Deleted pixels become black. */
LUMIVEX_API uint32_t LUMIVEX_CALL MORPH_ThinningJaune(uint8_t* pixels, int32_t width, int32_t height,
                                                      uint32_t* progress);

/* thin_black_on_yellow - Green: 0 is foreground, 255 background. Deleted pixels become yellow. */
LUMIVEX_API uint32_t LUMIVEX_CALL MORPH_ThinningInverseJaune(uint8_t* pixels, int32_t width, int32_t height,
                                                             uint32_t* progress);

/* thin_colours - Two colours, told apart by the first of blue, green and red in which they differ. Equal colours change
 * nothing.
 *
 * unused          Ignored.
 * gate            A picture of the same size of which only alpha counts: pixels of alpha 0 are never deleted. Not read
 *                 while use_gate is 0.
 * red1 ... blue1  The background, which deleted pixels become.
 * red2 ... blue2  The foreground. */
LUMIVEX_API uint32_t LUMIVEX_CALL MORPH_ThinningCouleur(uint8_t* pixels, uint32_t unused, const uint8_t* gate,
                                                        int32_t width, int32_t height, uint8_t red1, uint8_t green1,
                                                        uint8_t blue1, uint8_t red2, uint8_t green2, uint8_t blue2,
                                                        uint8_t use_gate, uint32_t* progress);

#ifdef __cplusplus
}
#endif

#endif
