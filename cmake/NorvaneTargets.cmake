# How every target of the project is made: one language level, one set of warnings, hidden symbols,
# the toolkit's generators, and one way to declare a library, a test and a benchmark.

include(GenerateExportHeader)
include(NorvaneInstall)

find_program(NORVANE_CCACHE ccache)
find_program(NORVANE_LLD ld.lld)
if(PROJECT_IS_TOP_LEVEL)
    # It takes a fifth of the time of the usual one, and hundreds of tests are linked.
    if(NORVANE_LLD)
        add_link_options(-fuse-ld=lld)
    endif()
    if(NORVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${NORVANE_CCACHE})
    endif()
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
    set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

# norvane_target(<target>)
# The settings that hold for all targets.
function(norvane_target target)
    set_target_properties(${target} PROPERTIES
        AUTOMOC ON
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        CXX_EXTENSIONS OFF)
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DEPRECATED_WARNINGS)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override)
    if(NORVANE_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(NORVANE_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${NORVANE_SANITIZE} -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${NORVANE_SANITIZE})
        if(NORVANE_SANITIZE MATCHES "undefined")
            target_compile_options(${target} PRIVATE -fno-sanitize-recover=all)
        endif()
    endif()
endfunction()

# norvane_precompile_toolkit(<target>)
# The toolkit's headers are half of what the source of a widget costs to compile; all targets share them compiled once.
# That each source includes what it needs is seen by the checkers and the header test, which do without.
function(norvane_precompile_toolkit target)
    if(NOT NORVANE_PRECOMPILE_TOOLKIT)
        return()
    endif()
    if(NOT TARGET toolkit_headers)
        file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/toolkit_headers.cpp CONTENT "")
        add_library(toolkit_headers STATIC ${PROJECT_BINARY_DIR}/toolkit_headers.cpp)
        norvane_target(toolkit_headers)
        set_target_properties(toolkit_headers PROPERTIES AUTOMOC OFF)
        target_link_libraries(toolkit_headers PRIVATE Qt5::Widgets)
        target_precompile_headers(toolkit_headers PRIVATE <QtWidgets>)
    endif()
    target_precompile_headers(${target} REUSE_FROM toolkit_headers)
endfunction()

# norvane_add_library(<name> SOURCES <file>... [LINK <target>...])
# A shared library with include/ beside it as its public folder and <NAME>_EXPORT as its export macro,
# which stands in <name>_export.h.
function(norvane_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "INCLUDE" "SOURCES;LINK")
    if(NOT arg_INCLUDE)
        set(arg_INCLUDE ${CMAKE_CURRENT_SOURCE_DIR}/include)
    endif()
    file(GLOB headers CONFIGURE_DEPENDS ${arg_INCLUDE}/*.h)
    add_library(${name} SHARED ${arg_SOURCES} ${headers})
    norvane_target(${name})
    generate_export_header(${name})
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${arg_INCLUDE}> $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>)
    target_link_libraries(${name} PUBLIC ${arg_LINK})
    norvane_install_library(${name} HEADERS ${headers} ${CMAKE_CURRENT_BINARY_DIR}/${name}_export.h)
endfunction()

# norvane_add_sibling(<name> SOURCES <file>... [LINK <target>...])
# One of the libraries below generaltoolsgui, known to hosts as Norvane::<name>.
function(norvane_add_sibling name)
    norvane_add_library(${name} ${ARGN})
    add_library(Norvane::${name} ALIAS ${name})
endfunction()

# norvane_test_target(<target>)
# The settings of what belongs to the tests.
function(norvane_test_target target)
    norvane_target(${target})
    # The second one changes what the toolkit's test headers hold, and they are compiled once for all tests.
    target_compile_options(${target} PRIVATE -UQT_NO_CAST_FROM_ASCII -UQT_NETWORK_LIB)
    if(NORVANE_SANITIZE)
        # To optimise what the sanitizers add takes half of the time that a test takes to compile.
        target_compile_options(${target} PRIVATE -O0)
    endif()
endfunction()

# norvane_add_test(<name> SOURCES <file>... [LINK <target>...] [NO_CTEST])
# A test executable on the offscreen platform, linked with the shared test support.
# Its first source ends with the inclusion of its own <source>.moc.
function(norvane_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "NO_CTEST" "" "SOURCES;LINK")
    add_executable(${name} ${arg_SOURCES})
    norvane_test_target(${name})
    # One plain call is a tenth of what the automatic one costs, and there are hundreds of tests.
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    list(GET arg_SOURCES 0 source)
    get_filename_component(moc ${source} NAME_WE)
    set(moc ${CMAKE_CURRENT_BINARY_DIR}/moc/${moc}.moc)
    add_custom_command(OUTPUT ${moc}
        COMMAND Qt5::moc ${CMAKE_CURRENT_SOURCE_DIR}/${source} -o ${moc}
        DEPENDS ${source}
        VERBATIM)
    target_sources(${name} PRIVATE ${moc})
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/moc)
    target_link_libraries(${name} PRIVATE ${arg_LINK} testsupport Qt5::Test)
    target_precompile_headers(${name} REUSE_FROM testsupport)
    if(NOT arg_NO_CTEST)
        add_test(NAME ${name} COMMAND ${name})
        norvane_test_environment(${name})
    endif()
endfunction()

# norvane_test_environment(<test>)
# What every test runs under: no display, no settings of the person who runs it, the known leaks of others left out.
function(norvane_test_environment test)
    set_tests_properties(${test} PROPERTIES
        TIMEOUT 600
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANGUAGE=en;XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/test-home;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
