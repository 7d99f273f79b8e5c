/* What a host in C does first: call the library on its own pixel. */
#include <lumivex.h>
#include <stdio.h>

int main(void)
{
    uint8_t pixel[4] = {0, 100, 255, 7};
    IM_Inverser(pixel, 1, 1);
    printf("%s: %d %d %d %d\n", LUMIVEX_VERSION, pixel[0], pixel[1], pixel[2], pixel[3]);
    return 0;
}
