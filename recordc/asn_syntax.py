"""The syntax of our ASN.1 module texts (*.asn): a reader of the subset they use,
shared by the record compiler (recordc.py) and the interop test.

  Name DEFINITIONS [IMPLICIT TAGS | EXPLICIT TAGS] ::= BEGIN
    [IMPORTS TypeA, TypeB FROM OtherModule ... ;]
    TypeName ::= Type
    ...
  END

  Type ::= SEQUENCE { member Type [OPTIONAL], ... }
         | SEQUENCE OF Type
         | OCTET STRING | BOOLEAN | INTEGER [(lower..upper)]
         | [n] [IMPLICIT | EXPLICIT] Type     (tags of the context class only)
         | TypeName                           (also of another module)

Comments run from "--" to the end of the line (or the next "--"). The comment
lines right above a module or a type assignment are kept as its description,
and a comment after a member on its line as the member's. Anything else is
refused with AsnModuleError naming the file and the line.
"""

import os
import re


class AsnModuleError(Exception):
    pass


# ---- syntax -------------------------------------------------------------------

_TOKEN = re.compile(r"::=|\.\.|[{}(),;\[\]]|-?\d+|[A-Za-z][A-Za-z0-9-]*")


def _tokens(text, path, comments=None):
    """(token, line) pairs of a module text, comments removed. When given,
    `comments` receives line -> (comment text, whether the line holds only
    the comment)."""
    result = []
    for number, line in enumerate(text.splitlines(), 1):
        # "--" starts a comment that ends at the next "--" or the line's end.
        parts = line.split("--")
        code = " ".join(parts[0::2])
        if comments is not None and len(parts) > 1:
            comments[number] = (" ".join(part.strip() for part in parts[1::2]).strip(), not code.strip())
        position = 0
        while position < len(code):
            if code[position].isspace():
                position += 1
                continue
            match = _TOKEN.match(code, position)
            if not match:
                raise AsnModuleError("%s:%d: cannot read %r" % (path, number, code[position:position + 20]))
            result.append((match.group(0), number))
            position = match.end()
    return result


class Node(object):
    """A type as the text writes it.

    kind: "octets", "integer", "boolean", "sequence", "sequenceof", "ref",
    "tagged". sequence: members = [(name, Node, optional)]; sequenceof and
    tagged: inner = Node; tagged: number, implicit; integer: bounds or None;
    ref: name.
    """

    def __init__(self, kind, line, **fields):
        self.kind = kind
        self.line = line
        self.end_line = line
        self.__dict__.update(fields)


class Module(object):
    def __init__(self, name, path, implicit):
        self.name = name
        self.path = path
        self.implicit = implicit  # the tag default: IMPLICIT TAGS
        self.imports = {}  # type name -> module name
        self.types = {}  # type name -> Node, in the order of the text
        self.comment = []  # the lines of the comment above the module
        self.type_comments = {}  # type name -> the lines of the comment above it
        self.member_comments = {}  # (type name, member name) -> the comment on its line
        self.source = []  # the text's lines


