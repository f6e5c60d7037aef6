"""The constraints a record's member lines check (lines.Constrain): an
INTEGER's value bounds, and the SIZE of an OCTET STRING, a character string,
a BIT STRING or a list. A member's constraint is the effective one of its
type: its own and those of the type assignments it refers to, each narrowing
the last. Extensible constraints accept every value and are not checked,
nor are the forms not turned into bounds here (permitted alphabets,
patterns, WITH COMPONENTS, CONTAINING, constraints on list elements)."""

from cpp_kinds import CLASSES, INT32, INT64, bounds_of, narrowed

SIZED = {"OCTET STRING", "BIT STRING", "SEQUENCE OF", "SET OF"} | {
    kind for kind, (_, header) in CLASSES.items() if header == "asn_char_string.h"}
STORED_IN = {"AsnTinyInt": INT32, "AsnInt": INT64}


def constraint_chain(node):
    """The type a chain of references ends at, and every constraint on the way."""
    found = list(node.constraints)
    while node.kind == "reference":
        node = node.target.type
        found += node.constraints
    return node, found


def size_of(constraint):
    """(lower, upper) of the SIZE a constraint sets, None for a side it leaves open."""
    kind = constraint.kind
    if kind == "set":
        if constraint.extensible or constraint.root is None:
            return None, None
        return size_of(constraint.root)
    if kind == "size":
        return bounds_of(constraint.inner)
    if kind == "intersection":
        return narrowed(constraint.items, size_of)
    if kind == "union":
        parts = [size_of(item) for item in constraint.items]
        lowers, uppers = [p[0] for p in parts], [p[1] for p in parts]
        return (None if None in lowers else min(lowers)), (None if None in uppers else max(uppers))
    return None, None


def bounds_text(lower, upper):
    return ("AsnBounds::kNoLower" if lower is None else str(lower),
            "AsnBounds::kNoUpper" if upper is None else str(upper))


def member_bounds(node, value_class):
    """The AsnBounds expression a member of type `node`, held in
    `value_class`, is checked with; None when it has no bounds to check."""
    shape, constraints = constraint_chain(node)
    if value_class in STORED_IN:
        lower, upper = narrowed(constraints, bounds_of)
        limits = STORED_IN[value_class]
        lower = None if lower is None or lower <= limits[0] else lower
        upper = None if upper is None or upper >= limits[1] else upper
        if lower is None and upper is None:
            return None  # the class holds exactly these values
        return "AsnBounds::Values(%s, %s)" % bounds_text(lower, upper)
    if shape.kind in SIZED:
        lower, upper = narrowed(constraints, size_of)
        lower = None if lower is not None and lower <= 0 else lower
        if lower is None and upper is None:
            return None
        return "AsnBounds::Sizes(%s, %s)" % bounds_text(lower or 0, upper)
    return None
