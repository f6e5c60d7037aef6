#!/usr/bin/env python3
"""The record compiler refuses a module text it cannot compile with one line
naming the file, the line and the construct, and writes nothing.

usage: recordc_test.py SOURCE_ROOT
"""

import os
import subprocess
import sys
import tempfile
import unittest

ROOT = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "..")
QCOMMON = os.path.join(ROOT, "tn_velkor", "qcommon", "qcommon.asn")
HEAD = "M DEFINITIONS IMPLICIT TAGS ::= BEGIN\n"
IO = "needs information object classes, not supported yet"

# (the assignments of module M from its line 2 on, the message after "m.asn:")
REFUSED = [
    # what the generator does not compile yet
    ("T ::= SEQUENCE {\n a EMBEDDED PDV }", "3: EMBEDDED PDV is not supported yet"),
    ("T ::= SEQUENCE { a EXTERNAL }", "2: EXTERNAL is not supported yet"),
    ("T ::= SEQUENCE OF [1] BOOLEAN", "2: a tag on a list element of this type is not supported yet"),
    ("T ::= SEQUENCE { a OCTET STRING DEFAULT '101'B }",
     "2: DEFAULT: a OCTET STRING value written this way is not supported yet"),
    ("T ::= SEQUENCE { a T }", "2: T contains itself"),
    ("T ::= SEQUENCE { a BOOLEAN OPTIONAL,\n b BOOLEAN }", "3: a and b have the same tag: a decoder cannot tell them apart"),
    # C++ names: a hyphen becomes an underscore, a class of a nested type is Outer_member
    ("A-b ::= BOOLEAN\nA ::= SEQUENCE { b ENUMERATED { x } }", "3: A-b and A_b are both A_b in C++"),
    ("T ::= SEQUENCE { a-b BOOLEAN,\n a-b NULL }", "3: a-b twice"),
    # the resolver
    ("T ::= SEQUENCE { a Missing }", "2: Missing is neither defined nor imported"),
    ("T ::= INTEGER (0..v)\nv INTEGER ::= w", "3: w is neither defined nor imported"),  # raised where v is used
    ("C ::= CHOICE { a BOOLEAN }\nT ::= [1] IMPLICIT C", "3: an IMPLICIT tag on an untagged CHOICE or ANY"),
    ("E ::= ENUMERATED { a(1), b(1) }", "2: two enumerations share a number"),
    ("T ::= SEQUENCE { COMPONENTS OF U }\nU ::= SET { a BOOLEAN }", "2: COMPONENTS OF in a SEQUENCE names a SET"),
    ("T ::= SEQUENCE { a BOOLEAN,\n a BOOLEAN }", "3: a twice"),
    ("T ::= SEQUENCE {}\nT ::= SEQUENCE {}", "3: T defined twice"),
    ("A ::= B\nB ::= A", "3: A is defined by itself"),
    # what is not built yet, refused before anything else of the text
    ("T ::= SEQUENCE { a }\nC ::= CLASS { &id INTEGER }", "3: CLASS " + IO),
    ("T ::= SEQUENCE { a OTHER.&id }", "2: &id " + IO),
    ("T ::= SEQUENCE { a BIT STRING }\nP {X} ::= SEQUENCE { a X }",
     "3: P{...} needs parameterized types, not supported yet"),
    ("T ::= SEQUENCE { a P {INTEGER} }", "2: P{...} needs parameterized types, not supported yet"),
    # the notation itself
    ("T ::= SEQUENCE { a }", "2: expected a type (at '}')"),
    ("T ::= SEQUENCE { a BOOLEAN } /* never closed", "2: the comment /* is never closed"),
    ("v BIT STRING ::= '012'B", "2: '012'B holds a digit it cannot"),
]

