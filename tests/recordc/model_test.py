#!/usr/bin/env python3
"""The model the record compiler's front end makes of a module text: wire
tags per tag default (AUTOMATIC TAGS and COMPONENTS OF included), extension
additions, enumeration numbers, values read per their type, constraints.

usage: model_test.py
"""

import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "recordc"))
from asn_lexer import tokenize  # noqa: E402
from asn_model import Value  # noqa: E402
from asn_parser import parse  # noqa: E402
from asn_resolver import Modules  # noqa: E402


def module(assignments, default="EXPLICIT", extra=""):
    text = "M DEFINITIONS %s TAGS %s::= BEGIN\nIMPORTS c FROM O;\n%s\nEND\n" % (default, extra, assignments)
    text += "O DEFINITIONS ::= BEGIN\nc INTEGER ::= 3\nEND\n"
    modules = parse(text, "m.asn")
    Modules(modules)
    return modules[0]


def tags(node):
    """"C1x U2": [CONTEXT 1] explicit around [UNIVERSAL 2]."""
    return " ".join("%s%d%s" % (cls[0], number, "x" if explicit else "") for cls, number, explicit in node.wire_tags)


def show(value):
    """A value as the tests write it."""
    value = value.resolved if value.kind == "reference" else value
    fields = {"oid": lambda: value.numbers, "named_bits": lambda: value.names, "bstring": lambda: value.bits,
              "sequence": lambda: [(name, show(v)) for name, v in value.members],
              "choice": lambda: (value.name, show(value.value)), "list": lambda: [show(v) for v in value.items],
              "enumeration": lambda: (value.name, value.number), "special": lambda: value.name,
              "quadruple": lambda: value.numbers, "cstring": lambda: value.text}
    return fields[value.kind]() if value.kind in fields else getattr(value, "value", value.kind)


def constraint_text(c):
    """A constraint written back, fully parenthesised."""
    if isinstance(c, Value) or isinstance(c, str):
        return str(c if isinstance(c, str) else show(c))
    parts = {
        "set": lambda: "(%s%s)" % (constraint_text(c.root) if c.root else "", ", ..." + (
            ", " + constraint_text(c.additions) if c.additions else "") if c.extensible else ""),
        "union": lambda: "{%s}" % " | ".join(constraint_text(i) for i in c.items),
        "intersection": lambda: "{%s}" % " ^ ".join(constraint_text(i) for i in c.items),
        "except": lambda: "%s EXCEPT %s" % (constraint_text(c.base) if c.base else "ALL", constraint_text(c.excluded)),
        "value": lambda: constraint_text(c.value),
        "range": lambda: "%s%s..%s%s" % (constraint_text(c.lower), "<" if c.lower_open else "",
                                         "<" if c.upper_open else "", constraint_text(c.upper)),
        "size": lambda: "SIZE" + constraint_text(c.inner), "from": lambda: "FROM" + constraint_text(c.inner),
        "type": lambda: c.type.name, "pattern": lambda: "PATTERN " + constraint_text(c.value),
        "with_component": lambda: "WITH COMPONENT" + constraint_text(c.inner),
        "with_components": lambda: "WITH COMPONENTS {%s%s}" % ("..., " if c.partial else "", ", ".join(
            " ".join(x for x in (n, constraint_text(i) if i else "", p or "") if x) for n, i, p in c.items)),
        "containing": lambda: "CONTAINING %s ENCODED BY %s" % (c.type.name, show(c.encoded_by)),
    }
    return parts[c.kind]()


