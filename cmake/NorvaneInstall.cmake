# What `cmake --install` lays down: the library with the headers of it and of its siblings, a package that
# find_package() finds as GeneralToolsGui, the programs, and what a desktop needs to show the editor. The components
# library, development and editor are what packaging/ makes its packages of.

include(CMakePackageConfigHelpers)

# The siblings have names that are too common for a folder of libraries that all programs share.
set(NORVANE_SIBLING_DIR ${CMAKE_INSTALL_LIBDIR}/generaltoolsgui)
set(NORVANE_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR}/generaltoolsgui)
set(NORVANE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/GeneralToolsGui)
set(NORVANE_CATALOG_DIR ${CMAKE_INSTALL_DATADIR}/generaltoolsgui/translations)

# norvane_install_library(<name> HEADERS <file>...)
# A sibling goes to a folder of its own, headers too; generaltoolsgui stands where libraries stand.
function(norvane_install_library name)
    if(NOT NORVANE_INSTALL)
        return()
    endif()
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS")
    if(name STREQUAL "generaltoolsgui")
        set(package GeneralToolsGui)
        set(library_dir ${CMAKE_INSTALL_LIBDIR})
        set(header_dir ${NORVANE_HEADER_DIR})
        set(siblings $ORIGIN/generaltoolsgui)
    else()
        set(package Norvane)
        set(library_dir ${NORVANE_SIBLING_DIR})
        set(header_dir ${NORVANE_HEADER_DIR}/${name})
        set(siblings $ORIGIN)
    endif()
    set_target_properties(${name} PROPERTIES INSTALL_RPATH ${siblings})
    target_include_directories(${name} PUBLIC $<INSTALL_INTERFACE:${header_dir}>)
    install(TARGETS ${name} EXPORT ${package}Targets
        LIBRARY DESTINATION ${library_dir} COMPONENT library NAMELINK_COMPONENT development)
    install(FILES ${arg_HEADERS} DESTINATION ${header_dir} COMPONENT development)
endfunction()

# norvane_install_program(<name>)
function(norvane_install_program name)
    if(NOT NORVANE_INSTALL)
        return()
    endif()
    file(RELATIVE_PATH libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(${name} PROPERTIES
        INSTALL_RPATH "$ORIGIN/${libraries};$ORIGIN/${libraries}/generaltoolsgui")
    install(TARGETS ${name} RUNTIME COMPONENT editor)
endfunction()

# norvane_install_desktop_entry()
# What a desktop shows the editor by. The icon's name is that of the program.
function(norvane_install_desktop_entry)
    if(NOT NORVANE_INSTALL)
        return()
    endif()
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/norvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
        COMPONENT editor)
    install(FILES ${PROJECT_SOURCE_DIR}/siblings/resource/theme/app-norvane.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME norvane.svg
        COMPONENT editor)
endfunction()

# norvane_install_catalogs(<file>...)
# The library's texts in other languages, for translators of hosts.
function(norvane_install_catalogs)
    if(NORVANE_INSTALL)
        install(FILES ${ARGV} DESTINATION ${NORVANE_CATALOG_DIR} COMPONENT library)
    endif()
endfunction()

# norvane_install_package()
# Called once, when all libraries are declared.
function(norvane_install_package)
    if(NOT NORVANE_INSTALL)
        return()
    endif()
    foreach(package IN ITEMS Norvane GeneralToolsGui)
        install(EXPORT ${package}Targets NAMESPACE ${package}:: DESTINATION ${NORVANE_PACKAGE_DIR}
            COMPONENT development)
    endforeach()
    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/GeneralToolsGuiConfig.cmake.in
        ${PROJECT_BINARY_DIR}/GeneralToolsGuiConfig.cmake INSTALL_DESTINATION ${NORVANE_PACKAGE_DIR}
        PATH_VARS NORVANE_CATALOG_DIR)
    # Before 1.0 each minor version may break its hosts.
    write_basic_package_version_file(${PROJECT_BINARY_DIR}/GeneralToolsGuiConfigVersion.cmake
        COMPATIBILITY SameMinorVersion)
    install(FILES
        ${PROJECT_BINARY_DIR}/GeneralToolsGuiConfig.cmake
        ${PROJECT_BINARY_DIR}/GeneralToolsGuiConfigVersion.cmake
        DESTINATION ${NORVANE_PACKAGE_DIR}
        COMPONENT development)
endfunction()
