# veltrane_subsystem(name DATA a.cpp ... LOGIC b.cpp ... SCREENS c.cpp ...)
# adds the files of a folder to the layer each belongs to. The layers are link targets, so that a
# data file which includes a form does not compile.
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
endfunction()

# veltrane_test(name LAYER layer [TIMEOUT seconds] SOURCES a.cpp ...)
# one QtTest executable, headless, with a time limit.
function(veltrane_test name)
    cmake_parse_arguments(PARSE_ARGV 1 test "" "LAYER;TIMEOUT" "SOURCES")
    if(NOT test_TIMEOUT)
        set(test_TIMEOUT 120)
    endif()
    add_executable(${name} ${test_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE veltrane_${test_LAYER} veltrane_test_support Qt6::Test)
    if(test_LAYER STREQUAL "screens")
        target_link_libraries(${name} PRIVATE veltrane_test_support_screens)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${test_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=UTC")
endfunction()
