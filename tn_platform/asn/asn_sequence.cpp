#include "tn_platform/asn/asn_sequence.h"

#include <string>

#include "tn_platform/asn/asn_any.h"
#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_choice.h"
#include "tn_platform/asn/asn_constraint_check.h"
#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_explicit_tags.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_value_encoding.h"
#include "tn_platform/asn/indent_table.h"

namespace {

// A member's value after its own header (the one its kind reads).
void DecodeContent(AsnBuf& buf, const AsnMemberStep& step, AsnType* value, const AsnHeader& header,
                   unsigned long& bytesDecoded) {
  const AsnTag tag = header.tag;
  const unsigned long length = header.length;
  switch (step.kind) {
    case AsnMemberKind::kOcts:
      // The primitive form inline when the input holds it; BDecContent
      // refuses the rest.
      if (!TagIsConstructed(tag) && length != kIndefiniteLength && length <= buf.Remaining()) {
        static_cast<AsnOcts*>(value)->Set(buf.GetSeg(length), length);
        bytesDecoded += length;
        break;
      }
      static_cast<AsnOcts*>(value)->BDecContent(buf, tag, length, bytesDecoded);
      break;
    case AsnMemberKind::kTinyInt:
      static_cast<AsnTinyInt*>(value)->BDecContent(buf, tag, length, bytesDecoded);
      break;
    case AsnMemberKind::kInt:
      static_cast<AsnInt*>(value)->BDecContent(buf, tag, length, bytesDecoded);
      break;
    case AsnMemberKind::kBool:
      static_cast<AsnBool*>(value)->BDecContent(buf, tag, length, bytesDecoded);
      break;
    case AsnMemberKind::kList:
      static_cast<AsnListBase*>(value)->BDecContent(buf, tag, length, bytesDecoded, NIClass_BER);
      break;
    case AsnMemberKind::kRecord:
      static_cast<AsnSequence*>(value)->BDecContent(buf, tag, length, bytesDecoded, NIClass_BER);
      break;
    case AsnMemberKind::kPrimitive:
      static_cast<AsnPrimitive*>(value)->DecodeContent(buf, tag, length);
      break;
    case AsnMemberKind::kChoice:
      static_cast<AsnChoice*>(value)->DecodeAlternative(buf, header);
      break;
  }
}

void AssignValue(AsnMemberKind kind, AsnType* target, const AsnType* source) {
  switch (kind) {
    case AsnMemberKind::kOcts:
      *static_cast<AsnOcts*>(target) = *static_cast<const AsnOcts*>(source);
      break;
    case AsnMemberKind::kTinyInt:
      *static_cast<AsnTinyInt*>(target) = *static_cast<const AsnTinyInt*>(source);
      break;
    case AsnMemberKind::kInt:
      *static_cast<AsnInt*>(target) = *static_cast<const AsnInt*>(source);
      break;
    case AsnMemberKind::kBool:
      *static_cast<AsnBool*>(target) = *static_cast<const AsnBool*>(source);
      break;
    case AsnMemberKind::kList:
      static_cast<AsnListBase*>(target)->AssignList(*static_cast<const AsnListBase*>(source));
      break;
    case AsnMemberKind::kRecord:
    case AsnMemberKind::kChoice:
      AsnSequence::Assign(*static_cast<AsnSequence*>(target), *static_cast<const AsnSequence*>(source));
      break;
    case AsnMemberKind::kPrimitive:
      static_cast<AsnPrimitive*>(target)->AssignFrom(*static_cast<const AsnPrimitive*>(source));
      break;
  }
}

// What a member's tag is, in a message about a wrong one.
std::string ExpectedTag(const AsnMemberStep& step) {
  if (step.IsUntaggedChoice()) return std::string("an alternative of ") + step.typeName;
  return TagDescription(step.tag);
}

// Where FindMember puts an item that is no member's: an extensible record's
// unknown member.
constexpr std::size_t kUnknownMember = ~std::size_t{0};

// A tag that is a member's in the form its kind does not take is that
// member's fault, not an unknown one: throws naming it.
void RefuseOtherForm(const AsnRecordPlan& plan, std::size_t from, AsnTag tag, std::size_t itemStart,
                     const char*& member) {
  const std::vector<AsnMemberStep>& members = plan.members;
  for (std::size_t index = from; index < members.size(); ++index) {
    if (members[index].Matches(TagWithForm(tag, !TagIsConstructed(tag)))) {
      member = members[index].name;
      AsnThrowDecodeError(itemStart,
                          "wrong tag " + TagDescription(tag) + ", expected " + TagDescription(members[index].tag));
    }
  }
}

// The member of a SEQUENCE that carries `tag`, the header of the item
// starting at `itemStart`, when it is not the next one in order: skips
// absent optional and DEFAULT members, refuses a mismatching mandatory one
// or an optional one's tag in the other form (naming it in `member`, so the
// error's path ends in it), a member out of order or repeated, and an
// unknown tag, unless the record is extensible (kUnknownMember). A
// mandatory untagged CHOICE that is extensible takes any tag.
std::size_t FindMember(const AsnRecordPlan& plan, std::size_t next, AsnTag tag, std::size_t itemStart,
                       const char*& member) {
  const std::vector<AsnMemberStep>& members = plan.members;
  for (std::size_t index = next; index < members.size(); ++index) {
    const AsnMemberStep& step = members[index];
    if (AsnStepTakes(step, tag)) return index;
    if (!step.optional && !step.HasDefault()) {
      if (step.IsUntaggedChoice() && step.plan().extensible && tag != 0) return index;
      member = step.name;
      AsnThrowDecodeError(itemStart, "wrong tag " + TagDescription(tag) + ", expected " + ExpectedTag(step));
    }
  }
  for (std::size_t earlier = 0; earlier < next; ++earlier) {
    const AsnMemberStep& step = members[earlier];
    if (step.Matches(tag) || (step.IsUntaggedChoice() && step.plan().ChoiceTakes(tag))) {
      AsnThrowDecodeError(itemStart, std::string("member ") + members[earlier].name + " out of order or repeated");
    }
  }
  RefuseOtherForm(plan, next, tag, itemStart, member);
  if (plan.extensible && tag != 0) return kUnknownMember;
  if (next == members.size()) {
    AsnThrowDecodeError(itemStart, "content left over after the last member (tag " + TagDescription(tag) + ")");
  }
  AsnThrowDecodeError(itemStart, "unknown member with tag " + TagDescription(tag));
}

// The members of a SET given so far.
class SeenMembers {
 public:
  explicit SeenMembers(std::size_t count) : m_seen(count, false) {}
  bool Has(std::size_t index) const { return m_seen[index]; }
  void Mark(std::size_t index) { m_seen[index] = true; }

