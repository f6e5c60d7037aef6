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
    ("T ::= CHOICE { a BOOLEAN }", "2: CHOICE is not supported yet"),
    ("T ::= SET { a BOOLEAN }", "2: SET is not supported yet"),
    ("T ::= INTEGER", "2: a type assignment of INTEGER is not supported yet"),
    ("T ::= [APPLICATION 1] SEQUENCE {}", "2: T: a tag on a type assignment is not supported yet"),
    ("T ::= SEQUENCE {\n a REAL }", "3: REAL is not supported yet"),
    ("T ::= SEQUENCE { a BOOLEAN, ... }", "2: T: an extensible SEQUENCE (...) is not supported yet"),
    ("T ::= SEQUENCE {\n a BOOLEAN DEFAULT TRUE }", "3: T.a: DEFAULT is not supported yet"),
    ("T ::= SEQUENCE { a INTEGER { one(1) } }", "2: INTEGER with named numbers is not supported yet"),
    ("T ::= SEQUENCE { a INTEGER (1..5, ...) }", "2: this constraint on an INTEGER is not supported yet"),
    ("T ::= SEQUENCE { a OCTET STRING (SIZE (4)) }", "2: a constraint on OCTET STRING is not supported yet"),
    ("T ::= SEQUENCE { a U }\nU ::= BOOLEAN", "2: U is not a SEQUENCE or SEQUENCE OF; only those can be referred to"),
    # the shape of our records
    ("T ::= SEQUENCE { a [0] IMPLICIT OCTET STRING }", "2: a tag is used only on an OPTIONAL member"),
    ("T ::= SEQUENCE { a OCTET STRING OPTIONAL }", "2: T.a: an OPTIONAL member needs its tag [n] IMPLICIT"),
    ("T ::= SEQUENCE { a [0] EXPLICIT OCTET STRING OPTIONAL }", "2: T.a: only IMPLICIT tags are used"),
    ("T ::= SEQUENCE { a [APPLICATION 0] BOOLEAN OPTIONAL }",
     "2: T.a: only one tag [n] of the context class is used"),
    ("T ::= SEQUENCE { a [0] BOOLEAN OPTIONAL,\n b [0] BOOLEAN OPTIONAL }", "3: T.b: tag [0] used twice"),
    ("T ::= SEQUENCE { a SEQUENCE { b BOOLEAN } }",
     "2: a nested SEQUENCE or SEQUENCE OF has no name: give it a type assignment"),
    ("T ::= SEQUENCE { a T }", "2: T contains itself"),
    # the resolver
    ("T ::= SEQUENCE { a Missing }", "2: Missing is neither defined nor imported"),
    ("v INTEGER ::= w", "2: w is neither defined nor imported"),
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

    def test_automatic_tags_refused_at_the_module(self):
        code, error, _, path = compile_text("M DEFINITIONS AUTOMATIC TAGS ::= BEGIN\nEND\n")
        self.assertEqual(error, "recordc: %s:1: AUTOMATIC TAGS are not supported yet\n" % path)

    def test_imports_and_order(self):
        code, error, wrote, _ = compile_text(
            "M {iso(1) 2} DEFINITIONS IMPLICIT TAGS ::= BEGIN\nEXPORTS ALL;\nIMPORTS QAsnUniResID FROM QCommon;\n"
            "L ::= SEQUENCE OF R\nR ::= SEQUENCE { id QAsnUniResID }\nEND\n")
        self.assertEqual((code, error, wrote), (0, "", True))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
