// The structured types on the member plan: tags of every class and mode on
// members and on types, CHOICE, DEFAULT, extensible records and CHOICEs, SET
// and SET OF, types that hold themselves or each other, against one vector
// table {type, BER, DER, readable JSON, JER, value notation} and tables of
// refusals, on the classes the record compiler writes from
// structured/structured.asn.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "structured_types.h"
#include "test_bytes.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_json_writer.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/asn_value_notation.h"
#include "tn_platform/refl/class_infor.h"

namespace {

using test_bytes::Hex;
using test_bytes::ThrownMessage;
using test_bytes::ToHex;

using namespace structured_types;

std::unique_ptr<AsnType> Create(const std::string& type) { return CreateStructured(type); }

struct Vector {
  const char* type;
  const char* ber;
  const char* der;  // "" when the BER is DER
  const char* readable;
  const char* jer;
  const char* notation;  // value notation, lines joined by '|'
};

std::string OneLine(std::string text) {
  std::string joined;
  bool blanks = false;
  for (const char c : text) {
    if (c == '\n') {
      joined += '|';
      blanks = true;
    } else if (!(blanks && c == ' ')) {
      joined += c;
      blanks = false;
    }
  }
  return joined;
}

// Several of the DER vectors were checked against pyasn1's DER encoder
// (Tagged, Holder, Config, Flags, Numbers, PrivateWrapped).
const Vector kVectors[] = {
    {"Tagged",
     "30 80 41 01 05 A2 80 24 80 04 01 68 04 01 69 00 00 00 00 0C 01 78 DF 28 01 FF A1 03 45 01 07 63 03 02 01 01 "
     "A3 03 02 01 02 E7 80 30 03 02 01 03 00 00 00 00",
     "30 26 41 01 05 A2 04 04 02 68 69 0C 01 78 DF 28 01 FF A1 03 45 01 07 63 03 02 01 01 A3 03 02 01 02 E7 05 30 03 "
     "02 01 03",
     R"({"a":5,"b":"hi","c":"x","d":true,"e":7,"f":{"n":1},"g":{"n":2},"h":{"n":3}})",
     R"({"a":5,"b":"6869","c":"78","d":true,"e":7,"f":{"n":1},"g":{"n":2},"h":{"n":3}})",
     R"({|a 5,|b '6869'H /* "hi" */,|c '78'H /* "x" */,|d TRUE,|e 7,|f {|n 1|},|g {|n 2|},|h {|n 3|}|})"},
    {"AppRecord", "63 80 02 01 01 00 00", "63 03 02 01 01", R"({"n":1})", R"({"n":1})", "{|n 1|}"},
    {"PrivateWrapped", "E7 80 30 80 02 01 03 00 00 00 00", "E7 05 30 03 02 01 03", R"({"n":3})", R"({"n":3})",
     "{|n 3|}"},
    {"Ids", "69 80 02 01 01 02 01 02 00 00", "69 06 02 01 01 02 01 02", "[1,2]", "[1,2]", "{|1,|2|}"},
    {"Shape", "80 01 05", "", R"({"circle":5})", R"({"circle":5})", "circle : 5"},
    {"Shape", "A1 80 02 01 07 00 00", "A1 03 02 01 07", R"({"square":7})", R"({"square":7})", "square : 7"},
    {"Shape", "24 04 04 02 61 62", "04 02 61 62", R"({"label":"ab"})", R"({"label":"6162"})",
     R"(label : '6162'H /* "ab" */)"},
    {"Shape", "85 01 09", "", R"({"...":{"ber":"850109"}})", R"({"...":"850109"})",
     "/* unknown alternative '850109'H */"},
    {"Holder", "30 80 02 01 01 80 01 02 A5 80 A1 03 02 01 03 00 00 30 06 04 01 78 80 01 04 00 00",
     "30 15 02 01 01 80 01 02 A5 05 A1 03 02 01 03 30 06 04 01 78 80 01 04",
     R"({"id":1,"shape":{"circle":2},"tagged":{"square":3},"shapes":[{"label":"x"},{"circle":4}]})",
     R"({"id":1,"shape":{"circle":2},"tagged":{"square":3},"shapes":[{"label":"78"},{"circle":4}]})",
     R"({|id 1,|shape circle : 2,|tagged square : 3,|shapes {|label : '78'H /* "x" */,|circle : 4|}|})"},
    // DER leaves out the members equal to their DEFAULT.
    {"Config", "30 0B A0 03 02 01 01 04 01 6E 01 01 FF", "30 03 04 01 6E", R"({"version":1,"name":"n","enabled":true})",
     R"({"version":1,"name":"6e","enabled":true})", R"({|version 1,|name '6E'H /* "n" */,|enabled TRUE|})"},
    {"Config", "30 0B A0 03 02 01 02 04 01 6E 01 01 00", "", R"({"version":2,"name":"n","enabled":false})",
     R"({"version":2,"name":"6e","enabled":false})", R"({|version 2,|name '6E'H /* "n" */,|enabled FALSE|})"},
    // Unknown members kept as they came.
    {"Config", "30 0B 04 01 6E 89 01 05 BF 2A 80 00 00", "",
     R"({"version":1,"name":"n","enabled":true,"...":[{"ber":"890105"},{"ber":"bf2a800000"}]})",
     R"({"version":1,"name":"6e","enabled":true,"...":["890105","bf2a800000"]})",
     R"({|version 1,|name '6E'H /* "n" */,|enabled TRUE|/* unknown member '890105'H */|/* unknown member 'BF2A800000'H */|})"},
    // SET: any order in, the canonical order of the tags out (an untagged
    // CHOICE by the least tag of its alternatives, OCTET STRING's).
    {"Flags", "31 0C 82 01 7A 80 01 06 02 01 01 01 01 FF", "31 0C 01 01 FF 02 01 01 80 01 06 82 01 7A",
     R"({"n":1,"b":true,"s":"z","shape":{"circle":6}})", R"({"n":1,"b":true,"s":"7a","shape":{"circle":6}})",
     R"({|n 1,|b TRUE,|s '7A'H /* "z" */,|shape circle : 6|})"},
    // SET OF: the encodings sorted.
    {"Numbers", "31 0A 02 02 01 2C 02 01 05 02 01 FF", "31 0A 02 01 05 02 01 FF 02 02 01 2C", "[300,5,-1]",
     "[300,5,-1]", "{|300,|5,|-1|}"},
    {"Label", "62 80 04 01 68 04 01 69 00 00", "42 02 68 69", R"("hi")", R"("6869")", R"('6869'H /* "hi" */)"},
    {"Note", "A1 80 0C 02 68 69 00 00", "A1 04 0C 02 68 69", R"("hi")", R"("hi")", R"("hi")"},
    // A type that holds itself; the value keeps the order read, DER sorts the SET OF.
    {"Filter", "A0 80 A2 03 87 01 78 87 01 79 00 00", "A0 08 87 01 79 A2 03 87 01 78",
     R"({"and":[{"not":{"present":"x"}},{"present":"y"}]})", R"({"and":[{"not":{"present":"78"}},{"present":"79"}]})",
     R"(and : {|not : present : '78'H /* "x" */,|present : '79'H /* "y" */|})"},
    // Records that hold each other: an optional member of its own type, a
    // record held in place, a list of them.
    {"Node", "30 80 04 01 61 A0 80 04 01 62 00 00 A1 0C 30 03 04 01 63 30 05 30 03 04 01 64 00 00",
     "30 16 04 01 61 A0 03 04 01 62 A1 0C 30 03 04 01 63 30 05 30 03 04 01 64",
     R"({"label":"a","next":{"label":"b"},"branch":{"head":{"label":"c"},"more":[{"label":"d"}]}})",
     R"({"label":"61","next":{"label":"62"},"branch":{"head":{"label":"63"},"more":[{"label":"64"}]}})",
     R"({|label '61'H /* "a" */,|next {|label '62'H /* "b" */|},|branch {|head {|label '63'H /* "c" */|},|more {|{|)"
     R"(label '64'H /* "d" */|}|}|}|})"},
    // Constrained members at their bounds; 4 characters of 2 octets each; an
    // extensible constraint takes a value outside its root.
    {"Limits", "30 1F 02 03 00 FF FF 02 01 FB 0C 08 C3 A9 C3 A9 C3 A9 C3 A9 04 02 78 79 30 00 02 01 0B 03 02 00 FF", "",
     R"({"port":65535,"level":"-5","name":"éééé","code":"xy","ports":[],"open":"11","flags":"11111111"})",
     R"({"port":65535,"level":-5,"name":"éééé","code":"7879","ports":[],"open":11,"flags":{"value":"ff","length":8}})",
     R"({|port 65535,|level -5,|name "éééé",|code '7879'H /* "xy" */,|ports {},|open 11,|flags '11111111'B|})"},
};

std::string Repeat(const std::string& text, int times) {
  std::string repeated;
  for (int i = 0; i < times; ++i) repeated += text;
  return repeated;
}

TEST(StructuredTypes, Vectors) {
  for (const Vector& row : kVectors) {
    SCOPED_TRACE(std::string(row.type) + " " + row.ber);
    const std::string der = *row.der != '\0' ? row.der : row.ber;
    const std::unique_ptr<AsnType> value = Create(row.type);
    ASSERT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(row.ber)); }), "no exception");
    EXPECT_EQ(ToHex(AsnEncodeValue(*value)), der);
    EXPECT_EQ(AsnToJson(*value, AsnJsonForm::kReadable), row.readable);
    EXPECT_EQ(AsnToJson(*value, AsnJsonForm::kJer), row.jer);
    EXPECT_EQ(OneLine(AsnToValueNotation(*value)), row.notation);
    // The DER decodes to the same value; both JSON forms read back to it,
    // into a value and straight to BER.
    const std::unique_ptr<AsnType> fromDer = Create(row.type);
    AsnDecodeValue(*fromDer, Hex(der));
    EXPECT_EQ(ToHex(AsnEncodeValue(*fromDer)), der);
    for (const auto& [form, text] :
         {std::pair{AsnJsonForm::kReadable, row.readable}, std::pair{AsnJsonForm::kJer, row.jer}}) {
      const std::unique_ptr<AsnType> read = Create(row.type);
      ASSERT_EQ(ThrownMessage([&] { AsnReadJson(*read, text, form); }), "no exception") << text;
      EXPECT_EQ(ToHex(AsnEncodeValue(*read)), der) << text;
      EXPECT_EQ(ToHex(AsnJsonToBer(*Create(row.type), text, form)), der) << text;
    }
  }
}

