#!/usr/bin/env python3
"""`velkor encode` without --jer or --readable: every golden document of both
JSON forms either encodes to the bytes of its own form, or is refused as
ambiguous with the first ambiguous member and both flags; none encodes to other
bytes. A list given as a stream is judged the same way.

usage: encode_either_form.py VELKOR MODULE_LIBRARY GOLDEN_DIR
"""

import json
import subprocess
import sys
from pathlib import Path

VELKOR, MODULE, GOLDEN = sys.argv[1:4]
AMBIGUOUS = "reads as hex digits in JER and as text in the readable form"
FLAGS = "give --jer for JER or --readable for the readable form"


def encode(type_name, document, *flags):
    result = subprocess.run([VELKOR, "--module", MODULE, "encode", type_name, "--hex", *flags],
                            input=document.encode(), capture_output=True, timeout=60)
    return result.returncode, result.stdout.decode().strip(), result.stderr.decode()


def golden_rows():
    for path in sorted(Path(GOLDEN).glob("*.golden")):
        for line in path.read_text().splitlines():
            if line.strip() and not line.startswith("#"):
                type_name, ber, document, _ = (cell.strip() for cell in line.split(" | "))
                yield path.name, type_name, ber.replace(" ", "").lower(), document


def main():
    failures, encoded, refused = [], 0, 0
    for name, type_name, ber, document in golden_rows():
        code, out, err = encode(type_name, document)
        if code == 0 and out == ber:
            encoded += 1
        elif code != 0 and AMBIGUOUS in err and FLAGS in err and err.count("\n") == 1:
            refused += 1
        else:
            failures.append("%s %s %s: exit %d, %r %r (expected %s)" % (name, type_name, document, code, out, err, ber))
    # Both outcomes occur, so neither half of the check is empty.
    if encoded == 0 or refused == 0:
        failures.append("encoded %d, refused %d: expected some of each" % (encoded, refused))

    for line in Path(__file__).with_name("either_form.golden").read_text().splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        type_name, document, flags, want_code, want = line.split(" | ")
        code, out, err = encode(type_name, document.replace("\\n", "\n"), *json.loads(flags))
        if code != int(want_code) or (want not in err if code else out != want):
            failures.append("%s %s %s: exit %d, %r %r (expected %s)" % (type_name, document, flags, code, out, err, want))

    for failure in failures:
        print(failure)
    print("%d golden documents encoded, %d refused as ambiguous, %d failures" % (encoded, refused, len(failures)))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
