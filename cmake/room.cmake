# tunovka_room(NAME [LOGIC file...] [PORTABLE file...] [WINDOWS file...] [USES room...] [LIBS lib...])
#
# One room of the house, src/NAME, as a static library. LOGIC knows no window and is built for
# every system; WINDOWS is built for the product alone; PORTABLE stands in for a piece of WINDOWS
# on the development machine. USES names the rooms below this one. The program and the tests link
# the same libraries, so each source is listed once.
function(tunovka_room name)
    cmake_parse_arguments(room "" "" "LOGIC;PORTABLE;WINDOWS;USES;LIBS" ${ARGN})
    set(sources ${room_LOGIC})
    if(WIN32)
        list(APPEND sources ${room_WINDOWS})
    else()
        list(APPEND sources ${room_PORTABLE})
    endif()
    if(sources)
        add_library(${name} STATIC ${sources})
        target_link_libraries(${name} PUBLIC tunovka_options ${room_USES})
        if(WIN32)
            target_link_libraries(${name} PUBLIC ${room_LIBS})
        endif()
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE tunovka_options ${room_USES})
    endif()
endfunction()
