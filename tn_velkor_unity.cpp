// The whole library as one translation unit: every trace line and exception
// of the library names this file.

#include "frame/tn_velkor_module.cpp"

#include "asn/indent_table.cpp"
#include "asn/value_type_descriptions.cpp"
#include "asn/qasn_name_and_value_string.cpp"
#include "asn/qasn_uni_res_id.cpp"
#include "asn/qasn_column.cpp"
#include "asn/qasn_tiny_int_list.cpp"
#include "asn/qasn_err_info.cpp"
#include "asn/qcommon_lists.cpp"
#include "convert/name_value.cpp"
#include "convert/ports.cpp"
#include "convert/links.cpp"
#include "convert/return_codes.cpp"
#include "convert/alarm_id.cpp"
#include "convert/fiber.cpp"
