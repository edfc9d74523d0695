# The options that every target shares, as one interface library.
option(TUNOVKA_FUZZING "Build the fuzz targets with clang's libFuzzer, and nothing else that runs" OFF)
add_library(tunovka_options INTERFACE)
target_include_directories(tunovka_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(tunovka_options INTERFACE
    -Wall -Wextra
    $<$<CXX_COMPILER_ID:GNU>:-Werror>  # the product's compiler; clang only fuzzes
    -Wno-missing-field-initializers)  # named arguments leave out what has a default

if(WIN32)
    set(CMAKE_CXX_FLAGS_MINSIZEREL "-Os -DNDEBUG")
    target_compile_definitions(tunovka_options INTERFACE
        UNICODE _UNICODE NOMINMAX STRICT WIN32_LEAN_AND_MEAN
        WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0700)
    target_compile_options(tunovka_options INTERFACE
        -fstack-protector-strong -ffunction-sections -fdata-sections)
    # No time stamp: the same input gives the same bytes.
    target_link_options(tunovka_options INTERFACE
        -static -municode -s -fstack-protector-strong
        -Wl,--gc-sections,--dynamicbase,--nxcompat,--no-insert-timestamp)
else()
    target_compile_options(tunovka_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tunovka_options INTERFACE -fsanitize=address,undefined)
    if(TUNOVKA_FUZZING)
        target_compile_options(tunovka_options INTERFACE -O1 -fsanitize=fuzzer-no-link)
    endif()
endif()

find_program(TUNOVKA_CCACHE ccache)
if(TUNOVKA_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${TUNOVKA_CCACHE})
endif()
