# check_exports(LIBRARY): fails when the library's dynamic symbol table
# defines a symbol that is internal to the library: a converter's helper
# (anything in a *_detail namespace) or a value-text conversion (Convert2Str /
# Convert2Num). Members of public classes (TERetInfo's constructor in a Debug
# build) are public.
function(check_exports library)
  execute_process(COMMAND nm -D -C --defined-only ${library} OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "check_exports: nm failed on ${library}")
  endif()
  string(REGEX MATCHALL "[^\n]*([A-Za-z0-9]_detail::|Convert2Str|Convert2Num)[^\n]*" leaked "${symbols}")
  if(leaked)
    string(REPLACE ";" "\n  " leaked "${leaked}")
    message(FATAL_ERROR "check_exports: ${library} exports internal symbols:\n  ${leaked}")
  endif()
  message(STATUS "check_exports: ${library} exports no internal symbol")
endfunction()

# Run as a script: cmake -DLIBRARIES="a.so;b.so" -P check_exports.cmake
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  foreach(library ${LIBRARIES})
    check_exports(${library})
  endforeach()
endif()
