# `cpack -G DEB` in the build tree: one Debian package with the libraries,
# the headers, the velkor tool and the module texts, as installed.
set(CPACK_PACKAGE_NAME tn-velkor)
set(CPACK_PACKAGE_VENDOR "tn_velkor")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Conversion routines between Q-interface records and the server's model objects")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "tn_velkor developers")
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libstdc++6")
include(CPack)