TEST(StructuredTypes, RefusedEncodings) {
  struct Refusal {
    const char* type;
    const char* ber;
    const char* message;
  };
  const std::string deep = Repeat("A2 80 ", 1000000) + "87 01 78" + Repeat(" 00 00", 1000000);
  const Refusal refusals[] = {
      {"Filter", deep.c_str(),
       "Filter.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not."
       "not.not.not.not.not.not.not.not: constructed values nested deeper than 32 levels at offset 64"},
      {"Tagged", "30 03 42 01 05",
       "Tagged.a: wrong tag [APPLICATION 2] primitive, expected [APPLICATION 1] primitive at offset 2"},
      {"Tagged", "30 05 41 01 05 A2 00", "Tagged.b: explicit tag without the value it holds at offset 5"},
      {"Tagged", "30 07 41 01 05 A2 02 02 00",
       "Tagged.b: wrong tag [UNIVERSAL 2] primitive (INTEGER), expected [UNIVERSAL 4] primitive (OCTET STRING) at "
       "offset 7"},
      {"Tagged", "30 09 41 01 05 A2 04 04 01 68 00", "Tagged.b: content does not match its length at offset 5"},
      {"AppRecord", "30 03 02 01 01",
       "AppRecord: wrong tag [UNIVERSAL 16] constructed (SEQUENCE), expected [APPLICATION 3] constructed at offset 0"},
      {"PrivateWrapped", "E7 05 31 03 02 01 03",
       "PrivateWrapped: wrong tag [UNIVERSAL 17] constructed (SET), expected [UNIVERSAL 16] constructed (SEQUENCE) at "
       "offset 2"},
      {"Pick", "01 01 FF",
       "Pick: wrong tag [UNIVERSAL 1] primitive (BOOLEAN), expected an alternative of Pick at offset 0"},
      {"Pick", "00 04 03",  // the tag is refused before the length is found to run past the input
       "Pick: wrong tag [UNIVERSAL 0] primitive (end-of-contents), expected an alternative of Pick at offset 0"},
      {"Shape", "00 00",
       "Shape: wrong tag [UNIVERSAL 0] primitive (end-of-contents), expected an alternative of Shape at offset 0"},
      {"Shape", "A1 03 04 01 07",
       "Shape.square: wrong tag [UNIVERSAL 4] primitive (OCTET STRING), expected [UNIVERSAL 2] primitive (INTEGER) "
       "at offset 2"},
      {"Holder", "30 03 02 01 01", "Holder: mandatory member shape missing at offset 0"},
      // An extensible CHOICE takes the unknown alternative; the list is then missing.
      {"Holder", "30 06 02 01 01 01 01 FF", "Holder: mandatory member shapes missing at offset 0"},
      {"Holder", "30 09 02 01 01 80 01 02 A5 00 30 00",
       "Holder.tagged: explicit tag without the value it holds at offset 8"},
      {"Config", "30 08 A0 03 01 01 FF 04 01 6E",
       "Config.version: wrong tag [UNIVERSAL 1] primitive (BOOLEAN), expected [UNIVERSAL 2] primitive (INTEGER) at "
       "offset 4"},
      {"Config", "30 06 04 01 6E A0 01 00", "Config: member version out of order or repeated at offset 5"},
      {"Flags", "31 09 02 01 01 02 01 02 01 01 FF", "Flags: member n repeated at offset 5"},
      {"Flags", "31 06 02 01 01 80 01 01", "Flags: mandatory member b missing at offset 0"},
      {"Flags", "31 03 83 01 00", "Flags: unknown member with tag [3] primitive at offset 2"},
      {"Numbers", "30 00",
       "Numbers: wrong tag [UNIVERSAL 16] constructed (SEQUENCE), expected [UNIVERSAL 17] "
       "constructed (SET) at offset 0"},
      // Values outside their constraints, placed at the member.
      {"Limits", "30 10 02 03 01 11 70 02 01 FB 0C 02 61 62 04 02 78 79",
       "Limits.port: value 70000 is outside 0..65535 at offset 2"},
      {"Limits", "30 0E 02 01 50 02 01 FA 0C 02 61 62 04 02 78 79", "Limits.level: value -6 is outside -5..MAX at offset 5"},
      {"Limits", "30 16 02 01 50 02 01 FB 0C 0A C3 A9 C3 A9 C3 A9 C3 A9 C3 A9 04 02 78 79",
       "Limits.name: size 5 is outside SIZE (1..4) at offset 8"},
      {"Limits", "30 0F 02 01 50 02 01 FB 0C 02 61 62 04 03 78 79 7A", "Limits.code: size 3 is outside SIZE (2) at offset 12"},
      {"Limits", "30 19 02 01 50 02 01 FB 0C 02 61 62 04 02 78 79 30 09 02 01 01 02 01 02 02 01 03",
       "Limits.ports: size 3 is outside SIZE (0..2) at offset 16"},
      {"Limits", "30 12 02 01 50 02 01 FB 0C 02 61 62 04 02 78 79 03 02 01 FE",
       "Limits.flags: size 7 is outside SIZE (8) at offset 16"},
      // Without an extension marker an unknown member is refused as before.
      {"AppRecord", "63 06 02 01 01 89 01 05",
       "AppRecord: content left over after the last member (tag [9] primitive) at offset 5"},
  };
  for (const Refusal& row : refusals) {
    const std::unique_ptr<AsnType> value = Create(row.type);
    EXPECT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(row.ber)); }), row.message) << row.ber;
  }
}

