#include "tn_platform/asn/asn_json_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

#include "tn_platform/asn/asn_any.h"
#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_json_either_form.h"
#include "tn_platform/asn/asn_json_shape.h"
#include "tn_platform/asn/asn_json_tokens.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_json_text.h"
#include "tn_platform/asn/asn_text_codes.h"
#include "tn_platform/asn/asn_value_encoding.h"
#include "tn_platform/asn/asn_value_io.h"

namespace {

using namespace asn_json_text;

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

// Hex digit pairs by their two characters read as one 16-bit word: the
// octet, or -1.
const std::int16_t* HexPairValues() {
  static const std::unique_ptr<std::int16_t[]> table = [] {
    std::unique_ptr<std::int16_t[]> values(new std::int16_t[65536]);
    for (unsigned first = 0; first < 256; ++first) {
      for (unsigned second = 0; second < 256; ++second) {
        const int high = kHexValues.values[first];
        const int low = kHexValues.values[second];
        const unsigned char pair[2] = {static_cast<unsigned char>(first), static_cast<unsigned char>(second)};
        std::uint16_t index;
        std::memcpy(&index, pair, 2);
        values[index] = static_cast<std::int16_t>((high | low) < 0 ? -1 : (high << 4) | low);
      }
    }
    return values;
  }();
  return table.get();
}

// The members of one record already given, for the refusal of repeats and
// the check of mandatory members.
class GivenMembers {
 public:
  explicit GivenMembers(std::size_t count) {
    if (count > 64) m_more.assign(count, false);
  }
  // Marks member `index`; false when it was marked already.
  bool Mark(std::size_t index) {
    if (!m_more.empty()) {
      if (m_more[index]) return false;
      m_more[index] = true;
      return true;
    }
    const std::uint64_t bit = std::uint64_t{1} << index;
    if (m_bits & bit) return false;
    m_bits |= bit;
    return true;
  }
  bool Has(std::size_t index) const { return m_more.empty() ? (m_bits >> index) & 1 : m_more[index]; }

 private:
  std::uint64_t m_bits = 0;
  std::vector<bool> m_more;  // records of more than 64 members
};

// ---- where the values go ---------------------------------------------------------------
// A sink receives the values the grammar reads. `Slot` is what it knows of
// the value about to be read; records and lists are opened, given their
// members or elements, and closed.

// Into a value: each slot is the value itself.
class ValueSink {
 public:
  using Slot = AsnType*;
  using Record = void*;
  using List = AsnListBase*;

  explicit ValueSink(std::string& octets) : m_octets(octets) {}

  Record OpenRecord(Slot slot) { return slot; }
  Slot Member(Record record, std::size_t, const AsnMemberStep& member) { return member.ValueOrCreateIn(record); }
  void Absent(Record record, const AsnMemberStep& member) { member.ResetIn(record); }
  std::string BoundsViolation(Slot slot, const AsnMemberStep& member) {
    return AsnBoundsViolation(member.bounds, member.kind, *slot);
  }
  void Default(Record record, const AsnMemberStep& member) { AsnApplyDefault(member, record); }
  void CloseRecord(Record) {}
  // A CHOICE's value replaces the alternative it held.
  Record OpenChoice(Slot slot) {
    auto& choice = static_cast<AsnChoice&>(*slot);
    const AsnRecordPlan& plan = choice.Plan();
    for (const AsnMemberStep& step : plan.members) step.ResetIn(slot);
    if (plan.extensible) plan.ExtensionsIn(slot)->ClearElements();
    return slot;
  }
  // An extensible record's unknown members; a CHOICE's unknown alternative.
  Slot Unknown(Record record, const AsnRecordPlan& plan) { return plan.ExtensionsIn(record); }
  Slot UnknownAlternative(Record record, const AsnRecordPlan& plan) {
    return &plan.ExtensionsIn(record)->AppendElement();
  }

  List OpenList(Slot slot) { return static_cast<AsnListBase*>(slot); }
  Slot Element(List list, const AsnJsonShape&) { return &list->AppendElement(); }
  void CloseList(List) {}

