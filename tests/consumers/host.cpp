// The same in C++.
#include <array>
#include <iostream>
#include <lumivex.h>

int main()
{
    std::array<uint8_t, 4> pixel{0, 100, 255, 7};
    IM_Inverser(pixel.data(), 1, 1);
    std::cout << LUMIVEX_VERSION << ':';
    for (int byte : pixel)
        std::cout << ' ' << byte;
    std::cout << '\n';
}
