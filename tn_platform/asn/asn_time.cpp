#include "tn_platform/asn/asn_time.h"

#include <cstdio>
#include <cstring>
#include <ostream>

namespace {

// Reads the text left to right.
class Cursor {
 public:
  explicit Cursor(std::string_view text) : m_text(text) {}
  // `count` digits as a number; false (nothing read) when they are not there.
  bool Digits(std::size_t count, int& value) {
    if (m_at + count > m_text.size()) return false;
    int read = 0;
    for (std::size_t i = 0; i < count; ++i) {
      const char c = m_text[m_at + i];
      if (c < '0' || c > '9') return false;
      read = read * 10 + (c - '0');
    }
    value = read;
    m_at += count;
    return true;
  }
  // One or more digits; false when none.
  bool Run(std::string& digits) {
    const std::size_t start = m_at;
    while (m_at < m_text.size() && m_text[m_at] >= '0' && m_text[m_at] <= '9') ++m_at;
    digits.assign(m_text.substr(start, m_at - start));
    return m_at != start;
  }
  bool Take(char c) {
    if (m_at >= m_text.size() || m_text[m_at] != c) return false;
    ++m_at;
    return true;
  }
  bool TakeAny(const char* set, char& taken) {
    if (m_at >= m_text.size() || std::strchr(set, m_text[m_at]) == nullptr || m_text[m_at] == '\0') return false;
    taken = m_text[m_at++];
    return true;
  }
  bool AtEnd() const { return m_at == m_text.size(); }

 private:
  std::string_view m_text;
  std::size_t m_at = 0;
};

bool LeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }
int DaysIn(int year, int month) {
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && LeapYear(year) ? 29 : kDays[month - 1];
}
bool ValidDate(int year, int month, int day) { return month >= 1 && month <= 12 && day >= 1 && day <= DaysIn(year, month); }

// Days since 1970-01-01 and back (the proleptic Gregorian calendar).
long long DaysFromCivil(int year, int month, int day) {
  year -= month <= 2;
  const long long era = (year >= 0 ? year : year - 399) / 400;
  const long long yearOfEra = year - era * 400;
  const long long dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const long long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}
void CivilFromDays(long long days, int& year, int& month, int& day) {
  days += 719468;
  const long long era = (days >= 0 ? days : days - 146096) / 146097;
  const long long dayOfEra = days - era * 146097;
  const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const long long monthIndex = (5 * dayOfYear + 2) / 153;
  day = static_cast<int>(dayOfYear - (153 * monthIndex + 2) / 5 + 1);
  month = static_cast<int>(monthIndex < 10 ? monthIndex + 3 : monthIndex - 9);
  year = static_cast<int>(yearOfEra + era * 400 + (month <= 2));
}

// A UTCTime or GeneralizedTime, read.
struct Moment {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  bool hasMinute = false, hasSecond = false;
  std::string fraction;  // digits after the decimal mark, of the last element given
  enum Zone { kLocal, kUtc, kOffset } zone = kLocal;
  int offsetMinutes = 0;  // east of UTC
};

bool ReadZone(Cursor& cursor, Moment& moment, bool minutesRequired) {
  char sign = 0;
  if (cursor.Take('Z')) {
    moment.zone = Moment::kUtc;
  } else if (cursor.TakeAny("+-", sign)) {
    int hours = 0;
    int minutes = 0;
    if (!cursor.Digits(2, hours) || hours > 23) return false;
    if (!cursor.Digits(2, minutes)) {
      if (minutesRequired) return false;
    } else if (minutes > 59) {
      return false;
    }
    moment.zone = Moment::kOffset;
    moment.offsetMinutes = (sign == '-' ? -1 : 1) * (hours * 60 + minutes);
  }
  return cursor.AtEnd();
}

bool ReadUtcTime(std::string_view text, Moment& moment) {
  Cursor cursor(text);
  int year = 0;
  if (!cursor.Digits(2, year) || !cursor.Digits(2, moment.month) || !cursor.Digits(2, moment.day) ||
      !cursor.Digits(2, moment.hour) || !cursor.Digits(2, moment.minute)) {
    return false;
  }
  moment.year = year < 50 ? 2000 + year : 1900 + year;
  moment.hasMinute = true;
  moment.hasSecond = cursor.Digits(2, moment.second);
  if (!ReadZone(cursor, moment, true) || moment.zone == Moment::kLocal) return false;
  return ValidDate(moment.year, moment.month, moment.day) && moment.hour < 24 && moment.minute < 60 &&
         moment.second < 60;
}

