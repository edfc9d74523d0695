# What the program carries inside its file: icon, manifest, version and the packed skin.

find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(TUNOVKA_SKIN ${PROJECT_BINARY_DIR}/skin.bin)
file(GLOB pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/assets/pictures/*.png)
add_custom_command(
    OUTPUT ${TUNOVKA_SKIN}
    COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/tools/pack-pictures
            ${PROJECT_SOURCE_DIR}/assets/pictures.txt ${PROJECT_SOURCE_DIR}/assets/pictures
            ${TUNOVKA_SKIN}
    DEPENDS ${PROJECT_SOURCE_DIR}/tools/pack-pictures ${PROJECT_SOURCE_DIR}/assets/pictures.txt
            ${pictures}
    COMMENT "Packing the skin"
    VERBATIM)
# Built by itself for who reads the file and not the resource.
add_custom_target(tunovka_skin DEPENDS ${TUNOVKA_SKIN})

if(WIN32)
    set(TUNOVKA_MANIFEST ${PROJECT_BINARY_DIR}/tunovka.manifest)
    configure_file(${PROJECT_SOURCE_DIR}/src/app/tunovka.manifest.in ${TUNOVKA_MANIFEST} @ONLY)
    configure_file(${PROJECT_SOURCE_DIR}/src/app/tunovka.rc.in ${PROJECT_BINARY_DIR}/tunovka.rc @ONLY)
    set_source_files_properties(${PROJECT_BINARY_DIR}/tunovka.rc PROPERTIES
        OBJECT_DEPENDS
        "${TUNOVKA_SKIN};${TUNOVKA_MANIFEST};${PROJECT_SOURCE_DIR}/assets/tunovka.ico")
    add_library(tunovka_resource_object OBJECT ${PROJECT_BINARY_DIR}/tunovka.rc)
    add_dependencies(tunovka_resource_object tunovka_skin)
endif()

# tunovka_resources(TARGET): puts them into a program, be it the product or a test.
function(tunovka_resources target)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:tunovka_resource_object>)
endfunction()