OID_HEAD = "M {1 3 6 1} DEFINITIONS IMPLICIT TAGS ::= BEGIN\n"
# (the module's first line, its assignments, a line the header holds): the
# class each type is held in, and how names are made.
COMPILED = [
    # An INTEGER open on a side: 64 bits in a module of our own, a big integer in a registered one.
    (HEAD, "T ::= SEQUENCE { a INTEGER }", "  AsnInt a;"),
    (HEAD, "T ::= SEQUENCE { a INTEGER (1..5, ...) }", "  AsnInt a;"),
    (HEAD, "T ::= SEQUENCE { a INTEGER (0..4294967295) }", "  AsnInt a;"),
    (HEAD, "T ::= SEQUENCE { a INTEGER (0..18446744073709551615) }", "  AsnBigInt a;"),
    (OID_HEAD, "T ::= SEQUENCE { a INTEGER }", "  AsnBigInt a;"),
    (OID_HEAD, "T ::= SEQUENCE { a INTEGER (0..MAX) }", "  AsnBigInt a;"),
    (OID_HEAD, "T ::= SEQUENCE { a INTEGER (-5..5 | 7) }", "  AsnTinyInt a;"),
    (OID_HEAD, "T ::= SEQUENCE { a INTEGER (0..ub) }\nub INTEGER ::= 4294967296", "  AsnInt a;"),
    (OID_HEAD, "T ::= INTEGER { v1(0) }", "class T final : public AsnBigInt {"),
    # A type assignment is a class of its own, except where the codec needs the runtime's own class.
    (HEAD, "T ::= SEQUENCE { a U }\nU ::= IA5String", "  U a;"),
    (HEAD, "T ::= SEQUENCE { a U }\nU ::= OCTET STRING", "  AsnOcts a;"),
    (HEAD, "T ::= SEQUENCE { a [0] U OPTIONAL }\nU ::= V\nV ::= BOOLEAN", "  refl::MayNullPointer<AsnBool> a;"),
    (HEAD, "T ::= U\nU ::= SEQUENCE OF NULL", "class T final : public AsnSeqOf<AsnNull> {"),
    (HEAD, "T ::= SEQUENCE { a [0] ANY OPTIONAL }", "  refl::MayNullPointer<AsnAny> a;"),
    (HEAD, "T ::= SEQUENCE OF BIT STRING { x(0) }", "class T_element final : public AsnBitString {"),
    (HEAD, "T ::= SEQUENCE { a [0] SEQUENCE OF SEQUENCE { b U } OPTIONAL }\nU ::= SEQUENCE {}",
     "class T_a final : public AsnSeqOf<T_a_element> {"),
    (HEAD, "T ::= ENUMERATED { a, b(5), c, ... }",
     '    static const AsnEnumeratedName kNames[] = {{0, "a"}, {5, "b"}, {1, "c"}};'),
    # Tags of every class and mode, on members and type assignments, relative to what the class carries.
    (HEAD, "T ::= SEQUENCE { a [APPLICATION 1] INTEGER (0..9), b [2] EXPLICIT U OPTIONAL }\nU ::= [3] BOOLEAN",
     '    lines.Add("b", &T::b, 0, AsnTagging::Explicit(AsnTagClass::kContext, 2)'
     '.ThenImplicit(AsnTagClass::kContext, 3));'),
    (HEAD, "T ::= SEQUENCE { a [APPLICATION 1] INTEGER (0..9) }",
     '    lines.Add("a", &T::a, -1, AsnTagging::Implicit(AsnTagClass::kApplication, 1));'),
    ("M DEFINITIONS ::= BEGIN\n", "T ::= [PRIVATE 7] SET OF U\nU ::= [1] IMPLICIT SEQUENCE {}",
     "  static constexpr AsnTagging kTagging = AsnTagging::Explicit(AsnTagClass::kPrivate, 7);"),
    (HEAD, "T ::= CHOICE { a NULL, b [0] U }\nU ::= CHOICE { c BOOLEAN }",
     '    lines.Add("b", &T::b, 1, AsnTagging::Explicit(AsnTagClass::kContext, 0));'),
    (HEAD, "T ::= [APPLICATION 2] OCTET STRING",
     "class T final : public AsnTaggedValue<T, AsnOcts> {"),
    ("M DEFINITIONS AUTOMATIC TAGS ::= BEGIN\n", "T ::= SEQUENCE { a BOOLEAN, b BOOLEAN OPTIONAL }",
     '    lines.Add("b", &T::b, 1);'),
    # DEFAULT values, extensions (an addition a peer may leave out is optional).
    (HEAD, "T ::= SEQUENCE { a INTEGER { v1(0), v3(2) } DEFAULT v3 }",
     "  static void DefaultA(AsnInt& value) { value.Set(2); }"),
    (HEAD, "T ::= SEQUENCE { a BIT STRING { x(0), y(9) } DEFAULT { y } }",
     '  static void DefaultA(T_a& value) { AsnReadJson(value, "{\\"value\\":\\"0040\\",\\"length\\":10}", '
     'AsnJsonForm::kJer); }'),
    (HEAD, "T ::= SEQUENCE { a BOOLEAN, ..., b BOOLEAN, ..., c NULL }", "    lines.Extensions(&T::unknown_);"),
    (HEAD, "T ::= SEQUENCE { a SEQUENCE OF SEQUENCE { b INTEGER, c CHOICE { d NULL } }\n"
           "  DEFAULT { { b 1, c d : NULL } } }",
     '  static void DefaultA(T_a& value) { AsnReadJson(value, "[{\\"b\\":1,\\"c\\":{\\"d\\":null}}]", '
     'AsnJsonForm::kJer); }'),
    (HEAD, "T ::= SET { a BOOLEAN, ..., [[ b BOOLEAN ]] }", "  refl::MayNullPointer<AsnBool> b;"),
    # Names: hyphens, C++ keywords; the ASN.1 name stays the member's name on the wire.
    (HEAD, "T ::= SEQUENCE { class [0] NULL OPTIONAL }", '    lines.Add("class", &T::class_, 0);'),
    (HEAD, "Ip-Address ::= SEQUENCE { ip-v4 OCTET STRING }", '    lines.Add("ip-v4", &Ip_Address::ip_v4);'),
]


