// AsnList<T>: an owning doubly linked list of ASN.1 values with a cursor;
// AsnSeqOf<T> adds the BER framing of a SEQUENCE OF. Each element lives inside
// its list node, and its address stays the same for as long as it is in the
// list. Nodes are carved from blocks the list owns, each twice the size of the
// one before (up to kMaxBlockNodes nodes), so a list of n elements costs about
// log2(n) allocations. A list of small elements keeps its first node inside
// itself: a one-element list of integers (an object identifier) costs none.
//
// The cursor is part of the list's state: walking (MoveFirst, Current,
// MoveNext) and assignment from a list move it even on a const list, so one
// list must not be walked by two threads at once.
//
// Walk a list as:
//   for (list.MoveFirst(); const T* element = list.Current(); list.MoveNext()) ...
#pragma once
#pragma GCC visibility push(default)

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tn_platform/asn/asn_decode_error.h"
#include "tn_platform/asn/asn_explicit_tags.h"
#include "tn_platform/asn/asn_list_base.h"
#include "tn_platform/asn/asn_value_encoding.h"
#include "tn_platform/asn/ber.h"
#include "tn_platform/asn/csm_exception.h"
#include "tn_platform/asn/indent_table.h"

// The file a list's decoding error names: the library's one source, whichever
// translation unit instantiates the list.
inline constexpr char kAsnListSourceName[] = "tn_velkor_unity";

template <class T>
class AsnList : public AsnListBase {
 public:
  using Element = T;
  static constexpr AsnTag kListTag = kTagSequence;

  AsnList() = default;
  AsnList(const AsnList& other) : AsnListBase() { AssignList(other); }
  AsnList& operator=(const AsnList& other) {
    AssignList(other);
    return *this;
  }
  ~AsnList() override { Clear(); }

  // Slots 2 to 4 are left to the concrete list and AsnSeqOf.
  // Slot 5: one "- element" per element; see the definition.
  void Print(std::ostream& os, unsigned long level, bool lineBreak) const override;
  const char* typeName() const override { return "AsnList<T>"; }
  // Slot 7: deep copy of a list of the same element type.
  AsnListBase& AssignList(const AsnListBase& other) override;
  // Slot 8: every element's complete encoding, in list order.
  unsigned long BEncContent(AsnBuf& buf, NIClass_EncodingFormatEnum format) override;
  // Slot 9: replaces the elements with those decoded from the content.
  void BDecContent(AsnBuf& buf, unsigned int tag, unsigned long length, unsigned long& bytesDecoded,
                   NIClass_EncodingFormatEnum format) override;

  // Slots after the element access: the encoder's two passes over the
  // elements, each under its own tags.
  unsigned long MeasureContent(AsnEncodeSizes& sizes) const override {
    unsigned long total = 0;
    for (const Node* node = first; node != nullptr; node = node->next) {
      total += AsnChainSize(ElementTags(), node->element, sizes);
    }
    return total;
  }
  unsigned char* WriteContent(unsigned char* out, AsnEncodeSizes& sizes) const override {
    for (const Node* node = first; node != nullptr; node = node->next) {
      out = AsnWriteChain(out, ElementTags(), node->element, sizes);
    }
    return out;
  }

  AsnType& AppendElement() override { return *Append(); }
  void VisitElements(void (*visit)(AsnType& element, void* context), void* context) const override {
    for (Node* node = first; node != nullptr; node = node->next) visit(node->element, context);
  }

  // The first element, or null.
  T* First() const { return first ? &first->element : nullptr; }
  // Appends a new default element, moves the cursor to it and returns it.
  T* Append();
  // Appends a copy of `element`; the cursor stays where it is.
  void AppendCopy(const T& element);
  // Destroys every element; the list is empty afterwards.
  void Clear();

  void MoveFirst() const { current = first; }
  T* Current() const { return current ? &current->element : nullptr; }
  void MoveNext() const {
    if (current) current = current->next;
  }

 protected:
  struct Node {
    explicit Node(Node* before) : prev(before) {}
    Node* next = nullptr;
    Node* prev;
    T element;
  };

  // A run of node slots; the nodes follow the header.
  struct Block {
    Block* next;
    std::size_t capacity;
    std::size_t used;
  };
  // Functions, not constants: a list may be declared while its element's
  // class is still incomplete (a type that holds a list of itself, as LDAP's
  // Filter does); they are evaluated where the list's code is.
  static constexpr AsnTagChain ElementTags() { return AsnOwnTagsOf<T>(); }
  static constexpr std::size_t kMaxBlockNodes = 64;
  // The first node of a list of small numbers or truth values lives in the
  // list itself; the test names the classes, as a size test would need the
  // element's class complete.
  static constexpr bool kFirstNodeInside =
      std::is_same_v<T, AsnTinyInt> || std::is_same_v<T, AsnInt> || std::is_same_v<T, AsnBool>;
  static constexpr std::size_t kFirstSlotSize = kFirstNodeInside ? 32 : 1;
  static constexpr std::size_t BlockHeader() {
    return (sizeof(Block) + alignof(Node) - 1) / alignof(Node) * alignof(Node);
  }

