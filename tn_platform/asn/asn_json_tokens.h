// The JSON a value that carries its own codec (AsnPrimitive) reads and
// writes: a few tokens, never the text itself. AsnJsonIn reads from the
// runtime's JSON reader at the place of the value, AsnJsonOut writes through
// the runtime's JSON writer; neither lets a value leave the text malformed.
#pragma once
#pragma GCC visibility push(default)

#include <string>
#include <string_view>

class AsnJsonIn {
 public:
  enum class Token : unsigned char { kString, kNumber, kObject, kArray, kBool, kNull, kOther };

  // True in JER, false in the readable form.
  bool Jer() const { return m_jer; }
  // What comes next (blanks skipped); kOther at the end of the text.
  Token Peek();
  // A string's content, escapes decoded (UTF-8).
  std::string String();
  // A JSON number's text as written ("-1.5e3").
  std::string Number();
  // An integer between `min` and `max` (in the readable form also a string of digits).
  long long Integer(long long min, long long max);
  bool Bool();
  void Null();
  // An object: BeginObject, then NextKey until it returns false (at the closing '}').
  void BeginObject();
  bool NextKey(std::string& key);
  // The constructed values the value read may still open in its BER without
  // passing the nesting limit (an open value's encoding counts them).
  unsigned LevelsLeft() const { return m_levelsLeft; }
  // Throws an AsnDecodeError about the token read last (or the one at hand).
  [[noreturn]] void Fail(const std::string& what);
  // Throws "expected <what>, found <what stands here>" about the token at hand.
  [[noreturn]] void FailExpected(const char* what);

  // Made by the reader only, around its own text.
  AsnJsonIn(void* text, bool jer, unsigned levelsLeft) : m_text(text), m_jer(jer), m_levelsLeft(levelsLeft) {}

 private:
  void Start();

  void* m_text;
  bool m_jer;
  unsigned m_levelsLeft;
  const char* m_last = nullptr;  // where the token read last starts
  bool m_firstKey = true;
};

class AsnJsonOut {
 public:
  bool Jer() const { return m_jer; }
  // A JSON string of UTF-8 `text`, escaped as JSON needs.
  void String(std::string_view text);
  // A string of two lower-case hex digits per octet.
  void Hex(std::string_view octets);
  // A JSON number written as `text`, which must be one (else written as a string).
  void Number(std::string_view text);
  void Integer(long long value);
  void Bool(bool value);
  void Null();
  // An object: BeginObject, then Key and a value per member, then EndObject.
  void BeginObject();
  void Key(std::string_view name);
  void EndObject();

  // Made by the writer only, at nesting `level`.
  AsnJsonOut(void* writer, bool jer, unsigned level) : m_writer(writer), m_jer(jer), m_level(level) {}

 private:
  void* m_writer;
  bool m_jer;
  unsigned m_level;
  bool m_first = true;
};

// True when `text` is one JSON number (-?int[.frac][e[+-]exp]).
bool AsnIsJsonNumber(std::string_view text);
#pragma GCC visibility pop