# (tag default, assignments, type and member, its wire tags)
TAGS = [
    ("EXPLICIT", "T ::= [1] INTEGER", "T", "C1x U2"),
    ("IMPLICIT", "T ::= [1] INTEGER", "T", "C1"),
    ("IMPLICIT", "T ::= [1] EXPLICIT INTEGER", "T", "C1x U2"),
    ("EXPLICIT", "T ::= [APPLICATION 1] IMPLICIT [PRIVATE 2] BOOLEAN", "T", "A1x U1"),
    ("IMPLICIT", "T ::= [c] [UNIVERSAL 5] S\nS ::= SEQUENCE {}", "T", "C3"),
    ("IMPLICIT", "T ::= [2] S\nS ::= [1] EXPLICIT NULL", "T", "C2x U5"),
    # A tag on an untagged CHOICE or ANY is explicit whatever the default.
    ("IMPLICIT", "T ::= [3] C\nC ::= CHOICE { a NULL }", "T", "C3x"),
    ("IMPLICIT", "T ::= SEQUENCE { a [4] ANY }", "T.a", "C4x"),
    ("EXPLICIT", "T ::= C\nC ::= CHOICE { a NULL }", "T", ""),
    # AUTOMATIC TAGS: the root components, then the additions; not when one is tagged.
    ("AUTOMATIC", "T ::= SEQUENCE { a INTEGER, ..., b C, ..., d NULL }\nC ::= CHOICE { x NULL }", "T.b", "C2x"),
    ("AUTOMATIC", "T ::= SEQUENCE { a INTEGER, ..., b C, ..., d NULL }\nC ::= CHOICE { x NULL }", "T.d", "C1"),
    ("AUTOMATIC", "T ::= CHOICE { a INTEGER, b [APPLICATION 9] NULL }", "T.a", "U2"),
    ("AUTOMATIC", "T ::= SEQUENCE { a EXPLICIT-B }\nEXPLICIT-B ::= [5] BOOLEAN", "T.a", "C0"),
    # COMPONENTS OF comes before automatic tagging and leaves its source untouched.
    ("AUTOMATIC", "T ::= SEQUENCE { y BOOLEAN, COMPONENTS OF S }\nS ::= SEQUENCE { x INTEGER, ..., z NULL }",
     "T.x", "C1"),
    ("AUTOMATIC", "T ::= SEQUENCE { y BOOLEAN, COMPONENTS OF S }\nS ::= SEQUENCE { x [7] INTEGER }", "S.x", "C7"),
]

# (assignments, value name, the value read)
VALUES = [
    ("v OBJECT IDENTIFIER ::= { iso member-body(2) 840 c }", "v", [1, 2, 840, 3]),
    ("b OBJECT IDENTIFIER ::= { joint-iso-ccitt ds(5) }\nv OBJECT IDENTIFIER ::= { b 4 }", "v", [2, 5, 4]),
    ("B ::= BIT STRING { a(0), b(1) }\nv B ::= { a, b }", "v", ["a", "b"]),
    ("v BIT STRING ::= '0101'B", "v", "0101"),
    ("I ::= INTEGER { first(1) }\nv I ::= first", "v", 1),
    ("E ::= ENUMERATED { a, b }\nv E ::= b", "v", ("b", 1)),
    ("v REAL ::= { mantissa 3, base 10, exponent -2 }", "v", [("mantissa", 3), ("base", 10), ("exponent", -2)]),
    ("v REAL ::= PLUS-INFINITY", "v", "PLUS-INFINITY"),
    ("v REAL ::= -1.5", "v", -1.5),
    ("C ::= CHOICE { a INTEGER, b S }\nS ::= SEQUENCE { x BOOLEAN }\nv C ::= b : { x TRUE }", "v",
     ("b", [("x", True)])),
    ("L ::= SEQUENCE OF n INTEGER\nv L ::= { n 1, n c }", "v", [1, 3]),
    ("v BMPString ::= {0, 0, 3, 163}", "v", [0, 0, 3, 163]),
    ("v IA5String ::= \"say \"\"hi\"\"\"", "v", 'say "hi"'),
    ("v INTEGER ::= c", "v", 3),
]

