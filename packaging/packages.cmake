# SPDX-FileCopyrightText: 2026 The bxwifid developers
# SPDX-License-Identifier: BSD-3-Clause

# The Debian packages, one for each install component; `cpack` builds them.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGE_CONTACT "The bxwifid developers <bxwifid@brelvix.example>" CACHE STRING
    "Name and address of whoever ships the packages")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_COMPONENTS_ALL bxwifid libbxwificlient1 libbxwifi-dev)
if(BXWIFI_QML)
    list(APPEND CPACK_COMPONENTS_ALL qml-module-bxwifi)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(same_version "(= ${PROJECT_VERSION})")

set(CPACK_DEBIAN_BXWIFID_PACKAGE_NAME bxwifid)
set(CPACK_DEBIAN_BXWIFID_PACKAGE_SECTION net)
set(CPACK_DEBIAN_BXWIFID_PACKAGE_DEPENDS
    "libbxwificlient1 ${same_version}, dbus, wpasupplicant, \
systemd | systemd-standalone-sysusers | systemd-sysusers")
set(CPACK_DEBIAN_BXWIFID_PACKAGE_RECOMMENDS "busybox, libubootenv-tool, udhcpc")
set(CPACK_DEBIAN_BXWIFID_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/postinst
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/prerm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers)
set(CPACK_DEBIAN_BXWIFID_DESCRIPTION
"Network-configuration daemon for embedded devices
bxwifid configures the one wireless interface of an embedded device through
wpa_supplicant, and the addressing of its wired interface through the boot
loader's environment. The device's user interface calls it over the system
bus, and so does the command bxwifictl, which is part of this package.")

set(CPACK_DEBIAN_LIBBXWIFICLIENT1_PACKAGE_NAME libbxwificlient1)
set(CPACK_DEBIAN_LIBBXWIFICLIENT1_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBBXWIFICLIENT1_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers)
set(CPACK_DEBIAN_LIBBXWIFICLIENT1_DESCRIPTION
"Network configuration through bxwifid, library for Qt programs
A typed class for programs that let a user choose networks and set addresses
on a device where bxwifid runs. It speaks to the daemon over the system bus.")

set(CPACK_DEBIAN_LIBBXWIFI-DEV_PACKAGE_NAME libbxwifi-dev)
set(CPACK_DEBIAN_LIBBXWIFI-DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBBXWIFI-DEV_PACKAGE_DEPENDS
    "bxwifid ${same_version}, libbxwificlient1 ${same_version}, qtbase5-dev")
set(CPACK_DEBIAN_LIBBXWIFI-DEV_DESCRIPTION
"Network configuration through bxwifid, development files
Headers, CMake package and pkg-config files for programs that call bxwifid
through its client library, and for launchers of one's own around the daemon's
library.")

set(CPACK_DEBIAN_QML-MODULE-BXWIFI_PACKAGE_NAME qml-module-bxwifi)
set(CPACK_DEBIAN_QML-MODULE-BXWIFI_PACKAGE_SECTION libs)
# What its files import; the version binds what it hands out to the library that it comes from.
set(CPACK_DEBIAN_QML-MODULE-BXWIFI_PACKAGE_DEPENDS
    "libbxwificlient1 ${same_version}, qml-module-qtquick2, qml-module-qtquick-window2, \
qml-module-qtquick-controls2, qml-module-qtquick-layouts")
set(CPACK_DEBIAN_QML-MODULE-BXWIFI_DESCRIPTION
"Network configuration through bxwifid, QML modules
BxWifi brings the client library's classes to QML. BxWifi.Controls has the
parts of a user interface that lets somebody choose a network: a list, a sheet
that asks for the passphrase, and a form for the wired interface.")

# Which version of a library a program needs, by the names that it uses. Some names differ where a
# long has 32 bits; there the version of the package has to do.
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    foreach(package IN ITEMS bxwifid libbxwificlient1)
        configure_file(debian/${package}.symbols debian/${package}/symbols COPYONLY)
        string(TOUPPER ${package} component)
        list(APPEND CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA
            ${CMAKE_CURRENT_BINARY_DIR}/debian/${package}/symbols)
    endforeach()
endif()

# Each package has the licences and a change log under its own name.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
file(READ ${PROJECT_SOURCE_DIR}/NOTICE notice)
file(CONFIGURE OUTPUT debian/copyright CONTENT "${licence}\n${notice}" @ONLY)
string(TIMESTAMP changelog_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(debian/changelog.in debian/changelog @ONLY)
compress(${CMAKE_CURRENT_BINARY_DIR}/debian/changelog changelog)
foreach(package IN LISTS CPACK_COMPONENTS_ALL)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/debian/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${package})
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${package})
endforeach()
foreach(package IN ITEMS bxwifid libbxwificlient1)
    install(FILES debian/${package}.lintian-overrides RENAME ${package}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${package})
endforeach()

# cpack dates the files in its archives by this.
file(CONFIGURE OUTPUT environment.cmake CONTENT
    "set(ENV{SOURCE_DATE_EPOCH} $ENV{SOURCE_DATE_EPOCH})\n" @ONLY)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_BINARY_DIR}/environment.cmake)

include(CPack)
