#include "tn_platform/asn/asn_json_writer.h"

#include <charconv>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_kind.h"

namespace {

// Two lower-case hex digits per octet value.
struct HexPairs {
  char pairs[256][2];
  constexpr HexPairs() : pairs() {
    const char digits[] = "0123456789abcdef";
    for (int i = 0; i < 256; ++i) {
      pairs[i][0] = digits[i >> 4];
      pairs[i][1] = digits[i & 0x0F];
    }
  }
};
constexpr HexPairs kHex;

void AppendHex(std::string& out, std::string_view octets) {
  const std::size_t at = out.size();
  out.resize(at + 2 * octets.size());
  char* write = &out[at];
  for (const char c : octets) {
    const char* pair = kHex.pairs[static_cast<unsigned char>(c)];
    *write++ = pair[0];
    *write++ = pair[1];
  }
}

void AppendInteger(std::string& out, long long value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  out.append(digits, end);
}

class Writer {
 public:
  Writer(std::string& out, AsnJsonForm form, AsnJsonLayout layout)
      : m_out(out), m_jer(form == AsnJsonForm::kJer), m_indented(layout == AsnJsonLayout::kIndented) {}

  void Value(AsnMemberKind kind, const AsnType& value, unsigned level) {
    switch (kind) {
      case AsnMemberKind::kOcts:
        Octets(static_cast<const AsnOcts&>(value).view(), level);
        break;
      case AsnMemberKind::kTinyInt:
        AppendInteger(m_out, static_cast<const AsnTinyInt&>(value).Value());
        break;
      case AsnMemberKind::kInt:
        // A readable 64-bit integer is a string: doubles would round it.
        if (!m_jer) m_out.push_back('"');
        AppendInteger(m_out, static_cast<const AsnInt&>(value).Value());
        if (!m_jer) m_out.push_back('"');
        break;
      case AsnMemberKind::kBool:
        m_out.append(static_cast<const AsnBool&>(value).Value() ? "true" : "false");
        break;
      case AsnMemberKind::kList:
        List(static_cast<const AsnListBase&>(value), level);
        break;
      case AsnMemberKind::kRecord:
        Record(static_cast<const AsnSequence&>(value), level);
        break;
    }
  }

 private:
  void Octets(std::string_view octets, unsigned level) {
    if (m_jer) {
      m_out.push_back('"');
      AppendHex(m_out, octets);
      m_out.push_back('"');
    } else if (AsnOctetsAreText(octets)) {
      AsnWriteJsonString(m_out, octets);
    } else {
      m_out.push_back('{');
      NewLine(level + 1);
      m_out.append(m_indented ? "\"hex\": \"" : "\"hex\":\"");
      AppendHex(m_out, octets);
      m_out.push_back('"');
      NewLine(level);
      m_out.push_back('}');
    }
  }

  void Record(const AsnSequence& record, unsigned level) {
    void* const base = const_cast<AsnSequence*>(&record);
    bool first = true;
    m_out.push_back('{');
    for (const AsnMemberStep& member : record.Plan().members) {
      const AsnType* value = member.ValueIn(base);
      if (value == nullptr) continue;
      if (!first) m_out.push_back(',');
      first = false;
      NewLine(level + 1);
      m_out.push_back('"');
      m_out.append(member.name);
      m_out.append(m_indented ? "\": " : "\":");
      Value(member.kind, *value, level + 1);
    }
    if (!first) NewLine(level);
    m_out.push_back('}');
  }

  void List(const AsnListBase& list, unsigned level) {
    m_out.push_back('[');
    if (list.Count() == 0) {
      m_out.push_back(']');
      return;
    }
    bool first = true;
    AsnMemberKind kind = AsnMemberKind::kRecord;
    list.ForEachElement([&](const AsnType& element) {
      if (first) kind = AsnKindOf(element);  // every element is of one type
      if (!first) m_out.push_back(',');
      first = false;
      NewLine(level + 1);
      Value(kind, element, level + 1);
    });
    NewLine(level);
    m_out.push_back(']');
  }

  void NewLine(unsigned level) {
    if (!m_indented) return;
    m_out.push_back('\n');
    m_out.append(2 * static_cast<std::size_t>(level), ' ');
  }

  std::string& m_out;
  const bool m_jer;
  const bool m_indented;
};

}  // namespace

void AsnWriteJsonString(std::string& out, std::string_view text) {
  out.push_back('"');
  std::size_t plain = 0;  // start of the run not yet copied
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    out.append(text.data() + plain, i - plain);
    plain = i + 1;
    out.push_back('\\');
    switch (c) {
      case '"': out.push_back('"'); break;
      case '\\': out.push_back('\\'); break;
      case '\b': out.push_back('b'); break;
      case '\f': out.push_back('f'); break;
      case '\n': out.push_back('n'); break;
      case '\r': out.push_back('r'); break;
      case '\t': out.push_back('t'); break;
      default:
        out.append("u00");
        out.append(kHex.pairs[c], 2);
    }
  }
  out.append(text.data() + plain, text.size() - plain);
  out.push_back('"');
}

void AsnWriteJson(std::string& out, const AsnType& value, AsnJsonForm form, AsnJsonLayout layout, unsigned level) {
  Writer(out, form, layout).Value(AsnKindOf(value), value, level);
}

std::string AsnToJson(const AsnType& value, AsnJsonForm form, AsnJsonLayout layout) {
  std::string out;
  AsnWriteJson(out, value, form, layout);
  return out;
}