class _Parser(object):
    def __init__(self, text, path):
        self.path = path
        self.comments = {}
        self.tokens = _tokens(text, path, self.comments)
        self.lines = text.splitlines()
        self.position = 0

    def comment_above(self, line):
        """The comment-only lines right above `line`, in order."""
        found = []
        line -= 1
        while line in self.comments and self.comments[line][1]:
            found.insert(0, self.comments[line][0])
            line -= 1
        return found

    def comment_on(self, line):
        entry = self.comments.get(line)
        return entry[0] if entry and not entry[1] else ""

    def peek(self, offset=0):
        index = self.position + offset
        return self.tokens[index][0] if index < len(self.tokens) else None

    def line(self):
        index = min(self.position, len(self.tokens) - 1)
        return self.tokens[index][1] if self.tokens else 0

    def fail(self, what):
        raise AsnModuleError("%s:%d: %s (at %r)" % (self.path, self.line(), what, self.peek()))

    def take(self, expected=None):
        token = self.peek()
        if token is None:
            self.fail("text ends early")
        if expected is not None and token != expected:
            self.fail("expected %r" % expected)
        self.position += 1
        return token

    def name(self, upper):
        token = self.peek()
        if token is None or not re.match(r"[A-Za-z]", token) or token[0].isupper() != upper:
            self.fail("expected a %s name" % ("type or module" if upper else "member"))
        return self.take()

    def modules(self):
        result = []
        while self.peek() is not None:
            result.append(self.module())
        return result

    def module(self):
        first_line = self.line()
        name = self.name(True)
        self.take("DEFINITIONS")
        implicit = False
        if self.peek() in ("IMPLICIT", "EXPLICIT") and self.peek(1) == "TAGS":
            implicit = self.take() == "IMPLICIT"
            self.take("TAGS")
        elif self.peek() == "AUTOMATIC":
            self.fail("AUTOMATIC TAGS are not used by our encoding")
        self.take("::=")
        self.take("BEGIN")
        module = Module(name, self.path, implicit)
        module.comment = self.comment_above(first_line)
        module.source = self.lines
        if self.peek() == "IMPORTS":
            self.take()
            names = []
            while self.peek() != ";":
                names.append(self.name(True))
                if self.peek() == ",":
                    self.take()
                elif self.peek() == "FROM":
                    self.take()
                    source = self.name(True)
                    for imported in names:
                        module.imports[imported] = source
                    names = []
            if names:
                self.fail("IMPORTS without FROM")
            self.take(";")
        while self.peek() != "END":
            type_name = self.name(True)
            line = self.line()
            self.take("::=")
            if type_name in module.types:
                raise AsnModuleError("%s:%d: %s defined twice" % (self.path, line, type_name))
            module.type_comments[type_name] = self.comment_above(line)
            node = self.type()
            node.end_line = self.tokens[self.position - 1][1]
            module.types[type_name] = node
            for member in getattr(node, "members", []):
                comment = self.comment_on(member[1].line)
                if comment:
                    module.member_comments[(type_name, member[0])] = comment
        self.take("END")
        return module

    def type(self):
        line = self.line()
        token = self.peek()
        if token == "[":
            self.take()
            if not re.match(r"\d+$", self.peek() or ""):
                self.fail("only tags [n] of the context class are used")
            number = int(self.take())
            self.take("]")
            implicit = None
            if self.peek() in ("IMPLICIT", "EXPLICIT"):
                implicit = self.take() == "IMPLICIT"
            return Node("tagged", line, number=number, implicit=implicit, inner=self.type())
        if token == "OCTET":
            self.take()
            self.take("STRING")
            return Node("octets", line)
        if token == "BOOLEAN":
            self.take()
            return Node("boolean", line)
        if token == "INTEGER":
            self.take()
            bounds = None
            if self.peek() == "(":
                self.take()
                lower = int(self.take())
                self.take("..")
                upper = int(self.take())
                self.take(")")
                bounds = (lower, upper)
            return Node("integer", line, bounds=bounds)
        if token == "SEQUENCE":
            self.take()
            if self.peek() == "OF":
                self.take()
                return Node("sequenceof", line, inner=self.type())
            self.take("{")
            members = []
            while self.peek() != "}":
                member = self.name(False)
                member_type = self.type()
                optional = False
                if self.peek() == "OPTIONAL":
                    self.take()
                    optional = True
                elif self.peek() == "DEFAULT":
                    self.fail("DEFAULT is not used by our encoding")
                if member in [m[0] for m in members]:
                    self.fail("member %s twice" % member)
                members.append((member, member_type, optional))
                if self.peek() == ",":
                    self.take()
                elif self.peek() != "}":
                    self.fail("expected ',' or '}'")
            self.take("}")
            return Node("sequence", line, members=members)
        if token is not None and token[0].isupper() and re.match(r"[A-Za-z][A-Za-z0-9-]*$", token):
            return Node("ref", line, name=self.take())
        self.fail("unknown type")


def parse(text, path="<text>"):
    """The modules of one text."""
    return _Parser(text, path).modules()


def module_files(root):
    """Every *.asn file under tn_velkor/ and tn_qmodules/ of the source tree."""
    files = []
    for folder in ("tn_velkor", "tn_qmodules"):
        for directory, _, names in os.walk(os.path.join(root, folder)):
            files.extend(os.path.join(directory, name) for name in names if name.endswith(".asn"))
    return sorted(files)


class Modules(object):
    """The modules of several texts, their references resolved."""

    def __init__(self, modules):
        self.modules = {}
        for module in modules:
            if module.name in self.modules:
                raise AsnModuleError("%s: module %s also in %s" % (module.path, module.name,
                                                                   self.modules[module.name].path))
            self.modules[module.name] = module

    @classmethod
    def load(cls, paths):
        modules = []
        for path in paths:
            with open(path) as text:
                modules.extend(parse(text.read(), path))
        return cls(modules)

    def definitions(self, type_name):
        """(module, Node) for every module that defines the type."""
        return [(m, m.types[type_name]) for m in self.modules.values() if type_name in m.types]

    def resolve(self, module, type_name):
        """(module, Node) that a reference from `module` stands for."""
        if type_name in module.types:
            return module, module.types[type_name]
        source = module.imports.get(type_name)
        if source is not None:
            if source not in self.modules:
                raise AsnModuleError("%s: imports %s from %s, which no text defines" % (module.path, type_name,
                                                                                         source))
            target = self.modules[source]
            if type_name not in target.types:
                raise AsnModuleError("%s: imports %s from %s, which does not define it" % (module.path, type_name,
                                                                                            source))
            return target, target.types[type_name]
        raise AsnModuleError("%s: %s is neither defined nor imported" % (module.path, type_name))

    def shape(self, module, node):
        """(kind, tag number or None, target) of a member's type as the text
        writes it: kind is "octets", "integer", "boolean", "record" or "list";
        target is the referenced type name for records and lists."""
        number = None
        while node.kind == "tagged":
            number = node.number if number is None else number
            node = node.inner
        target = None
        while node.kind == "ref":
            target = node.name
            module, node = self.resolve(module, node.name)
            if node.kind == "tagged":
                raise AsnModuleError("%s:%d: a tagged type behind a reference is not used" % (module.path,
                                                                                             node.line))
        kinds = {"octets": "octets", "integer": "integer", "boolean": "boolean", "sequence": "record",
                 "sequenceof": "list"}
        return kinds[node.kind], number, target
