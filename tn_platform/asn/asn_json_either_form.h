// Reading JSON text whose form (asn_json_form.h) nobody stated, as from a
// user who may have written either. The form is judged from the whole text:
// a text only one form reads is in that form; a text both read to the same
// octets may be taken either way. The two part only at an OCTET STRING
// written as a non-empty string of hex digits ("4E45"): JER reads two octets,
// the readable form four characters of text. Such a text, when both forms read
// it, is refused rather than guessed. AsnJsonToBerEitherForm
// (asn_json_reader.h) reads one value so.
#pragma once
#pragma GCC visibility push(default)

#include <functional>

#include "tn_platform/asn/asn_json_form.h"

// Reads a text in the forms it takes to judge and returns the form whose
// reading to keep. `read(form, refuseAmbiguous)` reads the whole text in
// `form`, replacing what an earlier reading in that form produced, and
// throws AsnDecodeError* when the form does not read it; with
// `refuseAmbiguous` (only ever with kJer) it refuses ambiguous octets
// (AsnJsonReader::RefuseAmbiguousOctets). It is called at most three times.
//
// Throws an AsnJsonAmbiguity (asn_json_reader.h) about the first ambiguous
// octets when both forms read the text to different octets, or, when neither
// form reads it, the readable form's error (it reads all JER does, octets
// written as hex digits read as text: what it refuses, JER refuses too).
AsnJsonForm AsnChooseJsonForm(const std::function<void(AsnJsonForm form, bool refuseAmbiguous)>& read);

#pragma GCC visibility pop
