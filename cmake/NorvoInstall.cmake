# What `cmake --install` lays out, and the package that outside plug-ins find with
# find_package(Norvo): Norvo::Norvo, Norvo::NorvoGUI.
include(CMakePackageConfigHelpers)

set(NORVO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Norvo)

install(TARGETS Norvo NorvoGUI EXPORT NorvoTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS NorvoGUIQml LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
# Those that are left out serve devices, widgets and host alike, and are no part of the contract.
install(DIRECTORY plugin/norvo DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN "Truncation.h" EXCLUDE PATTERN "LibraryPart.h" EXCLUDE)
install(EXPORT NorvoTargets NAMESPACE Norvo:: DESTINATION ${NORVO_CMAKE_DIR})
# The build folder is found the same way, with CMAKE_PREFIX_PATH or Norvo_DIR naming it.
export(EXPORT NorvoTargets NAMESPACE Norvo:: FILE ${CMAKE_BINARY_DIR}/NorvoTargets.cmake)

install(TARGETS norvoqmlwidget LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/norvo/plugins/qml)
if(TARGET norvo-panel)
    install(TARGETS norvo-panel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

configure_package_config_file(cmake/NorvoConfig.cmake.in ${CMAKE_BINARY_DIR}/NorvoConfig.cmake
    INSTALL_DESTINATION ${NORVO_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/NorvoConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/NorvoConfig.cmake ${CMAKE_BINARY_DIR}/NorvoConfigVersion.cmake
    DESTINATION ${NORVO_CMAKE_DIR})