bool ReadGeneralizedTime(std::string_view text, Moment& moment) {
  Cursor cursor(text);
  if (!cursor.Digits(4, moment.year) || !cursor.Digits(2, moment.month) || !cursor.Digits(2, moment.day) ||
      !cursor.Digits(2, moment.hour)) {
    return false;
  }
  moment.hasMinute = cursor.Digits(2, moment.minute);
  moment.hasSecond = moment.hasMinute && cursor.Digits(2, moment.second);
  char mark = 0;
  if (cursor.TakeAny(".,", mark) && !cursor.Run(moment.fraction)) return false;
  if (!ReadZone(cursor, moment, false)) return false;
  return ValidDate(moment.year, moment.month, moment.day) && moment.hour < 24 && moment.minute < 60 &&
         moment.second < 60;
}

// Takes the offset into the time: the moment in UTC.
void ToUtc(Moment& moment) {
  if (moment.zone != Moment::kOffset) return;
  long long minutes = DaysFromCivil(moment.year, moment.month, moment.day) * 1440 + moment.hour * 60 + moment.minute -
                      moment.offsetMinutes;
  const long long days = minutes >= 0 ? minutes / 1440 : (minutes - 1439) / 1440;
  minutes -= days * 1440;
  CivilFromDays(days, moment.year, moment.month, moment.day);
  moment.hour = static_cast<int>(minutes / 60);
  moment.minute = static_cast<int>(minutes % 60);
  moment.zone = Moment::kUtc;
}

std::string TwoDigits(int value) {
  char text[8];
  std::snprintf(text, sizeof text, "%02d", value % 100);
  return text;
}
std::string FourDigits(int value) {
  char text[16];
  std::snprintf(text, sizeof text, "%04d", value);
  return text;
}

bool ReadDate(Cursor& cursor) {
  int year = 0, month = 0, day = 0;
  return cursor.Digits(4, year) && cursor.Take('-') && cursor.Digits(2, month) && cursor.Take('-') &&
         cursor.Digits(2, day) && ValidDate(year, month, day);
}
bool ReadTimeOfDay(Cursor& cursor) {
  int hour = 0, minute = 0, second = 0;
  return cursor.Digits(2, hour) && cursor.Take(':') && cursor.Digits(2, minute) && cursor.Take(':') &&
         cursor.Digits(2, second) && hour < 24 && minute < 60 && second < 60;
}

// PnYnMnWnDTnHnMnS: each part a number and its letter, in that order, at
// least one; a fraction only on the last part.
bool ValidDuration(std::string_view text) {
  Cursor cursor(text);
  if (!cursor.Take('P')) return false;
  const char* const order = "YMWDTHMS";
  std::size_t next = 0;
  bool parts = false;
  bool inTime = false;
  bool fraction = false;
  while (!cursor.AtEnd()) {
    if (fraction) return false;
    if (!inTime && cursor.Take('T')) {
      inTime = true;
      next = 5;
      if (cursor.AtEnd()) return false;
      continue;
    }
    std::string digits;
    if (!cursor.Run(digits)) return false;
    char mark = 0;
    if (cursor.TakeAny(".,", mark)) {
      if (!cursor.Run(digits)) return false;
      fraction = true;
    }
    char letter = 0;
    if (!cursor.TakeAny(inTime ? "HMS" : "YMWD", letter)) return false;
    const std::size_t index = static_cast<std::size_t>(std::strchr(order + (inTime ? 5 : 0), letter) - order);
    if (index < next) return false;
    next = index + 1;
    parts = true;
  }
  return parts;
}

bool ValidText(unsigned number, std::string_view text) {
  Moment moment;
  Cursor cursor(text);
  switch (number) {
    case 23: return ReadUtcTime(text, moment);
    case 24: return ReadGeneralizedTime(text, moment);
    case 31: return ReadDate(cursor) && cursor.AtEnd();
    case 32: return ReadTimeOfDay(cursor) && cursor.AtEnd();
    case 33: return ReadDate(cursor) && cursor.Take('T') && ReadTimeOfDay(cursor) && cursor.AtEnd();
    case 34: return ValidDuration(text);
    default:
      return !text.empty() && text.find_first_not_of("0123456789-:.,+/TZWPYMDHSR") == std::string_view::npos;
  }
}

