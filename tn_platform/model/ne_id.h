// ns_utilmib::IsNeID: whether a number is a valid network-element identifier.
#pragma once
#pragma GCC visibility push(default)

namespace ns_utilmib {

// True for 1 to 16777215 (0xFFFFFF): NE identifiers are 24-bit and 0 is none.
bool IsNeID(unsigned long id);

}  // namespace ns_utilmib
#pragma GCC visibility pop
