#!/usr/bin/env python3
"""Writes each ```cpp block of a Markdown file as a C++ source that compiles
the block as written: its #include lines at the top, the rest as the body of
a function. Usage: readme_snippets.py README.md OUTDIR (prints the files)."""
import os
import re
import sys


def main(readme, outdir):
    text = open(readme, encoding="utf-8").read()
    blocks = re.findall(r"^```cpp\n(.*?)^```", text, flags=re.S | re.M)
    if not blocks:
        sys.exit("readme_snippets: no C++ snippet in " + readme)
    os.makedirs(outdir, exist_ok=True)
    for index, block in enumerate(blocks):
        lines = block.splitlines()
        includes = [line for line in lines if line.startswith("#include")]
        body = [line for line in lines if not line.startswith("#include")]
        path = os.path.join(outdir, "snippet_%d.cpp" % index)
        with open(path, "w", encoding="utf-8") as out:
            out.write("\n".join(includes + ["", "void Snippet() {"] + body + ["}", ""]))
        print(path)


if __name__ == "__main__":
    main(*sys.argv[1:])
