# What every target of this project is built with, in one place.

option(CARDREEL_BENCHMARKS "Build the programs in benchmarks/ (needs Google Benchmark)" OFF)
option(CARDREEL_FUZZERS "Build the libFuzzer targets (needs clang)" OFF)
option(CARDREEL_WERROR "Treat warnings as errors" ON)
set(CARDREEL_SANITIZER "" CACHE STRING "A value for -fsanitize=, or empty")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

add_library(cardreel_flags INTERFACE)
target_compile_options(cardreel_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${CARDREEL_WERROR}>:-Werror>)
target_compile_definitions(cardreel_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
target_include_directories(cardreel_flags INTERFACE "${CMAKE_SOURCE_DIR}/src")
if(CARDREEL_SANITIZER)
    target_compile_options(cardreel_flags INTERFACE
        -fsanitize=${CARDREEL_SANITIZER} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(cardreel_flags INTERFACE -fsanitize=${CARDREEL_SANITIZER})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        target_compile_options(cardreel_flags INTERFACE
            -fsanitize-ignorelist=${CMAKE_SOURCE_DIR}/cmake/sanitizer-ignore.txt)
    endif()
endif()

if(CARDREEL_FUZZERS)
    # Coverage of everything, so that a fuzzer sees where its inputs lead.
    target_compile_options(cardreel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# One floor of the house: a static library named as its folder.
#   cardreel_library(media SOURCES DCFInfo.cpp ... LINKS telemetry Qt6::Core)
function(cardreel_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;PRIVATE_LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC cardreel_flags ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS})
endfunction()
