# What `cmake --install` lays out, and the package that outside plug-ins find with
# find_package(Norvo): Norvo::Norvo, Norvo::NorvoGUI.
include(CMakePackageConfigHelpers)

set(NORVO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Norvo)

install(TARGETS Norvo NorvoGUI EXPORT NorvoTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
# Loaded by name where they are needed, and linked by nobody: no library for the loader's own folder.
install(TARGETS NorvoGUIQml LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/norvo)
# Those that are left out serve devices, widgets and host alike, and are no part of the contract.
install(DIRECTORY plugin/norvo DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN "Truncation.h" EXCLUDE PATTERN "LibraryPart.h" EXCLUDE)
install(EXPORT NorvoTargets NAMESPACE Norvo:: DESTINATION ${NORVO_CMAKE_DIR})
# The build folder is found the same way, with CMAKE_PREFIX_PATH or Norvo_DIR naming it.
export(EXPORT NorvoTargets NAMESPACE Norvo:: FILE ${CMAKE_BINARY_DIR}/NorvoTargets.cmake)

if(TARGET norvo-panel)
    install(TARGETS norvo-panel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

configure_package_config_file(cmake/NorvoConfig.cmake.in ${CMAKE_BINARY_DIR}/NorvoConfig.cmake
    INSTALL_DESTINATION ${NORVO_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/NorvoConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/NorvoConfig.cmake ${CMAKE_BINARY_DIR}/NorvoConfigVersion.cmake
    DESTINATION ${NORVO_CMAKE_DIR})

# The same for build tools that ask pkg-config. Wherever the installation is moved to, they find it.
file(RELATIVE_PATH NORVO_PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
foreach(library norvo norvogui)
    configure_file(cmake/${library}.pc.in ${CMAKE_BINARY_DIR}/${library}.pc @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# What makes the program one of a desktop's and of a shell's.
install(FILES packaging/norvo-panel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/norvo-panel.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/norvo-panel.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES packaging/norvo-panel.bash-completion RENAME norvo-panel
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES packaging/norvo-panel@.service DESTINATION lib/systemd/user)
if(TARGET norvo-sound)
    install(FILES packaging/norvo-sound.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()

# The manual page says what the program says of itself, so that the program must run here.
find_package(Python3 COMPONENTS Interpreter QUIET)
if(Python3_FOUND AND (NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR))
    set(page ${CMAKE_BINARY_DIR}/norvo-panel.1)
    set(make_man ${PROJECT_SOURCE_DIR}/packaging/make-man)
    add_custom_command(OUTPUT ${page}
        COMMAND ${Python3_EXECUTABLE} ${make_man} ${page}
            ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:norvo-panel>
        DEPENDS norvo-panel ${make_man}
        VERBATIM)
    add_custom_target(norvo_man ALL DEPENDS ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
else()
    message(NOTICE "Without the manual page: it needs Python 3, and a program that runs on this machine")
endif()

# Laid out as here, so that they find one another.
set(NORVO_DOC_DIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/norvo-panel)
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE LICENSE.LGPL DESTINATION ${NORVO_DOC_DIR})
install(DIRECTORY docs DESTINATION ${NORVO_DOC_DIR}
    FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg" PATTERN "*.yaml")
install(DIRECTORY examples DESTINATION ${NORVO_DOC_DIR} USE_SOURCE_PERMISSIONS
    PATTERN "__pycache__" EXCLUDE
    PATTERN "*.state.yaml*" EXCLUDE
    PATTERN "mosquitto.db" EXCLUDE)
