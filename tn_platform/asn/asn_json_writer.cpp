#include "tn_platform/asn/asn_json_writer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <vector>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_json_tokens.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_primitive_sample.h"
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

// A member's key as written, `"name":` (one line) or `"name": ` (indented),
// in a fixed-size array so that it is copied in one inline move.
struct KeyText {
  char text[48];
  std::size_t size;
  std::string whole;  // a key longer than `text` holds
};
using KeyTexts = std::vector<KeyText>;

// The keys of a record class, measured once per thread and layout.
struct KeyCache {
  const AsnRecordPlan* plan = nullptr;
  const char* className = nullptr;  // with the plan's address: the same class
  KeyTexts keys;
};

// The text being written: room is made once per piece (Reserve), then
// characters go in without further checks. The writer's hot loop stays free
// of std::string's out-of-line growth and zero-filling.
class Text {
 public:
  explicit Text(std::string& out) : m_out(out), m_block(t_block) {
    m_begin = m_at = m_block.data.get();
    m_end = m_begin + m_block.size;
  }
  ~Text() { Flush(); }
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;

  void Reserve(std::size_t count) {
    if (static_cast<std::size_t>(m_end - m_at) < count) Grow(count);
  }
  void Put(char c) { *m_at++ = c; }
  // The place the next character goes, for pieces written in place (the
  // room reserved may be written beyond `Advance`'s count).
  char* At() { return m_at; }
  void Advance(std::size_t count) { m_at += count; }
  void Put(const char* data, std::size_t size) {
    std::memcpy(m_at, data, size);
    m_at += size;
  }
  void Flush() {
    m_out.append(m_begin, static_cast<std::size_t>(m_at - m_begin));
    m_at = m_begin;
  }

 private:
  void Grow(std::size_t count) {
    // Small pieces gather in a block of its own and go to `out` in one
    // append; a piece larger than the block is written straight through.
    Flush();
    const std::size_t size = std::max<std::size_t>(count, kBlock);
    if (static_cast<std::size_t>(m_end - m_begin) < size) {
      m_block.data.reset(new char[size]);  // not zero-filled: every octet is written before it is read
      m_block.size = size;
      m_begin = m_at = m_block.data.get();
      m_end = m_begin + size;
    }
  }

  static constexpr std::size_t kBlock = 64 * 1024;
  // One block per thread, kept from call to call (a writer never runs
  // inside another on one thread).
  struct Block {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
    // Member keys by record class and layout (see Writer::KeysOf): entries
    // never move, so nested records hold on to theirs.
    std::unordered_map<const AsnRecordPlan*, KeyCache> keys[2];
    KeyCache* lastKeys[2] = {nullptr, nullptr};
  };
  static thread_local Block t_block;
  std::string& m_out;
  Block& m_block;

 public:
  Block& ThreadBlock() { return m_block; }
  char* m_begin;
  char* m_at;
  char* m_end;
};

thread_local Text::Block Text::t_block;

// Printable ASCII without quote or backslash: text that goes into a JSON
// string as it is (the common case, checked without decoding UTF-8), eight
// octets a step: a word holds none of the others when no octet is below
// 0x20, none is 0x7F or above, and none equals '"' or '\\'.
bool IsPlainText(std::string_view octets) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  constexpr std::uint64_t kHighs = 0x8080808080808080ULL;
  const auto hasZero = [](std::uint64_t word) { return (word - kOnes) & ~word & kHighs; };
  const char* at = octets.data();
  std::size_t left = octets.size();
  for (; left >= 8; left -= 8, at += 8) {
    std::uint64_t word;
    std::memcpy(&word, at, 8);
    const std::uint64_t below = (word - kOnes * 0x20) & ~word & kHighs;
    const std::uint64_t above = ((word + kOnes) | word) & kHighs;
    if (below | above | hasZero(word ^ (kOnes * '"')) | hasZero(word ^ (kOnes * '\\'))) return false;
  }
  for (; left > 0; --left, ++at) {
    const unsigned char octet = static_cast<unsigned char>(*at);
    if (octet < 0x20 || octet >= 0x7F || octet == '"' || octet == '\\') return false;
  }
  return true;
}

class Writer {
 public:
  Writer(std::string& out, AsnJsonForm form, AsnJsonLayout layout, bool comments = false)
      : m_text(out),
        m_jer(form == AsnJsonForm::kJer),
        m_indented(layout == AsnJsonLayout::kIndented),
        m_comments(comments && !m_jer) {}

