// JSON text straight to BER octets, by the member plans, without building the
// value: the fast path of `JSON text -> BER bytes`. It takes the common shape
// of a document (members in declaration order, plain strings) and gives up,
// writing nothing, on anything else (keys out of order, escapes, comments,
// and every fault), for the strict reader (asn_json_reader.h) to read the
// document as a value and refuse it or encode it. Both paths give the same
// octets for a document both accept.
#pragma once
#pragma GCC visibility push(default)

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tn_platform/asn/asn_json_form.h"
#include "tn_platform/asn/asn_type.h"

class AsnJsonTranscoder {
 public:
  // For values of the type of `prototype` (any value of it; it is not kept).
  AsnJsonTranscoder(const AsnType& prototype, AsnJsonForm form);
  ~AsnJsonTranscoder();
  AsnJsonTranscoder(const AsnJsonTranscoder&) = delete;
  AsnJsonTranscoder& operator=(const AsnJsonTranscoder&) = delete;

  // Appends to `ber` the encoding of the JSON value at the front of `text`
  // (blanks before it skipped) and returns the octets of `text` it took; 0,
  // with `ber` as it was, when the fast path gives up.
  std::size_t Transcode(std::string_view text, std::string& ber) const;

  struct Shape;

 private:
  std::unique_ptr<Shape> m_shape;
  bool m_jer;
};

// The BER encoding of the JSON text of one value of `value`'s type: by the
// fast path when it can, else read into `value` (a new default value) by the
// strict reader and encoded. Throws as AsnReadJson.
std::string AsnJsonToBer(AsnType& value, std::string_view text, AsnJsonForm form);

// The same into `ber`, replacing what it held but keeping its memory: a
// string kept across calls makes the conversion allocation-free.
void AsnJsonToBerInto(AsnType& value, std::string_view text, AsnJsonForm form, std::string& ber);
#pragma GCC visibility pop
