#include "tn_platform/asn/asn_json_transcoder.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_text_codes.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/asn_value_kind.h"

// A tag's identifier octets (at most five), copied as one eight-octet move.
struct AsnTagOctets {
  char octets[8];
  std::size_t size;
};

// What the fast path knows of a value: its kind and, for a record, each
// member's name, tag octets and shape; for a list, its element's shape.
struct AsnJsonTranscoder::Shape {
  struct Member {
    std::string_view name;
    AsnTagOctets tag;
    bool optional;
    std::unique_ptr<Shape> shape;
  };
  AsnMemberKind kind = AsnMemberKind::kRecord;
  std::vector<Member> members;
  std::unique_ptr<Shape> element;
};

namespace {

using Shape = AsnJsonTranscoder::Shape;

// Types nest no deeper than the decoder allows; a deeper shape is not built.
constexpr unsigned kMaxShapeDepth = AsnDecodeLimits::kMaxDepth;

AsnTagOctets TagOctets(AsnTag tag) {
  AsnBuf buf;
  BEncTag(buf, tag);
  AsnTagOctets octets{};
  octets.size = buf.EncodedLength();
  std::memcpy(octets.octets, buf.EncodedData(), octets.size);
  return octets;
}

std::unique_ptr<Shape> MakeShape(const AsnType& value, unsigned depth) {
  auto shape = std::make_unique<Shape>();
  shape->kind = AsnKindOf(value);
  if (depth > kMaxShapeDepth) return nullptr;
  if (shape->kind == AsnMemberKind::kRecord) {
    for (const AsnMemberStep& step : static_cast<const AsnSequence&>(value).Plan().members) {
      const std::unique_ptr<AsnType, refl::DestroyFunction> member(static_cast<AsnType*>(step.create()), step.destroy);
      std::unique_ptr<Shape> memberShape = MakeShape(*member, depth + 1);
      if (!memberShape) return nullptr;
      shape->members.push_back({step.name, TagOctets(step.tag), step.optional, std::move(memberShape)});
    }
  } else if (shape->kind == AsnMemberKind::kList) {
    const std::unique_ptr<AsnType> list(value.Clone());
    shape->element = MakeShape(static_cast<AsnListBase&>(*list).AppendElement(), depth + 1);
    if (!shape->element) return nullptr;
  }
  return shape;
}

constexpr const asn_text::HexDigitValues& kHexValues = asn_text::kHexDigits;

// Member names are short: compared inline with two loads that may overlap
// (the first and the last 4 or 8 octets), a longer name eight octets a step.
bool SameName(std::string_view name, const char* text, std::size_t size) {
  if (name.size() != size) return false;
  const char* known = name.data();
  if (size >= 4 && size <= 8) {
    std::uint32_t a[2];
    std::uint32_t b[2];
    std::memcpy(&a[0], known, 4);
    std::memcpy(&a[1], known + size - 4, 4);
    std::memcpy(&b[0], text, 4);
    std::memcpy(&b[1], text + size - 4, 4);
    return ((a[0] ^ b[0]) | (a[1] ^ b[1])) == 0;
  }
  for (; size >= 8; size -= 8, known += 8, text += 8) {
    std::uint64_t a;
    std::uint64_t b;
    std::memcpy(&a, known, 8);
    std::memcpy(&b, text, 8);
    if (a != b) return false;
  }
  for (; size > 0; --size) {
    if (*known++ != *text++) return false;
  }
  return true;
}

// Thrown (by value, caught inside) when the fast path gives up.
struct GiveUp {};

// Hex digit pairs by their two characters: the octet, or -1.
const std::int16_t* HexPairValues() {
  static const std::unique_ptr<std::int16_t[]> table = [] {
    std::unique_ptr<std::int16_t[]> values(new std::int16_t[65536]);
    for (unsigned first = 0; first < 256; ++first) {
      for (unsigned second = 0; second < 256; ++second) {
        const int high = kHexValues.values[first];
        const int low = kHexValues.values[second];
        unsigned char pair[2] = {static_cast<unsigned char>(first), static_cast<unsigned char>(second)};
        std::uint16_t index;
        std::memcpy(&index, pair, 2);
        values[index] = static_cast<std::int16_t>((high | low) < 0 ? -1 : (high << 4) | low);
      }
    }
    return values;
  }();
  return table.get();
}

class Transcoding {
 public:
  Transcoding(const char* begin, const char* end, bool jer, std::string& out)
      : m_at(begin), m_end(end), m_jer(jer), m_out(out), m_length(out.size()), m_pairs(HexPairValues()) {
    m_base = &m_out[0];
    m_size = m_out.size();
  }

