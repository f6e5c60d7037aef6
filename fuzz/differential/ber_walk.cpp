#include "fuzz/differential/ber_walk.h"

namespace {

constexpr std::size_t kStop = ~std::size_t{0};
constexpr int kDeepestLevel = 32;

class Walker {
 public:
  Walker(std::string_view bytes, const std::vector<BerIntegerTag>& integerTags)
      : bytes_(bytes), integerTags_(integerTags) {}

  // Walks the items of [pos, end) at nesting `level`; inside an indefinite
  // length, up to and including its end-of-contents. Returns the position
  // after them, or kStop when the rest cannot be read.
  std::size_t Items(std::size_t pos, std::size_t end, int level, bool indefinite) {
    while (pos < end) {
      if (indefinite && Octet(pos) == 0 && pos + 1 < end && Octet(pos + 1) == 0) return pos + 2;
      pos = Item(pos, end, level);
      if (pos == kStop) return kStop;
    }
    return indefinite ? kStop : pos;
  }

  std::vector<BerFinding> findings;

 private:
  std::uint8_t Octet(std::size_t pos) const { return static_cast<std::uint8_t>(bytes_[pos]); }
  void Note(const char* kind, std::size_t offset) { findings.push_back({kind, offset}); }

  std::size_t Item(std::size_t start, std::size_t end, int level) {
    std::size_t pos = start;
    const std::uint8_t first = Octet(pos++);
    const bool constructed = (first & 0x20) != 0;
    std::uint64_t number = first & 0x1F;
    if (number == 0x1F) {
      if (pos >= end) return kStop;
      if (Octet(pos) == 0x80) Note("high-tag-leading-zero", start);
      number = 0;
      std::uint8_t octet = 0;
      do {
        if (pos >= end || number > 0xFFFFFFFFu) return kStop;
        octet = Octet(pos++);
        number = (number << 7) | (octet & 0x7F);
      } while (octet & 0x80);
      if (number < 31) Note("high-tag-low-number", start);
    }
    if (pos >= end) return kStop;
    const std::uint8_t lengthOctet = Octet(pos++);
    bool indefinite = false;
    std::uint64_t length = lengthOctet;
    if (lengthOctet == 0x80) {
      indefinite = true;
    } else if (lengthOctet > 0x80) {
      const std::size_t count = lengthOctet & 0x7F;
      if (count == 0x7F || count > end - pos) return kStop;
      length = 0;
      for (std::size_t i = 0; i < count; ++i) {
        if (length >> 56) return kStop;  // the value does not fit 64 bits
        length = (length << 8) | Octet(pos++);
      }
      if (count > 8) Note("length-over-8-octets", start);
    }

    if (!constructed) {
      if (indefinite) {
        Note("indefinite-primitive", start);
        return kStop;
      }
      if (length > end - pos) return kStop;
      if (IsInteger(first & 0xC0, number)) CheckInteger(start, pos, length);
      return pos + length;
    }
    if (level + 1 > kDeepestLevel) {
      Note("nested-deeper-than-32", start);
      return kStop;
    }
    if (indefinite) return Items(pos, end, level + 1, true);
    if (length > end - pos) {
      Items(pos, end, level + 1, false);  // as far as the input goes
      return kStop;
    }
    if (Items(pos, pos + length, level + 1, false) == kStop) return kStop;
    return pos + length;
  }

  bool IsInteger(std::uint8_t tagClass, std::uint64_t number) const {
    for (const BerIntegerTag& tag : integerTags_) {
      if (tag.tagClass == tagClass && tag.number == number) return true;
    }
    return false;
  }

  void CheckInteger(std::size_t start, std::size_t content, std::uint64_t length) {
    if (length == 0) {
      Note("integer-empty", start);
    } else if (length >= 2) {
      const std::uint8_t first = Octet(content);
      const bool secondHigh = (Octet(content + 1) & 0x80) != 0;
      if ((first == 0x00 && !secondHigh) || (first == 0xFF && secondHigh)) Note("integer-not-minimal", start);
    }
  }

  std::string_view bytes_;
  const std::vector<BerIntegerTag>& integerTags_;
};

}  // namespace

std::vector<BerFinding> WalkBer(std::string_view bytes, const std::vector<BerIntegerTag>& integerTags) {
  Walker walker(bytes, integerTags);
  walker.Items(0, bytes.size(), 0, false);
  return walker.findings;
}
