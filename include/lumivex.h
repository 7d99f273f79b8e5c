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
 * rows ends at 99, of one row at 0. The host may read it from another thread while the call runs.
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
 */
#ifndef LUMIVEX_H
#define LUMIVEX_H

#include <stdint.h>

#define LUMIVEX_VERSION "0.1.0"

/* 32-bit Windows hosts expect the callee to clean the stack; elsewhere there is one convention only. */
#if defined(_WIN32) && !defined(_WIN64)
#define LUMIVEX_CALL __stdcall
#else
#define LUMIVEX_CALL
#endif

#if defined(LUMIVEX_BUILD) && defined(_WIN32)
#define LUMIVEX_API __declspec(dllexport)
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

/* Inverts colours: blue, green and red become 255 - v.
 *
 * image   The picture, changed in place.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Inverser(uint8_t* image, int32_t width, int32_t height);

/* Turns colours into a weighted grey: (222 * red + 707 * green + 71 * blue) / 1000, in integers.
 *
 * image           The picture, changed in place.
 * selection       Pixels that are not selected stay as they are. NULL is fine while selection_only is 0.
 * progress        Chapter 6.
 *
 * Alpha is untouched. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Gris(uint8_t* image, const uint8_t* selection, int32_t width, int32_t height,
                                         uint8_t selection_only, uint32_t* progress);

/* Black and white through colour filters and a tone table.
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

/* Brightness: v + offset, clamped to 0..255, for blue, green and red.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * offset          Any number; -255..255 makes a difference.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Brillance(uint8_t* destination, const uint8_t* source, int32_t width,
                                              int32_t height, int32_t offset);

/* Contrast about the level 127: trunc((v - 127) * (float)(contrast / 50)) + 127, clamped to 0..255.
 *
 * destination     The picture to write. In place: yes.
 * source          The picture to read.
 * contrast        50 is neutral, 0 gives a flat 127, 100 doubles the distance from 127, negative values invert.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Contraste(uint8_t* destination, const uint8_t* source, int32_t width,
                                              int32_t height, float contrast);

/* Cuts a colour picture out along a black-and-white shape.
 *
 * destination     On entry the shape, of which only the blue byte is looked at. Where it is below 100 the pixel gets
 * the source's colour and alpha 255; elsewhere it keeps its colour and gets alpha 0. source          The colour
 * picture.
 *
 * Writes alpha. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_DetourNB(uint8_t* destination, const uint8_t* source, int32_t width,
                                             int32_t height);

/* Restores the source's colour outside a mask.
 *
 * destination     The picture to write. Pixels whose mask alpha is not 0 stay as they are.
 * source          The picture to take colours from.
 * mask            The clip mask: a picture of which only alpha counts.
 *
 * Alpha is untouched. Size test: product. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_ClipImage(uint8_t* destination, const uint8_t* source, const uint8_t* mask,
                                              int32_t width, int32_t height);

/* Fills a table with the byte offset of every pixel, rows one entry apart.
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

/* One colour from HSB to RGB.
 *
 * hue             Degrees, 0 to below 360. Outside that range a colour with saturation becomes black.
 * brightness      Percent. It stands before saturation: that is meant.
 * saturation      Percent. 0 or less gives a grey of trunc(brightness * 255 / 100); greys are truncated, colours are
 *                 rounded half up.
 * colour          Four bytes to fill: red, green, blue, 0.
 *
 * Returns 1. */
LUMIVEX_API int32_t LUMIVEX_CALL DI_HSB2ARGB(float hue, float brightness, float saturation, uint8_t* colour);

/* The hue of one colour in degrees, 0 to below 360; 0 for a grey. */
LUMIVEX_API double LUMIVEX_CALL DI_ARGB2Hue(uint8_t red, uint8_t green, uint8_t blue);

/* Converts a picture to L*a*b*.
 *
 * source          The picture to read; alpha is not looked at.
 * lab             width * height records of four floats: L, a, b and one that is not written.
 * progress        Chapter 6.
 *
 * Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_GetLab(const uint8_t* source, float* lab, int32_t width, int32_t height,
                                           uint32_t* progress);

/* Fills the Lab cube.
 *
 * lightness, a, b  The three tables, 16777216 floats each.
 * progress         0 at entry, then trunc(blue * 0.390625) after each of the 256 values of blue; ends at 99.
 *
 * Returns 256. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataLab(float* lightness, float* a, float* b, uint32_t* progress);

/* Fills the RGB-from-Lab grid.
 *
 * red, green, blue  The three tables, 31712226 bytes each.
 * progress          0 at entry, then the step l itself, 0 to 545, after each: a count, not a percentage.
 *
 * Channels are truncated, not rounded: L = 100, a = b = 0 is not quite white. Returns 546. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_SetDataRGB(uint8_t* red, uint8_t* green, uint8_t* blue, uint32_t* progress);

/* =====================================================================================================================
 * core: probes, for hosts that want to check how they pass arguments
 * ================================================================================================================== */