  void Octets(Slot slot, std::string_view content) { static_cast<AsnOcts*>(slot)->Set(content.data(), content.size()); }
  // Room for `size` octets of content, then the content written there.
  unsigned char* OctetsRoom(Slot, std::size_t size) {
    m_octets.resize(size);
    return reinterpret_cast<unsigned char*>(&m_octets[0]);
  }
  void OctetsWritten(Slot slot) { static_cast<AsnOcts*>(slot)->Set(m_octets.data(), m_octets.size()); }
  // Where the sink is, and a return there (forgetting what came after).
  std::size_t Mark() const { return 0; }
  void Rewind(std::size_t) {}
  void TinyInt(Slot slot, int value) { static_cast<AsnTinyInt*>(slot)->Set(value); }
  void Int(Slot slot, long long value) { static_cast<AsnInt*>(slot)->Set(value); }
  void Bool(Slot slot, bool value) { static_cast<AsnBool*>(slot)->Set(value); }
  // A value with its own codec reads itself.
  void Primitive(Slot slot, const AsnJsonShape&, AsnJsonIn& in) { static_cast<AsnPrimitive*>(slot)->ReadJson(in); }

 private:
  std::string& m_octets;
};

// Thrown by the BER sink when a record's members come out of declaration
// order, which an encoding written as the text is read cannot follow.
struct MembersOutOfOrder {};

// Into BER octets, written front to back as the text is read, appended to a
// string: each slot is the tag the value is encoded with. The encoder's
// writers code tags, lengths and contents; a constructed value's length is
// written when it is closed, its content moved up when the length takes
// more than one octet.
class BerSink {
 public:
  using Slot = AsnTag;
  struct Record {
    std::size_t place;  // of the length octets
    std::size_t next;   // the index the next member must reach
  };
  using List = std::size_t;

  explicit BerSink(std::string& out) : m_out(out), m_length(out.size()) { Map(); }
  // Cuts the string to what was written.
  void Done() { m_out.resize(m_length); }

  Record OpenRecord(Slot tag) { return {Open(tag), 0}; }
  Slot Member(Record& record, std::size_t index, const AsnMemberStep& member) {
    if (index < record.next) throw MembersOutOfOrder();
    record.next = index + 1;
    return member.tag;
  }
  void Absent(Record&, const AsnMemberStep&) {}
  // A record with bounds on a member is read into a value (AsnJsonShape::berDirect).
  std::string BoundsViolation(Slot, const AsnMemberStep&) { return std::string(); }
  void CloseRecord(const Record& record) { Close(record.place); }
  // Never met: a type with DEFAULT members, unknown ones or CHOICEs is read
  // into a value (AsnJsonShape::berDirect).
  void Default(Record&, const AsnMemberStep&) {}
  Record OpenChoice(Slot) { return {0, 0}; }
  Slot Unknown(Record&, const AsnRecordPlan&) { return 0; }
  Slot UnknownAlternative(Record&, const AsnRecordPlan&) { return 0; }

  List OpenList(Slot tag) { return Open(tag); }
  Slot Element(List, const AsnJsonShape& list) { return list.elementTag; }
  void CloseList(List place) { Close(place); }

  void Octets(Slot tag, std::string_view content) {
    AsnCopyOctets(OctetsRoom(tag, content.size()), reinterpret_cast<const unsigned char*>(content.data()),
                  content.size());
  }
  unsigned char* OctetsRoom(Slot tag, std::size_t size) { return AsnWriteHeader(Room(AsnEncodedSize(tag, size)), tag, size); }
  void OctetsWritten(Slot) {}
  std::size_t Mark() const { return m_length; }
  void Rewind(std::size_t mark) { m_length = mark; }
  void TinyInt(Slot tag, int value) { Primitive(tag, AsnTinyInt(value)); }
  void Int(Slot tag, long long value) { Primitive(tag, AsnInt(value)); }
  void Bool(Slot tag, bool value) { Primitive(tag, AsnBool(value)); }
  // Read into a temporary of the type, then encoded.
  void Primitive(Slot tag, const AsnJsonShape& shape, AsnJsonIn& in) {
    const std::unique_ptr<AsnType> value(shape.prototype->Clone());
    auto& primitive = static_cast<AsnPrimitive&>(*value);
    primitive.ReadJson(in);
    primitive.WriteEncoded(Room(primitive.EncodedSize(tag)), tag);
  }

