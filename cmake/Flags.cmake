# One interface target carries every flag of the project's own code.
set(CMAKE_C_FLAGS_DEV "-O1 -g1")
set(CMAKE_CXX_FLAGS_DEV "-O1 -g1")

option(VELTRANE_SANITIZE "Build with AddressSanitizer and UBSan" OFF)

add_library(veltrane_flags INTERFACE)
target_compile_features(veltrane_flags INTERFACE cxx_std_20)
target_include_directories(veltrane_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(veltrane_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast)
target_compile_definitions(veltrane_flags INTERFACE
    QT_USE_QSTRINGBUILDER
    VELTRANE_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
    VELTRANE_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    VELTRANE_VERSION_REVISION=${PROJECT_VERSION_PATCH})

if(VELTRANE_SANITIZE)
    target_compile_options(veltrane_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(veltrane_flags INTERFACE -fsanitize=address,undefined)
endif()

# Qt's headers are most of what a file costs to compile; precompiled, they cost a quarter of that. The CI
# build does without, so that no file relies on a header that it does not include.
option(VELTRANE_PCH "Precompile Qt's headers" OFF)

function(veltrane_precompile target)
    if(VELTRANE_PCH)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()
