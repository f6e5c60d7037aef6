#!/usr/bin/env python3
"""The record compiler's front end reads every module of a corpus of public
ASN.1 texts (corpus/, see the origin line atop each): each text parses and
resolves with the texts it imports, except those that need what is not built
yet (information object classes, parameterized types) or whose imports no
text of the corpus defines, which are refused with the one line below. It
prints how many of them the code generator then compiles fully.

usage: corpus_test.py
"""

import glob
import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "recordc"))
from asn_errors import AsnModuleError  # noqa: E402
from asn_parser import parse  # noqa: E402
from asn_resolver import Modules  # noqa: E402
from recordc import Compiler  # noqa: E402

CORPUS = os.path.join(HERE, "corpus")
COMPILED = 36  # texts the code generator compiles fully: may only grow
IO = "needs information object classes, not supported yet"
PARAMETERIZED = "needs parameterized types, not supported yet"
REFUSED = {
    "c_source/c_source.asn": "394: AA{...} " + PARAMETERIZED,
    "rust_source/rust_source.asn": "391: AA{...} " + PARAMETERIZED,
    "parameterization.asn": "15: A{...} " + PARAMETERIZED,
    "x683.asn": "21: SIGNED{...} " + PARAMETERIZED,
    "ietf/rfc2986.asn": "34: SubjectPublicKeyInfo{...} " + PARAMETERIZED,
    "information_object.asn": "7: CLASS " + IO,
    "x680.asn": "492: CLASS " + IO,
    "ietf/rfc3447.asn": "104: CLASS " + IO,
    # Their imports: CMS 1997 is not in the corpus, PKCS-10 is refused above.
    "ietf/rfc3161.asn": "22: imports ContentInfo from CryptographicMessageSyntax, which no text defines",
    "ietf/rfc4210.asn": "34: imports CertificationRequest from PKCS-10, which no text defines",
}


def read(path):
    with open(os.path.join(CORPUS, path)) as text:
        return parse(text.read(), path)


class Corpus(unittest.TestCase):
    def test_every_text(self):
        paths = sorted(os.path.relpath(p, CORPUS) for p in glob.glob(os.path.join(CORPUS, "**", "*.asn"),
                                                                       recursive=True))
        self.assertEqual(len(paths), 48)
        parsed, outcome, generator, compiled = {}, {}, {}, []
        for path in paths:
            try:
                parsed[path] = read(path)
            except AsnModuleError as error:
                outcome[path] = str(error)
        # Where an imported module is found: the first text (in path order) that defines it.
        defining = {}
        for path, modules in parsed.items():
            for module in modules:
                defining.setdefault(module.name, path)
        for path, modules in parsed.items():
            wanted, names = list(modules), {m.name for m in modules}
            pending = [source for m in modules for source in m.imports.values()]
            while pending:
                name = pending.pop()
                if name in names or name not in defining:
                    continue
                names.add(name)
                imported = [m for m in read(defining[name]) if m.name == name]
                wanted += imported
                pending += [source for m in imported for source in m.imports.values()]
            try:
                resolved = Modules(wanted)
                outcome[path] = None
            except AsnModuleError as error:
                outcome[path] = str(error)
                continue
            try:
                for module in modules:
                    Compiler(resolved, module, [CORPUS]).compile()
                compiled.append(path)
            except AsnModuleError as error:
                generator[path] = str(error)
        resolved = sum(1 for error in outcome.values() if error is None)
        print("corpus: %d of %d texts parse, %d of them resolve with their imports; %d refused" %
              (len(parsed), len(paths), resolved, len(paths) - resolved))
        print("corpus: %d of the %d compile fully to C++ (%s); the first refusal of each other text:\n  %s" %
              (len(compiled), resolved, ", ".join(sorted(compiled)), "\n  ".join(sorted(generator.values()))))
        self.assertGreaterEqual(len(compiled), COMPILED)
        self.assertEqual({path: error for path, error in outcome.items() if error is not None},
                         {path: "%s:%s" % (path, message) for path, message in REFUSED.items()})


if __name__ == "__main__":
    unittest.main()