  void Value(AsnMemberKind kind, const AsnType& value, unsigned level) {
    switch (kind) {
      case AsnMemberKind::kOcts:
        Octets(static_cast<const AsnOcts&>(value).view(), level);
        break;
      case AsnMemberKind::kTinyInt:
        Integer(static_cast<const AsnTinyInt&>(value).Value(), false);
        break;
      case AsnMemberKind::kInt:
        // A readable 64-bit integer is a string: doubles would round it.
        Integer(static_cast<const AsnInt&>(value).Value(), !m_jer);
        break;
      case AsnMemberKind::kBool:
        m_text.Reserve(5);
        if (static_cast<const AsnBool&>(value).Value()) {
          m_text.Put("true", 4);
        } else {
          m_text.Put("false", 5);
        }
        break;
      case AsnMemberKind::kList:
        List(static_cast<const AsnListBase&>(value), level);
        break;
      case AsnMemberKind::kRecord:
        Record(static_cast<const AsnSequence&>(value), level);
        break;
      case AsnMemberKind::kChoice:
        Choice(static_cast<const AsnChoice&>(value), level);
        break;
      case AsnMemberKind::kPrimitive: {
        AsnJsonOut out(this, m_jer, level);
        static_cast<const AsnPrimitive&>(value).WriteJson(out);
        break;
      }
    }
  }

  // For the tokens of a value with its own codec (AsnJsonOut).
  void Put(std::string_view text) {
    m_text.Reserve(text.size());
    m_text.Put(text.data(), text.size());
  }
  void PutHex(std::string_view octets) {
    m_text.Reserve(2 * octets.size() + 2);
    m_text.Put('"');
    Hex(octets);
    m_text.Put('"');
  }
  void LineAt(unsigned level) { NewLine(level); }
  bool Indented() const { return m_indented; }

 private:
  void Integer(long long value, bool quoted) {
    m_text.Reserve(24);
    char digits[24];
    const std::size_t length = static_cast<std::size_t>(std::to_chars(digits, digits + sizeof digits, value).ptr - digits);
    if (quoted) m_text.Put('"');
    m_text.Put(digits, length);
    if (quoted) m_text.Put('"');
  }

  void Hex(std::string_view octets) {
    for (const char c : octets) m_text.Put(kHex.pairs[static_cast<unsigned char>(c)], 2);
  }

  void Octets(std::string_view octets, unsigned level) {
    if (m_jer) {
      m_text.Reserve(2 * octets.size() + 2);
      m_text.Put('"');
      Hex(octets);
      m_text.Put('"');
    } else if (IsPlainText(octets)) {
      m_text.Reserve(octets.size() + 2);
      m_text.Put('"');
      m_text.Put(octets.data(), octets.size());
      m_text.Put('"');
    } else if (AsnOctetsAreText(octets)) {
      std::string quoted;
      AsnWriteJsonString(quoted, octets);
      m_text.Reserve(quoted.size());
      m_text.Put(quoted.data(), quoted.size());
    } else {
      m_text.Reserve(1);
      m_text.Put('{');
      NewLine(level + 1);
      m_text.Reserve(2 * octets.size() + 12);
      m_text.Put(m_indented ? "\"hex\": \"" : "\"hex\":\"", m_indented ? 8 : 7);
      Hex(octets);
      m_text.Put('"');
      NewLine(level);
      m_text.Reserve(1);
      m_text.Put('}');
    }
  }

  void Record(const AsnSequence& record, unsigned level) {
    void* const base = const_cast<AsnSequence*>(&record);
    bool first = true;
    m_text.Reserve(1);
    m_text.Put('{');
    const AsnRecordPlan& plan = record.Plan();
    if (m_comments && plan.hasOptional) {
      Comment(plan, level);
      first = false;
    }
    const KeyTexts& keys = KeysOf(plan);
    for (std::size_t index = 0; index < plan.members.size(); ++index) {
      const AsnMemberStep& member = plan.members[index];
      const AsnType* value = member.ValueIn(base);
      if (value == nullptr) continue;
      if (!first) {
        m_text.Reserve(1);
        m_text.Put(',');
      }
      first = false;
      NewLine(level + 1);
      const KeyText& key = keys[index];
      if (key.size <= sizeof key.text) {
        m_text.Reserve(sizeof key.text);
        std::memcpy(m_text.At(), key.text, sizeof key.text);  // fixed size: copied inline
        m_text.Advance(key.size);
      } else {
        m_text.Reserve(key.size);
        m_text.Put(key.whole.data(), key.size);
      }
      Value(member.kind, *value, level + 1);
    }
    if (plan.extensible && plan.ExtensionsIn(base)->Count() != 0) {
      if (!first) Put(",");
      first = false;
      NewLine(level + 1);
      Put(m_indented ? "\"...\": " : "\"...\":");
      List(*plan.ExtensionsIn(base), level + 1);
    }
    if (!first) NewLine(level);
    m_text.Reserve(1);
    m_text.Put('}');
  }

