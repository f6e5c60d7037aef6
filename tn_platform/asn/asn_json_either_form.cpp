#include "tn_platform/asn/asn_json_either_form.h"

#include <memory>

#include "tn_platform/asn/asn_json_reader.h"

namespace {

using Reading = std::function<void(AsnJsonForm, bool)>;
using Refusal = std::unique_ptr<AsnDecodeError>;

Refusal TryRead(const Reading& read, AsnJsonForm form, bool refuseAmbiguous) {
  try {
    read(form, refuseAmbiguous);
  } catch (AsnDecodeError* error) {
    return Refusal(error);
  }
  return nullptr;
}

}  // namespace

AsnJsonForm AsnChooseJsonForm(const Reading& read) {
  // Up to the first octets written as a non-empty string the two forms read
  // alike: a JER reading that refuses those is both forms' reading as far
  // as it goes.
  Refusal strict = TryRead(read, AsnJsonForm::kJer, true);
  if (!strict) return AsnJsonForm::kJer;
  Refusal jer;
  if (dynamic_cast<AsnJsonAmbiguity*>(strict.get()) == nullptr) {
    jer = std::move(strict);  // JER refuses the text before its first such string
  } else {
    jer = TryRead(read, AsnJsonForm::kJer, false);
  }
  Refusal readable = TryRead(read, AsnJsonForm::kReadable, false);
  // Neither reads it: the readable form reads all JER does, octets written
  // as hex digits read as text, so what it refuses JER refuses too.
  if (jer && readable) throw readable.release();
  if (jer) return AsnJsonForm::kReadable;
  if (readable) return AsnJsonForm::kJer;
  throw strict.release();  // both read it, and their octets differ there
}