 private:
  template <class Value>
  void Primitive(AsnTag tag, const Value& value) {
    const unsigned long length = AsnContentLength(value, m_sizes);
    AsnWriteValue(Room(AsnEncodedSize(tag, length)), tag, value, m_sizes);
  }
  // Writes the tag and keeps one octet for the length; returns its place.
  std::size_t Open(AsnTag tag) {
    AsnWriteTag(Room(AsnIdentifierOctets(tag) + 1), tag);
    return m_length - 1;
  }
  void Close(std::size_t place) {
    const unsigned long length = m_length - place - 1;
    const unsigned octets = AsnLengthOctets(length);
    if (octets > 1) {
      Room(octets - 1);
      std::memmove(m_data + place + octets, m_data + place + 1, length);
    }
    AsnWriteLength(m_data + place, length);
  }
  // Room for `count` more octets. The string grows ahead of what is written
  // and is cut back by Done(), so writing never zero-fills octet by octet.
  unsigned char* Room(std::size_t count) {
    if (m_length + count > m_size) {
      m_out.resize(std::max(2 * m_out.size(), m_length + count + 256));
      Map();
    }
    unsigned char* const at = m_data + m_length;
    m_length += count;
    return at;
  }
  void Map() {
    m_data = reinterpret_cast<unsigned char*>(&m_out[0]);
    m_size = m_out.size();
  }

  std::string& m_out;
  std::size_t m_length;  // octets written to m_out
  unsigned char* m_data = nullptr;
  std::size_t m_size = 0;
  AsnEncodeSizes m_sizes;  // the encoder's, unused by primitive values
};

// The key of an extensible record's unknown members and of a CHOICE's
// unknown alternative.
constexpr char kUnknownKey[] = "...";

// ---- the grammar -----------------------------------------------------------------------
// Values by their types' shapes: the one place that knows how each kind of
// value is written in JSON, in both forms.

template <class Sink>
class AsnJsonGrammar : public JsonText {
 public:
  using Slot = typename Sink::Slot;

  AsnJsonGrammar(const JsonText& text, Sink& sink, bool refuseAmbiguous)
      : JsonText(text), m_sink(sink), m_pairs(HexPairValues()), m_refuseAmbiguous(refuseAmbiguous) {}

  // Reads a value of `shape`; `depth` counts the constructed values its BER
  // has open once its own tags are (AsnJsonShape::levels), against the
  // nesting limit, as the BER decoder counts them. Every path through a type
  // that holds itself opens one, so this bounds the reader's recursion too.
  void Read(const AsnJsonShape& shape, Slot slot, unsigned depth) {
    if (depth > AsnDecodeLimits::kMaxDepth) FailTooDeep();
    switch (shape.kind) {
      case AsnMemberKind::kOcts:
        return ReadOcts(slot);
      case AsnMemberKind::kTinyInt:
        return m_sink.TinyInt(slot, static_cast<int>(ReadInteger(std::numeric_limits<std::int32_t>::min(),
                                                                   std::numeric_limits<std::int32_t>::max())));
      case AsnMemberKind::kInt:
        return m_sink.Int(slot, ReadInteger(std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()));
      case AsnMemberKind::kBool:
        return m_sink.Bool(slot, ReadBool());
      case AsnMemberKind::kList:
        return ReadList(shape, slot, depth);
      case AsnMemberKind::kRecord:
        return ReadRecord(shape, slot, depth);
      case AsnMemberKind::kChoice:
        return ReadChoice(shape, slot, depth);
      case AsnMemberKind::kPrimitive: {
        SkipBlanks();
        AsnJsonIn in(static_cast<JsonText*>(this), m_jer, AsnDecodeLimits::kMaxDepth - depth);
        return m_sink.Primitive(slot, shape, in);
      }
    }
  }

 private:
  [[noreturn]] __attribute__((noinline)) void FailTooDeep() {
    SkipBlanks();
    Fail(AsnDecodeLimits::TooDeepText());
  }

