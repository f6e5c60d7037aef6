# Installs the build tree into a scratch prefix and checks the package from
# the outside: the installed layout, the exported symbols, every installed
# header under strict warnings (g++ and clang++), the C++ snippets of the
# README and docs/, a CMake consumer (find_package, set to C++14: the target
# raises it) and a pkg-config consumer (both with shadowing folders of their
# own first on the include path and linked with --as-needed), and the dlopen
# host on the installed library.
#
#   cmake -DBUILD_DIR=... -DWORK_DIR=... -DLIBDIR=lib -DGENERATOR=Ninja -DCXX=c++
#         [-DEXTRA_FLAGS="-fsanitize=..."] -DCONSUMER_DIR=... -DHOST_SOURCE=...
#         -DREADME=... -P install_package.cmake
cmake_minimum_required(VERSION 3.18)

foreach(required BUILD_DIR WORK_DIR LIBDIR GENERATOR CXX CONSUMER_DIR HOST_SOURCE README)
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

# A failure that lets the later checks run; the test fails at its end.
function(fail_later message)
  message(WARNING "install_package: ${message}")
  set_property(GLOBAL APPEND PROPERTY failures "${message}")
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
    ${includedir}/tn_velkor/qcommon/qcommon.h
    ${includedir}/tn_qmodules/qinventoryfiber/qinventoryfiber.h
    ${includedir}/tn_qmodules/asn_catalogue.h
    ${includedir}/tn_platform/asn/ber.h
    ${includedir}/tn_platform/module/module_mgr.h
    ${prefix}/share/tn_velkor/asn/tn_velkor/qcommon/qcommon.asn
    ${prefix}/share/tn_velkor/asn/tn_qmodules/qinventoryfiber/qinventoryfiber.asn
    ${prefix}/share/tn_velkor/recordc/recordc.py
    ${libdir}/cmake/tn_velkor/asn_module.cmake
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
# Internals stay behind: the converters' and the module object's headers, the
# JSON transcoder and the text-code tables.
foreach(private tn_velkor/convert tn_velkor/frame tn_platform/asn/asn_json_transcoder.h
    tn_platform/asn/asn_text_codes.h asn platform convert frame)
  if(EXISTS ${includedir}/${private})
    fail_later("${private} is installed")
  endif()
