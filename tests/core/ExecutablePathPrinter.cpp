// A program that prints the folder it runs from: tests put copies of it where they need them.
#include "core/Strings.h"

#include <iostream>

int main() {
    std::cout << orvel::core::strings::getExecutablePath();
}
