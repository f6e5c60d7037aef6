#include "tn_platform/asn/asn_sequence.h"

#include <memory>
#include <string>

#include "tn_platform/asn/asn_bool.h"
#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_member.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/csm_exception.h"
#include "tn_platform/refl/may_null_pointer.h"

namespace {

void* ObjectOf(const AsnSequence& record, refl::CRefrence& reference) {
  record.BindReflection(reference);
  return reference.Object();
}

refl::MayNullPointerBase* HolderOf(const AsnMemberStep& step, char* base) {
  return reinterpret_cast<refl::MayNullPointerBase*>(base + step.offset);
}

// The member's value: the member itself, or what its holder holds (null when
// an optional member is absent).
AsnType* ValueOf(const AsnMemberStep& step, char* base) {
  if (step.optional) return static_cast<AsnType*>(HolderOf(step, base)->RawObject());
  return reinterpret_cast<AsnType*>(base + step.offset);
}

// The value of an optional member, created (with its defaults) when absent.
AsnType* ValueOrCreate(const AsnMemberStep& step, char* base) {
  if (step.optional && HolderOf(step, base)->IsNull()) HolderOf(step, base)->RawAdopt(step.create());
  return ValueOf(step, base);
}

// Makes an optional member absent, destroying what it held.
void Reset(const AsnMemberStep& step, char* base) {
  if (void* held = HolderOf(step, base)->RawRelease()) step.destroy(held);
}

// Content octets of a value whose tag the caller writes.
unsigned long EncodeContent(AsnBuf& buf, AsnMemberKind kind, AsnType* value) {
  switch (kind) {
    case AsnMemberKind::kOcts:
      return static_cast<AsnOcts*>(value)->BEncContent(buf);
    case AsnMemberKind::kTinyInt:
      return static_cast<AsnTinyInt*>(value)->BEncContent(buf);
    case AsnMemberKind::kInt:
      return static_cast<AsnInt*>(value)->BEncContent(buf);
    case AsnMemberKind::kBool:
      return static_cast<AsnBool*>(value)->BEncContent(buf);
    case AsnMemberKind::kList:
      return static_cast<AsnListBase*>(value)->BEncContent(buf, NIClass_BER);
    case AsnMemberKind::kRecord:
      return static_cast<AsnSequence*>(value)->BEncContent(buf, NIClass_BER);
    default:
      return 0;
  }
}

void DecodeContent(AsnBuf& buf, AsnMemberKind kind, AsnType* value, AsnTag tag, unsigned long length,
                   unsigned long& bytesDecoded) {
  switch (kind) {
    case AsnMemberKind::kOcts:
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
    default:
      AsnThrowDecodeError(buf, "member of a type the codec does not handle");
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
      AsnSequence::Assign(*static_cast<AsnSequence*>(target), *static_cast<const AsnSequence*>(source));
      break;
    default:
      break;
  }
}

// Prefixes the message of a decoding error with "Record: " or "Record.member: ".
[[noreturn]] void RethrowWithin(CSM_Exception* error, const AsnSequence& record, const std::string* member) {
  const std::unique_ptr<CSM_Exception> owned(error);
  std::string message = record.typeName();
  if (member != nullptr) message += "." + *member;
  message += ": " + owned->Message();
  throw new CSM_Exception(owned->ErrorCode(), owned->Location(), owned->Context().c_str(), owned->File().c_str(),
                          message.c_str(), nullptr);
}

// Runs one decoding step of the BER primitives or of a member's content, and
// names the record (and member) in the message of an error it raises: the
// primitives know nothing of where they are.
template <class Step>
auto Within(const AsnSequence& record, const std::string* member, Step&& step) -> decltype(step()) {
  try {
    return step();
  } catch (CSM_Exception* error) {
    RethrowWithin(error, record, member);
  }
}

void WriteIndent(std::ostream& os, unsigned long level) { os << std::string(2 * level, ' '); }

}  // namespace

const refl::CClassInfor& AsnSequence::ClassInfor() const {
  refl::CRefrence reference;
  BindReflection(reference);
  return *reference.ClassInfor();
}