endforeach()
file(GLOB_RECURSE sources ${includedir}/*.cpp ${includedir}/*.in)
if(sources)
  message(FATAL_ERROR "install_package: non-header files installed: ${sources}")
endif()

# ---- exported symbols --------------------------------------------------------------
include(${CMAKE_CURRENT_LIST_DIR}/check_exports.cmake)
# Every exported symbol is declared by an installed header.
foreach(library tn_platform tn_qmodules tn_velkor)
  execute_process(COMMAND ${CMAKE_COMMAND} -DLIBRARIES=${libdir}/lib${library}.so -DHEADERS=${includedir}
    -P ${CMAKE_CURRENT_LIST_DIR}/check_exports.cmake RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  message(STATUS "${out}${err}")
  if(NOT result EQUAL 0)
    fail_later("lib${library}.so exports what no installed header declares")
  endif()
endforeach()
# Each library links the ones below it: tn_qmodules -> tn_velkor -> tn_platform.
check_links_downward(${libdir}/libtn_platform.so ${libdir}/libtn_velkor.so ${libdir}/libtn_qmodules.so)

# ---- every installed header, under strict warnings ------------------------------
# A service may build with every warning on and -Werror: one translation unit
# including every installed header, then the consumer's use of the records
# (which instantiates the codec's templates), must compile clean under both
# compilers.
file(GLOB_RECURSE installed RELATIVE ${includedir} ${includedir}/*.h)
list(TRANSFORM installed REPLACE "(.+)" "#include \"\\1\"\n" OUTPUT_VARIABLE lines)
string(JOIN "" lines ${lines} "#include \"${CONSUMER_DIR}/consumer.cpp\"\n")
file(WRITE ${WORK_DIR}/every_header.cpp "${lines}")
foreach(compiler g++ clang++)
  find_program(strict_${compiler} ${compiler})
  if(NOT strict_${compiler})
    message(FATAL_ERROR "install_package: ${compiler} is needed to compile the installed headers")
  endif()
  execute_process(COMMAND ${strict_${compiler}} -std=c++17 -Wall -Wextra -Wconversion -Wsign-conversion -Wshadow
    -Werror -fsyntax-only -I${includedir} ${WORK_DIR}/every_header.cpp RESULT_VARIABLE result ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    string(REGEX MATCHALL "[^\n]*error:[^\n]*" errors "${err}")
    list(REMOVE_DUPLICATES errors)
    list(LENGTH errors count)
    string(REPLACE ";" "\n  " errors "${errors}")
    fail_later("the installed headers do not compile clean under ${compiler} (${count} distinct errors):\n  ${errors}")
  endif()
endforeach()

# ---- shadowing folders -------------------------------------------------------------
# A service's own asn/, platform/, convert/ and frame/ headers, named like
# ours, placed first on its include path: any of them used breaks the build.
set(shadow ${WORK_DIR}/shadow)
foreach(header ${installed})
  string(REGEX REPLACE "^tn_[a-z]+/" "" below "${header}")
  foreach(copy ${below} asn/${below} platform/${below} convert/${below} frame/${below})
    file(WRITE ${shadow}/${copy} "#error \"a service's own ${copy} was included instead of ${header}\"\n")
  endforeach()
endforeach()

# ---- the C++ snippets of the README and docs/ ----------------------------------
# Each ```cpp block compiles as written (tests/install/readme_snippets.py),
# against the installed headers and behind the shadowing folders.
execute_process(COMMAND python3 ${CMAKE_CURRENT_LIST_DIR}/readme_snippets.py ${README} ${WORK_DIR}/snippets
  OUTPUT_VARIABLE snippets RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "install_package: the README's snippets could not be extracted")
endif()
string(REPLACE "\n" ";" snippets "${snippets}")
foreach(snippet ${snippets})
  run_step("compile ${snippet}" ${CXX} -std=c++17 -Wall -Wextra -Werror -Wno-unused-variable -Wno-unused-but-set-variable
    -fsyntax-only -I${shadow} -I${includedir} ${snippet})
endforeach()

# ---- consumers ---------------------------------------------------------------------
# Each prints the catalogue's type names; they must be the ones `velkor types` lists.
execute_process(COMMAND ${prefix}/bin/velkor types OUTPUT_VARIABLE listed RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "install_package: velkor types failed")
endif()
string(REGEX MATCHALL "(^|\n)[A-Za-z]+ ::=" names "${listed}")
list(TRANSFORM names REPLACE "^\n?([A-Za-z]+) ::=$" "\\1")
list(SORT names)
list(LENGTH names name_count)
if(name_count LESS 10)
  message(FATAL_ERROR "install_package: velkor types lists only ${name_count} types")
endif()

function(check_consumer what program)
  execute_process(COMMAND ${program} OUTPUT_VARIABLE out RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "install_package: ${what} failed (${result})")
  endif()
  string(REGEX REPLACE "\n$" "" out "${out}")
  string(REPLACE "\n" ";" seen "${out}")
  list(SORT seen)
  if(NOT seen STREQUAL names)
    message(FATAL_ERROR "install_package: ${what} sees the types ${seen}; velkor types lists ${names}")
  endif()
  message(STATUS "${what} sees all ${name_count} types")
endfunction()

set(consumer_build ${WORK_DIR}/consumer)
run_step("configure the CMake consumer" ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${consumer_build} -G ${GENERATOR}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix} -DHOST_SOURCE=${HOST_SOURCE} -DSHADOW_DIR=${shadow}
  "-DCMAKE_CXX_FLAGS=${EXTRA_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${EXTRA_FLAGS}")
run_step("build the CMake consumer" ${CMAKE_COMMAND} --build ${consumer_build})
check_consumer("the CMake consumer" ${consumer_build}/consumer)

set(ENV{PKG_CONFIG_PATH} ${libdir}/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs tn_velkor RESULT_VARIABLE result OUTPUT_VARIABLE flags
  OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "install_package: pkg-config does not know tn_velkor")
endif()
message(STATUS "pkg-config --cflags --libs tn_velkor: ${flags}")
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(extra UNIX_COMMAND "${EXTRA_FLAGS}")
run_step("build the pkg-config consumer" ${CXX} ${extra} -I${shadow} ${CONSUMER_DIR}/consumer.cpp
  -Wl,--as-needed ${flags} -Wl,-rpath,${libdir} -o ${WORK_DIR}/pkg_config_consumer)
check_consumer("the pkg-config consumer" ${WORK_DIR}/pkg_config_consumer)

# ---- a service's own module ---------------------------------------------------------
# The consumer compiled site/site.asn, which imports QCommon's QAsnUniResID,
# into libtn_site.so with the installed compiler; the installed tool loads it
# and takes a site through BER and back.
set(site_tool ${prefix}/bin/velkor --module ${consumer_build}/libtn_site.so)
execute_process(COMMAND ${site_tool} encode QAsnSite --readable --hex INPUT_FILE ${CONSUMER_DIR}/site/site.json
  OUTPUT_VARIABLE site_hex RESULT_VARIABLE result ERROR_VARIABLE err OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT result EQUAL 0 OR NOT site_hex STREQUAL "30190402413130100406534954453d3104024e4502020400800118")
  message(FATAL_ERROR "install_package: velkor --module libtn_site.so encode gave '${site_hex}' ${err}")
endif()
file(WRITE ${WORK_DIR}/site.hex "${site_hex}")
execute_process(COMMAND ${site_tool} decode QAsnSite --hex ${WORK_DIR}/site.hex
  OUTPUT_VARIABLE site_text RESULT_VARIABLE result ERROR_VARIABLE err)
if(NOT result EQUAL 0 OR NOT site_text MATCHES "resource {\n    strFDN '534954453D31'H /\\* \"SITE=1\" \\*/,")
  message(FATAL_ERROR "install_package: velkor --module libtn_site.so decode gave '${site_text}' ${err}")
endif()

# ---- the installed library, loaded as the server loads it ------------------------------
run_step("dlopen the installed library" ${consumer_build}/installed_dlopen_host ${libdir}/libtn_velkor.so)

get_property(failures GLOBAL PROPERTY failures)
if(failures)
  list(LENGTH failures count)
  message(FATAL_ERROR "install_package: ${count} check(s) failed, see above")
endif()