  // Room for one more node, taken from the newest block or a new one; the
  // slot counts as used only once Link() takes the node.
  void* FreeSlot();
  // Links `node`, made with Node(last) in FreeSlot(), at the end.
  Node* Link(Node* node);

  Node* first = nullptr;
  Node* last = nullptr;
  mutable Node* current = nullptr;
  Block* blocks = nullptr;  // newest first
  alignas(alignof(void*)) unsigned char firstSlot[kFirstSlotSize];  // the first node, when inside
};

// The framing of a SEQUENCE OF (`kBareTag` 30) or SET OF (31): a list class
// `Self` with tags written on its type (kTagging) names itself here.
template <class T, class Self = void, AsnTag kBareTag = kTagSequence>
class AsnSeqOf : public AsnList<T> {
 public:
  static constexpr AsnTag kListTag = kBareTag;

  // Slot 3: tag (0x30), length, then the elements. A wrong tag (or no octet
  // at all) throws a CSM_Exception of its own; every other refusal is an
  // AsnDecodeError placed in the input, its path starting with the index of
  // the element at fault ("[2]").
  void BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum format) override;
  // Slot 4: always definite lengths; an empty list is 30 00.
  unsigned long BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum format) override;
  void ClearElements() override { this->Clear(); }
  AsnTagChain OwnTags() const override { return OwnTagsOfClass(); }

 private:
  static constexpr AsnTagChain OwnTagsOfClass() {
    if constexpr (std::is_void_v<Self>) {
      return AsnTagChainOf(kBareTag);
    } else {
      return AsnOwnTagsOf<Self>();
    }
  }
};

// A SET OF: read in any order, written in DER's, its elements' encodings
// sorted as octet strings.
template <class T, class Self = void>
class AsnSetOf : public AsnSeqOf<T, Self, kTagSet> {
 public:
  unsigned char* WriteContent(unsigned char* out, AsnEncodeSizes& sizes) const override;
  bool SortedInDer() const override { return true; }
};

// ---- definitions ------------------------------------------------------------

template <class T>
void* AsnList<T>::FreeSlot() {
  // An empty list holds no node, so the inside slot is free.
  if (kFirstNodeInside && first == nullptr) return firstSlot;
  if (blocks == nullptr || blocks->used == blocks->capacity) {
    const std::size_t capacity = blocks == nullptr ? 1 : std::min(2 * blocks->capacity, kMaxBlockNodes);
    Block* block = static_cast<Block*>(::operator new(BlockHeader() + capacity * sizeof(Node)));
    *block = Block{blocks, capacity, 0};
    blocks = block;
  }
  return reinterpret_cast<char*>(blocks) + BlockHeader() + blocks->used * sizeof(Node);
}

template <class T>
typename AsnList<T>::Node* AsnList<T>::Link(Node* node) {
  if (static_cast<void*>(node) != firstSlot) ++blocks->used;
  if (last) {
    last->next = node;
  } else {
    first = node;
  }
  last = node;
  ++count;
  return node;
}

template <class T>
T* AsnList<T>::Append() {
  current = Link(new (FreeSlot()) Node(last));
  return &current->element;
}

template <class T>
void AsnList<T>::AppendCopy(const T& element) {
  // Copied into a node of its own before linking, so that a copy that throws
  // leaves the list as it was (and `element` may be one of ours).
  Node* node = new (FreeSlot()) Node(last);
  try {
    node->element = element;
  } catch (...) {
    node->~Node();
    throw;
  }
  Link(node);
}

template <class T>
void AsnList<T>::Clear() {
  for (Node* node = first; node != nullptr;) {
    Node* next = node->next;
    node->~Node();
    node = next;
  }
  while (blocks != nullptr) ::operator delete(std::exchange(blocks, blocks->next));
  count = 0;
  first = last = current = nullptr;
}

template <class T>
AsnListBase& AsnList<T>::AssignList(const AsnListBase& other) {
  if (&other == this) return *this;
  const auto& source = dynamic_cast<const AsnList<T>&>(other);
  Clear();
  for (source.current = source.first; source.current; source.current = source.current->next) {
    AppendCopy(source.current->element);
  }
  return *this;
}

template <class T>
void AsnList<T>::Print(std::ostream& os, unsigned long level, bool lineBreak) const {
  for (const Node* node = first; node != nullptr; node = node->next) {
    if (lineBreak) os << '\n' << IndentText(level);
    os << "- ";
    node->element.Print(os, level + 1, false);
  }
}