const char* AsnSequence::typeName() const { return ClassInfor().Name().c_str(); }

unsigned long AsnSequence::BEncContent(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  refl::CRefrence reference;
  void* object = ObjectOf(*this, reference);
  return EncodeMembers(AsnRecordPlan(*reference.ClassInfor()), object, buf);
}

unsigned long AsnSequence::EncodeMembers(const AsnRecordPlan& plan, void* object, AsnBuf& buf) {
  char* const base = static_cast<char*>(object);
  unsigned long written = 0;
  // Back to front: the last member first, so the members end up in order.
  for (auto step = plan.members.rbegin(); step != plan.members.rend(); ++step) {
    AsnType* value = ValueOf(*step, base);
    if (value == nullptr) continue;  // absent optional member
    if (!step->optional && step->kind != AsnMemberKind::kOcts && step->kind != AsnMemberKind::kTinyInt) {
      written += value->BEnc(buf, NIClass_BER);
      continue;
    }
    // Octet strings and integers, and every optional member: content, length
    // and the plan's tag (a mandatory one's own universal tag).
    const unsigned long content = EncodeContent(buf, step->kind, value);
    const unsigned long length = BEncDefLen(buf, content);
    written += content + length + BEncTag(buf, step->tag);
  }
  return written;
}

unsigned long AsnSequence::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) {
  const unsigned long content = BEncContent(buf, format);
  const unsigned long length = BEncDefLen(buf, content);
  return content + length + BEncTag(buf, kTagSequence);
}

void AsnSequence::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) {
  const AsnTag tag = Within(*this, nullptr, [&] { return BDecTag(buf, bytesDecoded); });
  if (buf.ReadError()) AsnThrowDecodeError(buf, std::string(typeName()) + ": input ends before the tag");
  if (tag != kTagSequence) {
    AsnThrowDecodeError(buf, std::string(typeName()) + ": wrong tag " + TagToString(tag) + ", expected SEQUENCE");
  }
  const unsigned long length = Within(*this, nullptr, [&] { return BDecLen(buf, bytesDecoded); });
  if (buf.ReadError()) AsnThrowDecodeError(buf, std::string(typeName()) + ": input ends in the length");
  BDecContent(buf, tag, length, bytesDecoded, format);
}

void AsnSequence::BDecContent(AsnBuf& buf, unsigned int, unsigned long length, unsigned long& bytesDecoded,
                              NIClass_EncodingFormatEnum) {
  refl::CRefrence reference;
  void* object = ObjectOf(*this, reference);
  DecodeMembers(AsnRecordPlan(*reference.ClassInfor()), object, buf, length, bytesDecoded);
}

