// Record classes of the structured types, written as the record compiler
// writes them: tags of every class and mode, CHOICE, DEFAULT, extensible
// records and CHOICEs, SET and SET OF. The tests and the fuzz target share
// them (StructuredTypes).
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tn_velkor/asn/asn_list.h"
#include "tn_velkor/asn/asn_record.h"

namespace structured_types {

constexpr AsnTagClass kUniversal = AsnTagClass::kUniversal;
constexpr AsnTagClass kApplication = AsnTagClass::kApplication;
constexpr AsnTagClass kContext = AsnTagClass::kContext;
constexpr AsnTagClass kPrivate = AsnTagClass::kPrivate;

// The special members every generated record class has.
#define STRUCTURED_SPECIAL_MEMBERS(Class)                                    \
  Class() { Constructor(*this); }                                            \
  Class(const Class& other) : AsnRecord() { CopyConstructor(*this, other); } \
  ~Class() override { Destructor(*this); }                                   \
  Class& operator=(const Class& other) {                                     \
    Assign(*this, other);                                                    \
    return *this;                                                            \
  }

//   AppRecord ::= [APPLICATION 3] IMPLICIT SEQUENCE { n INTEGER }
class AppRecord final : public AsnRecord<AppRecord> {
 public:
  static constexpr char kClassName[] = "AppRecord";
  static constexpr AsnTagging kTagging = AsnTagging::Implicit(kApplication, 3);
  AsnTinyInt n;
  STRUCTURED_SPECIAL_MEMBERS(AppRecord)

 private:
  friend class AsnRecord<AppRecord>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("n", &AppRecord::n);
  }
};

//   PrivateWrapped ::= [PRIVATE 7] EXPLICIT SEQUENCE { n INTEGER }
class PrivateWrapped final : public AsnRecord<PrivateWrapped> {
 public:
  static constexpr char kClassName[] = "PrivateWrapped";
  static constexpr AsnTagging kTagging = AsnTagging::Explicit(kPrivate, 7);
  AsnTinyInt n;
  STRUCTURED_SPECIAL_MEMBERS(PrivateWrapped)

 private:
  friend class AsnRecord<PrivateWrapped>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("n", &PrivateWrapped::n);
  }
};

//   Tagged ::= SEQUENCE {
//     a [APPLICATION 1] IMPLICIT INTEGER,
//     b [2] EXPLICIT OCTET STRING,
//     c [UNIVERSAL 12] IMPLICIT OCTET STRING,
//     d [PRIVATE 40] IMPLICIT BOOLEAN,
//     e [1] EXPLICIT [APPLICATION 5] IMPLICIT INTEGER OPTIONAL,
//     f AppRecord,
//     g [3] IMPLICIT AppRecord OPTIONAL,
//     h PrivateWrapped
//   }
class Tagged final : public AsnRecord<Tagged> {
 public:
  static constexpr char kClassName[] = "Tagged";
  AsnTinyInt a;
  AsnOcts b;
  AsnOcts c;
  AsnBool d;
  refl::MayNullPointer<AsnTinyInt> e;
  AppRecord f;
  refl::MayNullPointer<AppRecord> g;
  PrivateWrapped h;
  STRUCTURED_SPECIAL_MEMBERS(Tagged)

 private:
  friend class AsnRecord<Tagged>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("a", &Tagged::a, -1, AsnTagging::Implicit(kApplication, 1));
    lines.Add("b", &Tagged::b, -1, AsnTagging::Explicit(kContext, 2));
    lines.Add("c", &Tagged::c, -1, AsnTagging::Implicit(kUniversal, 12));
    lines.Add("d", &Tagged::d, -1, AsnTagging::Implicit(kPrivate, 40));
    lines.Add("e", &Tagged::e, 0, AsnTagging::Explicit(kContext, 1).ThenImplicit(kApplication, 5));
    lines.Add("f", &Tagged::f);
    lines.Add("g", &Tagged::g, 1, AsnTagging::Implicit(kContext, 3));
    lines.Add("h", &Tagged::h);
  }
};

//   Shape ::= CHOICE { circle [0] IMPLICIT INTEGER, square [1] EXPLICIT INTEGER, label OCTET STRING, ... }
class Shape final : public AsnRecord<Shape, AsnChoice> {
 public:
  static constexpr char kClassName[] = "Shape";
  refl::MayNullPointer<AsnTinyInt> circle;
  refl::MayNullPointer<AsnTinyInt> square;
  refl::MayNullPointer<AsnOcts> label;
  AsnExtensions unknown;
  STRUCTURED_SPECIAL_MEMBERS(Shape)

 private:
  friend class AsnRecord<Shape, AsnChoice>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("circle", &Shape::circle, 0, AsnTagging::Implicit(kContext, 0));
    lines.Add("square", &Shape::square, 1, AsnTagging::Explicit(kContext, 1));
    lines.Add("label", &Shape::label, 2, AsnTagging());
    lines.Extensions(&Shape::unknown);
  }
};

//   Pick ::= CHOICE { n INTEGER, s OCTET STRING }
class Pick final : public AsnRecord<Pick, AsnChoice> {
 public:
  static constexpr char kClassName[] = "Pick";
  refl::MayNullPointer<AsnTinyInt> n;
  refl::MayNullPointer<AsnOcts> s;
  STRUCTURED_SPECIAL_MEMBERS(Pick)

