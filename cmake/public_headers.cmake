# The installed headers: what a service includes, and every header those
# include, and nothing else. Fast-path decoding and the member lines are
# installed only because the generated record headers include them; the JSON
# transcoder, the text-code tables, the converters' private
# headers (tn_velkor/convert/) and the module object (tn_velkor/frame/) stay
# behind. A symbol that no installed header declares is not exported
# (tests/install/check_exports.cmake holds the libraries to that).
#
# Roots are paths below the include root; a root may be a wildcard, read at
# install time.
set(TN_PUBLIC_HEADER_ROOTS
  # Conversions, every record, whole-value encoding and decoding, the type
  # catalogue, the exception and the version.
  tn_velkor/ns_velkor.h
  # Records as JSON, lists streamed from BER or JSON, and a capture printed.
  tn_platform/asn/asn_json_reader.h
  tn_platform/asn/asn_json_either_form.h
  tn_platform/asn/asn_json_writer.h
  tn_platform/asn/asn_ber_list_reader.h
  tn_platform/asn/asn_json_list_reader.h
  tn_platform/asn/asn_ber_dump.h
  tn_platform/asn/asn_value_notation.h
  # A record's members and a value's kind, for code that walks values
  # without knowing their classes.
  tn_platform/asn/asn_member.h
  tn_platform/asn/asn_value_kind.h
  # The value classes of the other universal kinds, each with its own codec.
  tn_platform/asn/asn_null.h
  tn_platform/asn/asn_enumerated.h
  tn_platform/asn/asn_bit_string.h
  tn_platform/asn/asn_oid.h
  tn_platform/asn/asn_real.h
  tn_platform/asn/asn_big_int.h
  tn_platform/asn/asn_char_string.h
  tn_platform/asn/asn_time.h
  tn_platform/asn/asn_any.h
  # A sample value of the kinds whose new value is none (skeletons, test data).
  tn_platform/asn/asn_primitive_sample.h
  # The stand-ins of the server's platform libraries: model objects, module
  # manager, trace, identifier parsing and class reflection.
  tn_platform/model/*.h
  tn_platform/module/*.h
  tn_platform/trace/*.h
  tn_platform/uid/*.h
  tn_platform/refl/*.h)

# tn_header_closure(<out> <roots> <dirs>): <roots> (wildcards expanded) and
# every header they include with #include "...", found below the first of
# <dirs> (include roots) that has it, as "<dir>|<path>" entries. A quoted
# include found under none of them stops with an error.
function(tn_header_closure out roots dirs)
  set(pending "")
  foreach(root IN LISTS roots)
    if(root MATCHES "[*]")
      foreach(dir IN LISTS dirs)
        file(GLOB matches RELATIVE ${dir} ${dir}/${root})
        list(APPEND pending ${matches})
      endforeach()
    else()
      list(APPEND pending ${root})
    endif()
  endforeach()
  set(seen "")
  set(found "")
  while(pending)
    list(POP_FRONT pending header)
    list(FIND seen ${header} index)
    if(NOT index EQUAL -1)
      continue()
    endif()
    list(APPEND seen ${header})
    set(where "")
    foreach(dir IN LISTS dirs)
      if(EXISTS ${dir}/${header})
        set(where ${dir})
        break()
      endif()
    endforeach()
    if(NOT where)
      message(FATAL_ERROR "public headers: ${header} is included but found under none of ${dirs}")
    endif()
    list(APPEND found "${where}|${header}")
    file(STRINGS ${where}/${header} includes REGEX "^[ \t]*#[ \t]*include[ \t]+\"")
    foreach(line IN LISTS includes)
      string(REGEX REPLACE "^[^\"]*\"([^\"]+)\".*" "\\1" included "${line}")
      list(APPEND pending ${included})
    endforeach()
  endwhile()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# tn_install_public_headers(<roots> <dirs> <destination>): copies the closure
# of <roots> to <destination>, each header at its path below the include root.
function(tn_install_public_headers roots dirs destination)
  tn_header_closure(headers "${roots}" "${dirs}")
  foreach(entry IN LISTS headers)
    string(REPLACE "|" ";" entry "${entry}")
    list(GET entry 0 dir)
    list(GET entry 1 header)
    get_filename_component(folder ${header} DIRECTORY)
    file(INSTALL ${dir}/${header} DESTINATION ${destination}/${folder})
  endforeach()
endfunction()