TEST(StructuredTypes, RefusedJson) {
  struct Refusal {
    const char* type;
    const char* json;
    const char* message;
  };
  const std::string deep = Repeat(R"({"not":)", 1000000) + R"({"present":"x"})" + Repeat("}", 1000000);
  // An open value's levels count with the record's.
  const std::string deepUnknown = R"({"name":"n","...":[{"ber":")" + Repeat("a980", 32) + "0500" +
                                  Repeat("0000", 32) + R"("}]})";
  const Refusal refusals[] = {
      {"Filter", deep.c_str(),
       "Filter.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not.not."
       "not.not.not.not.not.not.not.not: constructed values nested deeper than 32 levels at offset 231"},
      {"Config", deepUnknown.c_str(), "Config....[0]: constructed values nested deeper than 32 levels at offset 26"},
      {"Shape", "{}", "Shape: a value of Shape names one alternative at offset 0"},
      {"Shape", R"({"circle":1,"square":2})", "Shape: a value of Shape names one alternative at offset 11"},
      {"Shape", R"({"oval":1})", "Shape: Shape has no alternative \"oval\" at offset 1"},
      {"Pick", R"({"...":"020101"})", "Pick: Pick has no alternative \"...\" at offset 1"},
      {"Config", R"({"version":2})", "Config.name: missing (a mandatory member) at offset 0"},
      {"Config", R"({"name":"n","...":[{"ber":"0201"}]})",
       "Config....[0]: not the BER encoding of one value at offset 26"},
      {"Config", R"({"name":"n","...":[{"ber":"040100"}]})",
       "Config....: an unknown member with the tag of name at offset 18"},
      {"Shape", R"({"...":{"ber":"800101"}})", "Shape....: an unknown alternative with the tag of circle at offset 7"},
      {"Limits", R"({"port":80,"level":0,"name":"","code":"xy"})",
       "Limits.name: size 0 is outside SIZE (1..4) at offset 28"},
      {"Holder", R"({"id":1,"shape":{"circle":"x"},"shapes":[]})",
       "Holder.shape.circle: expected an integer, found the string \"x\" at offset 26"},
  };
  for (const Refusal& row : refusals) {
    const std::unique_ptr<AsnType> value = Create(row.type);
    EXPECT_EQ(ThrownMessage([&] { AsnReadJson(*value, row.json, AsnJsonForm::kReadable); }), row.message) << row.json;
  }
}