/* Element 6 (counted from 0) plus 1000, summed as floats, truncated to an integer. Reads values[6]. */
LUMIVEX_API int32_t LUMIVEX_CALL ESSAI_Structure(const float* values);

/* Element 3 times element 2, as floats, truncated to an integer. Reads values[2] and values[3]. */
LUMIVEX_API int32_t LUMIVEX_CALL ESSAI_Structure1(const float* values);

/* Element 7 plus element 6, as floats, truncated to an integer. Reads values[6] and values[7]. */
LUMIVEX_API int32_t LUMIVEX_CALL ESSAI_Structure2(const float* values);

/* Ignores its argument. Returns 30. */
LUMIVEX_API int32_t LUMIVEX_CALL BVL_Test(int32_t ignored);

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

/* Two rounds of a box average of 2 * radius - 1 pixels a side, in place, at a cost that does not depend on the radius.
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

/* Gaussian of 5 x 5, weights summing to 273. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                                 int32_t width, int32_t height, uint8_t use_selection,
                                                 uint32_t* progress);

/* Gaussian of 7 x 7, weights summing to 997. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien77(uint8_t* destination, const uint8_t* source,
                                                   const uint8_t* selection, int32_t width, int32_t height,
                                                   uint8_t use_selection, uint32_t* progress);

/* Gaussian of 9 x 9, weights summing to 2440. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien99(uint8_t* destination, const uint8_t* source,
                                                   const uint8_t* selection, int32_t width, int32_t height,
                                                   uint8_t use_selection, uint32_t* progress);

/* A flatter kernel of 7 x 7, weights summing to 140. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussien77Plus(uint8_t* destination, const uint8_t* source,
                                                       const uint8_t* selection, int32_t width, int32_t height,
                                                       uint8_t use_selection, uint32_t* progress);

/* The plain average of 5 x 5 pixels, its name notwithstanding. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FlouGaussienPlus(uint8_t* destination, const uint8_t* source,
                                                     const uint8_t* selection, int32_t width, int32_t height,
                                                     uint8_t use_selection, uint32_t* progress);

/* The plain average of 5 x 5 pixels, without selection or progress. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_FourchetteFlou(uint8_t* destination, const uint8_t* source, int32_t width,
                                                   int32_t height);

/* Blurs lightness alone: the 5 x 5 kernel over L, with a and b of the pixel itself.
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

/* Blurs colour alone: the 5 x 5 kernel of IM_FlouGaussien over a and b, with L of the pixel itself.
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

/* Unsharp mask: image + k * (image - softened), clamped to 0..255, for blue, green and red, with k = amount / -15.
 *
 * amount          Truncated to whole k: -15 sharpens by the whole difference, -30 by twice that, 15 gives the softened
 *                 copy; -14..14 copy the image.
 *
 * In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Net(uint8_t* destination, const uint8_t* image, const uint8_t* softened,
                                        int32_t width, int32_t height, int32_t amount, uint32_t* progress);

/* IM_Net under a selection. In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Accentuer(uint8_t* destination, const uint8_t* image, const uint8_t* softened,
                                              const uint8_t* selection, int32_t width, int32_t height, int32_t amount,
                                              uint8_t use_selection, uint32_t* progress);

/* High pass: what the picture has over its softened copy, on black.
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

/* Shift of all channels: v + offset, clamped to 0..255. IM_Brillance with progress, and without the product test.
 *
 * offset          Any number; -255..255 makes a difference.
 *
 * In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Decal(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height,
                                          int32_t offset, uint32_t* progress);

/* Detail: new lightness through a curve that the local contrast chooses from; a and b stay.
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

/* Threshold: black where (blue + green + red) / 3, truncated, is below the threshold, white elsewhere.
 *
 * threshold       Any number: 0 makes all white, 256 all black.
 *
 * The outer two rows and columns are not written although no neighbour is looked at; a height below 5 does nothing but
 * set progress to 0. In place: yes. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_Seuil(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                          int32_t width, int32_t height, int32_t threshold, uint8_t use_selection,
                                          uint32_t* progress);

/* Erosion by the four nearest neighbours: blue, green and red lose all that the largest neighbour has over them, and
 * become 0 where that is more than they have.
 *
 * The outer row and column on each side are not written; a height below 3 does nothing but set progress to 0. In place:
 * no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_ErosionRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                               int32_t width, int32_t height, uint8_t use_selection,
                                               uint32_t* progress);

/* Dilation by the four nearest neighbours: blue, green and red gain half of what the largest neighbour has over them,
 * truncated. Half, where IM_ErosionRGB takes all: that is meant. Borders as there. In place: no. Returns height. */
LUMIVEX_API int32_t LUMIVEX_CALL IM_DilatationRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                                                  int32_t width, int32_t height, uint8_t use_selection,
                                                  uint32_t* progress);

/* Erosion of the two colour axes, with the lightness that the host gives.
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

/* Edge map in two colours, by the gradient of 3 x 3 pixels (Sobel): with gx and gy each the mean of the gradients of
 * blue, green and red,
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

#ifdef __cplusplus
}
#endif

#endif