 private:
  std::vector<bool> m_seen;
};

// The member of a SET that carries `tag`: any not given yet; refuses a
// repeated one, one in the wrong form and an unknown tag unless the SET is
// extensible (kUnknownMember).
std::size_t FindSetMember(const AsnRecordPlan& plan, const SeenMembers& seen, AsnTag tag, std::size_t itemStart,
                          const char*& member) {
  const std::size_t index = tag == 0 ? plan.members.size() : plan.MemberTaking(tag);
  if (index < plan.members.size()) {
    if (seen.Has(index)) {
      AsnThrowDecodeError(itemStart, std::string("member ") + plan.members[index].name + " repeated");
    }
    return index;
  }
  RefuseOtherForm(plan, 0, tag, itemStart, member);
  if (plan.extensible && tag != 0) return kUnknownMember;
  AsnThrowDecodeError(itemStart, "unknown member with tag " + TagDescription(tag));
}

// Before decoding: optional members absent, DEFAULT ones their default, no
// unknown members.
void ResetMembers(const AsnRecordPlan& plan, void* record) {
  for (const AsnMemberStep& step : plan.members) {
    if (step.optional) step.ResetIn(record);
    if (step.HasDefault()) AsnApplyDefault(step, record);
  }
  if (plan.extensible) plan.ExtensionsIn(record)->ClearElements();
}

// The input ends before the member starting at `memberStart` (the record
// ends short: its own error) or inside its header. Out of line, so that the
// member loop keeps its header in registers.
[[noreturn]] __attribute__((noinline)) void ThrowInputEndsAt(const AsnBuf& buf, AsnHeader::Status status,
                                                             std::size_t memberStart, bool indefinite,
                                                             std::size_t end) {
  if (memberStart == buf.End()) {
    buf.ThrowInputEnds(memberStart, indefinite ? std::string("input ends before the end-of-contents octets")
                                               : "input ends " + AsnOctetCount(end - memberStart) +
                                                     " short of the value");
  }
  AsnHeader header;
  header.status = status;
  header.start = memberStart;
  AsnThrowHeaderError(header, 0, buf);
}

}  // namespace

