# Installation: libraries, public headers under include/tn_velkor/, a CMake
# package (find_package(tn_velkor), targets tn_velkor::tn_velkor,
# tn_velkor::tn_qmodules, tn_velkor::tn_platform) and a pkg-config file.
#
# Consumers include the public header as <tn_velkor/ns_velkor.h>; the headers
# it pulls in name their folders ("asn/...", "platform/..."), so both
# include/ and include/tn_velkor/ are on a consumer's include path.
include(CMakePackageConfigHelpers)

set(TN_VELKOR_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/tn_velkor)
foreach(target tn_platform tn_velkor)
  target_include_directories(${target} PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endforeach()

install(TARGETS tn_platform tn_velkor tn_qmodules EXPORT tn_velkorTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Public headers keep their folders below include/tn_velkor/; the public
# header of the conversions also sits at the top. The other headers of
# convert/ are private to the library and stay behind.
install(FILES convert/ns_velkor.h DESTINATION ${TN_VELKOR_INSTALL_INCLUDEDIR})
install(FILES convert/ns_velkor.h DESTINATION ${TN_VELKOR_INSTALL_INCLUDEDIR}/convert)
install(DIRECTORY asn frame platform DESTINATION ${TN_VELKOR_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")

install(EXPORT tn_velkorTargets NAMESPACE tn_velkor:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)
configure_package_config_file(cmake/tn_velkorConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)

# The pkg-config file finds the prefix from its own place, so the installed
# tree can be moved (or installed with `cmake --install --prefix`).
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(TN_VELKOR_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(TN_VELKOR_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
else()
  file(RELATIVE_PATH TN_VELKOR_PC_UP "/root/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/root")
  string(REGEX REPLACE "/$" "" TN_VELKOR_PC_UP "${TN_VELKOR_PC_UP}")
  set(TN_VELKOR_PC_PREFIX "\${pcfiledir}/${TN_VELKOR_PC_UP}")
  set(TN_VELKOR_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(TN_VELKOR_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(TN_VELKOR_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(cmake/tn_velkor.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tn_velkor.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tn_velkor.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
