# Installation: libraries, public headers under include/tn_velkor/, a CMake
# package (find_package(tn_velkor), target tn_velkor::tn_velkor) and a
# pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS tn_platform tn_velkor tn_qmodules EXPORT tn_velkorTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Public headers keep their folders below include/tn_velkor/; the one
# umbrella header sits at the top. Private headers of convert/ stay behind.
install(FILES convert/ns_velkor.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tn_velkor OPTIONAL)
install(DIRECTORY asn frame platform DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tn_velkor
  FILES_MATCHING PATTERN "*.h")
install(FILES convert/ns_velkor.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tn_velkor/convert OPTIONAL)

install(EXPORT tn_velkorTargets NAMESPACE tn_velkor:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)
configure_package_config_file(cmake/tn_velkorConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)

configure_file(cmake/tn_velkor.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tn_velkor.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tn_velkor.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
