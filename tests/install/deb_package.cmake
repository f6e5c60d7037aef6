# Builds the Debian package with cpack and checks that it holds the
# libraries, the public header, the tool and the module texts.
#   cmake -DBUILD_DIR=... -DWORK_DIR=... -P deb_package.cmake
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND cpack -G DEB -B ${WORK_DIR} WORKING_DIRECTORY ${BUILD_DIR}
  RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "deb_package: cpack failed\n${out}${err}")
endif()
file(GLOB packages ${WORK_DIR}/*.deb)
list(LENGTH packages count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "deb_package: expected one package, found ${packages}")
endif()
execute_process(COMMAND dpkg-deb -c ${packages} OUTPUT_VARIABLE contents RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "deb_package: dpkg-deb cannot read ${packages}")
endif()
foreach(expected usr/bin/velkor usr/lib/libtn_velkor.so.1 usr/lib/libtn_qmodules.so.1 usr/lib/libtn_platform.so.1
    usr/include/tn_velkor/ns_velkor.h usr/include/tn_velkor/version.h usr/share/tn_velkor/asn/tn_velkor/qcommon/qcommon.asn
    usr/lib/pkgconfig/tn_velkor.pc usr/share/man/man1/velkor.1 usr/share/bash-completion/completions/velkor)
  string(FIND "${contents}" "./${expected}" found)
  if(found EQUAL -1)
    message(FATAL_ERROR "deb_package: ${expected} is not in ${packages}")
  endif()
endforeach()
message(STATUS "deb_package: ${packages}")
