// Writes the large answer to standard output.
#include "bench/SampleAnswers.h"

#include <iostream>

int main() {
    std::cout << tavik::bench::largeAnswer() << std::flush;
    return std::cout ? 0 : 1;
}
