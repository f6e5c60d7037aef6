# Installs the build tree into a scratch prefix and checks the package from
# the outside: the installed layout, a CMake consumer (find_package), a
# pkg-config consumer, and the dlopen host on the installed library.
#
#   cmake -DBUILD_DIR=... -DWORK_DIR=... -DLIBDIR=lib -DGENERATOR=Ninja -DCXX=c++
#         [-DEXTRA_FLAGS="-fsanitize=..."] -DCONSUMER_DIR=... -DHOST_SOURCE=...
#         -P install_package.cmake
cmake_minimum_required(VERSION 3.18)

foreach(required BUILD_DIR WORK_DIR LIBDIR GENERATOR CXX CONSUMER_DIR HOST_SOURCE)
  if(NOT DEFINED ${required})
    message(FATAL_ERROR "install_package: ${required} is not set")
  endif()
endforeach()

# Runs a command and stops the test when it fails; its output is shown.
function(run_step what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  message(STATUS "${what}\n${out}${err}")
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "install_package: ${what} failed (${result})")
  endif()
endfunction()

set(prefix ${WORK_DIR}/prefix)
set(libdir ${prefix}/${LIBDIR})
set(includedir ${prefix}/include)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

run_step("install" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# ---- layout ------------------------------------------------------------------
foreach(present
    ${includedir}/tn_velkor/ns_velkor.h
    ${includedir}/tn_velkor/asn/asn_list.h
    ${includedir}/tn_velkor/qcommon/qasn_port_index.h
    ${includedir}/tn_qmodules/qinventoryfiber/qasn_fiber_info.h
    ${includedir}/tn_platform/asn/ber.h
    ${includedir}/tn_platform/module/module_mgr.h
    ${prefix}/share/tn_velkor/qcommon.asn
    ${prefix}/share/tn_velkor/qinventoryfiber.asn
    ${libdir}/libtn_velkor.so
    ${libdir}/libtn_platform.so
    ${libdir}/libtn_qmodules.so
    ${libdir}/cmake/tn_velkor/tn_velkorConfig.cmake
    ${libdir}/cmake/tn_velkor/tn_velkorConfigVersion.cmake
    ${libdir}/pkgconfig/tn_velkor.pc)
  if(NOT EXISTS ${present})
    message(FATAL_ERROR "install_package: ${present} is not installed")
  endif()
endforeach()
foreach(private tn_velkor/convert tn_velkor/frame asn platform convert frame)
  if(EXISTS ${includedir}/${private})
    message(FATAL_ERROR "install_package: ${private} is installed")
  endif()
endforeach()
file(GLOB_RECURSE sources ${includedir}/*.cpp ${includedir}/*.in)
if(sources)
  message(FATAL_ERROR "install_package: non-header files installed: ${sources}")
endif()
# Every quoted include of an installed header must itself be installed.
file(GLOB_RECURSE headers RELATIVE ${includedir} ${includedir}/*.h)
foreach(header ${headers})
  file(STRINGS ${includedir}/${header} includes REGEX "^#include \"")
  foreach(line ${includes})
    string(REGEX REPLACE "^#include \"([^\"]+)\".*" "\\1" included "${line}")
    if(NOT EXISTS ${includedir}/${included})
      message(FATAL_ERROR "install_package: ${header} includes ${included}, which is not installed")
    endif()
  endforeach()
endforeach()

# ---- CMake consumer ------------------------------------------------------------
set(consumer_build ${WORK_DIR}/consumer)
run_step("configure the CMake consumer" ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${consumer_build} -G ${GENERATOR}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix} -DHOST_SOURCE=${HOST_SOURCE}
  "-DCMAKE_CXX_FLAGS=${EXTRA_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${EXTRA_FLAGS}")
run_step("build the CMake consumer" ${CMAKE_COMMAND} --build ${consumer_build})
run_step("run the CMake consumer" ${consumer_build}/consumer)

# ---- pkg-config consumer -------------------------------------------------------
set(ENV{PKG_CONFIG_PATH} ${libdir}/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs tn_velkor RESULT_VARIABLE result OUTPUT_VARIABLE flags
  OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "install_package: pkg-config does not know tn_velkor")
endif()
message(STATUS "pkg-config --cflags --libs tn_velkor: ${flags}")
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(extra UNIX_COMMAND "${EXTRA_FLAGS}")
run_step("build the pkg-config consumer" ${CXX} -std=c++17 ${extra} ${CONSUMER_DIR}/consumer.cpp ${flags}
  -Wl,-rpath,${libdir} -o ${WORK_DIR}/pkg_config_consumer)
run_step("run the pkg-config consumer" ${WORK_DIR}/pkg_config_consumer)

# ---- the installed library, loaded as the server loads it ------------------------------
run_step("dlopen the installed library" ${consumer_build}/installed_dlopen_host ${libdir}/libtn_velkor.so)