def compile_text(text):
    folder = tempfile.mkdtemp(prefix="recordc_test.")
    path = os.path.join(folder, "m.asn")
    with open(path, "w") as out:
        out.write(text)
    done = subprocess.run([sys.executable, os.path.join(ROOT, "recordc", "recordc.py"), "--root", folder,
                           "--out", os.path.join(folder, "out"), path, "--with", QCOMMON],
                          capture_output=True, text=True)
    return done.returncode, done.stderr, os.path.exists(os.path.join(folder, "out")), path


class Recordc(unittest.TestCase):
    def test_refused_texts(self):
        for assignments, message in REFUSED:
            with self.subTest(assignments=assignments):
                code, error, wrote, path = compile_text(HEAD + assignments + "\nEND\n")
                self.assertEqual((code, wrote), (1, False))
                self.assertEqual(error, "recordc: %s:%s\n" % (path, message))

    def test_compiled_texts(self):
        for head, assignments, line in COMPILED:
            with self.subTest(assignments=assignments):
                code, error, wrote, path = compile_text(head + assignments + "\nEND\n")
                self.assertEqual((code, error), (0, ""))
                with open(os.path.join(os.path.dirname(path), "out", "m.h")) as header:
                    self.assertIn(line + "\n", header.read())

    def test_imports_and_order(self):
        code, error, wrote, _ = compile_text(
            "M {iso(1) 2} DEFINITIONS IMPLICIT TAGS ::= BEGIN\nEXPORTS ALL;\nIMPORTS QAsnUniResID FROM QCommon;\n"
            "L ::= SEQUENCE OF R\nR ::= SEQUENCE { id QAsnUniResID }\nEND\n")
        self.assertEqual((code, error, wrote), (0, "", True))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
