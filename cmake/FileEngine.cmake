# The file engine: SQLite with page encryption. Debian's own build of it is ten years old, so the amalgamation
# is fetched once from the npm registry, checked against a pinned hash, and kept outside the build tree. The
# hash, not the version number, decides what is compiled.
set(VELTRANE_ENGINE_PACKAGE better-sqlite3-multiple-ciphers)
set(VELTRANE_ENGINE_VERSION 13.0.3)
# sha512 UYabM82r1J84TLWc/SszoHs6XopWpl/2HCg3Nui1JUaFXg/VLswzkPowYiRhK/4CftI8dgtikwyZQecMldrGxQ== in hexadecimal
string(CONCAT VELTRANE_ENGINE_SHA512
    51869b33cdabd49f384cb59cfd2b33a07b3a5e8a56a65ff61c283736e8b52546
    855e0fd52ecc3390fa306224612bfe027ed23c760b62930c9941e70c95dac6c5)

if(DEFINED ENV{XDG_CACHE_HOME})
    set(VELTRANE_CACHE_DIR "$ENV{XDG_CACHE_HOME}/veltrane")
else()
    set(VELTRANE_CACHE_DIR "$ENV{HOME}/.cache/veltrane")
endif()
set(VELTRANE_ENGINE_TARBALL
    ${VELTRANE_CACHE_DIR}/${VELTRANE_ENGINE_PACKAGE}-${VELTRANE_ENGINE_VERSION}.tgz)
set(VELTRANE_ENGINE_DIR ${CMAKE_BINARY_DIR}/file-engine)

function(veltrane_engine_tarball_is_good result)
    set(${result} FALSE PARENT_SCOPE)
    if(EXISTS ${VELTRANE_ENGINE_TARBALL})
        file(SHA512 ${VELTRANE_ENGINE_TARBALL} found)
        if(found STREQUAL VELTRANE_ENGINE_SHA512)
            set(${result} TRUE PARENT_SCOPE)
        endif()
    endif()
endfunction()

veltrane_engine_tarball_is_good(engine_is_here)
if(NOT engine_is_here)
    string(CONCAT by_hand
        "To put it in place by hand, run\n"
        "  npm pack ${VELTRANE_ENGINE_PACKAGE}@${VELTRANE_ENGINE_VERSION}\n"
        "on a machine that reaches the npm registry, and copy the file to\n"
        "  ${VELTRANE_ENGINE_TARBALL}\n"
        "Its SHA-512 is\n  ${VELTRANE_ENGINE_SHA512}")
    find_program(NPM npm)
    if(NOT NPM)
        message(FATAL_ERROR "The file engine's source is not here, and npm, which fetches it, is not installed.\n"
            "${by_hand}")
    endif()
    message(STATUS "Fetching ${VELTRANE_ENGINE_PACKAGE}@${VELTRANE_ENGINE_VERSION}")
    file(MAKE_DIRECTORY ${VELTRANE_CACHE_DIR})
    execute_process(
        COMMAND ${NPM} pack --loglevel=error ${VELTRANE_ENGINE_PACKAGE}@${VELTRANE_ENGINE_VERSION}
        WORKING_DIRECTORY ${VELTRANE_CACHE_DIR}
        RESULT_VARIABLE npm_result
        OUTPUT_QUIET
        ERROR_VARIABLE npm_said)
    if(NOT npm_result EQUAL 0)
        string(STRIP "${npm_said}" npm_said)
        message(FATAL_ERROR "npm could not fetch the file engine's source. It said:\n${npm_said}\n${by_hand}")
    endif()
    veltrane_engine_tarball_is_good(engine_is_here)
    if(NOT engine_is_here)
        message(FATAL_ERROR "${VELTRANE_ENGINE_TARBALL} does not have the pinned hash. It is not used.\n${by_hand}")
    endif()
endif()
file(ARCHIVE_EXTRACT INPUT ${VELTRANE_ENGINE_TARBALL} DESTINATION ${VELTRANE_ENGINE_DIR}
    PATTERNS */deps/sqlite3/*)

add_library(veltrane_file_engine STATIC ${VELTRANE_ENGINE_DIR}/package/deps/sqlite3/sqlite3.c)
target_include_directories(veltrane_file_engine SYSTEM PUBLIC ${VELTRANE_ENGINE_DIR}/package/deps/sqlite3)
target_compile_definitions(veltrane_file_engine PRIVATE
    SQLITE_MAX_EXPR_DEPTH=0
    SQLITE_DQS=0
    SQLITE_ENABLE_COLUMN_METADATA
    SQLITE_THREADSAFE=2
    SQLITE_OMIT_LOAD_EXTENSION)
target_compile_options(veltrane_file_engine PRIVATE -O2 -w)
set_target_properties(veltrane_file_engine PROPERTIES AUTOMOC OFF AUTORCC OFF)
find_package(Threads REQUIRED)
target_link_libraries(veltrane_file_engine PUBLIC Threads::Threads m)