  const char* At() const { return m_at; }
  // Cuts the output to what was written.
  void Done() { m_out.resize(m_length); }

  void Value(const Shape& shape, const AsnTagOctets& tag) {
    switch (shape.kind) {
      case AsnMemberKind::kOcts:
        return Octets(tag);
      case AsnMemberKind::kTinyInt:
        return Integer(tag, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());
      case AsnMemberKind::kInt:
        return Integer(tag, std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max());
      case AsnMemberKind::kBool:
        return Boolean(tag);
      case AsnMemberKind::kList:
        return List(shape, tag);
      case AsnMemberKind::kRecord:
        return Record(shape, tag);
    }
  }

 private:
  // True when the text at the current place is `name` and the closing quote.
  bool MatchesKey(std::string_view name) const {
    return static_cast<std::size_t>(m_end - m_at) > name.size() && m_at[name.size()] == '"' &&
           SameName(name, m_at, name.size());
  }

  void SkipBlanks() {
    // Compact text has no blanks: one comparison settles the common case.
    while (m_at != m_end && static_cast<unsigned char>(*m_at) <= ' ' &&
           (*m_at == ' ' || *m_at == '\n' || *m_at == '\r' || *m_at == '\t'))
      ++m_at;
  }
  char Next() {
    SkipBlanks();
    if (m_at == m_end) throw GiveUp();
    return *m_at;
  }
  void Expect(char c) {
    if (Next() != c) throw GiveUp();
    ++m_at;
  }

  // Reserves the length octet of a constructed value; returns its place.
  std::size_t OpenLength(const AsnTagOctets& tag) {
    Put(tag);
    Put('\0');
    return m_length - 1;
  }
  // Writes the length of the content after `place`, minimal (X.690 8.1.3).
  void CloseLength(std::size_t place) {
    const std::size_t length = m_length - place - 1;
    if (length < 128) {
      m_base[place] = static_cast<char>(length);
      return;
    }
    char octets[sizeof(std::size_t)];
    int count = 0;
    for (std::size_t rest = length; rest > 0; rest >>= 8) octets[count++] = static_cast<char>(rest & 0xFF);
    Room(static_cast<std::size_t>(count));  // the content moves up to make room for the long form
    std::memmove(m_base + place + 1 + count, m_base + place + 1, length);
    m_base[place] = static_cast<char>(0x80 | count);
    for (int i = 0; i < count; ++i) m_base[place + 1 + static_cast<std::size_t>(i)] = octets[count - 1 - i];
  }
  void Length(std::size_t length) {
    if (length < 128) {
      Put(static_cast<char>(length));
      return;
    }
    char octets[sizeof(std::size_t)];
    int count = 0;
    for (std::size_t rest = length; rest > 0; rest >>= 8) octets[count++] = static_cast<char>(rest & 0xFF);
    Put(static_cast<char>(0x80 | count));
    for (int i = count - 1; i >= 0; --i) Put(octets[i]);
  }

  void Octets(const AsnTagOctets& tag) {
    if (Next() != '"') throw GiveUp();
    const char* const start = ++m_at;
    if (m_jer) return HexOctets(tag, start);
    const char* close = static_cast<const char*>(std::memchr(start, '"', static_cast<std::size_t>(m_end - start)));
    if (close == nullptr) throw GiveUp();
    const std::size_t size = static_cast<std::size_t>(close - start);
    // Plain text only: escapes, controls and anything beyond ASCII take the strict reader.
    for (const char* read = start; read != close; ++read) {
      const unsigned char c = static_cast<unsigned char>(*read);
      if (c < 0x20 || c >= 0x80 || c == '\\') throw GiveUp();
    }
    Put(tag);
    Length(size);
    std::memcpy(Room(size), start, size);
    m_at = close + 1;
  }

