# GoogleTest is built from Debian's package of its sources, with the product's own compiler.
set(TUNOVKA_GOOGLETEST /usr/src/googletest/googletest CACHE PATH "GoogleTest's sources")
add_library(gtest STATIC EXCLUDE_FROM_ALL ${TUNOVKA_GOOGLETEST}/src/gtest-all.cc)
target_include_directories(gtest SYSTEM PUBLIC ${TUNOVKA_GOOGLETEST}/include PRIVATE ${TUNOVKA_GOOGLETEST})
if(NOT WIN32)
    target_sources(gtest PRIVATE ${TUNOVKA_GOOGLETEST}/src/gtest_main.cc)
    # One kind of std::vector and std::string in the whole program, or the sanitizer sees ghosts.
    target_compile_options(gtest PRIVATE -fsanitize=address,undefined)
endif()

# Both builds are run as one: their tests' names must differ.
set(TUNOVKA_TEST_PREFIX host.)
if(WIN32)
    set(TUNOVKA_TEST_PREFIX wine.)
endif()

# tunovka_test(NAME SOURCES file... [USES room...] [LIBS lib...] [LABEL unit|windows] [ALONE])
#
# One test program, registered once in CTest under its label (unit when none is given). On the
# product's side it runs under Wine. ALONE: not beside another test, because it needs the screen's
# foreground or the sound to itself. The main function comes with it.
function(tunovka_test name)
    cmake_parse_arguments(test "ALONE" "LABEL" "SOURCES;USES;LIBS" ${ARGN})
    if(NOT test_LABEL)
        set(test_LABEL unit)
    endif()
    add_executable(${name} ${test_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${test_USES} tunovka_options gtest)
    if(WIN32)
        target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/main.cpp)
        target_link_libraries(${name} PRIVATE ${test_LIBS} ole32 comctl32)
    endif()
    set(test ${TUNOVKA_TEST_PREFIX}${name})
    add_test(NAME ${test} COMMAND ${name})
    # A test program that ends midway may well end with 0: its last line has to be there. What ran
    # last is named by the line before.
    set_tests_properties(${test} PROPERTIES LABELS ${test_LABEL} TIMEOUT 900
        PASS_REGULAR_EXPRESSION "\\[  PASSED  \\]" FAIL_REGULAR_EXPRESSION "\\[  FAILED  \\]")
    if(test_ALONE)
        set_tests_properties(${test} PROPERTIES RUN_SERIAL ON)
    endif()
endfunction()

# tunovka_check(NAME COMMAND argument...): a check by a script, which may skip itself (code 77).
function(tunovka_check name)
    add_test(NAME check.${name} ${ARGN})
    set_tests_properties(check.${name} PROPERTIES LABELS check SKIP_RETURN_CODE 77)
endfunction()