void AsnSequence::DecodeMembers(const AsnRecordPlan& plan, void* object, AsnBuf& buf, unsigned long length,
                                unsigned long& bytesDecoded) {
  char* const base = static_cast<char*>(object);
  const std::vector<AsnMemberStep>& members = plan.members;
  const std::string& name = *plan.className;
  const AsnNestingGuard nesting(buf);
  const bool indefinite = length == kIndefiniteLength;
  if (!indefinite && length > buf.Remaining()) {
    AsnThrowDecodeError(buf, name + ": length " + std::to_string(length) + " runs past the input");
  }
  const std::size_t end = indefinite ? 0 : buf.Offset() + length;

  // Decoding replaces the record's content: optional members start absent.
  for (const AsnMemberStep& step : members) {
    if (step.optional) Reset(step, base);
  }

  unsigned long consumed = 0;
  std::size_t next = 0;  // the first member that may still come
  for (;;) {
    if (indefinite) {
      if (AtEoc(buf)) break;
      if (buf.Remaining() == 0) AsnThrowDecodeError(buf, name + ": missing end-of-contents");
    } else if (buf.Offset() >= end) {
      break;
    }
    const AsnTag tag = Within(*this, nullptr, [&] { return BDecTag(buf, consumed); });
    if (buf.ReadError()) AsnThrowDecodeError(buf, name + ": input ends inside the record");

    // Optional members that do not match are absent; a mandatory one must match.
    std::size_t index = next;
    for (; index < members.size(); ++index) {
      const AsnMemberStep& step = members[index];
      if (step.Matches(tag)) break;
      if (!step.optional) {
        AsnThrowDecodeError(buf, name + "." + *step.name + ": wrong tag " + TagToString(tag) +
                                     " for a mandatory member, expected " + TagToString(step.tag));
      }
    }
    if (index == members.size()) {
      for (std::size_t earlier = 0; earlier < next; ++earlier) {
        if (members[earlier].Matches(tag)) {
          AsnThrowDecodeError(buf, name + "." + *members[earlier].name + ": member out of order or repeated");
        }
      }
      if (next == members.size()) AsnThrowDecodeError(buf, name + ": content left over after the last member");
      AsnThrowDecodeError(buf, name + ": unknown member with tag " + TagToString(tag));
    }

    const AsnMemberStep& step = members[index];
    const std::string* memberName = step.name;
    const unsigned long memberLength = Within(*this, memberName, [&] { return BDecLen(buf, consumed); });
    if (buf.ReadError()) AsnThrowDecodeError(buf, name + "." + *memberName + ": input ends in the length");
    const std::size_t contentStart = buf.Offset();
    if (!indefinite && memberLength != kIndefiniteLength && contentStart + memberLength > end) {
      AsnThrowDecodeError(buf, name + "." + *memberName + ": length runs past the enclosing record");
    }
    Within(*this, memberName,
           [&] { DecodeContent(buf, step.kind, ValueOrCreate(step, base), tag, memberLength, consumed); });
    if (buf.ReadError()) AsnThrowDecodeError(buf, name + "." + *memberName + ": runs past the input");
    if (memberLength != kIndefiniteLength && buf.Offset() != contentStart + memberLength) {
      AsnThrowDecodeError(buf, name + "." + *memberName + ": content does not match its length");
    }
    if (!indefinite && buf.Offset() > end) {
      AsnThrowDecodeError(buf, name + "." + *memberName + ": runs past the enclosing record");
    }
    next = index + 1;
  }

  for (std::size_t index = next; index < members.size(); ++index) {
    if (!members[index].optional) {
      AsnThrowDecodeError(buf, name + "." + *members[index].name + ": mandatory member missing");
    }
  }
  if (indefinite) Within(*this, nullptr, [&] { BDecEoc(buf, consumed); });
  bytesDecoded += consumed;
}

void AsnSequence::Print(std::ostream& os, unsigned long level, bool lineBreak) const {
  if (lineBreak) {
    os << '\n';
    WriteIndent(os, level);
  }
  refl::CRefrence reference;
  void* object = ObjectOf(*this, reference);
  os << reference.ClassInfor()->Name() << " {";
  for (const auto& attribute : reference.ClassInfor()->Attributes()) {
    const AsnMember member(attribute, object);
    const AsnType* value = member.Value();
    if (value == nullptr) continue;
    os << '\n';
    WriteIndent(os, level + 1);
    os << member.Name() << ' ';
    if (member.Kind() == AsnMemberKind::kList) {
      if (static_cast<const AsnListBase*>(value)->Count() == 0) {
        os << "{}";
        continue;
      }
      os << '{';
      value->Print(os, level + 2, true);
      os << '\n';
      WriteIndent(os, level + 1);
      os << '}';
      continue;
    }
    value->Print(os, level + 1, false);
  }
  os << '\n';
  WriteIndent(os, level);
  os << '}';
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
  refl::CRefrence targetReference;
  refl::CRefrence sourceReference;
  void* target = ObjectOf(record, targetReference);
  void* from = ObjectOf(source, sourceReference);
  for (const auto& attribute : sourceReference.ClassInfor()->Attributes()) {
    const AsnMember to(attribute, target);
    const AsnMember in(attribute, from);
    const AsnType* value = in.Value();
    if (value == nullptr) {
      to.Reset();
      continue;
    }
    AssignValue(to.Kind(), to.ValueOrCreate(), value);
  }
}
