#include "tn_platform/asn/asn_json_shape.h"

#include <memory>
#include <mutex>
#include <typeindex>
#include <unordered_map>

#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_null.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_io.h"
#include "tn_platform/asn/asn_value_kind.h"
#include "tn_platform/asn/ber.h"

namespace {

struct ShapeCache {
  std::mutex mutex;
  std::unordered_map<std::type_index, std::unique_ptr<AsnJsonShape>> shapes;
};

// Never destroyed: a reader may run while the process exits.
ShapeCache& Cache() {
  static ShapeCache* const cache = new ShapeCache;
  return *cache;
}

// Whether a simple value's encoding starts with `tag`: a class of a type
// with tags of its own (AsnTaggedValue) writes them in its BEnc, and a value
// of it is read whole before it is encoded.
bool TravelsUnder(const AsnType& value, AsnTag tag) {
  if (tag == kAsnOpenTag) return true;
  try {
    const std::string encoding = AsnEncodeValue(value);
    AsnBuf buf(reinterpret_cast<const unsigned char*>(encoding.data()), encoding.size());
    unsigned long octets = 0;
    const AsnHeader header = BDecHeader(buf, octets, [](AsnTag) { return true; }, AsnLengthCheck::kPrimitiveOnly);
    return TagWithForm(header.tag, false) == TagWithForm(tag, false);
  } catch (CSM_Exception* exception) {
    delete exception;  // a new value that cannot be written as it is: read whole to be safe
    return false;
  }
}

// The constructed values a simple value's encoding opens before its
// primitive content: the EXPLICIT tags of a type with tags of its own.
unsigned OwnLevels(const AsnType& value) {
  try {
    const std::string encoding = AsnEncodeValue(value);
    AsnBuf buf(reinterpret_cast<const unsigned char*>(encoding.data()), encoding.size());
    unsigned levels = 0;
    for (;;) {
      unsigned long octets = 0;
      const AsnHeader header = BDecHeader(buf, octets, [](AsnTag) { return true; }, AsnLengthCheck::kPrimitiveOnly);
      if (header.status != AsnHeader::kComplete || !TagIsConstructed(header.tag)) return levels;
      ++levels;
    }
  } catch (CSM_Exception* exception) {
    delete exception;  // a new value that cannot be written as it is: no tags of its own known
    return 0;
  }
}

// With the cache locked. A shape enters the cache before its members' do, so
// a type that holds itself (through an optional member) finds its own.
const AsnJsonShape& Build(ShapeCache& cache, const AsnType& value) {
  std::unique_ptr<AsnJsonShape>& entry = cache.shapes[std::type_index(typeid(value))];
  if (entry) return *entry;
  const AsnMemberKind kind = AsnKindOf(value);  // throws before anything is kept
  entry = std::make_unique<AsnJsonShape>();
  AsnJsonShape& shape = *entry;
  shape.kind = kind;
  if (kind == AsnMemberKind::kRecord || kind == AsnMemberKind::kChoice) {
    const AsnRecordPlan& plan = static_cast<const AsnSequence&>(value).Plan();
    shape.plan = &plan;
    shape.tag = plan.ownTags.Outer();
    shape.levels = AsnConstructedLevels(plan.ownTags);
    shape.berDirect = plan.structure == AsnStructure::kSequence && !plan.extensible && !plan.hasDefaults &&
                      !plan.ownTags.Wrapped();
    for (const AsnMemberStep& step : plan.members) {
      const std::unique_ptr<AsnType, refl::DestroyFunction> member(static_cast<AsnType*>(step.create()), step.destroy);
      shape.names.emplace_back(step.name);
      const AsnJsonShape& memberShape = Build(cache, *member);
      shape.members.push_back(&memberShape);
      shape.memberLevels.push_back(static_cast<unsigned char>(AsnConstructedLevels(step.tags)));
      // A member with bounds is checked on the value read: no direct BER.
      shape.berDirect = shape.berDirect && !step.tags.Wrapped() && !step.bounds.Active() && memberShape.berDirect;
    }
    if (plan.extensible) {
      const std::unique_ptr<AsnType> record(value.Clone());
      shape.extensions = &Build(cache, *plan.ExtensionsIn(record.get()));
    }
  } else if (kind == AsnMemberKind::kList) {
    const std::unique_ptr<AsnType> list(value.Clone());
    auto& elements = static_cast<AsnListBase&>(*list);
    const AsnTagChain own = elements.OwnTags();
    shape.tag = own.Outer();
    shape.levels = AsnConstructedLevels(own);
    shape.element = &Build(cache, elements.AppendElement());
    shape.elementTag = shape.element->tag;
    shape.berDirect = !own.Wrapped() && own.Outer() == kTagSequence && shape.element->berDirect;
  } else if (kind == AsnMemberKind::kPrimitive) {
    shape.tag = static_cast<const AsnPrimitive&>(value).UniversalTag();
    shape.prototype.reset(value.Clone());
    shape.nullIsValue = dynamic_cast<const AsnNull*>(&value) != nullptr;
    shape.berDirect = TravelsUnder(value, shape.tag);
    shape.levels = OwnLevels(value);
  } else {
    shape.tag = AsnUniversalTag(kind);
    shape.berDirect = TravelsUnder(value, shape.tag);
    shape.levels = OwnLevels(value);
  }
  return shape;
}

}  // namespace

const AsnJsonShape& AsnJsonShapeOf(const AsnType& value) {
  // Values come in runs of one class: the last answer is kept per thread.
  thread_local const std::type_info* lastClass = nullptr;
  thread_local const AsnJsonShape* lastShape = nullptr;
  const std::type_info& valueClass = typeid(value);
  if (&valueClass == lastClass) return *lastShape;
  ShapeCache& cache = Cache();
  const std::lock_guard<std::mutex> lock(cache.mutex);
  const AsnJsonShape& shape = Build(cache, value);
  lastClass = &valueClass;
  lastShape = &shape;
  return shape;
}