 private:
  friend class AsnRecord<Pick, AsnChoice>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("n", &Pick::n, 0, AsnTagging());
    lines.Add("s", &Pick::s, 1, AsnTagging());
  }
};

class ShapeList final : public AsnSeqOf<Shape> {
 public:
  static constexpr char kTypeName[] = "ShapeList";
  static constexpr char kQualifiedName[] = "test::ShapeList";
  AsnType* Clone() const override { return new ShapeList(*this); }
  const char* typeName() const override { return kTypeName; }
};

//   Holder ::= SEQUENCE { id INTEGER, shape Shape, tagged [5] Shape OPTIONAL, shapes SEQUENCE OF Shape }
class Holder final : public AsnRecord<Holder> {
 public:
  static constexpr char kClassName[] = "Holder";
  AsnTinyInt id;
  Shape shape;
  refl::MayNullPointer<Shape> tagged;
  ShapeList shapes;
  STRUCTURED_SPECIAL_MEMBERS(Holder)

 private:
  friend class AsnRecord<Holder>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("id", &Holder::id);
    lines.Add("shape", &Holder::shape);
    lines.Add("tagged", &Holder::tagged, 0, AsnTagging::Implicit(kContext, 5));  // EXPLICIT: a CHOICE
    lines.Add("shapes", &Holder::shapes);
  }
};

//   Config ::= SEQUENCE { version [0] EXPLICIT INTEGER DEFAULT 1, name OCTET STRING, enabled BOOLEAN DEFAULT TRUE, ...
//   }
class Config final : public AsnRecord<Config> {
 public:
  static constexpr char kClassName[] = "Config";
  AsnTinyInt version;
  AsnOcts name;
  AsnBool enabled;
  AsnExtensions unknown;
  STRUCTURED_SPECIAL_MEMBERS(Config)

 private:
  friend class AsnRecord<Config>;
  static void DefaultVersion(AsnTinyInt& value) { value.Set(1); }
  static void DefaultEnabled(AsnBool& value) { value.Set(true); }
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("version", &Config::version, -1, AsnTagging::Explicit(kContext, 0), &Config::DefaultVersion);
    lines.Add("name", &Config::name);
    lines.Add("enabled", &Config::enabled, -1, AsnTagging(), &Config::DefaultEnabled);
    lines.Extensions(&Config::unknown);
  }
};

//   Flags ::= SET { n INTEGER, b BOOLEAN, s [2] IMPLICIT OCTET STRING OPTIONAL, shape Shape }
class Flags final : public AsnRecord<Flags> {
 public:
  static constexpr char kClassName[] = "Flags";
  static constexpr AsnStructure kStructure = AsnStructure::kSet;
  AsnTinyInt n;
  AsnBool b;
  refl::MayNullPointer<AsnOcts> s;
  Shape shape;
  STRUCTURED_SPECIAL_MEMBERS(Flags)

 private:
  friend class AsnRecord<Flags>;
  template <class Lines>
  static void DescribeMembers(Lines& lines) {
    lines.Add("n", &Flags::n);
    lines.Add("b", &Flags::b);
    lines.Add("s", &Flags::s, 0, AsnTagging::Implicit(kContext, 2));
    lines.Add("shape", &Flags::shape);
  }
};

//   Numbers ::= SET OF INTEGER
class Numbers final : public AsnSetOf<AsnTinyInt> {
 public:
  static constexpr char kTypeName[] = "Numbers";
  static constexpr char kQualifiedName[] = "test::Numbers";
  AsnType* Clone() const override { return new Numbers(*this); }
  const char* typeName() const override { return kTypeName; }
};

//   Ids ::= [APPLICATION 9] IMPLICIT SEQUENCE OF INTEGER
class Ids final : public AsnSeqOf<AsnTinyInt, Ids> {
 public:
  static constexpr char kTypeName[] = "Ids";
  static constexpr char kQualifiedName[] = "test::Ids";
  static constexpr AsnTagging kTagging = AsnTagging::Implicit(kApplication, 9);
  AsnType* Clone() const override { return new Ids(*this); }
  const char* typeName() const override { return kTypeName; }
};

// Every type above by name.
inline const std::map<std::string, std::function<AsnType*()>>& StructuredTypes() {
  static const std::map<std::string, std::function<AsnType*()>> kTypes = {
      {"AppRecord", [] { return new AppRecord; }}, {"PrivateWrapped", [] { return new PrivateWrapped; }},
      {"Tagged", [] { return new Tagged; }},       {"Shape", [] { return new Shape; }},
      {"Pick", [] { return new Pick; }},           {"Holder", [] { return new Holder; }},
      {"Config", [] { return new Config; }},       {"Flags", [] { return new Flags; }},
      {"Numbers", [] { return new Numbers; }},     {"Ids", [] { return new Ids; }},
  };
  return kTypes;
}

inline std::unique_ptr<AsnType> CreateStructured(const std::string& type) {
  return std::unique_ptr<AsnType>(StructuredTypes().at(type)());
}

}  // namespace structured_types
