// The tool's text of a decoding error. The runtime's AsnDecodeError already
// says where the fault is (type, member path, offset of the item at fault,
// the same offset `velkor dump` shows); the tool only moves the offset to
// where the value sits in a larger input, such as one record of a capture.
#pragma once

#include <cstddef>
#include <string>

#include "tn_platform/asn/csm_exception.h"

namespace velkor {

// The message of `exception`, thrown decoding a value that starts `base`
// octets into the input, with its offset counted from the start of the input.
// Takes ownership of `exception` and deletes it.
std::string DecodeErrorMessage(CSM_Exception* exception, std::size_t base);

}  // namespace velkor
