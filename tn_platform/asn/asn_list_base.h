// AsnListBase: what the runtime knows of every SEQUENCE OF list, whatever its
// element type. The list template (AsnList<T>, AsnSeqOf<T>) derives from it;
// the generic record codec reaches list members through it.
//
// Virtual slots after AsnType's: 7 assignment from another list of the same
// type, 8 BEncContent, 9 BDecContent, then the untyped element access
// (AppendElement, VisitElements) that generic programs use to read and fill a
// list of any element type, then the encoder's two passes over the elements
// (MeasureContent, WriteContent; asn_value_encoding.h), then ClearElements
// and OwnTags.
#pragma once
#pragma GCC visibility push(default)

#include <type_traits>

#include "tn_platform/asn/asn_encode_sizes.h"
#include "tn_platform/asn/asn_tagging.h"
#include "tn_platform/asn/asn_type.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/asn/csm_exception.h"

// What a list's own BDec throws for a wrong tag (or no tag: the input ended):
// the list's CSM_Exception, in the list's words, carrying the header it read
// so that a whole-value decode can say in its own words what is wrong there.
class AsnListTagError : public CSM_Exception {
 public:
  AsnListTagError(const AsnHeader& header, const char* sourceName, AsnTag expected = kTagSequence)
      : CSM_Exception(kAsnDecodeError, 250, "", sourceName, "AsnList::BDec: ERROR tag on SEQUENCE OF is wrong.",
                      nullptr),
        m_header(header),
        m_expected(expected) {}
  const AsnHeader& Header() const { return m_header; }
  // The tag the list takes.
  AsnTag Expected() const { return m_expected; }

 private:
  AsnHeader m_header;
  AsnTag m_expected;
};

class AsnListBase : public AsnType {
 public:
  unsigned long Count() const { return count; }

  // Deep copy from `other`, which must be a list of the same element type.
  virtual AsnListBase& AssignList(const AsnListBase& other) = 0;
  // Encodes the elements (each complete) in front of `buf`; returns the octets written.
  virtual unsigned long BEncContent(AsnBuf& buf, NIClass_EncodingFormatEnum format) = 0;
  // Replaces the elements with those decoded from content of `length` octets
  // (kIndefiniteLength: up to end-of-contents) after `tag` was read.
  virtual void BDecContent(AsnBuf& buf, unsigned int tag, unsigned long length, unsigned long& bytesDecoded,
                           NIClass_EncodingFormatEnum format) = 0;
  // Appends a new default element and returns it (as AsnList::Append).
  virtual AsnType& AppendElement() = 0;
  // Calls `visit(element, context)` for each element, in list order. It does
  // not move the list's cursor.
  virtual void VisitElements(void (*visit)(AsnType& element, void* context), void* context) const = 0;

  // The sizing pass: the content length (every element's complete
  // encoding), noting constructed elements' lengths in `sizes`.
  virtual unsigned long MeasureContent(AsnEncodeSizes& sizes) const = 0;
  // The writing pass: the content at `out`, front to back, taking the
  // lengths the sizing pass noted; returns the end.
  virtual unsigned char* WriteContent(unsigned char* out, AsnEncodeSizes& sizes) const = 0;
  // Destroys every element.
  virtual void ClearElements() = 0;
  // The tags a value of the list's class carries on its own: SEQUENCE OF
  // (30) or SET OF (31), or the tags written on its type.
  virtual AsnTagChain OwnTags() const = 0;
  // Whether DER orders the elements (a SET OF): a list written as its
  // elements come cannot be DER.
  virtual bool SortedInDer() const { return false; }

  // VisitElements with any callable taking AsnType&.
  template <class Visitor>
  void ForEachElement(Visitor&& visitor) const {
    using Callable = std::remove_reference_t<Visitor>;
    VisitElements([](AsnType& element, void* context) { (*static_cast<Callable*>(context))(element); },
                  const_cast<void*>(static_cast<const void*>(&visitor)));
  }

 protected:
  AsnListBase() = default;
  AsnListBase(const AsnListBase&) = default;
  AsnListBase& operator=(const AsnListBase&) = default;

  unsigned long count = 0;
};
#pragma GCC visibility pop
