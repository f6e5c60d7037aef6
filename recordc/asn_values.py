"""Reads a value written in braces once its type is known: the same braces
hold an object identifier ({ id-pkix 1 }), named bits ({a, b}), a SEQUENCE or
REAL value ({ a 1, b TRUE }), a list ({1, 2}) or the parts of a string
({"f ", arrow} or a quadruple {0, 0, 3, 163})."""

from asn_errors import refuse
from asn_model import Value
from asn_parser import CHARACTER_STRINGS, value_parser

# The arcs an object identifier may start with by name alone.
ROOT_ARCS = {"itu-t": 0, "ccitt": 0, "iso": 1, "joint-iso-itu-t": 2, "joint-iso-ccitt": 2}
SECOND_ARCS = {0: {"recommendation": 0, "question": 1, "administration": 2, "network-operator": 3,
                   "identified-organization": 4},
               1: {"standard": 0, "member-body": 2, "identified-organization": 3}}
STRUCTURED = ("SEQUENCE", "SET", "REAL", "EXTERNAL", "EMBEDDED PDV", "CHARACTER STRING")


def _items(parser):
    """The comma-separated items of a braced value, each a list of Values
    (a member name is read as a reference)."""
    items = []
    while parser.peek() is not None:
        item = [parser.value()]
        while parser.peek() is not None and not parser.at(","):
            item.append(parser.value())
        items.append(item)
        if not parser.take_if(","):
            break
    if parser.peek() is not None:
        parser.fail("expected ',' or '}'")
    return items


def _oid_components(parser):
    components = []
    while parser.peek() is not None:
        token = parser.peek()
        if token.kind == "number":
            components.append((None, parser.number(), None))
        elif token.kind == "name" and token.text[0].islower():
            name = parser.take().text
            if parser.take_if("("):
                if parser.kind_at() == "number":
                    components.append((name, parser.number(), None))
                else:
                    components.append((name, None, parser.value()))
                parser.take(")")
            else:
                components.append((name, None, Value("reference", token.line, name=name, module=None)))
        elif token.kind == "name" and token.text[0].isupper() and parser.peek(1) is not None and \
                parser.peek(1).text == ".":
            parser.take()
            parser.take(".")
            name = parser.take().text
            components.append((name, None, Value("reference", token.line, name=name, module=token.text)))
        else:
            parser.fail("expected an object identifier component")
    return components


def read_braced(value, governor, module, resolve_value):
    """Turns `value` (kind "braced") into what it means for the resolved type
    `governor`; resolve_value(value, type) resolves the values inside it."""
    parser = value_parser(value.tokens, module.path)
    kind = governor.kind if governor is not None else None
    line = value.line
    if kind in ("OBJECT IDENTIFIER", "RELATIVE-OID"):
        numbers = []
        for position, (name, number, reference) in enumerate(_oid_components(parser)):
            if number is None and reference is not None and position == 0 and kind == "OBJECT IDENTIFIER" and \
                    reference.kind == "reference" and reference.module is None and name in ROOT_ARCS:
                number = ROOT_ARCS[name]
            elif number is None and position == 1 and numbers and numbers[0] in SECOND_ARCS and \
                    name in SECOND_ARCS[numbers[0]]:
                number = SECOND_ARCS[numbers[0]][name]
            elif number is None:
                target = resolve_value(reference, None)
                target = target.resolved if target.kind == "reference" else target
                if target.kind == "oid" and position == 0:
                    numbers.extend(target.numbers)
                    continue
                if target.kind != "integer":
                    refuse(module.path, reference.line, "%s is not a number or an object identifier" % name)
                number = target.value
            numbers.append(number)
        value.kind, value.numbers = "oid", numbers
    elif kind == "BIT STRING":
        names = [item[0] for item in _items(parser)]
        if any(name.kind != "reference" for name in names):
            refuse(module.path, line, "a BIT STRING value in braces names bits")
        value.kind, value.names = "named_bits", [name.name for name in names]
    elif kind in STRUCTURED:
        members = []
        for item in _items(parser):
            if len(item) != 2 or item[0].kind != "reference":
                refuse(module.path, item[0].line, "expected a member name and its value")
            members.append((item[0].name, item[1]))
        value.kind, value.members = "sequence", members
    elif kind in ("SEQUENCE OF", "SET OF"):
        items = []
        for item in _items(parser):
            if len(item) > 2 or (len(item) == 2 and item[0].kind != "reference"):
                refuse(module.path, item[0].line, "expected a value of the list")
            items.append(resolve_value(item[-1], governor.element))
        value.kind, value.items = "list", items
    elif kind in CHARACTER_STRINGS:
        items = [item[0] for item in _items(parser)]
        if all(item.kind == "integer" for item in items) and len(items) in (2, 4):
            value.kind, value.numbers = "quadruple" if len(items) == 4 else "tuple", [i.value for i in items]
        else:
            value.kind, value.items = "chars", [resolve_value(item, governor) for item in items]
    else:
        refuse(module.path, line, "a value in braces for %s" % (kind or "a type that is not known"))
    del value.tokens
    return value
