# tn_asn_module(<target> <module text> [CODE <target>] [OUTPUT <dir>])
#
# Compiles an interface module's ASN.1 text into its record and list classes
# (recordc/recordc.py) at build time, again whenever the text or the compiler
# changes. The module's header, <text path below the source root, without
# .asn>.h under the output folder (default: the generated include root),
# declares every class. <target> gets the module's catalogue entries, made
# when it is loaded, and its class code unless CODE names the target that
# carries it. A module may import the types of every module compiled before it.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(TN_RECORDC ${CMAKE_CURRENT_LIST_DIR}/../recordc/recordc.py)
set(TN_RECORDC_SOURCES ${TN_RECORDC})
foreach(part asn_constraints asn_errors asn_lexer asn_model asn_parser asn_resolver asn_tags asn_values asn_words
    record_subset)
  list(APPEND TN_RECORDC_SOURCES ${CMAKE_CURRENT_LIST_DIR}/../recordc/${part}.py)
endforeach()

function(tn_asn_module target text)
  cmake_parse_arguments(PARSE_ARGV 2 MODULE "" "CODE;OUTPUT" "")
  if(NOT MODULE_CODE)
    set(MODULE_CODE ${target})
  endif()
  if(NOT MODULE_OUTPUT)
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
  set(imports "")
  foreach(other IN LISTS known)
    list(APPEND imports --with ${other})
  endforeach()
  add_custom_command(
    OUTPUT ${header} ${types} ${catalogue}
    COMMAND Python3::Interpreter ${TN_RECORDC} --root ${PROJECT_SOURCE_DIR} --out ${MODULE_OUTPUT} ${text} ${imports}
    DEPENDS ${text} ${known} ${TN_RECORDC_SOURCES}
    COMMENT "recordc ${stem}.asn"
    VERBATIM)
  add_custom_target(recordc_${name} DEPENDS ${header} ${types} ${catalogue})
  set_property(GLOBAL APPEND PROPERTY TN_ASN_MODULE_TEXTS ${text})
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
