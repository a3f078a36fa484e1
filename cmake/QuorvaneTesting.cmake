# Helpers for the test suite.
#
#   quorvane_add_gtest(<name> SOURCES <files...> LIBS <targets...> [GUI] [XVFB] [TIMEOUT <s>])
#
# Every test runs with its own settings folder (the test mains point XDG_CONFIG_HOME and
# HOME at a fresh temporary folder), so no test ever reads or writes a user's settings.
# GUI tests get a QApplication on the offscreen platform. XVFB tests need a real X
# server: the whole binary then runs as one CTest entry under xvfb-run.
include(GoogleTest)
find_package(GTest REQUIRED)

find_program(XVFB_RUN xvfb-run)

function(quorvane_add_gtest name)
    cmake_parse_arguments(T "GUI;XVFB" "TIMEOUT" "SOURCES;LIBS" ${ARGN})
    if(NOT T_TIMEOUT)
        set(T_TIMEOUT 300)
    endif()
    add_executable(${name} ${T_SOURCES})
    if(T_GUI OR T_XVFB)
        target_link_libraries(${name} PRIVATE quorvane_test_main_gui)
    else()
        target_link_libraries(${name} PRIVATE quorvane_test_main_core)
    endif()
    target_link_libraries(${name} PRIVATE ${T_LIBS} GTest::gtest GTest::gmock)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    quorvane_set_warnings(${name})
    # The folders reach the tests as compile definitions of quorvane_test_support; the
    # environment variables only override them (gtest_discover_tests passes just one
    # ENVIRONMENT entry through, so nothing essential may depend on a list here).
    if(T_XVFB)
        if(NOT XVFB_RUN)
            message(FATAL_ERROR "xvfb-run is needed for ${name}: install the Debian package xvfb")
        endif()
        add_test(NAME ${name}
                 COMMAND ${XVFB_RUN} -a -s "-screen 0 1920x1200x24" $<TARGET_FILE:${name}>)
        set_tests_properties(${name} PROPERTIES
            TIMEOUT ${T_TIMEOUT} LABELS xvfb
            ENVIRONMENT "QT_QPA_PLATFORM=xcb;QUORVANE_BUILD_DIR=${CMAKE_BINARY_DIR};QUORVANE_SOURCE_DIR=${CMAKE_SOURCE_DIR};QUORVANE_SHARED_DIR=${CMAKE_SOURCE_DIR}/../shared")
    else()
        # GUI tests: the GUI test main picks the offscreen platform unless one is given.
        # Test names carry the binary's name, so `ctest -R <binary>` selects an area.
        gtest_discover_tests(${name}
            TEST_PREFIX "${name}:"
            NO_PRETTY_VALUES
            DISCOVERY_TIMEOUT 60
            PROPERTIES TIMEOUT ${T_TIMEOUT} ENVIRONMENT "QUORVANE_BUILD_DIR=${CMAKE_BINARY_DIR}")
    endif()
endfunction()