  // A JER hex string, decoded in one pass up to its closing quote, which no
  // pair of hex digits contains; the length is written when it is known.
  void HexOctets(const AsnTagOctets& tag, const char* start) {
    Put(tag);
    const std::size_t place = m_length;
    Put('\0');
    const char* read = start;
    int bad = 0;
    // Room is made for 64 octets at a time, so the inner loop writes
    // without checks.
    constexpr std::size_t kRun = 64;
    const char* const last = m_end - 3;  // a step reads four characters
    bool more = true;
    while (more) {
      if (m_length + kRun > m_size) Grow(kRun);
      char* write = m_base + m_length;
      char* const stop = write + kRun;
      more = false;
      while (read < last) {
        std::uint16_t first;
        std::uint16_t second;
        std::memcpy(&first, read, 2);
        std::memcpy(&second, read + 2, 2);
        const int high = m_pairs[first];
        const int low = m_pairs[second];
        if ((high | low) < 0) break;
        write[0] = static_cast<char>(high);
        write[1] = static_cast<char>(low);
        write += 2;
        read += 4;
        if (write == stop) {
          more = true;
          break;
        }
      }
      m_length = static_cast<std::size_t>(write - m_base);
    }
    // At most three characters before the quote are left.
    for (;;) {
      if (read == m_end) throw GiveUp();
      if (*read == '"') break;
      if (m_end - read < 2) throw GiveUp();
      std::uint16_t pair;
      std::memcpy(&pair, read, 2);
      bad |= m_pairs[pair];
      if (bad < 0) throw GiveUp();
      Put(static_cast<char>(m_pairs[pair]));
      read += 2;
    }
    m_at = read + 1;
    CloseLength(place);
  }

  void Integer(const AsnTagOctets& tag, long long min, long long max) {
    const bool quoted = !m_jer && Next() == '"';
    if (quoted) ++m_at;
    const char* const start = m_at;
    const bool negative = m_at != m_end && *m_at == '-';
    if (negative) ++m_at;
    std::uint64_t magnitude = 0;
    const char* const digits = m_at;
    while (m_at != m_end && *m_at >= '0' && *m_at <= '9') {
      if (magnitude > (std::numeric_limits<std::uint64_t>::max() - 9) / 10) throw GiveUp();
      magnitude = magnitude * 10 + static_cast<unsigned>(*m_at - '0');
      ++m_at;
    }
    const std::size_t count = static_cast<std::size_t>(m_at - digits);
    if (count == 0 || (count > 1 && *digits == '0') || start == m_end) throw GiveUp();
    if (m_at != m_end && (*m_at == '.' || *m_at == 'e' || *m_at == 'E')) throw GiveUp();
    // The closing quote must follow the digits at once: blanks inside the
    // string make it no integer.
    if (quoted) {
      if (m_at == m_end || *m_at != '"') throw GiveUp();
      ++m_at;
    }
    const std::uint64_t limit = negative ? static_cast<std::uint64_t>(-(min + 1)) + 1 : static_cast<std::uint64_t>(max);
    if (magnitude > limit) throw GiveUp();
    const long long value = negative ? static_cast<long long>(0 - magnitude) : static_cast<long long>(magnitude);
    // Minimal two's complement (X.690 8.3.2).
    int octets = 1;
    while (octets < 8) {
      const long long bound = 1LL << (8 * octets - 1);
      if (value >= -bound && value < bound) break;
      ++octets;
    }
    Put(tag);
    Put(static_cast<char>(octets));
    for (int i = octets - 1; i >= 0; --i) Put(static_cast<char>((static_cast<std::uint64_t>(value) >> (8 * i)) & 0xFF));
  }

  void Boolean(const AsnTagOctets& tag) {
    const char c = Next();
    bool value = false;
    if (c == 't' && m_end - m_at >= 4 && std::memcmp(m_at, "true", 4) == 0) {
      value = true;
      m_at += 4;
    } else if (c == 'f' && m_end - m_at >= 5 && std::memcmp(m_at, "false", 5) == 0) {
      m_at += 5;
    } else {
      throw GiveUp();
    }
    Put(tag);
    Put('\x01');
    Put(value ? '\xFF' : '\x00');
  }

  void List(const Shape& shape, const AsnTagOctets& tag) {
    Expect('[');
    const std::size_t place = OpenLength(tag);
    if (Next() == ']') {
      ++m_at;
    } else {
      for (;;) {
        Value(*shape.element, UniversalTag(shape.element->kind));
        const char c = Next();
        ++m_at;
        if (c == ']') break;
        if (c != ',') throw GiveUp();
      }
    }
    CloseLength(place);
  }

  static const AsnTagOctets& UniversalTag(AsnMemberKind kind) {
    static const AsnTagOctets kTags[] = {{{'\x04'}, 1}, {{'\x02'}, 1}, {{'\x02'}, 1},
                                         {{'\x01'}, 1}, {{'\x30'}, 1}, {{'\x30'}, 1}};
    return kTags[static_cast<int>(kind)];
  }