  void ReadRecord(const AsnJsonShape& shape, Slot slot, unsigned depth) {
    const std::vector<AsnMemberStep>& members = shape.plan->members;
    const std::size_t count = members.size();
    const char* const start = (SkipBlanks(), m_at);
    if (Peek() != '{') FailExpected("an object");
    Enter();
    typename Sink::Record record = m_sink.OpenRecord(slot);
    GivenMembers given(count + 1);  // and the unknown members
    std::size_t next = 0;  // members mostly come in order: the next one is tried first
    if (Peek() != '}') {
      for (;;) {
        if (Peek() != '"') FailExpected("a member name");
        const char* const keyAt = m_at;
        std::size_t index = next;
        if (index < count && KeyIs(shape.names[index])) {
          SkipKey(shape.names[index]);
        } else {
          const std::string_view key = ReadKey();
          index = 0;
          while (index < count && key != shape.names[index]) ++index;
          if (index == count && key == kUnknownKey && shape.plan->extensible) {
            Consume(':', "':'");
            if (given.Mark(count)) {
              ReadUnknown(shape, m_sink.Unknown(record, *shape.plan), depth);
              if (!NextMember()) break;
              continue;
            }
            FailAt(keyAt, "given twice");
          }
          if (index == count) {
            Consume(':', "':'");
            if (m_jer || key.substr(0, 2) != "//") {
              FailAt(keyAt, std::string(shape.plan->className) + " has no member \"" + std::string(key) + "\"");
            }
            SkipValue();  // a comment
            if (!NextMember()) break;
            continue;
          }
        }
        Consume(':', "':'");
        const AsnMemberStep& member = members[index];
        try {
          if (!given.Mark(index)) FailAt(keyAt, "given twice");
          if (Peek() == 'n' && !shape.members[index]->nullIsValue) {
            if (m_jer) Fail("null is no value in JER (leave an absent member out)");
            if (!member.optional) Fail("missing (a mandatory member)");
            ExpectLiteral("null");
            m_sink.Absent(record, member);
          } else {
            const char* const valueAt = member.bounds.Active() ? (SkipBlanks(), m_at) : nullptr;
            const Slot slot = m_sink.Member(record, index, member);
            Read(*shape.members[index], slot, depth + shape.memberLevels[index]);
            if (member.bounds.Active()) {
              const std::string violation = m_sink.BoundsViolation(slot, member);
              // A value read up to the end of the text may go on in text not read yet.
              if (!violation.empty()) FailAt(m_at >= m_end ? m_at : valueAt, violation);
            }
          }
        } catch (AsnDecodeError* error) {
          error->AddMember(member.name);
          throw;
        }
        next = index + 1;
        if (!NextMember()) break;
      }
    }
    Leave();
    for (std::size_t index = 0; index < count; ++index) {
      if (given.Has(index) || members[index].optional) continue;
      if (members[index].HasDefault()) {
        m_sink.Default(record, members[index]);
        continue;
      }
      auto* error = new AsnDecodeError(m_base + static_cast<std::size_t>(start - m_begin), "missing (a mandatory member)");
      error->AddMember(members[index].name);
      throw error;
    }
    m_sink.CloseRecord(record);
  }

  // An extensible record's unknown members: an array of open values.
  void ReadUnknown(const AsnJsonShape& shape, Slot slot, unsigned depth) {
    const char* const start = (SkipBlanks(), m_at);
    try {
      Read(*shape.extensions, slot, depth);  // a list in the value, not in its BER
      if constexpr (std::is_same_v<Sink, ValueSink>) {
        static_cast<AsnListBase*>(slot)->ForEachElement(
            [&](const AsnType& unknown) { CheckUnknown(*shape.plan, unknown, start); });
      }
    } catch (AsnDecodeError* error) {
      error->AddMember(kUnknownKey);
      throw;
    }
  }

  // An unknown member or alternative must be one: a member's tag would
  // decode as that member.
  void CheckUnknown(const AsnRecordPlan& plan, const AsnType& unknown, const char* at) {
    const std::string& encoding = static_cast<const AsnAny&>(unknown).Encoding();
    AsnBuf buf(reinterpret_cast<const unsigned char*>(encoding.data()), encoding.size());
    unsigned long counted = 0;
    const std::size_t index = plan.MemberTaking(BDecTag(buf, counted));
    if (index < plan.members.size()) {
      FailAt(at, std::string(plan.IsChoice() ? "an unknown alternative" : "an unknown member") + " with the tag of " +
                     plan.members[index].name);
    }
  }

