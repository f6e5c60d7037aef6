#include "tn_platform/asn/asn_any.h"

#include <algorithm>
#include <cstring>
#include <ostream>

#include "tn_platform/asn/asn_ber_reader.h"
#include "tn_platform/asn/asn_text_codes.h"

namespace {

// An encoding of nothing: written when a value was never set, NULL.
constexpr char kNullEncoding[] = "\x05\x00";

// Skips the content of a constructed value of `length` (or indefinite): its
// items, each checked as far as its header and nesting.
void SkipContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  if (!TagIsConstructed(tag)) {
    if (length == kIndefiniteLength) AsnThrowDecodeError(buf.ItemStart(), "indefinite length on a primitive value");
    if (buf.GetSeg(length) == nullptr) BDecLenPastInput(buf, length);
    return;
  }
  const AsnOpenValueGuard open(buf, AsnHolder::kValue, length);
  const bool indefinite = length == kIndefiniteLength;
  const std::size_t end = indefinite ? 0 : buf.Offset() + length;
  unsigned long counted = 0;
  while (indefinite ? !AtEoc(buf) : buf.Offset() < end) {
    if (buf.Remaining() == 0) {
      buf.ThrowInputEnds(buf.Offset(), indefinite ? std::string("input ends before the end-of-contents octets")
                                                  : "input ends " + AsnOctetCount(end - buf.Offset()) +
                                                        " short of the value");
    }
    // Any tag but end-of-contents, which ends only an indefinite length (AtEoc).
    const AsnHeader header = BDecHeader(buf, counted, [](AsnTag tag) { return tag != 0; }, AsnLengthCheck::kNone);
    if (header.status == AsnHeader::kWrongTag) AsnThrowDecodeError(header.start, "end-of-contents where a value belongs");
    if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, 0, buf);
    SkipContent(buf, header.tag, header.length);
  }
  if (indefinite) BDecEoc(buf, counted);
}

// The constructed values `ber`, the encoding of one whole value, opens one
// inside another.
unsigned NestingOf(std::string_view ber) {
  AsnBerReader reader(AsnBytesSource(ber), 0);
  AsnBerItem item;
  unsigned levels = 0;
  while (reader.Next(item)) {
    if (!item.endOfContents && TagIsConstructed(item.tag)) levels = std::max(levels, item.depth + 1);
  }
  return levels;
}

}  // namespace

bool AsnAny::SetEncoding(std::string_view ber) {
  AsnBuf buf(reinterpret_cast<const unsigned char*>(ber.data()), ber.size());
  try {
    AsnAny read;
    unsigned long counted = 0;
    read.BDec(buf, counted, NIClass_BER);
    if (buf.Offset() != ber.size()) return false;
  } catch (AsnDecodeError* error) {
    delete error;
    return false;
  }
  m_encoding.assign(ber);
  return true;
}

void AsnAny::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t start = buf.ItemStart();
  SkipContent(buf, tag, length);
  m_encoding.assign(reinterpret_cast<const char*>(buf.Begin() + start), buf.Offset() - start);
}

unsigned long AsnAny::ContentLength() const { return m_encoding.empty() ? 2 : m_encoding.size(); }

unsigned char* AsnAny::WriteContent(unsigned char* out) const {
  if (m_encoding.empty()) {
    std::memcpy(out, kNullEncoding, 2);
    return out + 2;
  }
  std::memcpy(out, m_encoding.data(), m_encoding.size());
  return out + m_encoding.size();
}

void AsnAny::Print(std::ostream& os, unsigned long, bool) const {
  asn_primitive::PrintHex(os, m_encoding.empty() ? std::string_view(kNullEncoding, 2) : std::string_view(m_encoding));
}

void AsnAny::WriteJson(AsnJsonOut& out) const {
  const std::string_view encoding = m_encoding.empty() ? std::string_view(kNullEncoding, 2) : m_encoding;
  if (out.Jer()) {
    out.Hex(encoding);
    return;
  }
  out.BeginObject();
  out.Key("ber");
  out.Hex(encoding);
  out.EndObject();
}

void AsnAny::ReadJson(AsnJsonIn& in) {
  const bool jer = in.Jer();
  if (!jer) {
    if (in.Peek() != AsnJsonIn::Token::kObject) in.FailExpected("{\"ber\": \"<hex>\"}");
    in.BeginObject();
    std::string key;
    if (!in.NextKey(key) || key != "ber") in.Fail("an open value is {\"ber\": \"<hex>\"}");
  }
  if (in.Peek() != AsnJsonIn::Token::kString) in.FailExpected("a string of hex digits");
  const std::string hex = in.String();
  std::string ber;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    const int high = asn_text::kHexDigits.values[static_cast<unsigned char>(hex[i])];
    const int low = asn_text::kHexDigits.values[static_cast<unsigned char>(hex[i + 1])];
    if ((high | low) < 0) in.Fail("not hex digits");
    ber.push_back(static_cast<char>(high << 4 | low));
  }
  if (hex.size() % 2 != 0) in.Fail("odd number of hex digits");
  if (!SetEncoding(ber)) in.Fail("not the BER encoding of one value");
  // Its levels count with those around it, as when it is decoded in place.
  if (NestingOf(m_encoding) > in.LevelsLeft()) in.Fail(AsnDecodeLimits::TooDeepText());
  if (!jer) {
    std::string key;
    if (in.NextKey(key)) in.Fail("an open value is {\"ber\": \"<hex>\"}");
  }
}
