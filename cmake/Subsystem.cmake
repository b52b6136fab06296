# veltrane_subsystem(name DATA a.cpp ... LOGIC b.cpp ... SCREENS c.cpp ...)
# adds each file of a folder to the layer it belongs to. The layers are link targets, so a data file that
# includes a form does not compile.
function(veltrane_subsystem name)
    cmake_parse_arguments(PARSE_ARGV 1 part "" "" "PLATFORM;CONTROLS;DATA;LOGIC;SCREENS")
    if(part_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "veltrane_subsystem(${name}): ${part_UNPARSED_ARGUMENTS} stands in no layer")
    endif()
    foreach(layer PLATFORM CONTROLS DATA LOGIC SCREENS)
        string(TOLOWER ${layer} target)
        list(TRANSFORM part_${layer} PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
        target_sources(veltrane_${target} PRIVATE ${part_${layer}})
    endforeach()
    # scripts/tidy reads a folder as one file: most of its time would go into the toolkit's headers.
    set(sources ${part_PLATFORM} ${part_CONTROLS} ${part_DATA} ${part_LOGIC} ${part_SCREENS})
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    list(TRANSFORM sources REPLACE "(.+)" "#include \"\\1\"\n")
    string(JOIN "" batch ${sources})
    string(REPLACE "/" "_" file ${name})
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/tidy/${file}.cpp CONTENT "${batch}")
    set_property(GLOBAL APPEND PROPERTY VELTRANE_TIDY_FILES ${CMAKE_BINARY_DIR}/tidy/${file}.cpp)
endfunction()

set(VELTRANE_TEST_POSTGRES ${CMAKE_BINARY_DIR}/postgres)

# veltrane_test(name LAYER layer [DATABASE | SERVER] [TIMEOUT seconds] SOURCES a.cpp ...)
# adds one QtTest executable, headless, with a time limit. With DATABASE it runs twice: as `name` on a
# database file, and as `name.postgresql` on the private server that the fixture starts; with SERVER it runs
# on the server alone.
function(veltrane_test name)
    cmake_parse_arguments(PARSE_ARGV 1 test "DATABASE;SERVER" "LAYER;TIMEOUT" "SOURCES")
    if(NOT test_TIMEOUT)
        set(test_TIMEOUT 120)
    endif()
    if(VELTRANE_SANITIZE)
        math(EXPR test_TIMEOUT "${test_TIMEOUT} * 4")
    endif()
    add_executable(${name} ${test_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE veltrane_${test_LAYER} veltrane_test_support Qt6::Test)
    set(support veltrane_test_support)
    if(test_LAYER STREQUAL "screens")
        set(support veltrane_test_support_screens)
        target_link_libraries(${name} PRIVATE ${support})
    endif()
    if(VELTRANE_PCH)
        target_precompile_headers(${name} REUSE_FROM ${support})
    endif()
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    set(environment "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=UTC")
    if(NOT test_SERVER)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES
            TIMEOUT ${test_TIMEOUT}
            LABELS ${folder}
            ENVIRONMENT "${environment}")
    endif()
    if(test_DATABASE OR test_SERVER)
        add_test(NAME ${name}.postgresql COMMAND ${name})
        set_tests_properties(${name}.postgresql PROPERTIES
            TIMEOUT ${test_TIMEOUT}
            LABELS "${folder};slow"
            FIXTURES_REQUIRED postgres
            ENVIRONMENT "${environment};VELTRANE_TEST_BACKEND=postgresql;VELTRANE_TEST_POSTGRES=${VELTRANE_TEST_POSTGRES}")
    endif()
endfunction()