  // {"alternative": value}, or {"...": <open value>} for an unknown one.
  void ReadChoice(const AsnJsonShape& shape, Slot slot, unsigned depth) {
    const AsnRecordPlan& plan = *shape.plan;
    const char* const start = (SkipBlanks(), m_at);
    if (Peek() != '{') FailExpected("an object");
    Enter();
    typename Sink::Record record = m_sink.OpenChoice(slot);
    if (Peek() != '"') {
      if (Peek() == '}') FailAt(start, std::string("a value of ") + plan.className + " names one alternative");
      FailExpected("an alternative's name");
    }
    const char* const keyAt = m_at;
    const std::string_view key = ReadKey();
    std::size_t index = 0;
    while (index < shape.names.size() && key != shape.names[index]) ++index;
    Consume(':', "':'");
    if (index < shape.names.size()) {
      try {
        Read(*shape.members[index], m_sink.Member(record, index, plan.members[index]),
             depth + shape.memberLevels[index]);
      } catch (AsnDecodeError* error) {
        error->AddMember(plan.members[index].name);
        throw;
      }
    } else if (key == kUnknownKey && plan.extensible) {
      const char* const valueAt = (SkipBlanks(), m_at);
      try {
        const Slot unknown = m_sink.UnknownAlternative(record, plan);
        Read(*shape.extensions->element, unknown, depth + shape.extensions->element->levels);
        if constexpr (std::is_same_v<Sink, ValueSink>) CheckUnknown(plan, *unknown, valueAt);
      } catch (AsnDecodeError* error) {
        error->AddMember(kUnknownKey);
        throw;
      }
    } else {
      FailAt(keyAt, std::string(plan.className) + " has no alternative \"" + std::string(key) + "\"");
    }
    if (Peek() == ',') Fail(std::string("a value of ") + plan.className + " names one alternative");
    if (Peek() != '}') FailExpected("'}'");
    Leave();
    m_sink.CloseRecord(record);
  }

  // After a member: true at ',' (consumed), false at '}'.
  bool NextMember() {
    const char c = Peek();
    if (c == '}') return false;
    if (c != ',') FailExpected("',' or '}'");
    ++m_at;
    return true;
  }

  void ReadList(const AsnJsonShape& shape, Slot slot, unsigned depth) {
    if (Peek() != '[') FailExpected("an array");
    Enter();
    typename Sink::List list = m_sink.OpenList(slot);
    if (Peek() != ']') {
      for (unsigned long index = 0;; ++index) {
        try {
          Read(*shape.element, m_sink.Element(list, shape), depth + shape.element->levels);
        } catch (AsnDecodeError* error) {
          error->AddIndex(index);
          throw;
        }
        const char c = Peek();
        if (c == ']') break;
        if (c != ',') FailExpected("',' or ']'");
        ++m_at;
      }
    }
    Leave();
    m_sink.CloseList(list);
  }

  void ReadOcts(Slot slot) {
    const char c = Peek();
    if (m_jer) {
      if (c != '"') FailExpected("a string of hex digits");
      if (m_refuseAmbiguous && m_at + 1 != m_end && m_at[1] != '"') {
        throw new AsnJsonAmbiguity(m_base + static_cast<std::size_t>(m_at - m_begin),
                                   "a string that reads as hex digits in JER and as text in the readable form");
      }
      ReadHex(slot);
    } else if (c == '"') {
      m_sink.Octets(slot, ReadStringContent());
    } else if (c == '{') {
      // {"hex": "..."}: the readable form of octets that are not text.
      const char* const start = m_at;
      ++m_at;
      if (Peek() != '"' || ReadKey() != "hex") FailAt(start, "expected a string or {\"hex\": \"...\"}");
      Consume(':', "':'");
      if (Peek() != '"') FailExpected("a string of hex digits");
      ReadHex(slot);
      if (Peek() != '}') FailAt(start, "expected a string or {\"hex\": \"...\"}");
      ++m_at;
    } else {
      FailExpected("a string or {\"hex\": \"...\"}");
    }
  }

  // A hex string: the common one (digits up to the closing quote) decoded
  // two digits a lookup straight into the sink's room; anything else (an
  // escape, a fault) by the checking reader.
  void ReadHex(Slot slot) {
    const char* const digits = m_at + 1;
    const char* const close =
        static_cast<const char*>(std::memchr(digits, '"', static_cast<std::size_t>(m_end - digits)));
    if (close != nullptr && (close - digits) % 2 == 0) {
      const std::size_t size = static_cast<std::size_t>(close - digits) / 2;
      const std::size_t mark = m_sink.Mark();
      unsigned char* out = m_sink.OctetsRoom(slot, size);
      int bad = 0;
      for (std::size_t i = 0; i < size; ++i) {
        std::uint16_t pair;
        std::memcpy(&pair, digits + 2 * i, 2);
        const int octet = m_pairs[pair];
        bad |= octet;
        out[i] = static_cast<unsigned char>(octet);
      }
      if (bad >= 0) {
        m_at = close + 1;
        m_sink.OctetsWritten(slot);
        return;
      }
      m_sink.Rewind(mark);  // an escape or a fault: read again, checked
    }
    const std::string_view checked = ReadHexDigits();
    const std::size_t size = checked.size() / 2;
    unsigned char* out = m_sink.OctetsRoom(slot, size);
    for (std::size_t i = 0; i < size; ++i) {
      out[i] = static_cast<unsigned char>((kHexValues.values[static_cast<unsigned char>(checked[2 * i])] << 4) |
                                          kHexValues.values[static_cast<unsigned char>(checked[2 * i + 1])]);
    }
    m_sink.OctetsWritten(slot);
  }