const refl::CClassInfor& AsnSequence::ClassInfor() const {
  refl::CRefrence reference;
  BindReflection(reference);
  return *reference.ClassInfor();
}

unsigned long AsnSequence::BEncContent(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  return AsnEncodeContentInto(buf, *this);
}

unsigned long AsnSequence::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  return AsnEncodeChainInto(buf, Plan().ownTags, *this);
}

void AsnDecodeMemberValue(AsnBuf& buf, const AsnMemberStep& step, AsnType* value, const AsnHeader& header,
                          unsigned long& bytesDecoded) {
  if (!step.tags.Wrapped()) {
    DecodeContent(buf, step, value, header, bytesDecoded);
    return;
  }
  AsnDecodeInsideExplicit(buf, step.tags, step.eitherForm, header.length, [&](AsnBuf& in, const AsnHeader& inner) {
    DecodeContent(in, step, value, inner, bytesDecoded);
  });
}

void AsnApplyDefault(const AsnMemberStep& step, void* record) {
  AssignValue(step.kind, step.ValueIn(record), step.defaultValue.get());
}

void AsnSequence::DecodeRecord(const AsnRecordPlan& plan, AsnBuf& buf, unsigned long& bytesDecoded) {
  const AsnTagChain& own = plan.ownTags;
  if (own.Wrapped() || plan.IsChoice()) {
    AsnDecodeUnderTags(buf, own, false, bytesDecoded, [&](AsnBuf& in, const AsnHeader& header) {
      unsigned long counted = 0;
      if (plan.IsChoice()) {
        static_cast<AsnChoice*>(this)->DecodeAlternative(in, header);
      } else {
        DecodeMembers(plan, in, header.length, counted);
      }
    });
    return;
  }
  const AsnTag tag = own.Outer();
  const AsnHeader header = BDecHeader(
      buf, bytesDecoded, [tag](AsnTag read) { return read == tag; }, AsnLengthCheck::kPrimitiveOnly);
  if (header.status != AsnHeader::kComplete) AsnThrowHeaderError(header, tag, buf);
  DecodeMembers(plan, buf, header.length, bytesDecoded);
}

