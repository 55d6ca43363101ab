# A build on another machine for boards with 64-bit ARM processors, against the arm64 packages of Debian that
# packaging/cross-arm64 unpacks.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)

if(NOT CMAKE_SYSROOT)
    get_filename_component(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/arm64-sysroot ABSOLUTE)
endif()
# The installation that plug-ins from outside are built against.
get_filename_component(CMAKE_FIND_ROOT_PATH ${CMAKE_CURRENT_LIST_DIR}/../build/arm64/norvo ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/aarch64-linux-gnu/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)

# What is built runs here all the same, slowly: for the manual page, and for a look at a panel.
find_program(NORVO_QEMU qemu-aarch64-static)
if(NORVO_QEMU)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${NORVO_QEMU} -L ${CMAKE_SYSROOT})
endif()
