# How a target of this project is made: one set of flags, linked privately into each.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

include(CheckPIESupported)
check_pie_supported()

find_program(TAVIK_CCACHE ccache)
if(TAVIK_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${TAVIK_CCACHE}")
endif()

set(Boost_USE_STATIC_LIBS ON)
find_package(Boost 1.74 REQUIRED COMPONENTS log thread filesystem date_time)
find_package(Threads REQUIRED)

add_library(tavik_flags INTERFACE)
target_include_directories(tavik_flags INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(tavik_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Werror
    $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>
    # The optimizer of g++ 12 takes joined strings for overlapping ones.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>
    $<$<CXX_COMPILER_ID:Clang>:-Wshadow>
    # No path of the machine that built it ends up in a log line or in the binary.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
    -ffunction-sections -fdata-sections -fstack-protector-strong)
target_link_options(tavik_flags INTERFACE -Wl,--gc-sections -Wl,-z,relro,-z,now)
if(TAVIK_SANITIZE)
    # Tests aren't what is looked at: without the checks for undefined behaviour, which fill each of
    # their many comparisons, they compile in two thirds of the time.
    target_compile_options(tavik_flags INTERFACE
        -fsanitize=${TAVIK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        $<$<BOOL:$<TARGET_PROPERTY:TAVIK_IS_TEST>>:-fno-sanitize=undefined>)
    target_link_options(tavik_flags INTERFACE -fsanitize=${TAVIK_SANITIZE})
else()
    target_compile_definitions(tavik_flags INTERFACE
        $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)
endif()

if(TAVIK_COVERAGE)
    # Processes of one test run at the same time and add to the same counts.
    target_compile_options(tavik_flags INTERFACE -O0 -g0 --coverage -fprofile-update=atomic)
    target_compile_definitions(tavik_flags INTERFACE TAVIK_COVERAGE)
    target_link_options(tavik_flags INTERFACE --coverage)
endif()

if(TAVIK_BUILD_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "The fuzz targets need clang: TAVIK_BUILD_FUZZERS is for the preset fuzz")
    endif()
    # The fuzzer learns from the coverage of everything that a target links.
    target_compile_options(tavik_flags INTERFACE -fsanitize=fuzzer-no-link)
    # A feature library may read a length at another width than the tool passes it.
    target_compile_options(tavik_flags INTERFACE -fno-sanitize=function)
    target_link_options(tavik_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tavik_add_library(<name> [SEPARATE] SOURCES <files> [LINKS <targets>]): one folder's library, with
# the alias Tavik::<name>. Some presets compile several sources of a folder in one go, so names in
# unnamed namespaces and short names of namespaces are the folder's; SEPARATE keeps them the file's.
function(tavik_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "SEPARATE" "" "SOURCES;LINKS")
    add_library(tavik_${name} STATIC ${arg_SOURCES})
    if(arg_SEPARATE)
        set_target_properties(tavik_${name} PROPERTIES UNITY_BUILD OFF)
    endif()
    add_library(Tavik::${name} ALIAS tavik_${name})
    target_include_directories(tavik_${name} PUBLIC "${PROJECT_SOURCE_DIR}")
    target_link_libraries(tavik_${name} PUBLIC ${arg_LINKS} PRIVATE tavik_flags)
endfunction()