void AsnSequence::DecodeMembers(const AsnRecordPlan& plan, AsnBuf& buf, unsigned long length,
                                unsigned long& bytesDecoded) {
  void* const base = this;
  const std::vector<AsnMemberStep>& members = plan.members;
  const bool indefinite = length == kIndefiniteLength;
  const std::size_t start = buf.Offset();
  // A definite length may run past the input: the members are decoded as far
  // as the input goes, so the error names the first item that breaks.
  const std::size_t end = indefinite ? 0 : start + length;
  // The record's own errors are about its whole TLV, whose tag was read
  // last, or about the end of the input when it ends; errors about a member
  // name it in `member` (null between members). A member running past the
  // record is refused where its header is read (BDecHeader), by the record
  // being open around it.
  const std::size_t recordStart = buf.ItemStart();
  const char* member = nullptr;
  std::size_t memberStart = 0;
  try {
    const AsnOpenValueGuard open(buf, AsnHolder::kRecord, length);
    // Decoding replaces the record's content.
    if (plan.hasOptional || plan.hasDefaults || plan.extensible) ResetMembers(plan, base);
    const bool isSet = plan.structure == AsnStructure::kSet;
    SeenMembers seen(isSet ? members.size() : 0);

    unsigned long counted = 0;  // the octet count is the distance the buffer moved
    std::size_t next = 0;       // the first member that may still come
    for (;;) {
      if (indefinite ? AtEoc(buf) : buf.Offset() >= end) break;
      std::size_t index = next;
      memberStart = buf.Offset();
      const AsnHeader header = BDecHeader(
          buf, counted,
          [&](AsnTag tag) {
            // Members mostly come in order: the next one is tried first.
            if (isSet) {
              index = FindSetMember(plan, seen, tag, memberStart, member);
            } else if (index >= members.size() || !members[index].Matches(tag)) {
              index = FindMember(plan, next, tag, memberStart, member);
            }
            member = index == kUnknownMember ? nullptr : members[index].name;
            return true;
          },
          AsnLengthCheck::kNone);
      if (header.status != AsnHeader::kComplete) ThrowInputEndsAt(buf, header.status, memberStart, indefinite, end);

      const std::size_t contentStart = buf.Offset();
      if (index == kUnknownMember) {
        // An extensible record keeps what it does not know, as it came: an
        // element of a list, within the decode's budget.
        buf.CountListElement();
        static_cast<AsnAny&>(plan.ExtensionsIn(base)->AppendElement()).DecodeContent(buf, header.tag, header.length);
        if (!isSet && next < plan.extension.index) next = plan.extension.index;
      } else {
        // A primitive value takes exactly its length, refusing one that runs
        // past the input; a constructed one (a list, a record, a segmented
        // OCTET STRING) reads up to its end, its items checked against it.
        const AsnMemberStep& step = members[index];
        AsnType* const value = step.ValueOrCreateIn(base);
        AsnDecodeMemberValue(buf, step, value, header, counted);
        if (step.bounds.Active() && !buf.AcceptsConstraintViolations()) {
          const std::string violation = AsnBoundsViolation(step.bounds, step.kind, *value);
          if (!violation.empty()) AsnThrowDecodeError(memberStart, violation);
        }
        if (isSet) {
          seen.Mark(index);
        } else {
          next = index + 1;
        }
      }
      if (header.length != kIndefiniteLength && buf.Offset() != contentStart + header.length) {
        AsnThrowDecodeError(memberStart, "content does not match its length");
      }
      member = nullptr;
    }

    for (std::size_t index = isSet ? 0 : next; index < members.size(); ++index) {
      const AsnMemberStep& step = members[index];
      if (!step.optional && !step.HasDefault() && !(isSet && seen.Has(index))) {
        AsnThrowDecodeError(recordStart, std::string("mandatory member ") + step.name + " missing");
      }
    }
    if (indefinite) BDecEoc(buf, counted);
  } catch (AsnDecodeError* error) {
    if (member != nullptr) error->AddMember(member);
    throw;
  }
  bytesDecoded += buf.Offset() - start;
}

void AsnSequence::Print(std::ostream& os, unsigned long level, bool lineBreak) const {
  if (lineBreak) {
    os << '\n' << IndentText(level);
  }
  const AsnRecordPlan& plan = Plan();
  void* const base = const_cast<AsnSequence*>(this);
  os << plan.className << " {";
  for (const AsnMemberStep& member : plan.members) {
    const AsnType* value = member.ValueIn(base);
    if (value == nullptr) continue;
    os << '\n' << IndentText(level + 1) << member.name << ' ';
    if (member.kind == AsnMemberKind::kList) {
      if (static_cast<const AsnListBase*>(value)->Count() == 0) {
        os << "{}";
        continue;
      }
      os << '{';
      value->Print(os, level + 2, true);
      os << '\n' << IndentText(level + 1) << '}';
      continue;
    }
    value->Print(os, level + 1, false);
  }
  if (plan.extensible) {
    plan.ExtensionsIn(base)->ForEachElement([&](const AsnType& unknown) {
      os << '\n' << IndentText(level + 1) << "... ";
      unknown.Print(os, level + 1, false);
    });
  }
  os << '\n' << IndentText(level) << '}';
}

void AsnSequence::Constructor(AsnSequence&) {
  // Members construct themselves with their defaults; registration is lazy,
  // so nothing is registered here.
}

void AsnSequence::CopyConstructor(AsnSequence& record, const AsnSequence& source) { Assign(record, source); }

void AsnSequence::Destructor(AsnSequence&) {
  // Members, holders and lists destroy what they own themselves.
}

void AsnSequence::Assign(AsnSequence& record, const AsnSequence& source) {
  if (&record == &source) return;
  void* const target = &record;
  void* const from = const_cast<AsnSequence*>(&source);
  for (const AsnMemberStep& member : source.Plan().members) {
    const AsnType* value = member.ValueIn(from);
    if (value == nullptr) {
      member.ResetIn(target);
      continue;
    }
    AssignValue(member.kind, member.ValueOrCreateIn(target), value);
  }
  const AsnRecordPlan& plan = source.Plan();
  if (plan.extensible) plan.ExtensionsIn(target)->AssignList(*plan.ExtensionsIn(from));
}