  void Record(const Shape& shape, const AsnTagOctets& tag) {
    Expect('{');
    const std::size_t place = OpenLength(tag);
    const std::vector<Shape::Member>& members = shape.members;
    std::size_t next = 0;  // keys must come in declaration order
    if (Next() == '}') {
      ++m_at;
    } else {
      for (;;) {
        Expect('"');
        // The key is mostly the next member's name: matched in place.
        if (next < members.size() && MatchesKey(members[next].name)) {
          m_at += members[next].name.size() + 1;
        } else {
          const char* const key = m_at;
          while (m_at != m_end && *m_at != '"' && *m_at != '\\') ++m_at;
          if (m_at == m_end || *m_at == '\\') throw GiveUp();
          const std::size_t keySize = static_cast<std::size_t>(m_at - key);
          ++m_at;
          while (next < members.size() && !SameName(members[next].name, key, keySize)) {
            if (!members[next].optional) throw GiveUp();  // missing, or out of order
            ++next;
          }
        }
        Expect(':');
        if (next == members.size()) throw GiveUp();
        const Shape::Member& member = members[next++];
        if (Next() == 'n') {  // null: an absent optional member (readable only)
          if (m_jer || !member.optional || m_end - m_at < 4 || std::memcmp(m_at, "null", 4) != 0) throw GiveUp();
          m_at += 4;
        } else {
          Value(*member.shape, member.tag);
        }
        const char c = Next();
        ++m_at;
        if (c == '}') break;
        if (c != ',') throw GiveUp();
      }
    }
    for (; next < members.size(); ++next) {
      if (!members[next].optional) throw GiveUp();
    }
    CloseLength(place);
  }

  // Room for `count` more octets; the output string is grown ahead and cut
  // back by Done(), so writing never zero-fills octet by octet.
  char* Room(std::size_t count) {
    if (m_length + count > m_size) Grow(count);
    char* const at = m_base + m_length;
    m_length += count;
    return at;
  }
  void Grow(std::size_t count) {
    m_out.resize(std::max(2 * m_out.size(), m_length + count + 256));
    m_base = &m_out[0];
    m_size = m_out.size();
  }
  void Put(char c) { *Room(1) = c; }
  void Put(const AsnTagOctets& tag) {
    std::memcpy(Room(sizeof tag.octets), tag.octets, sizeof tag.octets);  // fixed size: one move
    m_length -= sizeof tag.octets - tag.size;
  }

  const char* m_at;
  const char* m_end;
  const bool m_jer;
  std::string& m_out;
  std::size_t m_length;  // octets written to m_out
  char* m_base = nullptr;  // m_out's octets and their number, kept while it does not grow
  std::size_t m_size = 0;
  const std::int16_t* m_pairs;
};

}  // namespace

AsnJsonTranscoder::AsnJsonTranscoder(const AsnType& prototype, AsnJsonForm form)
    : m_shape(MakeShape(prototype, 0)), m_jer(form == AsnJsonForm::kJer) {}

AsnJsonTranscoder::~AsnJsonTranscoder() = default;

std::size_t AsnJsonTranscoder::Transcode(std::string_view text, std::string& ber) const {
  if (!m_shape || m_shape->kind == AsnMemberKind::kOcts || m_shape->kind == AsnMemberKind::kTinyInt ||
      m_shape->kind == AsnMemberKind::kInt || m_shape->kind == AsnMemberKind::kBool) {
    return 0;  // a bare primitive value: the strict reader's
  }
  const std::size_t had = ber.size();
  Transcoding transcoding(text.data(), text.data() + text.size(), m_jer, ber);
  try {
    static const AsnTagOctets kSequence{{'\x30'}, 1};
    transcoding.Value(*m_shape, kSequence);
    transcoding.Done();
  } catch (GiveUp) {
    ber.resize(had);
    return 0;
  }
  return static_cast<std::size_t>(transcoding.At() - text.data());
}

void AsnJsonToBerInto(AsnType& value, std::string_view text, AsnJsonForm form, std::string& ber) {
  ber.clear();
  const AsnJsonTranscoder transcoder(value, form);
  const std::size_t used = transcoder.Transcode(text, ber);
  if (used > 0 && text.find_first_not_of(" \t\r\n", used) == std::string_view::npos) return;
  ber.clear();
  AsnReadJson(value, text, form);
  AsnBuf buf;
  ber.assign(AsnEncodeInto(value, buf));
}

std::string AsnJsonToBer(AsnType& value, std::string_view text, AsnJsonForm form) {
  std::string ber;
  ber.reserve(text.size() / 2 + 64);  // JER's hex takes two characters an octet
  AsnJsonToBerInto(value, text, form, ber);
  return ber;
}
