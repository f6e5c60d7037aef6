"""The body of the function that gives a DEFAULT member its value.

INTEGER, BOOLEAN, ENUMERATED and finite REAL values are set directly; a
value of any other type (lists and records included) is written as its JER
text and read by the runtime's JSON reader (one grammar for every kind), once
per new record:

  version INTEGER DEFAULT 1           ->  value.Set(1);
  usage BIT STRING DEFAULT {sign}     ->  AsnReadJson(value, "{\"value\":\"80\",\"length\":1}", AsnJsonForm::kJer);
"""

import json
import math

from asn_errors import refuse
from asn_model import Value
from cpp_kinds import number

STRING_KINDS = ("UTF8String", "NumericString", "PrintableString", "TeletexString", "T61String", "VideotexString",
                "IA5String", "GraphicString", "VisibleString", "ISO646String", "GeneralString", "UniversalString",
                "BMPString", "ObjectDescriptor", "UTCTime", "GeneralizedTime", "DATE", "TIME-OF-DAY", "DATE-TIME",
                "DURATION", "TIME")


def plain(value):
    """The value a chain of value references stands for."""
    while isinstance(value, Value) and value.kind == "reference" and getattr(value, "resolved", None) is not None:
        value = value.resolved
    return value


def named(node, value, names):
    """The number of a named number or enumeration a reference names."""
    if isinstance(value, Value) and value.kind == "reference":
        for name, found in names:
            if name == value.name:
                return found
    return None


def bits_of(node, value):
    """A BIT STRING value as (hex digits, bit count), or None."""
    if value.kind == "bstring":
        bits = value.bits
    elif value.kind == "hstring":
        bits = "".join(format(int(digit, 16), "04b") for digit in value.digits)
    elif value.kind in ("named_bits", "braced") and getattr(value, "names", None) is not None:
        positions = dict((name, number(bit)) for name, bit in node.named_numbers)
        set_bits = [positions.get(name) for name in value.names]
        if None in set_bits:
            return None
        bits = "".join("1" if index in set_bits else "0" for index in range(max(set_bits, default=-1) + 1))
    else:
        return None
    padded = bits + "0" * (-len(bits) % 8)
    return "".join("%02x" % int(padded[i:i + 8], 2) for i in range(0, len(padded), 8)), len(bits)


UNKNOWN = object()  # a value jer_value cannot write


def jer_value(node, value):
    """The JER of a value of type `node` as a Python value for json, or UNKNOWN."""
    node, value = node.resolved(), plain(value)
    kind = node.kind
    if not isinstance(value, Value):
        return UNKNOWN
    if kind == "INTEGER":
        found = number(value)
        if found is None:
            found = named(node, value, [(name, number(bit)) for name, bit in node.named_numbers])
        return UNKNOWN if found is None else found
    if kind == "BOOLEAN" and value.kind == "boolean":
        return bool(value.value)
    if kind == "ENUMERATED" and value.kind == "reference":
        return value.name if any(item.name == value.name for item in node.items) else UNKNOWN
    if kind == "REAL" and value.kind in ("integer", "real"):
        return value.value
    if kind == "REAL" and value.kind == "special":
        return {"PLUS-INFINITY": "INF", "MINUS-INFINITY": "-INF", "NOT-A-NUMBER": "NaN"}[value.name]
    if kind == "NULL":
        return None
    if kind == "OCTET STRING" and value.kind in ("bstring", "hstring"):
        found = bits_of(node, value)
        return found[0] if found[1] % 8 == 0 else UNKNOWN
    if kind == "BIT STRING":
        found = bits_of(node, value)
        return {"value": found[0], "length": found[1]} if found else UNKNOWN
    if kind in ("OBJECT IDENTIFIER", "RELATIVE-OID"):
        arcs = [component[1] for component in getattr(value, "components", [])]
        return ".".join(str(arc) for arc in arcs) if arcs and None not in arcs else UNKNOWN
    if kind in STRING_KINDS and value.kind == "cstring":
        return value.text
    if kind in ("SEQUENCE OF", "SET OF") and value.kind == "list":
        items = [jer_value(node.element, item) for item in value.items]
        return UNKNOWN if any(item is UNKNOWN for item in items) else items
    if kind in ("SEQUENCE", "SET") and value.kind == "sequence":
        types = dict((member.name, member.type) for member in node.components)
        members = dict((name, jer_value(types[name], item)) for name, item in value.members if name in types)
        return UNKNOWN if len(members) != len(value.members) or UNKNOWN in members.values() else members
    if kind == "CHOICE" and value.kind == "choice":
        types = dict((member.name, member.type) for member in node.components)
        found = jer_value(types[value.name], value.value) if value.name in types else UNKNOWN
        return UNKNOWN if found is UNKNOWN else {value.name: found}
    return UNKNOWN


def default_body(path, line, node, value, cpp_class):
    """The statements that set `value` (of C++ class `cpp_class`, of type
    `node`) to the DEFAULT written; refuses a value it cannot write."""
    node = node.resolved()
    value = plain(value)
    kind = node.kind
    found = None
    if kind == "INTEGER":
        found = number(value)
        if found is None:
            found = named(node, value, [(name, number(bit)) for name, bit in node.named_numbers])
        if found is not None and cpp_class == "AsnBigInt" and not -2**63 <= found < 2**63:
            return 'AsnReadJson(value, "%d", AsnJsonForm::kJer);' % found
        if found is not None:
            return "value.Set(%dLL);" % found if abs(found) >= 2**31 else "value.Set(%d);" % found
    elif kind == "BOOLEAN" and value.kind == "boolean":
        return "value.Set(%s);" % ("true" if value.value else "false")
    elif kind == "ENUMERATED":
        found = named(node, value, [(item.name, item.number) for item in node.items])
        if found is not None:
            return "value.Set(%d);" % found
    elif kind == "REAL" and value.kind in ("integer", "real") and math.isfinite(value.value):
        return "value.Set(%r);" % float(value.value)
    found = jer_value(node, value)
    if found is UNKNOWN:
        refuse(path, line, "DEFAULT: a %s value written this way is not supported yet" % kind)
    return "AsnReadJson(value, %s, AsnJsonForm::kJer);" % json.dumps(json.dumps(found, separators=(",", ":")))
