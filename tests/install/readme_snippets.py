#!/usr/bin/env python3
"""Writes each ```cpp block of README.md and of every docs/*.md beside it as a
C++ source that compiles the block as written: its #include lines at the top,
the rest as the body of a function. Usage: readme_snippets.py README.md OUTDIR
(prints the files written, one per line)."""
import glob
import os
import re
import sys


def main(readme, outdir):
    root = os.path.dirname(os.path.abspath(readme))
    pages = [readme] + sorted(glob.glob(os.path.join(root, "docs", "*.md")))
    os.makedirs(outdir, exist_ok=True)
    written = 0
    for page in pages:
        stem = os.path.splitext(os.path.basename(page))[0].replace("-", "_")
        blocks = re.findall(r"^```cpp\n(.*?)^```", open(page, encoding="utf-8").read(), flags=re.S | re.M)
        for index, block in enumerate(blocks):
            lines = block.splitlines()
            includes = [line for line in lines if line.startswith("#include")]
            body = [line for line in lines if not line.startswith("#include")]
            path = os.path.join(outdir, "snippet_%s_%d.cpp" % (stem, index))
            with open(path, "w", encoding="utf-8") as out:
                out.write("// %s, C++ block %d\n" % (os.path.relpath(page, root), index))
                out.write("\n".join(includes + ["", "void Snippet() {"] + body + ["}", ""]))
            print(path)
            written += 1
    if not written:
        sys.exit("readme_snippets: no C++ snippet in " + ", ".join(pages))


if __name__ == "__main__":
    main(*sys.argv[1:])
