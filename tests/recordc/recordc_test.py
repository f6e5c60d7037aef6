#!/usr/bin/env python3
"""The record compiler refuses module texts it cannot compile as our codec
encodes them, naming the file, the line and the fault, and writes nothing.

usage: recordc_test.py SOURCE_ROOT
"""

import os
import subprocess
import sys
import tempfile
import unittest

ROOT = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "..")
QCOMMON = os.path.join(ROOT, "tn_velkor", "qcommon", "qcommon.asn")

# (members of a record T, the error's words)
REFUSED = [
    ("a [0] IMPLICIT OCTET STRING", "a tag is used only on an OPTIONAL member"),
    ("a OCTET STRING OPTIONAL", "T.a: an OPTIONAL member needs its tag [n] IMPLICIT"),
    ("a [0] EXPLICIT OCTET STRING OPTIONAL", "T.a: only IMPLICIT tags are used"),
    ("a [0] IMPLICIT OCTET STRING OPTIONAL, b [0] IMPLICIT BOOLEAN OPTIONAL", "T.b: tag [0] used twice"),
    ("a SEQUENCE { b BOOLEAN }", "a nested SEQUENCE or SEQUENCE OF has no name"),
    ("a Missing", "Missing is neither defined nor imported"),
    ("a OCTET STRING DEFAULT", "DEFAULT is not used by our encoding"),
    ("a T", "T contains itself"),
]


def compile_text(text):
    folder = tempfile.mkdtemp(prefix="recordc_test.")
    path = os.path.join(folder, "m.asn")
    with open(path, "w") as out:
        out.write(text)
    done = subprocess.run([sys.executable, os.path.join(ROOT, "recordc", "recordc.py"), "--root", folder,
                           "--out", os.path.join(folder, "out"), path, "--with", QCOMMON],
                          capture_output=True, text=True)
    return done.returncode, done.stderr, os.path.exists(os.path.join(folder, "out"))


class Recordc(unittest.TestCase):
    def test_refused_texts(self):
        for members, words in REFUSED:
            with self.subTest(members=members):
                code, error, wrote = compile_text(
                    "M DEFINITIONS IMPLICIT TAGS ::= BEGIN\nT ::= SEQUENCE {\n  %s\n}\nEND\n" % members)
                self.assertEqual((code, wrote), (1, False))
                self.assertIn(words, error)
                self.assertTrue(error.startswith("recordc: "), error)
                self.assertIn("m.asn", error)

    def test_imports_and_order(self):
        code, error, wrote = compile_text(
            "M DEFINITIONS IMPLICIT TAGS ::= BEGIN\nIMPORTS QAsnUniResID FROM QCommon;\n"
            "L ::= SEQUENCE OF R\nR ::= SEQUENCE { id QAsnUniResID }\nEND\n")
        self.assertEqual((code, error, wrote), (0, "", True))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
