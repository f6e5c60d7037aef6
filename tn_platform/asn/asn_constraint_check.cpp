#include "tn_platform/asn/asn_constraint_check.h"

#include "tn_platform/asn/asn_int.h"
#include "tn_platform/asn/asn_json_reader.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_octs.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_kind.h"
#include "tn_platform/asn/csm_exception.h"

std::string AsnBounds::Violation(long long measured) const {
  const std::string lowerText = lower == kNoLower ? "MIN" : std::to_string(lower);
  const std::string upperText = upper == kNoUpper ? "MAX" : std::to_string(upper);
  const std::string range = lower == upper ? lowerText : lowerText + ".." + upperText;
  if (of == Of::kSize) return "size " + std::to_string(measured) + " is outside SIZE (" + range + ")";
  return "value " + std::to_string(measured) + " is outside " + range;
}

namespace {

// What bounds measure of a value of `kind`: an INTEGER's value, else a size.
long long Measure(AsnMemberKind kind, const AsnType& value) {
  switch (kind) {
    case AsnMemberKind::kTinyInt:
      return static_cast<const AsnTinyInt&>(value).Value();
    case AsnMemberKind::kInt:
      return static_cast<const AsnInt&>(value).Value();
    case AsnMemberKind::kOcts:
      return static_cast<long long>(static_cast<const AsnOcts&>(value).view().size());
    case AsnMemberKind::kList:
      return static_cast<long long>(static_cast<const AsnListBase&>(value).Count());
    case AsnMemberKind::kPrimitive:
      return static_cast<long long>(static_cast<const AsnPrimitive&>(value).ConstraintSize());
    default:
      return 0;  // the record compiler puts no bounds on records and BOOLEANs
  }
}

void Walk(const AsnType& value, const std::string& path, std::vector<AsnConstraintViolation>& found);

void WalkMembers(const AsnSequence& record, const std::string& path, std::vector<AsnConstraintViolation>& found) {
  const AsnRecordPlan& plan = record.Plan();
  void* const base = const_cast<AsnSequence*>(&record);
  for (const AsnMemberStep& step : plan.members) {
    const AsnType* member = step.ValueIn(base);
    if (member == nullptr) continue;
    const std::string memberPath = path + "." + step.name;
    if (step.bounds.Active()) {
      std::string violation = AsnBoundsViolation(step.bounds, step.kind, *member);
      if (!violation.empty()) found.push_back({memberPath, std::move(violation)});
    }
    if (step.kind == AsnMemberKind::kRecord || step.kind == AsnMemberKind::kChoice ||
        step.kind == AsnMemberKind::kList) {
      Walk(*member, memberPath, found);
    }
  }
}

struct ElementWalk {
  const std::string* path;
  std::vector<AsnConstraintViolation>* found;
  std::size_t index;
};

void Walk(const AsnType& value, const std::string& path, std::vector<AsnConstraintViolation>& found) {
  const AsnMemberKind kind = AsnKindOf(value);
  if (kind == AsnMemberKind::kRecord || kind == AsnMemberKind::kChoice) {
    WalkMembers(static_cast<const AsnSequence&>(value), path, found);
  } else if (kind == AsnMemberKind::kList) {
    ElementWalk walk{&path, &found, 0};
    static_cast<const AsnListBase&>(value).VisitElements(
        [](AsnType& element, void* context) {
          auto& at = *static_cast<ElementWalk*>(context);
          Walk(element, *at.path + "[" + std::to_string(at.index++) + "]", *at.found);
        },
        &walk);
  }
}

}  // namespace

std::string AsnBoundsViolation(const AsnBounds& bounds, AsnMemberKind kind, const AsnType& value) {
  const long long measured = Measure(kind, value);
  return bounds.Holds(measured) ? std::string() : bounds.Violation(measured);
}

void AsnFitToBounds(const AsnBounds& bounds, AsnMemberKind kind, AsnType& value,
                    const AsnElementFiller& fillElement) {
  const long long measured = Measure(kind, value);
  if (bounds.Holds(measured)) return;
  const long long target = measured < bounds.lower ? bounds.lower : bounds.upper;
  const auto size = static_cast<std::size_t>(target);
  switch (kind) {
    case AsnMemberKind::kTinyInt:
      static_cast<AsnTinyInt&>(value).Set(static_cast<int>(target));
      break;
    case AsnMemberKind::kInt:
      static_cast<AsnInt&>(value).Set(target);
      break;
    case AsnMemberKind::kOcts: {
      auto& octets = static_cast<AsnOcts&>(value);
      std::string content(octets.view().substr(0, size));
      content.resize(size, '0');
      octets.Set(content.data(), content.size());
      break;
    }
    case AsnMemberKind::kList: {
      auto& list = static_cast<AsnListBase&>(value);
      if (static_cast<long long>(list.Count()) > target) list.ClearElements();
      while (static_cast<long long>(list.Count()) < target) fillElement(list.AppendElement());
      break;
    }
    case AsnMemberKind::kPrimitive: {
      // Characters or bits, written as readable JSON: spaces every character
      // string type holds, or 0 bits.
      auto& primitive = static_cast<AsnPrimitive&>(value);
      const bool bits = std::string_view(primitive.AsnTypeName()) == "BIT STRING";
      AsnReadJson(primitive, "\"" + std::string(size, bits ? '0' : ' ') + "\"", AsnJsonForm::kReadable);
      break;
    }
    default:
      break;
  }
}

std::vector<AsnConstraintViolation> AsnFindConstraintViolations(const AsnType& value) {
  std::vector<AsnConstraintViolation> found;
  Walk(value, value.typeName(), found);
  return found;
}

void AsnThrowEncodeViolation(const char* record, const char* member, const std::string& violation) {
  const std::string what = std::string(record) + "." + member + ": " + violation + ": not encoded";
  throw new CSM_Exception(kAsnDecodeError, 3, "", "asn_constraint_check", what.c_str(), nullptr);
}
