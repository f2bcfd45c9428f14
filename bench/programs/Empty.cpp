// A C++ program that has streams and does nothing with them.
#include <iostream>

int main() {
    std::cout.flush();
    return 0;
}
