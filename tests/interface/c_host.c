/* A host written in C: links the undecorated names and passes each kind of argument once. */
#include "lumivex.h"

#include <stdio.h>
#include <string.h>

int main(void)
{
    uint8_t image[4] = {10, 20, 30, 40};
    const uint8_t wanted[4] = {245, 235, 225, 40};
    uint8_t colour[4] = {0, 0, 0, 0};
    uint32_t progress = 77;
    float lab[4] = {0.0f, 0.0f, 0.0f, 5.0f};
    int good = BVL_Test(1) == 30;
    good = good && IM_Inverser(image, 1, 1) == 1 && memcmp(image, wanted, sizeof wanted) == 0;
    good = good && DI_HSB2ARGB(120.0f, 100.0f, 100.0f, colour) == 1 && colour[1] == 255 && colour[0] == 0;
    good = good && DI_ARGB2Hue(0, 0, 255) == 240.0;
    good = good && IM_GetLab(image, lab, 1, 1, &progress) == 1 && progress == 0 && lab[3] == 5.0f && lab[0] > 80.0f;
    puts(good ? "good" : "the library answered a C host wrongly");
    return good ? 0 : 1;
}
