# norvane_use_forms(<target> <folder>)
# Lets a source of the target include "ui_<Form>.h" for the forms in the folder. The forms go through
# uic-with-lists, which says what it adds to the toolkit's compiler.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

function(norvane_use_forms target folder)
    get_target_property(norvane_uic Qt5::uic IMPORTED_LOCATION)
    set(wrapper ${PROJECT_BINARY_DIR}/uic-with-lists)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/uic-with-lists.in ${wrapper} @ONLY
                   FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set_target_properties(${target} PROPERTIES
        AUTOUIC ON
        AUTOUIC_SEARCH_PATHS ${folder}
        AUTOUIC_EXECUTABLE ${wrapper})
endfunction()
