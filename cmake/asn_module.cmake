# tn_asn_module(<target> <module text> [CODE <target>] [OUTPUT <dir>] [WITH <text>...]
#               [NAMESPACE_FROM_PATH])
#
# Compiles an interface module's ASN.1 text into its record and list classes
# (recordc/recordc.py) at build time, again whenever the text or the compiler
# changes. The module's header, <text path below the source root, without
# .asn>.h under the output folder, declares every class. <target> gets the
# module's catalogue entries, made when it is loaded, and its class code
# unless CODE names the target that carries it. A module may import the types
# of every module compiled before it, or, when WITH is given, of the texts it
# names (modules of public texts whose names meet those of other texts).
# NAMESPACE_FROM_PATH names each module's namespace after its text's file.
#
# The same file serves the installed package (find_package(tn_velkor)), where
# a service compiles modules of its own: there the compiler is the installed
# one, the output folder defaults to <build dir>/tn_asn_generated (put on the
# code target's include path), the code target links tn_velkor::tn_velkor,
# and the installed modules (QCommon and the inventory modules) may be
# imported like modules compiled before.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
if(NOT DEFINED TN_RECORDC)
  set(TN_RECORDC ${CMAKE_CURRENT_LIST_DIR}/../recordc/recordc.py)
endif()
get_filename_component(TN_RECORDC_DIR ${TN_RECORDC} DIRECTORY)
file(GLOB TN_RECORDC_SOURCES ${TN_RECORDC_DIR}/*.py)

function(tn_asn_module target text)
  cmake_parse_arguments(PARSE_ARGV 2 MODULE "NAMESPACE_FROM_PATH" "CODE;OUTPUT" "WITH")
  if(NOT MODULE_CODE)
    set(MODULE_CODE ${target})
  endif()
  set(roots --root ${PROJECT_SOURCE_DIR})
  if(TN_VELKOR_ASN_DIR)  # the installed package's module texts
    list(APPEND roots --root ${TN_VELKOR_ASN_DIR})
    if(NOT MODULE_OUTPUT)
      set(MODULE_OUTPUT ${CMAKE_BINARY_DIR}/tn_asn_generated)
    endif()
    target_include_directories(${MODULE_CODE} PUBLIC $<BUILD_INTERFACE:${MODULE_OUTPUT}>)
    target_link_libraries(${MODULE_CODE} PUBLIC tn_velkor::tn_velkor)
  elseif(NOT MODULE_OUTPUT)
    set(MODULE_OUTPUT ${TN_GENERATED_INCLUDE_DIR})
  endif()
  get_filename_component(text ${text} ABSOLUTE)
  file(RELATIVE_PATH stem ${PROJECT_SOURCE_DIR} ${text})
  string(REGEX REPLACE "\\.asn$" "" stem ${stem})
  get_filename_component(name ${stem} NAME)
  set(header ${MODULE_OUTPUT}/${stem}.h)
  set(types ${MODULE_OUTPUT}/${stem}_types.cpp)
  set(catalogue ${MODULE_OUTPUT}/${stem}_catalogue.cpp)

  get_property(known GLOBAL PROPERTY TN_ASN_MODULE_TEXTS)
  set(explicit_with FALSE)
  if(DEFINED MODULE_WITH OR "WITH" IN_LIST MODULE_KEYWORDS_MISSING_VALUES)
    set(explicit_with TRUE)
    set(known "")
    foreach(other IN LISTS MODULE_WITH)
      get_filename_component(other ${other} ABSOLUTE)
      list(APPEND known ${other})
    endforeach()
  endif()
  if(TN_VELKOR_ASN_DIR)
    file(GLOB_RECURSE installed ${TN_VELKOR_ASN_DIR}/*.asn)
    list(PREPEND known ${installed})
  endif()
  set(imports "")
  foreach(other IN LISTS known)
    list(APPEND imports --with ${other})
  endforeach()
  if(MODULE_NAMESPACE_FROM_PATH)
    list(APPEND imports --namespace-from-path)
  endif()
  add_custom_command(
    OUTPUT ${header} ${types} ${catalogue}
    COMMAND Python3::Interpreter ${TN_RECORDC} ${roots} --out ${MODULE_OUTPUT} ${text} ${imports}
    DEPENDS ${text} ${known} ${TN_RECORDC_SOURCES}
    COMMENT "recordc ${stem}.asn"
    VERBATIM)
  add_custom_target(recordc_${name} DEPENDS ${header} ${types} ${catalogue})
  if(NOT explicit_with)
    set_property(GLOBAL APPEND PROPERTY TN_ASN_MODULE_TEXTS ${text})
  endif()
  # The code may go to a target of another folder than the one compiling it.
  set_source_files_properties(${header} ${types} TARGET_DIRECTORY ${MODULE_CODE} PROPERTIES GENERATED TRUE)
  target_sources(${MODULE_CODE} PRIVATE ${header} ${types})
  target_sources(${target} PRIVATE ${catalogue})
  add_dependencies(${MODULE_CODE} recordc_${name})
  add_dependencies(${target} recordc_${name})
  # Every module's header, for targets that use records without carrying them.
  if(NOT TARGET tn_asn_records)
    add_custom_target(tn_asn_records)
  endif()
  add_dependencies(tn_asn_records recordc_${name})
endfunction()
