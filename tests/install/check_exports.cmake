cmake_policy(SET CMP0057 NEW)  # if(IN_LIST), also when run as a script

# check_exports(LIBRARY [HEADERS dir]): fails when the library's dynamic symbol
# table defines a symbol that is internal to the library: a converter's helper
# (anything in a *_detail namespace) or a value-text conversion (Convert2Str /
# Convert2Num). Members of public classes (TERetInfo's constructor in a Debug
# build) are public. With HEADERS (an installed include root), every name of
# every exported symbol outside std (namespace, class, function) must also be
# declared in a header below it: what a service cannot include stays hidden.
function(check_exports library)
  cmake_parse_arguments(PARSE_ARGV 1 CHECK "" "HEADERS" "")
  execute_process(COMMAND nm -D -C --defined-only ${library} OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "check_exports: nm failed on ${library}")
  endif()
  string(REGEX MATCHALL "[^\n]*([A-Za-z0-9]_detail::|Convert2Str|Convert2Num)[^\n]*" leaked "${symbols}")
  if(CHECK_HEADERS)
    undeclared_exports(undeclared "${symbols}" ${CHECK_HEADERS})
    list(APPEND leaked ${undeclared})
  endif()
  if(leaked)
    string(REPLACE ";" "\n  " leaked "${leaked}")
    message(FATAL_ERROR "check_exports: ${library} exports internal symbols:\n  ${leaked}")
  endif()
  message(STATUS "check_exports: ${library} exports no internal symbol")
endfunction()

# undeclared_exports(<out> <nm -C output> <include root>): the symbols one of
# whose names no header below the include root mentions, each with that name.
function(undeclared_exports out symbols headers)
  file(GLOB_RECURSE files ${headers}/*.h)
  set(declared ";")
  foreach(file ${files})
    file(READ ${file} text)
    string(REGEX REPLACE "//[^\n]*" "" text "${text}")  # a name in a comment declares nothing
    string(REGEX MATCHALL "[A-Za-z_][A-Za-z0-9_]*" words "${text}")
    list(REMOVE_DUPLICATES words)
    string(JOIN ";" words ${words})
    string(APPEND declared "${words};")
  endforeach()
  string(REPLACE "\n" ";" symbols "${symbols}")
  set(found "")
  foreach(line IN LISTS symbols)
    # "<address> <kind> <name>": keep the name, drop what says what kind of
    # object it is, then template arguments, parameters, lambdas and ABI tags.
    string(REGEX REPLACE "^[0-9a-f]* *[A-Za-z] " "" name "${line}")
    string(REGEX REPLACE "^((non-)?virtual thunk to|construction vtable for|vtable for|VTT for|typeinfo name for|typeinfo for|guard variable for) " "" name "${name}")
    string(REGEX REPLACE "operator(\\(\\)|[^ (<]+|<<?=?)" "operator" name "${name}")
    string(REGEX REPLACE "\\[abi:[a-z0-9]+\\]" "" name "${name}")
    set(previous "")
    while(NOT name STREQUAL previous)
      set(previous "${name}")
      string(REGEX REPLACE "<[^<>]*>|\\([^()]*\\)|{[^{}]*}" "" name "${name}")
    endwhile()
    string(REGEX REPLACE " const$|[*&]+$" "" name "${name}")
    string(REGEX REPLACE ".* " "" name "${name}")  # a template function's return type
    if(name STREQUAL "" OR name MATCHES "^(std|__gnu_cxx|__cxxabiv1)::|^_")
      continue()
    endif()
    string(REPLACE "::" ";" parts "${name}")
    foreach(part IN LISTS parts)
      string(REGEX REPLACE "^~" "" part "${part}")
      if(part STREQUAL "" OR part STREQUAL "operator")
        continue()
      endif()
      string(FIND "${declared}" ";${part};" at)
      if(at EQUAL -1)
        list(APPEND found "${name} (${part} is declared in no installed header)")
        break()
      endif()
    endforeach()
  endforeach()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# check_links_downward(LIBRARIES): fails when a library leaves a symbol
# undefined that only another of LIBRARIES, one it does not record as NEEDED,
# defines: such a library loads only when something else brought that one in.
function(check_links_downward)
  foreach(library ${ARGN})
    get_filename_component(name ${library} NAME)
    execute_process(COMMAND nm -D --defined-only ${library} OUTPUT_VARIABLE out)
    string(REGEX MATCHALL "[^\n ]+\n" defined_${name} "${out}")
  endforeach()
  foreach(library ${ARGN})
    get_filename_component(name ${library} NAME)
    execute_process(COMMAND readelf -d ${library} OUTPUT_VARIABLE dynamic)
    execute_process(COMMAND nm -D --undefined-only ${library} OUTPUT_VARIABLE out)
    string(REGEX MATCHALL "[^\n ]+\n" undefined "${out}")
    foreach(other ${ARGN})
      get_filename_component(other_name ${other} NAME)
      string(REGEX REPLACE "\\.so.*" "" other_stem "${other_name}")
      if(other_name STREQUAL name OR dynamic MATCHES "NEEDED[^\n]*\\[${other_stem}\\.so")
        continue()
      endif()
      set(stray ${undefined})
      list(FILTER stray INCLUDE REGEX ".")
      set(supplied "")
      foreach(symbol ${stray})
        if(symbol IN_LIST defined_${other_name} AND NOT symbol MATCHES "^(_ZTVN10__cxxabiv|_ZTIS|_ZTSS)")
          list(APPEND supplied ${symbol})
        endif()
      endforeach()
      if(supplied)
        string(REPLACE "\n" "" supplied "${supplied}")
        message(FATAL_ERROR "check_links_downward: ${name} needs ${supplied} from ${other_name}, which it does not link")
      endif()
    endforeach()
    message(STATUS "check_links_downward: ${name} takes symbols only from the libraries it links")
  endforeach()
endfunction()

# Run as a script: cmake -DLIBRARIES="a.so;b.so" [-DHEADERS=dir] -P
# check_exports.cmake (check_exports on each), or -DDOWNWARD="a.so;b.so"
# (check_links_downward).
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  foreach(library ${LIBRARIES})
    check_exports(${library} HEADERS "${HEADERS}")
  endforeach()
  if(DOWNWARD)
    check_links_downward(${DOWNWARD})
  endif()
endif()
