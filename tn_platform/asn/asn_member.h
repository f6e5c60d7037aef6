// AsnMember: one member of a record, bound to one record object, for programs
// that walk records generically (the tool, test data). It is a view of the
// record class's member plan (AsnRecordPlan), the model the codec runs on.
#pragma once
#pragma GCC visibility push(default)

#include <vector>

#include "tn_platform/asn/asn_record_plan.h"
#include "tn_platform/asn/asn_sequence.h"

class AsnMember {
 public:
  AsnMember(const AsnMemberStep& step, void* record) : m_step(&step), m_record(record) {}

  const AsnMemberStep& Step() const { return *m_step; }
  const char* Name() const { return m_step->name; }
  AsnMemberKind Kind() const { return m_step->kind; }
  bool IsOptional() const { return m_step->optional; }
  bool IsConstructed() const { return m_step->IsConstructed(); }

  // The member's value, or null when an optional member is absent.
  AsnType* Value() const { return m_step->ValueIn(m_record); }
  // The value, made with its defaults when an optional member is absent.
  AsnType* ValueOrCreate() const { return m_step->ValueOrCreateIn(m_record); }
  // Makes an optional member absent.
  void Reset() const { m_step->ResetIn(m_record); }

 private:
  const AsnMemberStep* m_step;
  void* m_record;
};

// The members of `record`, in declaration order.
std::vector<AsnMember> AsnMembersOf(const AsnSequence& record);
#pragma GCC visibility pop
