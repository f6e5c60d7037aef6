"""The tokens of an ASN.1 module text.

"--" starts a comment that ends at the next "--" or at the end of the line;
"/*" starts one that ends at its matching "*/" (they nest). Inside either
kind, the other kind's marks mean nothing. The text of every "--" comment is
kept per line, for the descriptions the compiler copies into its output.
"""

import re

from asn_errors import AsnModuleError


class Token(object):
    __slots__ = ("kind", "text", "line")

    def __init__(self, kind, text, line):
        self.kind = kind  # "name", "number", "real", "cstring", "bstring", "hstring", "field", "punct"
        self.text = text
        self.line = line

    def __repr__(self):
        return "%s@%d" % (self.text, self.line)


# A number keeps a decimal point only where it cannot start "..": "1..2" is a
# range, while "1. ..2" and "1...2" read as the real 1. followed by "..".
_NUMBER = r"\d+(?:\.\d+|\.(?=\.\.(?!\.))|\.(?![.\d]))?(?:[eE][+-]?\d+)?"
_NAME = r"[A-Za-z][A-Za-z0-9]*(?:-[A-Za-z0-9]+)*"
_TOKEN = re.compile(
    r"(?P<number>%s)|(?P<name>%s)|(?P<field>&%s)|"
    r"(?P<punct>::=|\.\.\.|\.\.|\[\[|\]\]|[{}()\[\],;:|^<>!.@*\-])" % (_NUMBER, _NAME, _NAME))
_QUOTED = re.compile(r"'([^']*)'([BH])")


def tokenize(text, path, comments=None):
    """The tokens of a module text, comments removed. When given, `comments`
    receives line -> (the text of its "--" comments, whether the line holds
    nothing else)."""
    tokens = []
    code_lines = set()
    line, position, depth = 1, 0, 0
    length = len(text)

    def note_comment(number, body):
        previous = comments.get(number, ("", True))[0] if comments is not None else ""
        if comments is not None:
            comments[number] = ((previous + " " + body.strip()).strip(), True)

    while position < length:
        char = text[position]
        if char == "\n":
            line += 1
            position += 1
        elif char.isspace():
            position += 1
        elif text.startswith("/*", position):
            depth, start_line = 0, line
            while position < length:
                if text.startswith("/*", position):
                    depth += 1
                    position += 2
                elif text.startswith("*/", position):
                    depth -= 1
                    position += 2
                    if depth == 0:
                        break
                else:
                    line += text[position] == "\n"
                    position += 1
            if depth:
                raise AsnModuleError("%s:%d: the comment /* is never closed" % (path, start_line))
        elif text.startswith("--", position):
            end = text.find("\n", position + 2)
            end = length if end < 0 else end
            close = text.find("--", position + 2, end)
            stop = end if close < 0 else close
            note_comment(line, text[position + 2:stop])
            position = end if close < 0 else close + 2
        elif char == '"':
            start_line, end = line, position + 1
            while True:
                end = text.find('"', end)
                if end < 0:
                    raise AsnModuleError("%s:%d: the string is never closed" % (path, start_line))
                if text.startswith('""', end):
                    end += 2
                    continue
                break
            body = text[position + 1:end]
            line += body.count("\n")
            tokens.append(Token("cstring", body.replace('""', '"'), start_line))
            code_lines.add(start_line)
            position = end + 1
        elif char == "'":
            match = _QUOTED.match(text, position)
            if not match:
                raise AsnModuleError("%s:%d: a quoted string needs 'B or 'H after it" % (path, line))
            digits = re.sub(r"\s", "", match.group(1))
            kind = "bstring" if match.group(2) == "B" else "hstring"
            if not re.match(r"[01]*$" if kind == "bstring" else r"[0-9A-F]*$", digits):
                raise AsnModuleError("%s:%d: '%s'%s holds a digit it cannot" % (path, line, digits, match.group(2)))
            tokens.append(Token(kind, digits, line))
            code_lines.add(line)
            line += match.group(1).count("\n")
            position = match.end()
        else:
            match = _TOKEN.match(text, position)
            if not match:
                raise AsnModuleError("%s:%d: cannot read %r" % (path, line, text[position:position + 20]))
            kind = match.lastgroup
            if kind == "number" and not re.match(r"\d+$", match.group(0)):
                kind = "real"
            tokens.append(Token(kind, match.group(0), line))
            code_lines.add(line)
            position = match.end()
    if comments is not None:
        for number in code_lines & set(comments):
            comments[number] = (comments[number][0], False)
    return tokens