  Sink& m_sink;
  const std::int16_t* const m_pairs;
  const bool m_refuseAmbiguous;
};

}  // namespace

// ---- the reader --------------------------------------------------------------------------

AsnJsonReader::AsnJsonReader(std::string_view text, AsnJsonForm form, std::size_t base)
    : m_begin(text.data()),
      m_at(text.data()),
      m_end(text.data() + text.size()),
      m_base(base),
      m_jer(form == AsnJsonForm::kJer) {}

namespace {

JsonText TextOf(const char* begin, const char* at, const char* end, std::size_t base, bool jer, bool& endedEarly,
                std::string& scratch, std::string& key) {
  return JsonText(begin, at, end, base, jer, endedEarly, scratch, key);
}

}  // namespace

void AsnJsonReader::ReadValue(AsnType& value) {
  const JsonText text = TextOf(m_begin, m_at, m_end, m_base, m_jer, m_endedEarly, m_scratch, m_key);
  ValueSink sink(m_scratch);
  AsnJsonGrammar<ValueSink> grammar(text, sink, m_refuseAmbiguous);
  const AsnJsonShape& shape = AsnJsonShapeOf(value);
  grammar.Read(shape, &value, m_levelsAround + shape.levels);
  m_at = grammar.At();
}

void AsnJsonReader::ReadEncoded(const AsnType& prototype, std::string& ber) {
  const AsnJsonShape& shape = AsnJsonShapeOf(prototype);
  const std::size_t had = ber.size();
  if (shape.berDirect) try {
    const JsonText text = TextOf(m_begin, m_at, m_end, m_base, m_jer, m_endedEarly, m_scratch, m_key);
    BerSink sink(ber);
    AsnJsonGrammar<BerSink> grammar(text, sink, m_refuseAmbiguous);
    grammar.Read(shape, shape.tag, m_levelsAround + shape.levels);
    sink.Done();
    m_at = grammar.At();
    return;
  } catch (MembersOutOfOrder) {
    ber.resize(had);
  } catch (...) {
    ber.resize(had);
    throw;
  }
  // Members out of declaration order, or a type the BER sink does not write
  // directly: read into a value, then encoded.
  const std::unique_ptr<AsnType> value(prototype.Clone());
  ReadValue(*value);
  AsnBuf buf;
  ber += AsnEncodeInto(*value, buf);
}

char AsnJsonReader::Peek() {
  while (m_at != m_end && IsBlank(*m_at)) ++m_at;
  return m_at == m_end ? '\0' : *m_at;
}

void AsnJsonReader::Fail(const std::string& what) {
  TextOf(m_begin, m_at, m_end, m_base, m_jer, m_endedEarly, m_scratch, m_key).Fail(what);
}

// ---- whole texts ----------------------------------------------------------------------------

namespace {

// Refuses a text that holds no value, or starts with a byte-order mark.
void CheckStart(std::string_view text) {
  if (text.substr(0, 3) == kByteOrderMark) {
    AsnThrowDecodeError(0, "JSON text starts with a byte-order mark (save it as UTF-8 without one)");
  }
  if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
    AsnThrowDecodeError(0, text.empty() ? "empty input" : "empty input (only blanks)");
  }
}

void CheckEnd(AsnJsonReader& reader, std::string_view text) {
  if (reader.Peek() != '\0' || reader.Offset() != text.size()) reader.Fail("content after the value");
}

}  // namespace

void AsnReadJson(AsnType& value, std::string_view text, AsnJsonForm form) {
  AsnJsonReader reader(text, form);
  try {
    CheckStart(text);
    reader.ReadValue(value);
    CheckEnd(reader, text);
  } catch (AsnDecodeError* error) {
    error->AddTypeName(value.typeName());
    throw;
  }
}