template <class T>
unsigned long AsnList<T>::BEncContent(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  return AsnEncodeContentInto(buf, *this);
}

template <class T>
void AsnList<T>::BDecContent(AsnBuf& buf, unsigned int, unsigned long length, unsigned long& bytesDecoded,
                             NIClass_EncodingFormatEnum) {
  // The list's own errors (its content ends short, its end-of-contents is
  // missing) are placed at the end of the input; an element's error gains the
  // element's index. An element running past the list is refused where its
  // header is read, by the list being open around it. The element's own BDec
  // is called directly: T is the element's exact type.
  const AsnOpenValueGuard open(buf, AsnHolder::kList, length);
  Clear();
  unsigned long consumed = 0;
  try {
    if (length == kIndefiniteLength) {
      for (unsigned char next = 0; buf.PeekByte(next) && next != 0x00;) {
        T* element = Append();
        buf.CountListElement();
        element->T::BDec(buf, consumed, NIClass_BER);
      }
    } else {
      // Every element takes at least two octets, so the loop ends. The length
      // may run past the input: the elements are decoded as far as the input
      // goes, and a failing element is appended first.
      while (consumed < length) {
        T* element = Append();
        if (buf.Remaining() == 0) break;
        buf.CountListElement();
        element->T::BDec(buf, consumed, NIClass_BER);
      }
    }
  } catch (AsnDecodeError* error) {
    error->AddIndex(count - 1);
    throw;
  }
  if (length == kIndefiniteLength) {
    BDecEoc(buf, consumed);
  } else if (consumed < length) {
    buf.ThrowInputEnds(buf.Offset(), "input ends " + AsnOctetCount(length - consumed) + " short of the value");
  }
  bytesDecoded += consumed;
}

template <class T, class Self, AsnTag kBareTag>
void AsnSeqOf<T, Self, kBareTag>::BDec(AsnBuf& buf, unsigned long& bytesDecoded, NIClass_EncodingFormatEnum) {
  constexpr AsnTagChain kOwnTags = OwnTagsOfClass();
  if constexpr (kOwnTags.Wrapped()) {
    AsnDecodeUnderTags(buf, kOwnTags, false, bytesDecoded, [this](AsnBuf& in, const AsnHeader& header) {
      unsigned long counted = 0;
      this->BDecContent(in, header.tag, header.length, counted, NIClass_BER);
    });
  } else {
    // Input that ends before the tag reads as tag 0, a wrong tag: both are
    // refused with the list's own exception, the list left as it was.
    const AsnHeader header = BDecHeader(
        buf, bytesDecoded, [](AsnTag tag) { return tag == OwnTagsOfClass().Outer(); }, AsnLengthCheck::kPrimitiveOnly);
    if (header.status == AsnHeader::kEndsBeforeTag || header.status == AsnHeader::kWrongTag) {
      throw new AsnListTagError(header, kAsnListSourceName, OwnTagsOfClass().Outer());
    }
    // Input that ends inside the length leaves length 0 and the buffer's
    // read-error flag set, for the caller to report (AsnDecodeValue does).
    const unsigned long length = header.status == AsnHeader::kEndsInLength ? 0 : header.length;
    this->BDecContent(buf, kOwnTags.Outer(), length, bytesDecoded, NIClass_BER);
  }
}

template <class T, class Self, AsnTag kBareTag>
unsigned long AsnSeqOf<T, Self, kBareTag>::BEnc(AsnBuf& buf, NIClass_EncodingFormatEnum) {
  return AsnEncodeChainInto(buf, OwnTagsOfClass(), static_cast<const AsnListBase&>(*this));
}

template <class T, class Self>
unsigned char* AsnSetOf<T, Self>::WriteContent(unsigned char* out, AsnEncodeSizes& sizes) const {
  unsigned char* const start = out;
  std::vector<std::string_view> encodings;
  for (const auto* node = this->first; node != nullptr; node = node->next) {
    unsigned char* const element = out;
    out = AsnWriteChain(out, AsnList<T>::ElementTags(), node->element, sizes);
    encodings.emplace_back(reinterpret_cast<const char*>(element), static_cast<std::size_t>(out - element));
  }
  if (encodings.size() < 2) return out;
  // Sorted on a copy, then written back in order.
  const std::string written(reinterpret_cast<const char*>(start), static_cast<std::size_t>(out - start));
  for (std::string_view& encoding : encodings) {
    encoding = std::string_view(written).substr(
        static_cast<std::size_t>(encoding.data() - reinterpret_cast<const char*>(start)), encoding.size());
  }
  std::stable_sort(encodings.begin(), encodings.end());
  unsigned char* at = start;
  for (const std::string_view encoding : encodings) {
    std::memcpy(at, encoding.data(), encoding.size());
    at += encoding.size();
  }
  return out;
}
#pragma GCC visibility pop