// A value nested as deep as decoding allows reads back from its JSON in both
// forms (an `and` takes two JSON levels to one BER level); one level more is
// refused by every reader alike.
TEST(StructuredTypes, NestingLimitHoldsInEveryForm) {
  const struct {
    const char* type;
    const char* head;  // BER: `head`, then a `step` a level, `inner`, end-of-contents
    const char* step;
    const char* inner;
    const char* jsonOpen;  // one level more around a value's JSON
    const char* jsonClose;
  } rows[] = {
      {"Filter", "", "A0 80", "87 00", R"({"and":[)", "]}"},
      {"Filter", "", "A2 80", "87 00", R"({"not":)", "}"},
      {"Node", "30 80 04 00", "A0 80 04 00", "", R"({"label":"","next":)", "}"},
  };
  const std::string tooDeep = "constructed values nested deeper than 32 levels";
  for (const auto& row : rows) {
    SCOPED_TRACE(row.step);
    const int headLevels = *row.head != '\0' ? 1 : 0;
    const auto nested = [&](int levels) {
      const int steps = levels - headLevels;
      return row.head + Repeat(row.step, steps) + row.inner + Repeat("00 00", levels);
    };
    const std::unique_ptr<AsnType> value = Create(row.type);
    ASSERT_EQ(ThrownMessage([&] { AsnDecodeValue(*value, Hex(nested(32))); }), "no exception");
    const std::string der = AsnEncodeValue(*value);
    EXPECT_NE(ThrownMessage([&] { AsnDecodeValue(*Create(row.type), Hex(nested(33))); }).find(tooDeep),
              std::string::npos);
    for (const AsnJsonForm form : {AsnJsonForm::kReadable, AsnJsonForm::kJer}) {
      const std::string json = AsnToJson(*value, form);
      EXPECT_EQ(AsnJsonToBer(*Create(row.type), json, form), der);
      const std::string deeper = row.jsonOpen + json + row.jsonClose;
      EXPECT_NE(ThrownMessage([&] { AsnReadJson(*Create(row.type), deeper, form); }).find(tooDeep), std::string::npos);
      EXPECT_NE(ThrownMessage([&] { AsnJsonToBer(*Create(row.type), deeper, form); }).find(tooDeep),
                std::string::npos);
    }
  }
}

