#include "tn_platform/asn/asn_json_shape.h"

#include <memory>
#include <mutex>
#include <typeindex>
#include <unordered_map>

#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_null.h"
#include "tn_platform/asn/asn_primitive.h"
#include "tn_platform/asn/asn_sequence.h"
#include "tn_platform/asn/asn_value_kind.h"

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

// With the cache locked. A shape enters the cache before its members' do, so
// a type that holds itself (through an optional member) finds its own.
const AsnJsonShape& Build(ShapeCache& cache, const AsnType& value) {
  std::unique_ptr<AsnJsonShape>& entry = cache.shapes[std::type_index(typeid(value))];
  if (entry) return *entry;
  const AsnMemberKind kind = AsnKindOf(value);  // throws before anything is kept
  entry = std::make_unique<AsnJsonShape>();
  AsnJsonShape& shape = *entry;
  shape.kind = kind;
  if (kind == AsnMemberKind::kRecord) {
    shape.plan = &static_cast<const AsnSequence&>(value).Plan();
    for (const AsnMemberStep& step : shape.plan->members) {
      const std::unique_ptr<AsnType, refl::DestroyFunction> member(static_cast<AsnType*>(step.create()), step.destroy);
      shape.names.emplace_back(step.name);
      shape.members.push_back(&Build(cache, *member));
    }
  } else if (kind == AsnMemberKind::kList) {
    const std::unique_ptr<AsnType> list(value.Clone());
    shape.element = &Build(cache, static_cast<AsnListBase&>(*list).AppendElement());
    shape.elementTag = shape.element->tag;
  } else if (kind == AsnMemberKind::kPrimitive) {
    shape.tag = static_cast<const AsnPrimitive&>(value).UniversalTag();
    shape.prototype.reset(value.Clone());
    shape.nullIsValue = dynamic_cast<const AsnNull*>(&value) != nullptr;
  }
  if (kind != AsnMemberKind::kPrimitive) shape.tag = AsnUniversalTag(kind);
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
