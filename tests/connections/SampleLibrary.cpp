// The shared library that the tests of the connection open.

extern "C" {
__attribute__((visibility("default"))) int answer();

int answer() {
    return 42;
}
}

// An exported symbol whose address is 0.
__asm__(".globl nothing\n"
        ".set nothing, 0\n");