// Reflection describes types that hold themselves or each other: a member of
// the class being described points at it.
TEST(StructuredTypes, ReflectionOfTypesThatHoldThemselves) {
  const auto classOf = [](const char* type) {
    refl::CRefrence reference;
    dynamic_cast<AsnSequence&>(*Create(type)).BindReflection(reference);
    return reference.ClassInfor();
  };
  const refl::CClassInfor* node = classOf("Node");  // registers Branch on the way
  const refl::CClassInfor* branch = classOf("Branch");
  const refl::CClassInfor* filter = classOf("Filter");
  ASSERT_TRUE(node != nullptr && branch != nullptr && filter != nullptr);
  EXPECT_EQ(node->FindAttribute("next")->type.Class(), node);
  EXPECT_EQ(node->FindAttribute("branch")->type.Class(), branch);
  EXPECT_EQ(branch->FindAttribute("head")->type.Class(), node);
  EXPECT_EQ(filter->FindAttribute("not")->type.Class(), filter);
}

// A decode may take values outside their constraints and report them;
// encoding refuses such a value.
TEST(StructuredTypes, ConstraintViolationsAcceptedOnRequest) {
  Limits limits;
  std::vector<AsnConstraintViolation> violations;
  AsnDecodeBudget options;
  options.violations = &violations;
  AsnDecodeValue(limits, Hex("30 10 02 03 01 11 70 02 01 FA 0C 02 61 62 04 02 78 79"), options);
  ASSERT_EQ(violations.size(), 2u);
  EXPECT_EQ(violations[0].path + ": " + violations[0].message, "Limits.port: value 70000 is outside 0..65535");
  EXPECT_EQ(violations[1].path + ": " + violations[1].message, "Limits.level: value -6 is outside -5..MAX");
  EXPECT_EQ(ThrownMessage([&] { AsnEncodeValue(limits); }),
            "Limits.port: value 70000 is outside 0..65535: not encoded");
}