# (assignments, type, its constraint written back)
CONSTRAINTS = [
    ("T ::= INTEGER (1..10, ..., 20 | c)", "T", "(1..10, ..., {20 | 3})"),
    ("T ::= INTEGER (MIN<..<0 | 5..MAX)", "T", "({MIN<..<0 | 5..MAX})"),
    ("T ::= IA5String (FROM (\"a\"..\"z\") ^ SIZE (1..4) | \"x\")", "T", "({{FROM(a..z) ^ SIZE(1..4)} | x})"),
    ("T ::= IA5String (ALL EXCEPT \"a\")", "T", "(ALL EXCEPT a)"),
    ("T ::= INTEGER ((1..5) EXCEPT 3 INTERSECTION 2..4)", "T", "({1..5 EXCEPT 3 ^ 2..4})"),
    ("T ::= SEQUENCE (SIZE (1..MAX)) OF INTEGER", "T", "(SIZE(1..MAX))"),
    ("T ::= SET SIZE (2) OF INTEGER", "T", "(SIZE(2))"),
    ("S ::= SEQUENCE { a INTEGER OPTIONAL, b BOOLEAN }\nT ::= S (WITH COMPONENTS {..., a (0..1) PRESENT, b ABSENT})",
     "T", "(WITH COMPONENTS {..., a (0..1) PRESENT, b ABSENT})"),
    ("L ::= SEQUENCE OF IA5String\nT ::= L (WITH COMPONENT (SIZE (3)))", "T", "(WITH COMPONENT(SIZE(3)))"),
    ("T ::= OCTET STRING (CONTAINING S ENCODED BY { 2 1 })\nS ::= NULL", "T", "(CONTAINING S ENCODED BY [2, 1])"),
    ("T ::= UTF8String (PATTERN \"[0-9]+\")", "T", "(PATTERN [0-9]+)"),
    ("S ::= INTEGER (1..3)\nT ::= INTEGER (S | 7)", "T", "({S | 7})"),
    ("T ::= REAL (1...2)", "T", "(1.0..2)"),
]


class Model(unittest.TestCase):
    def test_wire_tags(self):
        for default, assignments, where, expected in TAGS:
            with self.subTest(assignments=assignments, where=where):
                found = module(assignments, default)
                name, _, member = where.partition(".")
                node = found.types[name].type
                if member:
                    node = [c for c in node.components if c.name == member][0].type
                self.assertEqual(tags(node), expected)

    def test_values(self):
        for assignments, name, expected in VALUES:
            with self.subTest(assignments=assignments):
                self.assertEqual(show(module(assignments).values[name].value), expected)

    def test_constraints(self):
        for assignments, name, expected in CONSTRAINTS:
            with self.subTest(assignments=assignments):
                node = module(assignments).types[name].type
                self.assertEqual(" ".join(constraint_text(c) for c in node.constraints), expected)

    def test_extension_additions(self):
        node = module("T ::= SEQUENCE { a NULL, ... ! 7, [[ 2: b NULL, c NULL ]], d NULL, ..., e NULL }").types["T"]
        self.assertEqual([(c.name, c.extension, c.group, c.version) for c in node.type.components],
                         [("a", False, None, None), ("b", True, 0, 2), ("c", True, 0, 2), ("d", True, None, None),
                          ("e", False, None, None)])
        self.assertEqual((node.type.extensible, node.type.exception.value), (True, 7))

    def test_enumeration_numbers(self):
        rows = [("a, b(3), ..., c(1)", [0, 3, 1]), ("a, b, c(0), ..., d", [1, 2, 0, 3]),
                ("a, z(25), ..., d", [0, 25, 1]), ("a, b, ..., c(3), d", [0, 1, 3, 4]), ("a(c), b", [3, 0])]
        for items, numbers in rows:
            with self.subTest(items=items):
                node = module("E ::= ENUMERATED { %s }" % items).types["E"].type
                self.assertEqual([item.number for item in node.items], numbers)

    def test_extensibility_implied(self):
        found = module("S ::= SEQUENCE { a NULL }\nE ::= ENUMERATED { a }\nC ::= CHOICE { a NULL }",
                       extra="EXTENSIBILITY IMPLIED ")
        self.assertEqual([found.types[n].type.extensible for n in "SEC"], [True, True, True])
        self.assertFalse(module("S ::= SEQUENCE { a NULL }").types["S"].type.extensible)

    def test_comments_and_numbers(self):
        comments = {}
        text = "A--x--B -- y\n/* C /* D */ -- */ E\n1..2 1...2 1. ..2 'A F'H"
        self.assertEqual([t.text for t in tokenize(text, "t", comments)],
                         ["A", "B", "E", "1", "..", "2", "1.", "..", "2", "1.", "..", "2", "AF"])
        self.assertEqual(comments, {1: ("x y", False)})


if __name__ == "__main__":
    unittest.main()
