# The layers, lowest first: tn_platform (stand-ins) < tn_velkor/asn, /qcommon
# and /frame (containers, common records, module object) < tn_qmodules (the
# other modules' records) < tn_velkor/convert and ns_velkor.h (conversions).
# A file may include only its own layer and the ones below.
#   cmake -DSOURCE_DIR=... -P check_layers.cmake
set(forbidden_tn_platform "tn_velkor/|tn_qmodules/")
set(forbidden_tn_velkor_low "tn_qmodules/|tn_velkor/convert/|tn_velkor/ns_velkor.h")
set(forbidden_tn_qmodules "tn_velkor/convert/|tn_velkor/ns_velkor.h|tn_velkor/frame/")

function(check_layer layer forbidden)
  file(GLOB_RECURSE sources ${SOURCE_DIR}/${layer}/*.h ${SOURCE_DIR}/${layer}/*.cpp)
  foreach(source ${sources})
    file(STRINGS ${source} includes REGEX "^#include [\"<](${forbidden})")
    if(includes)
      file(RELATIVE_PATH name ${SOURCE_DIR} ${source})
      message(SEND_ERROR "check_layers: ${name} reaches up a layer: ${includes}")
    endif()
  endforeach()
endfunction()

check_layer(tn_platform "${forbidden_tn_platform}")
check_layer(tn_velkor/asn "${forbidden_tn_velkor_low}")
check_layer(tn_velkor/qcommon "${forbidden_tn_velkor_low}")
check_layer(tn_velkor/frame "${forbidden_tn_velkor_low}")
check_layer(tn_qmodules "${forbidden_tn_qmodules}")
