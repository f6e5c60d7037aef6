// The whole library as one translation unit: every trace line and exception
// of the library names this file.

#include "tn_velkor/frame/tn_velkor_module.cpp"

#include "tn_velkor/asn/value_type_descriptions.cpp"
#include "tn_velkor/convert/name_value.cpp"
#include "tn_velkor/convert/ports.cpp"
#include "tn_velkor/convert/links.cpp"
#include "tn_velkor/convert/return_codes.cpp"
#include "tn_velkor/convert/alarm_id.cpp"
#include "tn_velkor/convert/fiber.cpp"
