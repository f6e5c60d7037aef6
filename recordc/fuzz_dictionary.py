#!/usr/bin/env python3
"""Writes a libFuzzer dictionary: a hand-written one, followed by the member
names of every module text, quoted as JSON keys ("\\"strFDN\\""), so that the
dictionary of a fuzz target that reads record JSON follows the texts.

usage: fuzz_dictionary.py OUT HAND_WRITTEN.dict MODULE.asn ...
"""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from asn_errors import AsnModuleError  # noqa: E402
from asn_resolver import Modules  # noqa: E402


def main(argv):
    if len(argv) < 3:
        print(__doc__, file=sys.stderr)
        return 2
    out, hand_written, texts = argv[0], argv[1], argv[2:]
    try:
        modules = Modules.load(texts)
    except (AsnModuleError, OSError) as error:
        print("fuzz_dictionary: %s" % error, file=sys.stderr)
        return 1
    names = sorted({member.name for module in modules.modules.values() for assignment in module.types.values()
                    for member in getattr(assignment.type, "components", None) or []})
    with open(hand_written) as source:
        text = source.read()
    with open(out + ".tmp", "w") as dictionary:
        dictionary.write(text.rstrip("\n") + "\n# member names of the module texts\n")
        dictionary.writelines('"\\"%s\\""\n' % name for name in names)
    os.replace(out + ".tmp", out)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
