// The JSON reader and writer in both forms: the first octet picks a catalogue
// type, the rest is the text. A refusal is located (FuzzRefusal), in the same
// words when read straight to BER. What is accepted is stable: straight to BER
// it gives the octets of the value read; written back in either layout it
// reads to the same octets and text; those octets decode to the same JSON.
// A text of unstated form is read as the one form that reads it, as JER when
// both read it alike, refused as ambiguous when they read it to different
// octets, and with the readable form's refusal when neither reads it.
#include "fuzz/fuzz_common.h"
#include "tn_platform/asn/asn_json_either_form.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"

namespace {

// The refusal's message, or "" when `read` accepts.
template <class Read>
std::string Refusal(const AsnCatalogueEntry& type, std::string_view text, Read&& read) {
  const std::unique_ptr<AsnDecodeError> error = FuzzRefusal(type.name, text.size(), read);
  return error ? error->Message() : "";
}

// A reading in one form: its refusal, or its octets.
struct Reading {
  std::string refused;
  std::string ber;
};

Reading ReadsStably(const AsnCatalogueEntry& type, std::string_view text, AsnJsonForm form) {
  const std::unique_ptr<AsnType> value(type.create());
  const std::unique_ptr<const AsnType> prototype(type.create());
  std::string direct;
  const std::string refused = Refusal(type, text, [&] { AsnReadJson(*value, text, form); });
  if (Refusal(type, text, [&] { direct = AsnJsonToBer(*prototype, text, form); }) != refused) std::abort();
  if (!refused.empty()) return {refused, ""};
  const std::string ber = AsnEncodeValue(*value);
  if (direct != ber) std::abort();
  for (const AsnJsonLayout layout : {AsnJsonLayout::kOneLine, AsnJsonLayout::kIndented}) {
    const std::string written = AsnToJson(*value, form, layout);
    const std::unique_ptr<AsnType> again(type.create());
    AsnReadJson(*again, written, form);  // an exception here escapes: a finding
    if (AsnEncodeValue(*again) != ber || AsnToJson(*again, form, layout) != written) std::abort();
  }
  const std::string indented = AsnToJson(*value, form, AsnJsonLayout::kIndented);
  if (!FuzzSameLines(AsnToJson(*FuzzReencoded(*value), form, AsnJsonLayout::kIndented), indented)) std::abort();
  return {"", ber};
}

void JudgesTheForm(const AsnCatalogueEntry& type, std::string_view text, const Reading& jer, const Reading& readable) {
  const std::unique_ptr<const AsnType> prototype(type.create());
  std::string ber;
  AsnJsonForm form = AsnJsonForm::kJer;
  const std::unique_ptr<AsnDecodeError> refusal =
      FuzzRefusal(type.name, text.size(), [&] { form = AsnJsonToBerEitherForm(*prototype, text, ber); });
  const bool ambiguous = jer.refused.empty() && readable.refused.empty() && jer.ber != readable.ber;
  if (ambiguous != (dynamic_cast<AsnJsonAmbiguity*>(refusal.get()) != nullptr)) std::abort();
  if (ambiguous) return;
  if (!jer.refused.empty() && !readable.refused.empty()) {
    if (!refusal || refusal->Message() != readable.refused) std::abort();
    return;
  }
  const Reading& taken = form == AsnJsonForm::kJer ? jer : readable;
  if (refusal || !taken.refused.empty() || ber != taken.ber) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const AsnCatalogueEntry& type = FuzzChooseType(data[0]);
  const Reading jer = ReadsStably(type, text, AsnJsonForm::kJer);
  JudgesTheForm(type, text, jer, ReadsStably(type, text, AsnJsonForm::kReadable));
  return 0;
}
