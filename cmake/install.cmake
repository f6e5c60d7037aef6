# Installation: libraries, headers under one include root, the ASN.1 module
# texts, a CMake package (find_package(tn_velkor), target tn_velkor::tn_velkor)
# and a pkg-config file.
#
# Every installed header sits under a project-named folder (tn_velkor/,
# tn_qmodules/, tn_platform/) and includes the others by that prefixed path,
# so a consumer needs include/ alone on its include path, and folders of its
# own named asn/, platform/, convert/ or frame/ cannot shadow ours.
include(CMakePackageConfigHelpers)

install(TARGETS tn_platform tn_qmodules tn_velkor EXPORT tn_velkorTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# The public headers and the closure of their includes (public_headers.cmake),
# found at install time, when the generated record headers exist.
include(${CMAKE_CURRENT_LIST_DIR}/public_headers.cmake)
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(TN_INCLUDE_DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(TN_INCLUDE_DESTINATION "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
install(CODE "
  include(\"${CMAKE_CURRENT_LIST_DIR}/public_headers.cmake\")
  tn_install_public_headers(\"${TN_PUBLIC_HEADER_ROOTS}\" \"${PROJECT_SOURCE_DIR};${TN_GENERATED_INCLUDE_DIR}\"
    \"${TN_INCLUDE_DESTINATION}\")")

# The ASN.1 texts of every interface module, laid out as their headers are
# (share/tn_velkor/asn/tn_velkor/qcommon/qcommon.asn beside
# include/tn_velkor/qcommon/qcommon.h): a service's modules import from them,
# and peers build their own codecs from them. With them the record compiler
# and the CMake function that runs it (tn_asn_module, asn_module.cmake).
foreach(folder tn_velkor/qcommon tn_qmodules)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tn_velkor/asn/${folder}
    FILES_MATCHING PATTERN "*.asn")
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/recordc/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tn_velkor/recordc
  FILES_MATCHING PATTERN "*.py" PATTERN "__pycache__" EXCLUDE)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/asn_module.cmake DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)

install(EXPORT tn_velkorTargets NAMESPACE tn_velkor:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor)
set(TN_VELKOR_DATA_DIR ${CMAKE_INSTALL_DATADIR}/tn_velkor)
configure_package_config_file(cmake/tn_velkorConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/tn_velkorConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/tn_velkor
  PATH_VARS TN_VELKOR_DATA_DIR)
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
