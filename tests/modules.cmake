# The libraries of test interface modules, for the tests and the fuzz
# targets (which include this file when the tests are not built).

# The test interface modules, compiled from their texts (qprobe/*.asn,
# structured/structured.asn), in a library of its own that the tests link and
# the tool loads (--module).
add_library(tn_qprobe SHARED)
target_link_libraries(tn_qprobe PUBLIC tn_qmodules)
target_link_options(tn_qprobe PRIVATE ${TN_SHARED_LINK_CHECK})
target_include_directories(tn_qprobe PUBLIC ${CMAKE_CURRENT_BINARY_DIR}/generated)
tn_asn_module(tn_qprobe ${CMAKE_CURRENT_LIST_DIR}/qprobe/qprobe.asn OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/generated)
tn_asn_module(tn_qprobe ${CMAKE_CURRENT_LIST_DIR}/qprobe/qkinds.asn OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/generated)
tn_asn_module(tn_qprobe ${CMAKE_CURRENT_LIST_DIR}/structured/structured.asn OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/generated)

# Public modules of other toolchains (recordc/corpus/, the origin line atop
# each), compiled as a service would compile them, each with the texts it
# imports, into a library the tests link and the tool loads (--module). Six of
# them are all module Foo: each text's modules are named after its file
# (namespace and catalogue: rfc5280_pkix1explicit88, comments, ...).
add_library(tn_corpus SHARED)
target_link_libraries(tn_corpus PUBLIC tn_qmodules)
target_link_options(tn_corpus PRIVATE ${TN_SHARED_LINK_CHECK})
target_include_directories(tn_corpus PUBLIC ${CMAKE_CURRENT_BINARY_DIR}/corpus)
# Its code is run by the tests, not timed, outside the benchmark build: there
# it is compiled without optimization, in a fraction of the time.
if(NOT TN_VELKOR_BENCH)
  target_compile_options(tn_corpus PRIVATE -O0)
endif()
set(TN_CORPUS ${CMAKE_CURRENT_LIST_DIR}/recordc/corpus)
function(tn_corpus_module text)
  list(TRANSFORM ARGN PREPEND ${TN_CORPUS}/ OUTPUT_VARIABLE imports)
  tn_asn_module(tn_corpus ${TN_CORPUS}/${text} OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/corpus WITH ${imports}
    NAMESPACE_FROM_PATH)
endfunction()
foreach(text all_types_automatic_tags bar c_source/boolean c_source/c_source-minus c_source/octet_string
    c_source/programming_types comments complex constraints_extensions enumerated foo
    import_imported module-1 module_tags_automatic module_tags_explicit module_tags_implicit named_numbers
    overview_of_oer time_types versions with_components x691_a1 x691_a2 x691_a3 x691_a4
    ietf/rfc1155 ietf/rfc3279 ietf/rfc4511 ietf/rfc5084 ietf/rfc5280 ietf/rfc5280_modified)
  tn_corpus_module(${text}.asn)
endforeach()
tn_corpus_module(module-2.asn module-1.asn)
tn_corpus_module(ietf/rfc1157.asn ietf/rfc1155.asn)
tn_corpus_module(ietf/rfc3281.asn ietf/rfc5280.asn)
tn_corpus_module(ietf/rfc3852.asn ietf/rfc3281.asn ietf/rfc5280.asn)
tn_corpus_module(ietf/rfc4211.asn ietf/rfc3852.asn ietf/rfc3281.asn ietf/rfc5280.asn)