TEST(StructuredTypes, ChoiceHoldsOneAlternative) {
  Shape shape;
  EXPECT_EQ(shape.Which(), AsnChoice::kNone);
  EXPECT_EQ(ThrownMessage([&] { AsnEncodeValue(shape); }), "CHOICE Shape has no alternative to encode");
  static_cast<AsnTinyInt&>(shape.Choose(1)).Set(7);
  EXPECT_EQ(shape.Which(), 1u);
  shape.Choose(0);
  EXPECT_EQ(shape.Which(), 0u);
  EXPECT_TRUE(shape.square.IsNull());
  // Decoding replaces the alternative; a copy keeps an unknown one.
  AsnDecodeValue(shape, Hex("85 01 09"));
  EXPECT_EQ(shape.Which(), AsnChoice::kUnknown);
  EXPECT_TRUE(shape.circle.IsNull());
  const Shape copy(shape);
  EXPECT_EQ(ToHex(AsnEncodeValue(copy)), "85 01 09");
}

TEST(StructuredTypes, DefaultsFillAbsentMembers) {
  Config config;  // a new value has its defaults
  EXPECT_EQ(config.version.Value(), 1);
  EXPECT_TRUE(config.enabled.Value());
  config.version.Set(5);
  config.enabled.Set(false);
  // Decoding without them, and JSON that leaves them out, give the defaults.
  AsnDecodeValue(config, Hex("30 03 04 01 6E"));
  EXPECT_EQ(config.version.Value(), 1);
  EXPECT_TRUE(config.enabled.Value());
  Config read;
  read.version.Set(5);
  AsnReadJson(read, R"({"name":"n"})", AsnJsonForm::kReadable);
  EXPECT_EQ(read.version.Value(), 1);
  EXPECT_EQ(ToHex(AsnJsonToBer(Config(), R"({"name":"n","version":1})", AsnJsonForm::kReadable)), "30 03 04 01 6E");
  // Decoding replaces unknown members too.
  AsnDecodeValue(config, Hex("30 06 04 01 6E 89 01 05"));
  AsnDecodeValue(config, Hex("30 03 04 01 6E"));
  EXPECT_EQ(config.unknown_.Count(), 0u);
}

}  // namespace
