#include "tn_platform/asn/asn_oid.h"

#include <ostream>

namespace {

constexpr std::uint64_t kMaxArc = ~std::uint64_t{0};

unsigned SubidentifierOctets(std::uint64_t value) {
  unsigned octets = 1;
  for (value >>= 7; value != 0; value >>= 7) ++octets;
  return octets;
}

unsigned char* WriteSubidentifier(unsigned char* out, std::uint64_t value) {
  const unsigned octets = SubidentifierOctets(value);
  for (unsigned i = octets; i-- > 0;) {
    *out++ = static_cast<unsigned char>(((value >> (7 * i)) & 0x7F) | (i != 0 ? 0x80 : 0));
  }
  return out;
}

// The arcs an OBJECT IDENTIFIER can hold: at least two, the first 0 to 2,
// the second below 40 under 0 and 1, the two together within 64 bits.
bool ValidOid(const std::vector<std::uint64_t>& arcs) {
  if (arcs.size() < 2 || arcs[0] > 2) return false;
  if (arcs[0] < 2) return arcs[1] < 40;
  return arcs[1] <= kMaxArc - 80;
}

}  // namespace

template <bool kRelative>
bool AsnArcs<kRelative>::SetArcs(const std::vector<std::uint64_t>& arcs) {
  if (!kRelative && !ValidOid(arcs)) return false;
  m_arcs = arcs;
  return true;
}

template <bool kRelative>
std::string AsnArcs<kRelative>::ToDotted() const {
  std::string text;
  for (const std::uint64_t arc : m_arcs) {
    if (!text.empty()) text.push_back('.');
    text += std::to_string(arc);
  }
  return text;
}

template <bool kRelative>
bool AsnArcs<kRelative>::SetDotted(std::string_view text) {
  std::vector<std::uint64_t> arcs;
  if (!text.empty()) {
    std::size_t at = 0;
    for (;;) {
      const std::size_t start = at;
      std::uint64_t arc = 0;
      while (at < text.size() && text[at] >= '0' && text[at] <= '9') {
        const unsigned digit = static_cast<unsigned>(text[at] - '0');
        if (arc > (kMaxArc - digit) / 10) return false;
        arc = arc * 10 + digit;
        ++at;
      }
      // Digits, no leading zero.
      if (at == start || (text[start] == '0' && at - start > 1)) return false;
      arcs.push_back(arc);
      if (at == text.size()) break;
      if (text[at] != '.') return false;
      ++at;
    }
  }
  return SetArcs(arcs);
}

template <bool kRelative>
unsigned long AsnArcs<kRelative>::ContentLength() const {
  unsigned long length = 0;
  std::size_t i = 0;
  if (!kRelative && m_arcs.size() >= 2) {
    length += SubidentifierOctets(m_arcs[0] * 40 + m_arcs[1]);
    i = 2;
  }
  for (; i < m_arcs.size(); ++i) length += SubidentifierOctets(m_arcs[i]);
  return length;
}

template <bool kRelative>
unsigned char* AsnArcs<kRelative>::WriteContent(unsigned char* out) const {
  std::size_t i = 0;
  if (!kRelative && m_arcs.size() >= 2) {
    out = WriteSubidentifier(out, m_arcs[0] * 40 + m_arcs[1]);
    i = 2;
  }
  for (; i < m_arcs.size(); ++i) out = WriteSubidentifier(out, m_arcs[i]);
  return out;
}

template <bool kRelative>
void AsnArcs<kRelative>::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  const char* const name = AsnTypeName();
  const std::string_view content = asn_primitive::ReadPrimitive(buf, tag, length, name);
  if (!kRelative && content.empty()) asn_primitive::Refuse(at, std::string(name) + " without content octets");
  std::vector<std::uint64_t> arcs;
  std::uint64_t arc = 0;
  bool inArc = false;
  for (const char c : content) {
    const auto octet = static_cast<unsigned char>(c);
    if (!inArc && octet == 0x80) asn_primitive::Refuse(at, std::string(name) + " arc is not minimal (leading 0x80)");
    if (arc > (kMaxArc >> 7)) asn_primitive::Refuse(at, std::string(name) + " arc beyond 64 bits");
    arc = (arc << 7) | (octet & 0x7F);
    inArc = (octet & 0x80) != 0;
    if (inArc) continue;
    if (!kRelative && arcs.empty()) {
      // The first subidentifier holds two arcs.
      const std::uint64_t first = arc < 40 ? 0 : arc < 80 ? 1 : 2;
      arcs.push_back(first);
      arc -= first * 40;
    }
    arcs.push_back(arc);
    arc = 0;
  }
  if (inArc) asn_primitive::Refuse(at, std::string(name) + " content ends inside an arc");
  m_arcs.swap(arcs);
}

template <bool kRelative>
void AsnArcs<kRelative>::Print(std::ostream& os, unsigned long, bool) const {
  os << '{';
  for (const std::uint64_t arc : m_arcs) os << ' ' << arc;
  os << " }";
}

template <bool kRelative>
void AsnArcs<kRelative>::ReadJson(AsnJsonIn& in) {
  if (in.Peek() != AsnJsonIn::Token::kString) in.FailExpected("a string of dotted arcs");
  const std::string text = in.String();
  if (!SetDotted(text)) in.Fail("\"" + text + "\" is no " + AsnTypeName() + " (dotted arcs of up to 64 bits)");
}

template class AsnArcs<false>;
template class AsnArcs<true>;
