// The whole library as one translation unit: every trace line and exception
// of the library names this file.

#include "tn_velkor/frame/tn_velkor_module.cpp"

#include "tn_velkor/asn/value_type_descriptions.cpp"
#include "tn_velkor/qcommon/qasn_name_and_value_string.cpp"
#include "tn_velkor/qcommon/qasn_uni_res_id.cpp"
#include "tn_velkor/qcommon/qasn_column.cpp"
#include "tn_velkor/qcommon/qasn_tiny_int_list.cpp"
#include "tn_velkor/qcommon/qasn_err_info.cpp"
#include "tn_velkor/qcommon/qcommon_lists.cpp"
#include "tn_velkor/qcommon/qasn_port_index.cpp"
#include "tn_velkor/qcommon/qasn_err_info_return.cpp"
#include "tn_velkor/convert/name_value.cpp"
#include "tn_velkor/convert/ports.cpp"
#include "tn_velkor/convert/links.cpp"
#include "tn_velkor/convert/return_codes.cpp"
#include "tn_velkor/convert/alarm_id.cpp"
#include "tn_velkor/convert/fiber.cpp"