  // {"alternative": value}; an unknown one {"...": <open value>}.
  void Choice(const AsnChoice& choice, unsigned level) {
    void* const base = const_cast<AsnChoice*>(&choice);
    const AsnRecordPlan& plan = choice.Plan();
    const std::size_t index = choice.Which();
    Put("{");
    if (index == AsnChoice::kNone) {
      Put("}");
      return;
    }
    NewLine(level + 1);
    if (index == AsnChoice::kUnknown) {
      Put(m_indented ? "\"...\": " : "\"...\":");
      plan.ExtensionsIn(base)->ForEachElement(
          [&](const AsnType& unknown) { Value(AsnMemberKind::kPrimitive, unknown, level + 1); });
    } else {
      const AsnMemberStep& alternative = plan.members[index];
      const KeyText& key = KeysOf(plan)[index];
      Put(key.whole);
      Value(alternative.kind, *alternative.ValueIn(base), level + 1);
    }
    NewLine(level);
    Put("}");
  }

  // A "//" member naming the record's optional members.
  void Comment(const AsnRecordPlan& plan, unsigned level) {
    std::string names;
    for (const AsnMemberStep& member : plan.members) {
      if (member.optional) names += (names.empty() ? "" : ", ") + std::string(member.name);
    }
    std::string text(m_indented ? "\"//\": " : "\"//\":");
    AsnWriteJsonString(text, "optional: " + names + " (leave out or null for absent)");
    NewLine(level + 1);
    m_text.Reserve(text.size());
    m_text.Put(text.data(), text.size());
  }

  void List(const AsnListBase& list, unsigned level) {
    m_text.Reserve(2);
    m_text.Put('[');
    if (list.Count() == 0) {
      m_text.Put(']');
      return;
    }
    bool first = true;
    AsnMemberKind kind = AsnMemberKind::kRecord;
    list.ForEachElement([&](const AsnType& element) {
      if (first) kind = AsnKindOf(element);  // every element is of one type
      if (!first) {
        m_text.Reserve(1);
        m_text.Put(',');
      }
      first = false;
      NewLine(level + 1);
      Value(kind, element, level + 1);
    });
    NewLine(level);
    m_text.Reserve(1);
    m_text.Put(']');
  }

  void NewLine(unsigned level) {
    if (!m_indented) return;
    // A line break and the indentation: one fixed-size copy covers the usual
    // depths (room for all of it is reserved, so the copy may run past).
    static const char kLine[] = "\n                               ";
    const std::size_t length = 1 + 2 * static_cast<std::size_t>(level);
    m_text.Reserve(std::max(length, sizeof kLine - 1));
    char* const at = m_text.At();
    std::memcpy(at, kLine, sizeof kLine - 1);
    if (length > sizeof kLine - 1) std::memset(at + sizeof kLine - 1, ' ', length - (sizeof kLine - 1));
    m_text.Advance(length);
  }

  const KeyTexts& KeysOf(const AsnRecordPlan& plan) {
    auto& block = m_text.ThreadBlock();
    const int layout = m_indented ? 1 : 0;
    KeyCache* cache = block.lastKeys[layout];
    if (cache != nullptr && cache->plan == &plan && cache->className == plan.className) return cache->keys;
    cache = &block.keys[layout][&plan];
    block.lastKeys[layout] = cache;
    if (cache->plan == &plan && cache->className == plan.className) return cache->keys;
    cache->keys.clear();
    for (const AsnMemberStep& member : plan.members) {
      KeyText key{};
      key.whole = std::string("\"") + member.name + (m_indented ? "\": " : "\":");
      key.size = key.whole.size();
      std::memcpy(key.text, key.whole.data(), std::min(key.size, sizeof key.text));
      cache->keys.push_back(std::move(key));
    }
    cache->plan = &plan;
    cache->className = plan.className;
    return cache->keys;
  }

  Text m_text;
  const bool m_jer;
  const bool m_indented;
  const bool m_comments;  // a "//" member naming the optional ones
};

// The member plans of the records and CHOICEs a template is filling,
// outermost first.
using FillPath = std::vector<const AsnRecordPlan*>;

// Whether `value` is, or as a list holds, a record or CHOICE being filled
// further out: filling it would not end for a type that holds itself.
bool LeadsBack(const AsnType& value, const FillPath& path) {
  const AsnMemberKind kind = AsnKindOf(value);
  if (kind == AsnMemberKind::kRecord || kind == AsnMemberKind::kChoice) {
    return std::find(path.begin(), path.end(), &static_cast<const AsnSequence&>(value).Plan()) != path.end();
  }
  if (kind != AsnMemberKind::kList) return false;
  const std::unique_ptr<AsnType> list(value.Clone());
  return LeadsBack(static_cast<AsnListBase&>(*list).AppendElement(), path);
}

