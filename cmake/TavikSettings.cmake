# The build settings a user may change, each with its default, and nothing else.

set(TAVIK_INSTALL_DIR "/opt/norvo/tavik" CACHE STRING
    "Installation folder compiled into the tool: it holds the configuration file, the feature library and the firmware modules")
option(TAVIK_LINK_VMKMGMT "Link the ESXi host's management library libvmkmgmt.so" OFF)
set(TAVIK_VMKMGMT_DIR "" CACHE PATH "Folder of libvmkmgmt.so where the linker does not look by itself")
option(TAVIK_BUILD_TESTS "Build the tests" ON)
option(TAVIK_BUILD_BENCH "Build the benchmarks" OFF)
option(TAVIK_BUILD_FUZZERS "Build the fuzz targets (clang only)" OFF)
set(TAVIK_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize takes them, such as address,undefined")
option(TAVIK_COVERAGE "Count the lines that run, for gcov (gcc only)" OFF)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
