# How everything here is compiled, and the three functions that leaf folders use.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_AUTORCC_OPTIONS --no-compress) # Types tell of themselves at every start.
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(NORVO_PLUGIN_DIRECTORY ${CMAKE_BINARY_DIR}/plugins)

# One run path for the build tree and the installed one: where CMake rewrites it at the installation, it
# pads that of the build tree with colons, and an empty entry stands for the current folder.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN/../lib")
list(REMOVE_DUPLICATES CMAKE_INSTALL_RPATH)

find_program(NORVO_CCACHE ccache)
if(NORVO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # The precompiled headers need the sloppiness; see ccache's manual, "Precompiled headers".
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${NORVO_CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(NORVO_WERROR)
    add_compile_options(-Werror)
endif()
# Messages carry no source place in any kind of build, so that their text is all there is to them.
add_compile_definitions(QT_NO_MESSAGELOGCONTEXT)

# Not every compiler does it unasked: what is linked for its headers alone is not loaded.
add_link_options(-Wl,--as-needed)

if(NORVO_SANITIZE OR NORVO_FUZZ)
    add_compile_definitions(NORVO_SANITIZED)
endif()
if(NORVO_SANITIZE)
    add_compile_options(-fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all
                        -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=address,undefined)
endif()

if(NORVO_FUZZ)
    # Without "function" and "vptr", which compare types across libraries that hide theirs.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow
                        -fno-sanitize=function,vptr -fno-sanitize-recover=all
                        -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=address,undefined)
endif()

# One set of precompiled headers for all that is large: a set takes a quarter of a gigabyte.
find_package(Qt5 5.15 REQUIRED COMPONENTS Widgets)
add_library(norvo_headers OBJECT ${CMAKE_CURRENT_LIST_DIR}/headers.cpp)
target_link_libraries(norvo_headers PRIVATE Qt5::Widgets)
target_precompile_headers(norvo_headers PRIVATE <QtWidgets>)

# All plug-ins of the plug-in folder.
add_custom_target(norvo_plugins)

# norvo_add_plugin(NAME SOURCES... [LIBRARIES ...] [OUTPUT_DIRECTORY folder])
# A plug-in that exports Qt's two plug-in entries and nothing else. In the plug-in folder, unless
# another is named: that one is not installed either.
function(norvo_add_plugin name)
    cmake_parse_arguments(ARG "" "OUTPUT_DIRECTORY" "SOURCES;LIBRARIES" ${ARGN})
    set(is_ours FALSE)
    if(NOT ARG_OUTPUT_DIRECTORY)
        set(is_ours TRUE)
        set(ARG_OUTPUT_DIRECTORY ${NORVO_PLUGIN_DIRECTORY})
    endif()
    file(RELATIVE_PATH libraries ${ARG_OUTPUT_DIRECTORY} ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
    set(exports ${PROJECT_SOURCE_DIR}/cmake/plugin-exports.map)
    add_library(${name} MODULE ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
    target_link_options(${name} PRIVATE -Wl,--version-script=${exports})
    set_target_properties(${name} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY ${ARG_OUTPUT_DIRECTORY}
        LINK_DEPENDS ${exports}
        INSTALL_RPATH "$ORIGIN/../..;$ORIGIN/${libraries}")
    if(is_ours)
        add_dependencies(norvo_plugins ${name})
        install(TARGETS ${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/norvo/plugins)
    endif()
endfunction()

# norvo_add_room(NAME SOURCES ... LIBRARIES ... [WIDGETS])
# One room of the host: a static library, so that tests and benchmarks can link it. WIDGETS: what it
# links includes Qt's widgets, so that it can share their precompiled headers.
function(norvo_add_room name)
    cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES})
    if(ARG_WIDGETS)
        target_precompile_headers(${name} REUSE_FROM norvo_headers)
    endif()
endfunction()

# norvo_add_tests(NAME SOURCES ... [LIBRARIES ...] [DEPENDS ...] [TIMEOUT seconds])
# One Qt Test program for all the tests of an area. Each tst_X.cpp among the sources, which ends with
# one of the macros of tests/TestMain.h, is a test tst_X of ctest: `NAME tst_X`, run off-screen; a
# connection that Qt refuses makes it fail.
function(norvo_add_tests name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LIBRARIES;DEPENDS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    add_executable(${name} ${PROJECT_SOURCE_DIR}/tests/TestMain.cpp ${ARG_SOURCES})
    # Qt Quick for all of them, so that all share one set of precompiled headers.
    target_link_libraries(${name} PRIVATE Qt5::Test Qt5::QuickWidgets ${ARG_LIBRARIES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE
        NORVO_BUILD_DIR="${CMAKE_BINARY_DIR}" NORVO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    target_precompile_headers(${name} REUSE_FROM norvo_headers)
    # Qt's own macros for skipped tests.
    target_compile_options(${name} PRIVATE
        $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    add_dependencies(tests ${name})
    if(ARG_DEPENDS)
        add_dependencies(${name} ${ARG_DEPENDS})
    endif()
    foreach(source ${ARG_SOURCES})
        if(source MATCHES "(tst_[A-Za-z0-9_]+)\\.cpp$")
            norvo_add_test_run(${CMAKE_MATCH_1} ${name} ${CMAKE_MATCH_1} ${ARG_TIMEOUT})
        endif()
    endforeach()
endfunction()

# norvo_add_test_run(NAME PROGRAM CLASS TIMEOUT)
# A run of one test class under a name of its own.
function(norvo_add_test_run name program class timeout)
    add_test(NAME ${name} COMMAND ${program} ${class} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${timeout}
        FAIL_REGULAR_EXPRESSION "QObject::connect:"
        ENVIRONMENT "${NORVO_TEST_ENVIRONMENT}")
endfunction()

# norvo_add_look_runs(PROGRAM)
# All classes of a test program that links TestLook.cpp once more, in the light and in the dark look.
function(norvo_add_look_runs program)
    foreach(look light dark)
        set(name ${program}_${look})
        add_test(NAME ${name}
            COMMAND ${PROJECT_SOURCE_DIR}/tests/every-class $<TARGET_FILE:${program}>
            WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
        set_tests_properties(${name} PROPERTIES
            TIMEOUT 600
            COST 600 # Begun first, since nothing else takes as long.
            FAIL_REGULAR_EXPRESSION "QObject::connect:"
            ENVIRONMENT "${NORVO_TEST_ENVIRONMENT};NORVO_TEST_LOOK=${look}")
    endforeach()
endfunction()

# norvo_add_benchmark(NAME [SOURCES ...] [LIBRARIES ...])
# A Google Benchmark program NAME.cpp; run it by hand from the release build.
function(norvo_add_benchmark name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${name}.cpp ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE benchmark::benchmark ${ARG_LIBRARIES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${name} PRIVATE
        NORVO_BUILD_DIR="${CMAKE_BINARY_DIR}" NORVO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/benchmarks)
    add_dependencies(benchmarks ${name})
endfunction()