namespace {

void JsonToBerInto(const AsnType& prototype, std::string_view text, AsnJsonForm form, bool refuseAmbiguous,
                   std::string& ber) {
  ber.clear();
  AsnJsonReader reader(text, form);
  if (refuseAmbiguous) reader.RefuseAmbiguousOctets();
  try {
    CheckStart(text);
    reader.ReadEncoded(prototype, ber);
    CheckEnd(reader, text);
  } catch (AsnDecodeError* error) {
    ber.clear();
    error->AddTypeName(prototype.typeName());
    throw;
  }
}

}  // namespace

void AsnJsonToBerInto(const AsnType& prototype, std::string_view text, AsnJsonForm form, std::string& ber) {
  JsonToBerInto(prototype, text, form, false, ber);
}

AsnJsonForm AsnJsonToBerEitherForm(const AsnType& prototype, std::string_view text, std::string& ber) {
  std::string readableBer;
  const AsnJsonForm form = AsnChooseJsonForm([&](AsnJsonForm reading, bool refuseAmbiguous) {
    JsonToBerInto(prototype, text, reading, refuseAmbiguous, reading == AsnJsonForm::kJer ? ber : readableBer);
  });
  if (form == AsnJsonForm::kReadable) ber.swap(readableBer);
  return form;
}

std::string AsnJsonToBer(const AsnType& prototype, std::string_view text, AsnJsonForm form) {
  std::string ber;
  ber.reserve(text.size() / 2 + 64);  // JER's hex takes two characters an octet
  AsnJsonToBerInto(prototype, text, form, ber);
  return ber;
}

// ---- the tokens a value with its own codec reads --------------------------------------------

namespace {

JsonText& TextIn(void* text) { return *static_cast<JsonText*>(text); }

}  // namespace

void AsnJsonIn::Start() { m_last = TextIn(m_text).At(); }

AsnJsonIn::Token AsnJsonIn::Peek() {
  switch (TextIn(m_text).Peek()) {
    case '"': return Token::kString;
    case '{': return Token::kObject;
    case '[': return Token::kArray;
    case 't':
    case 'f': return Token::kBool;
    case 'n': return Token::kNull;
    case '-':
    case '0': case '1': case '2': case '3': case '4': case '5': case '6': case '7': case '8': case '9':
      return Token::kNumber;
    default: return Token::kOther;
  }
}

std::string AsnJsonIn::String() {
  JsonText& text = TextIn(m_text);
  if (Peek() != Token::kString) FailExpected("a string");
  Start();
  return std::string(text.ReadStringContent());
}

std::string AsnJsonIn::Number() {
  JsonText& text = TextIn(m_text);
  if (Peek() != Token::kNumber) FailExpected("a number");
  Start();
  text.SkipNumber();
  return std::string(m_last, text.At());
}

long long AsnJsonIn::Integer(long long min, long long max) {
  TextIn(m_text).SkipBlanks();
  Start();
  return TextIn(m_text).ReadInteger(min, max);
}

bool AsnJsonIn::Bool() {
  TextIn(m_text).SkipBlanks();
  Start();
  return TextIn(m_text).ReadBool();
}

void AsnJsonIn::Null() {
  JsonText& text = TextIn(m_text);
  if (Peek() != Token::kNull) FailExpected("null");
  Start();
  text.ExpectLiteral("null");
}

void AsnJsonIn::BeginObject() {
  JsonText& text = TextIn(m_text);
  if (Peek() != Token::kObject) FailExpected("an object");
  Start();
  text.Enter();
  m_firstKey = true;
}

bool AsnJsonIn::NextKey(std::string& key) {
  JsonText& text = TextIn(m_text);
  const char c = text.Peek();
  if (c == '}') {
    text.Leave();
    return false;
  }
  if (!m_firstKey) {
    if (c != ',') text.FailExpected("',' or '}'");
    text.Consume(',', "','");
  }
  m_firstKey = false;
  if (text.Peek() != '"') text.FailExpected("a member name");
  Start();
  key.assign(text.ReadKey());
  text.Consume(':', "':'");
  return true;
}

void AsnJsonIn::Fail(const std::string& what) {
  JsonText& text = TextIn(m_text);
  text.FailAt(m_last != nullptr ? m_last : text.At(), what);
}

void AsnJsonIn::FailExpected(const char* what) { TextIn(m_text).FailExpected(what); }
