// The same in C++, through the header of views.
#include <array>
#include <iostream>
#include <lumivex.hpp>

int main()
{
    std::array<uint8_t, 4> pixel{0, 100, 255, 7};
    lumivex::invert(lumivex::PictureView(pixel, 1, 1));
    std::cout << LUMIVEX_VERSION << ':';
    for (int byte : pixel)
        std::cout << ' ' << byte;
    std::cout << '\n';
}
