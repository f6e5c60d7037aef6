"""The body of the function that gives a DEFAULT member its value.

INTEGER, BOOLEAN, ENUMERATED and finite REAL values are set directly; the
value of any other kind is written as its JER text and read by the runtime's
JSON reader (one grammar for every kind), once per new record:

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


def jer_text(node, value):
    """The JER text of a value of a kind set through the JSON reader, or None."""
    kind = node.kind
    if kind == "NULL":
        return "null"
    if kind == "OCTET STRING":
        found = bits_of(node, value) if value.kind in ("bstring", "hstring") else None
        return json.dumps(found[0]) if found and found[1] % 8 == 0 else None
    if kind == "BIT STRING":
        found = bits_of(node, value)
        return json.dumps({"value": found[0], "length": found[1]}, separators=(",", ":")) if found else None
    if kind in ("OBJECT IDENTIFIER", "RELATIVE-OID"):
        arcs = [component[1] for component in getattr(value, "components", [])]
        return json.dumps(".".join(str(arc) for arc in arcs)) if arcs and None not in arcs else None
    if kind in STRING_KINDS and value.kind == "cstring":
        return json.dumps(value.text)
    if kind == "REAL" and value.kind == "special":
        return json.dumps({"PLUS-INFINITY": "INF", "MINUS-INFINITY": "-INF", "NOT-A-NUMBER": "NaN"}[value.name])
    return None


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
    text = jer_text(node, value)
    if text is None:
        refuse(path, line, "a DEFAULT value of a %s in this form is not supported yet" % kind)
    return "AsnReadJson(value, %s, AsnJsonForm::kJer);" % json.dumps(text)
