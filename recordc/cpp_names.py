"""How ASN.1 names become C++ names.

A hyphen becomes an underscore ("ip-address" -> ip_address), and a name that
is a C++ keyword (or one of the few names a generated class uses itself)
takes a trailing underscore ("class" -> class_). ASN.1 names never hold an
underscore, so the class made for a type written inside another (an
ENUMERATED member, a list's element) is named "<Outer>_<member>" and cannot
meet a name of the text unless a hyphen made it: two ASN.1 names that end up
as one C++ name are refused, naming both.
"""

from asn_errors import refuse

CPP_KEYWORDS = frozenset("""
alignas alignof and and_eq asm auto bitand bitor bool break case catch char char8_t char16_t char32_t class
compl concept const consteval constexpr constinit const_cast continue co_await co_return co_yield decltype
default delete do double dynamic_cast else enum explicit export extern false float for friend goto if inline
int long mutable namespace new noexcept not not_eq nullptr operator or or_eq private protected public register
reinterpret_cast requires return short signed sizeof static static_assert static_cast struct switch template
this thread_local throw true try typedef typeid typename union unsigned using virtual void volatile wchar_t
while xor xor_eq NULL assert errno
""".split())
# Names the generated classes declare themselves (record members share a
# scope with them).
CLASS_WORDS = frozenset("kClassName kTypeName kQualifiedName Clone typeName Names Extensible NamedBits "
                        "DescribeMembers Constructor CopyConstructor Destructor Assign".split())


def cpp_name(name):
    made = name.replace("-", "_")
    return made + "_" if made in CPP_KEYWORDS or made in CLASS_WORDS else made


class NameTable(object):
    """The C++ names given in one scope (a namespace, a record's members),
    refusing a second ASN.1 name that comes out the same."""

    def __init__(self, path):
        self.path = path
        self.given = {}  # C++ name -> the ASN.1 name it was made from

    def take(self, name, line, made=None):
        made = made or cpp_name(name)
        other = self.given.setdefault(made, name)
        if other != name:
            refuse(self.path, line, "%s and %s are both %s in C++" % (other, name, made))
        return made