// Gives `value` every member, a list one element and a value that is none of
// its type a sample (an OBJECT IDENTIFIER without arcs). A type that holds
// itself (LDAP's Filter, a record with an optional member of its own type)
// ends where it comes round again: that optional member is left out, that
// list stays empty, a CHOICE takes an alternative that does not lead back.
// Below `depth` levels records and lists keep their defaults.
void FillEveryMember(AsnType& value, FillPath& path, unsigned depth) {
  const AsnMemberKind kind = AsnKindOf(value);
  if (kind == AsnMemberKind::kPrimitive) {
    AsnGiveSampleValue(static_cast<AsnPrimitive&>(value));
    return;
  }
  if (kind == AsnMemberKind::kChoice) {
    auto& choice = static_cast<AsnChoice&>(value);
    const std::size_t count = choice.Plan().members.size();
    if (choice.Which() != AsnChoice::kNone || count == 0) return;
    path.push_back(&choice.Plan());
    std::size_t index = 0;
    while (index + 1 < count && LeadsBack(choice.Choose(index), path)) ++index;
    if (LeadsBack(choice.Choose(index), path)) {
      index = 0;  // every one leads back: a type without a finite value ends at the depth limit
      if (depth == 0) {
        path.pop_back();
        return;
      }
    }
    FillEveryMember(choice.Choose(index), path, depth == 0 ? 0 : depth - 1);
    path.pop_back();
    return;
  }
  if (depth == 0) return;
  if (kind == AsnMemberKind::kRecord) {
    auto& record = static_cast<AsnSequence&>(value);
    path.push_back(&record.Plan());
    for (const AsnMemberStep& member : record.Plan().members) {
      AsnType& held = *member.ValueOrCreateIn(&record);
      if (member.optional && LeadsBack(held, path)) {
        member.ResetIn(&record);
      } else {
        FillEveryMember(held, path, depth - 1);
        AsnFitToBounds(member, held, [&](AsnType& element) { FillEveryMember(element, path, depth - 1); });
      }
    }
    path.pop_back();
  } else if (kind == AsnMemberKind::kList) {
    auto& list = static_cast<AsnListBase&>(value);
    if (list.Count() != 0) return;
    AsnType& element = list.AppendElement();
    if (LeadsBack(element, path)) {
      list.ClearElements();
    } else {
      FillEveryMember(element, path, depth - 1);
    }
  }
}

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

std::string AsnJsonTemplate(AsnType& value, AsnJsonForm form, AsnJsonLayout layout) {
  constexpr unsigned kTemplateDepth = 16;
  FillPath path;
  FillEveryMember(value, path, kTemplateDepth);
  std::string out;
  Writer(out, form, layout, true).Value(AsnKindOf(value), value, 0);
  return out;
}

// ---- the tokens a value with its own codec writes ----------------------------------------

namespace {

Writer& WriterOf(void* writer) { return *static_cast<Writer*>(writer); }

}  // namespace

void AsnJsonOut::String(std::string_view text) {
  std::string quoted;
  AsnWriteJsonString(quoted, text);
  WriterOf(m_writer).Put(quoted);
}

void AsnJsonOut::Hex(std::string_view octets) { WriterOf(m_writer).PutHex(octets); }

void AsnJsonOut::Number(std::string_view text) {
  if (AsnIsJsonNumber(text)) {
    WriterOf(m_writer).Put(text);
  } else {
    String(text);
  }
}

void AsnJsonOut::Integer(long long value) { WriterOf(m_writer).Put(std::to_string(value)); }

void AsnJsonOut::Bool(bool value) { WriterOf(m_writer).Put(value ? "true" : "false"); }

void AsnJsonOut::Null() { WriterOf(m_writer).Put("null"); }

void AsnJsonOut::BeginObject() {
  WriterOf(m_writer).Put("{");
  m_first = true;
}

void AsnJsonOut::Key(std::string_view name) {
  Writer& writer = WriterOf(m_writer);
  if (!m_first) writer.Put(",");
  m_first = false;
  writer.LineAt(m_level + 1);
  std::string key;
  AsnWriteJsonString(key, name);
  key += writer.Indented() ? ": " : ":";
  writer.Put(key);
}

void AsnJsonOut::EndObject() {
  Writer& writer = WriterOf(m_writer);
  if (!m_first) writer.LineAt(m_level);
  writer.Put("}");
}

bool AsnIsJsonNumber(std::string_view text) {
  std::size_t at = 0;
  const auto digits = [&] {
    const std::size_t start = at;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') ++at;
    return at - start;
  };
  if (at < text.size() && text[at] == '-') ++at;
  const std::size_t start = at;
  const std::size_t integer = digits();
  if (integer == 0 || (integer > 1 && text[start] == '0')) return false;
  if (at < text.size() && text[at] == '.') {
    ++at;
    if (digits() == 0) return false;
  }
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    if (digits() == 0) return false;
  }
  return at == text.size();
}
