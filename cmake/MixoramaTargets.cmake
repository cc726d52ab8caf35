# mx_library(NAME [RECURSE] [DEPS ...]): a static library mx_NAME from the sources of src/NAME
# (and its subfolders with RECURSE). A folder without sources yet gives an interface library,
# so dependents can name it already.
function(mx_library name)
    cmake_parse_arguments(A "RECURSE" "" "DEPS" ${ARGN})
    set(glob GLOB)
    if(A_RECURSE)
        set(glob GLOB_RECURSE)
    endif()
    file(${glob} sources CONFIGURE_DEPENDS
         ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp ${CMAKE_SOURCE_DIR}/src/${name}/*.h)
    list(FILTER sources EXCLUDE REGEX ".*/main\\.cpp$")
    set(cpp ${sources})
    list(FILTER cpp INCLUDE REGEX ".*\\.cpp$")
    if(cpp)
        add_library(mx_${name} STATIC ${sources})
        target_include_directories(mx_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
        target_link_libraries(mx_${name} PUBLIC ${A_DEPS})
    else()
        add_library(mx_${name} INTERFACE)
        target_include_directories(mx_${name} INTERFACE ${CMAKE_SOURCE_DIR}/src)
        target_link_libraries(mx_${name} INTERFACE ${A_DEPS})
    endif()
endfunction()

# mx_test(NAME [APP Core|Gui|Widgets] [DEPS ...]): a GoogleTest program test_NAME from
# tests/NAME/*.cpp, run by CTest. APP gives it the shared main with an application object of
# that kind (QProcess wants one, fonts a GUI one, widgets the widgets one), offscreen.
function(mx_test name)
    cmake_parse_arguments(A "" "APP" "DEPS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp
         ${CMAKE_SOURCE_DIR}/tests/${name}/*.h)
    if(NOT sources)
        return()
    endif()
    add_executable(test_${name} ${sources})
    set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR}/src)
    if(A_APP)
        target_sources(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/test_main.cpp)
        target_compile_definitions(test_${name} PRIVATE MIXORAMA_TEST_APP_${A_APP})
        set(gtest_entry GTest::gtest)
    else()
        set(gtest_entry GTest::gtest_main)
    endif()
    target_link_libraries(test_${name} PRIVATE ${A_DEPS} mx_testsupport ${gtest_entry} GTest::gmock)
    target_compile_definitions(test_${name} PRIVATE
        MIXORAMA_PROGRAM_DIR="${MIXORAMA_PROGRAM_DIR}"
        MIXORAMA_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    include(GoogleTest)
    # Two properties rather than one ENVIRONMENT list: the discovery passes properties through a
    # list of its own, which loses a list inside it.
    gtest_discover_tests(test_${name} DISCOVERY_MODE PRE_TEST
        PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
                   ENVIRONMENT_MODIFICATION "MIXORAMA_HOME=set:${MIXORAMA_PROGRAM_DIR}")
endfunction()
