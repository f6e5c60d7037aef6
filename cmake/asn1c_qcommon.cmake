# asn1c's C code for qcommon.asn, as the static library asn1c_qcommon: the
# yardstick of the side-by-side benchmark (bench/side_by_side/) and the
# independent decoder of the differential fuzz target (fuzz/differential/).
# asn1c, an independent ASN.1 compiler, generates it from our own module text
# at configure time into the build tree, never into the sources. The library
# is compiled with the build's flags (the fuzz build's instrumentation and
# sanitizers included). Without asn1c, TN_ASN1C_QCOMMON is OFF and the
# targets that need the library are skipped.
set(TN_ASN1C_QCOMMON OFF)
find_program(TN_ASN1C asn1c)
if(NOT TN_ASN1C)
  message(STATUS "asn1c not found: tn_asn1c_bench and asn1c_differential_fuzz are skipped (scripts/install-deps.sh installs it)")
  return()
endif()

set(TN_QCOMMON_ASN ${PROJECT_SOURCE_DIR}/tn_velkor/qcommon/qcommon.asn)
set(TN_ASN1C_DIR ${PROJECT_BINARY_DIR}/asn1c_qcommon)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${TN_QCOMMON_ASN})
file(REMOVE_RECURSE ${TN_ASN1C_DIR})
file(MAKE_DIRECTORY ${TN_ASN1C_DIR})
execute_process(COMMAND ${TN_ASN1C} -fcompound-names -fincludes-quoted ${TN_QCOMMON_ASN}
  WORKING_DIRECTORY ${TN_ASN1C_DIR} RESULT_VARIABLE TN_ASN1C_RESULT OUTPUT_QUIET ERROR_VARIABLE TN_ASN1C_ERRORS)
if(NOT TN_ASN1C_RESULT EQUAL 0)
  message(WARNING "asn1c failed on qcommon.asn; tn_asn1c_bench and asn1c_differential_fuzz are skipped:\n${TN_ASN1C_ERRORS}")
  return()
endif()

enable_language(C)
file(GLOB TN_ASN1C_SOURCES ${TN_ASN1C_DIR}/*.c)
list(FILTER TN_ASN1C_SOURCES EXCLUDE REGEX "converter-sample\\.c$")
add_library(asn1c_qcommon STATIC ${TN_ASN1C_SOURCES})
target_include_directories(asn1c_qcommon SYSTEM PUBLIC ${TN_ASN1C_DIR})
# Generated code is not ours to keep warning-free. Its debug hook is compiled
# out: as shipped it is an empty function whose arguments are still computed
# on every TLV, which would make the yardstick several times slower.
target_compile_options(asn1c_qcommon PRIVATE -w)
target_compile_options(asn1c_qcommon PUBLIC "-DASN_DEBUG(...)=((void)0)")
# asn1c's INTEGER reader shifts negative values left, which is undefined in
# C but does what it means on every compiler we use; the sanitizers are told
# to let that one pass in its code (and only there).
if(TN_VELKOR_FUZZ OR TN_VELKOR_SANITIZE)
  target_compile_options(asn1c_qcommon PRIVATE -fno-sanitize=shift-base)
endif()
set(TN_ASN1C_QCOMMON ON)
