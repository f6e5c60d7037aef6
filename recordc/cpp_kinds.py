"""Which runtime value class holds a value of each ASN.1 built-in type, and
which header declares it.

The runtime's record codec handles OCTET STRING, BOOLEAN and the two fixed
INTEGER classes itself, by their exact class (OWN_CODEC_CLASSES); every
other kind is an AsnPrimitive, which a generated class may derive from with
a type name of its own.
"""

from asn_model import Value

INT32 = (-2**31, 2**31 - 1)
INT64 = (-2**63, 2**63 - 1)

# kind -> (class, header); ENUMERATED, BIT STRING and INTEGER are chosen below.
CLASSES = {
    "OCTET STRING": ("AsnOcts", "asn_octs.h"),
    "BOOLEAN": ("AsnBool", "asn_bool.h"),
    "NULL": ("AsnNull", "asn_null.h"),
    "ENUMERATED": ("AsnEnumerated", "asn_enumerated.h"),
    "BIT STRING": ("AsnBitString", "asn_bit_string.h"),
    "OBJECT IDENTIFIER": ("AsnOid", "asn_oid.h"),
    "RELATIVE-OID": ("AsnRelativeOid", "asn_oid.h"),
    "REAL": ("AsnReal", "asn_real.h"),
    "ANY": ("AsnAny", "asn_any.h"),
    "UTF8String": ("AsnUtf8String", "asn_char_string.h"),
    "NumericString": ("AsnNumericString", "asn_char_string.h"),
    "PrintableString": ("AsnPrintableString", "asn_char_string.h"),
    "TeletexString": ("AsnTeletexString", "asn_char_string.h"),
    "T61String": ("AsnTeletexString", "asn_char_string.h"),
    "VideotexString": ("AsnVideotexString", "asn_char_string.h"),
    "IA5String": ("AsnIa5String", "asn_char_string.h"),
    "GraphicString": ("AsnGraphicString", "asn_char_string.h"),
    "VisibleString": ("AsnVisibleString", "asn_char_string.h"),
    "ISO646String": ("AsnVisibleString", "asn_char_string.h"),
    "GeneralString": ("AsnGeneralString", "asn_char_string.h"),
    "UniversalString": ("AsnUniversalString", "asn_char_string.h"),
    "BMPString": ("AsnBmpString", "asn_char_string.h"),
    "ObjectDescriptor": ("AsnObjectDescriptor", "asn_char_string.h"),
    "UTCTime": ("AsnUtcTime", "asn_time.h"),
    "GeneralizedTime": ("AsnGeneralizedTime", "asn_time.h"),
    "DATE": ("AsnDate", "asn_time.h"),
    "TIME-OF-DAY": ("AsnTimeOfDay", "asn_time.h"),
    "DATE-TIME": ("AsnDateTime", "asn_time.h"),
    "DURATION": ("AsnDuration", "asn_time.h"),
    "TIME": ("AsnTime", "asn_time.h"),
}
INTEGER_CLASSES = {"AsnTinyInt": "asn_int.h", "AsnInt": "asn_int.h", "AsnBigInt": "asn_big_int.h"}
OWN_CODEC_CLASSES = ("AsnOcts", "AsnBool", "AsnTinyInt", "AsnInt")


def header_of(value_class):
    found = INTEGER_CLASSES.get(value_class) or next(h for c, h in CLASSES.values() if c == value_class)
    return "tn_platform/asn/" + found


def number(value):
    """The int a resolved value (or a reference to one) stands for, else None."""
    while isinstance(value, Value) and value.kind == "reference":
        value = getattr(value, "resolved", None)
    return value.value if isinstance(value, Value) and value.kind == "integer" else None


def bounds_of(constraint):
    """(lower, upper) of the values a constraint lets through, None for a side
    it leaves open (MIN, MAX, an extensible constraint, a form not read)."""
    kind = constraint.kind
    if kind == "set":
        if constraint.extensible or constraint.root is None:
            return None, None
        return bounds_of(constraint.root)
    if kind == "value":
        found = number(constraint.value)
        return found, found
    if kind == "range":
        lower = None if constraint.lower == "MIN" else number(constraint.lower)
        upper = None if constraint.upper == "MAX" else number(constraint.upper)
        if lower is not None and constraint.lower_open:
            lower += 1
        if upper is not None and constraint.upper_open:
            upper -= 1
        return lower, upper
    if kind == "union":
        parts = [bounds_of(item) for item in constraint.items]
        lowers, uppers = [p[0] for p in parts], [p[1] for p in parts]
        return (None if None in lowers else min(lowers)), (None if None in uppers else max(uppers))
    if kind == "intersection":
        parts = [bounds_of(item) for item in constraint.items]
        lowers = [p[0] for p in parts if p[0] is not None]
        uppers = [p[1] for p in parts if p[1] is not None]
        return (max(lowers) if lowers else None), (min(uppers) if uppers else None)
    return None, None


def narrowed(constraints, read):
    """(lower, upper) of what every constraint lets through, as `read` bounds
    each (serial constraints: each narrows the last); None for an open side."""
    lower, upper = None, None
    for constraint in constraints:
        low, high = read(constraint)
        if low is not None:
            lower = low if lower is None else max(lower, low)
        if high is not None:
            upper = high if upper is None else min(upper, high)
    return lower, upper


def integer_bounds(node):
    """(lower, upper) of an INTEGER's values, each None when open."""
    return narrowed(node.constraints, bounds_of)


def fits(bounds, limits):
    return None not in bounds and limits[0] <= bounds[0] and bounds[1] <= limits[1]


def integer_class(node, module):
    """An INTEGER whose values fit 32 bits is an AsnTinyInt, 64 bits an AsnInt.
    One left open (no bound on a side) is an AsnInt in a module of our own
    and an AsnBigInt in a registered module, one whose header carries an
    object identifier (X.509's serial numbers go beyond 64 bits); bounds
    beyond 64 bits make an AsnBigInt everywhere."""
    bounds = integer_bounds(node)
    if fits(bounds, INT32):
        return "AsnTinyInt"
    if fits(bounds, INT64):
        return "AsnInt"
    if None in bounds and module.oid is None:
        return "AsnInt"
    return "AsnBigInt"


def value_class(node, module):
    """The runtime class of a built-in type written in `module` (not a reference)."""
    if node.kind == "INTEGER":
        return integer_class(node, module)
    return CLASSES[node.kind][0]


def needs_class_of_its_own(node):
    """An ENUMERATED, or a BIT STRING with named bits: its names live in a
    generated subclass."""
    return node.kind == "ENUMERATED" or (node.kind == "BIT STRING" and bool(node.named_numbers))
