// Comparisons over a model's field description: a described model has
//   template <class Visitor> static void DescribeFields(Visitor&& visit);
// calling visit("name", &Model::member) for each field in declaration order,
// so a field added to the model and its description is compared with no
// further code.
#pragma once
#pragma GCC visibility push(default)

namespace ns_utilmib {

// True when every described field of `a` equals that of `b` (doubles exactly).
template <class Model>
bool FieldsEqual(const Model& a, const Model& b) {
  bool equal = true;
  Model::DescribeFields([&](const char*, auto member) { equal = equal && a.*member == b.*member; });
  return equal;
}

// Lexicographic over the described fields, in declaration order.
template <class Model>
bool FieldsLess(const Model& a, const Model& b) {
  int order = 0;  // -1: a first, 1: b first, 0: equal so far
  Model::DescribeFields([&](const char*, auto member) {
    if (order == 0) order = a.*member < b.*member ? -1 : b.*member < a.*member ? 1 : 0;
  });
  return order < 0;
}

}  // namespace ns_utilmib
#pragma GCC visibility pop