const char* AsnName(unsigned number) {
  switch (number) {
    case 23: return "UTCTime";
    case 24: return "GeneralizedTime";
    case 31: return "DATE";
    case 32: return "TIME-OF-DAY";
    case 33: return "DATE-TIME";
    case 34: return "DURATION";
    default: return "TIME";
  }
}

}  // namespace

template <unsigned kNumber>
const char* AsnTimeString<kNumber>::AsnTypeName() const {
  return AsnName(kNumber);
}

template <unsigned kNumber>
bool AsnTimeString<kNumber>::Set(std::string_view text) {
  if (!ValidText(kNumber, text)) return false;
  m_text.assign(text);
  return true;
}

template <unsigned kNumber>
std::string AsnTimeString<kNumber>::DerText() const {
  Moment moment;
  if (kNumber == 23 && ReadUtcTime(m_text, moment)) {
    ToUtc(moment);
    // An offset can carry the moment out of the century the two digits name.
    if (moment.year < 1950 || moment.year > 2049) return m_text;
    return TwoDigits(moment.year) + TwoDigits(moment.month) + TwoDigits(moment.day) + TwoDigits(moment.hour) +
           TwoDigits(moment.minute) + TwoDigits(moment.second) + "Z";
  }
  if (kNumber == 24 && ReadGeneralizedTime(m_text, moment) && moment.zone != Moment::kLocal &&
      (moment.fraction.empty() || moment.hasSecond)) {
    ToUtc(moment);
    if (moment.year < 0 || moment.year > 9999) return m_text;
    std::string fraction = moment.fraction;
    while (!fraction.empty() && fraction.back() == '0') fraction.pop_back();
    return FourDigits(moment.year) + TwoDigits(moment.month) + TwoDigits(moment.day) + TwoDigits(moment.hour) +
           TwoDigits(moment.minute) + TwoDigits(moment.second) + (fraction.empty() ? "" : "." + fraction) + "Z";
  }
  return m_text;
}

template <unsigned kNumber>
unsigned char* AsnTimeString<kNumber>::WriteContent(unsigned char* out) const {
  const std::string text = DerText();
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

template <unsigned kNumber>
void AsnTimeString<kNumber>::DecodeContent(AsnBuf& buf, AsnTag tag, unsigned long length) {
  const std::size_t at = buf.ItemStart();
  std::string scratch;
  const std::string_view content = asn_primitive::ReadOctets(buf, tag, length, kTagOctetString, AsnName(kNumber), scratch);
  if (!Set(content)) {
    std::string shown;
    for (const char c : content.substr(0, 40)) shown.push_back(c >= 0x20 && c < 0x7F ? c : '?');
    asn_primitive::Refuse(at, std::string(AsnName(kNumber)) + " \"" + shown + "\" is malformed");
  }
}

template <unsigned kNumber>
void AsnTimeString<kNumber>::Print(std::ostream& os, unsigned long, bool) const {
  asn_primitive::PrintQuoted(os, m_text);
}

template <unsigned kNumber>
void AsnTimeString<kNumber>::ReadJson(AsnJsonIn& in) {
  if (in.Peek() != AsnJsonIn::Token::kString) in.FailExpected("a string");
  const std::string text = in.String();
  if (!Set(text)) in.Fail(std::string(AsnName(kNumber)) + " \"" + text + "\" is malformed");
}

#define TN_ASN_TIME_STRING(number, name)                \
  template <>                                           \
  const char AsnTimeString<number>::kTypeName[] = name; \
  template class AsnTimeString<number>;

TN_ASN_TIME_STRING(14, "AsnTime")
TN_ASN_TIME_STRING(23, "AsnUtcTime")
TN_ASN_TIME_STRING(24, "AsnGeneralizedTime")
TN_ASN_TIME_STRING(31, "AsnDate")
TN_ASN_TIME_STRING(32, "AsnTimeOfDay")
TN_ASN_TIME_STRING(33, "AsnDateTime")
TN_ASN_TIME_STRING(34, "AsnDuration")
