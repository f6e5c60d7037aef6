"""Reads ASN.1 module texts into the model of asn_model.py.

What is not built yet is refused with one line: information object classes
(CLASS, &fields, TYPE-IDENTIFIER, table constraints) and parameterized
assignments and references. A text that uses them is refused before it is
parsed, so that the message names what is missing rather than a fault that
follows from it.
"""

from asn_constraints import ConstraintReader
from asn_errors import AsnModuleError, refuse
from asn_lexer import tokenize
from asn_model import Component, Constraint, EnumItem, Module, Tag, Type, TypeAssignment, Value, ValueAssignment
from asn_words import (CHARACTER_STRINGS, INFORMATION_OBJECTS, RESERVED, SIMPLE_TYPES, SPECIAL_REALS,  # noqa: F401
                       TWO_WORD_TYPES, is_lower, is_upper)

IO_MESSAGE = "%s needs information object classes, not supported yet"
PARAMETERIZED_MESSAGE = "%s needs parameterized types, not supported yet"


def refuse_unsupported(tokens, path):
    """Refuses a text that needs information objects or parameterization, at
    its first such construct."""
    for index, token in enumerate(tokens):
        if token.kind == "field" or token.text in INFORMATION_OBJECTS or token.text == "@":
            refuse(path, token.line, IO_MESSAGE % ("{@...}" if token.text == "@" else token.text))
        if token.kind == "name" and token.text not in RESERVED and index + 1 < len(tokens) and \
                tokens[index + 1].text == "{":
            depth, end = 0, index + 1
            while end < len(tokens):
                depth += {"{": 1, "}": -1}.get(tokens[end].text, 0)
                if depth == 0:
                    break
                end += 1
            if end + 1 < len(tokens) and tokens[end + 1].text == "::=":
                refuse(path, token.line, PARAMETERIZED_MESSAGE % (token.text + "{...}"))


class Parser(ConstraintReader):
    def __init__(self, tokens, path, comments=None, lines=()):
        self.tokens = tokens
        self.path = path
        self.comments = comments or {}
        self.lines = list(lines)
        self.position = 0

    # ---- tokens ------------------------------------------------------------

    def peek(self, offset=0):
        index = self.position + offset
        return self.tokens[index] if index < len(self.tokens) else None

    def kind_at(self, offset=0):
        token = self.peek(offset)
        return token.kind if token is not None else None

    def text_at(self, offset=0):
        token = self.peek(offset)
        return token.text if token is not None else None

    def at(self, *texts):
        token = self.peek()
        return token is not None and token.text in texts and token.kind in ("name", "punct")

    def line(self):
        if not self.tokens:
            return 1
        return self.tokens[min(self.position, len(self.tokens) - 1)].line

    def fail(self, what):
        token = self.peek()
        refuse(self.path, self.line(), "%s (at %s)" % (what, repr(token.text) if token else "the end"))

    def take(self, expected=None):
        token = self.peek()
        if token is None:
            self.fail("the text ends early" + (", expected %r" % expected if expected else ""))
        if expected is not None and (token.text != expected or token.kind not in ("name", "punct")):
            self.fail("expected %r" % expected)
        self.position += 1
        return token

    def take_if(self, text):
        if self.at(text):
            return self.take()
        return None

    def name(self, upper):
        token = self.peek()
        if not (is_upper(token) if upper else is_lower(token)) or token.text in RESERVED:
            self.fail("expected a %s" % ("type or module name" if upper else "member or value name"))
        return self.take().text

    def number(self):
        negative = self.take_if("-") is not None
        token = self.peek()
        if token is None or token.kind != "number":
            self.fail("expected a number")
        self.take()
        return -int(token.text) if negative else int(token.text)

    def braced(self):
        """The tokens between a { and its }, both taken."""
        self.take("{")
        start, depth = self.position, 1
        while depth:
            token = self.take()
            depth += {"{": 1, "}": -1}.get(token.text, 0) if token.kind == "punct" else 0
        return self.tokens[start:self.position - 1]

    # ---- comments -----------------------------------------------------------

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

    # ---- modules ------------------------------------------------------------

    def modules(self):
        result = []
        while self.peek() is not None:
            result.append(self.module())
        return result

    def module(self):
        first_line = self.line()
        module = Module(self.name(True), self.path, first_line)
        module.comment = self.comment_above(first_line)
        module.source = self.lines
        if self.at("{"):
            module.oid = Value("braced", self.line(), tokens=self.braced())
        if self.peek() is not None and self.peek().kind == "cstring":
            self.take()  # the module's IRI
        self.take("DEFINITIONS")
        if is_upper(self.peek()) and self.peek(1) is not None and self.peek(1).text == "INSTRUCTIONS":
            self.take()
            self.take()
        if self.at("EXPLICIT", "IMPLICIT", "AUTOMATIC"):
            module.tag_default = self.take().text
            self.take("TAGS")
        if self.take_if("EXTENSIBILITY"):
            self.take("IMPLIED")
            module.extensibility_implied = True
        self.take("::=")
        self.take("BEGIN")
        if self.take_if("EXPORTS"):
            if self.take_if("ALL"):
                pass
            else:
                module.exports = self.symbols(";")
            self.take(";")
        if self.take_if("IMPORTS"):
            self.imports(module)
        while not self.at("END"):
            self.assignment(module)
        self.take("END")
        return module

    def symbols(self, *ends):
        names = []
        while not self.at(*ends):
            token = self.take()
            if token.kind != "name":
                self.fail("expected a name")
            if self.at("{"):
                refuse(self.path, token.line, PARAMETERIZED_MESSAGE % (token.text + "{}"))
            names.append(token.text)
            if not self.take_if(","):
                break
        return names

    def imports(self, module):
        while not self.at(";"):
            line = self.line()
            names = self.symbols("FROM", ";")
            if not names:
                self.fail("expected the names an IMPORTS takes")
            self.take("FROM")
            source = self.name(True)
            oid = None
            if self.at("{"):
                oid = Value("braced", self.line(), tokens=self.braced())
            elif is_lower(self.peek()) and self.peek(1) is not None and self.peek(1).text not in (",", "FROM"):
                oid = Value("reference", self.line(), name=self.take().text, module=None)
            module.import_oids[source] = oid
            for imported in names:
                module.imports[imported] = source
                module.import_lines[imported] = line
        self.take(";")

    def assignment(self, module):
        line = self.line()
        if is_upper(self.peek()):
            name = self.name(True)
            if self.take_if("::="):
                comment = self.comment_above(line)
                node = self.type()
                node.end_line = self.tokens[self.position - 1].line
                module.add(TypeAssignment(name, node, line, comment), lambda at, what: refuse(self.path, at, what))
                for member in getattr(node, "components", []):
                    note = self.comment_on(member.line)
                    if note and member.name:
                        module.member_comments[(name, member.name)] = note
                return
            # A value set: the type, constrained to the set's values.
            node = self.type()
            self.take("::=")
            set_line = self.line()
            self.take("{")
            node.constraints = node.constraints + [self.element_set_specs("}", set_line)]
            self.take("}")
            node.end_line = self.tokens[self.position - 1].line
            module.add(TypeAssignment(name, node, line, self.comment_above(line)),
                       lambda at, what: refuse(self.path, at, what))
            return
        name = self.name(False)
        node = self.type()
        self.take("::=")
        module.add(ValueAssignment(name, node, self.value(), line), lambda at, what: refuse(self.path, at, what))

    # ---- types ------------------------------------------------------------

    def tag(self):
        line = self.line()
        self.take("[")
        cls = self.take().text if self.at("UNIVERSAL", "APPLICATION", "PRIVATE") else "CONTEXT"
        if is_lower(self.peek()):
            number = Value("reference", self.line(), name=self.take().text, module=None)
        else:
            number = self.number()
        self.take("]")
        mode = self.take().text if self.at("IMPLICIT", "EXPLICIT") else None
        return Tag(cls, number, mode, line)

    def type(self):
        line = self.line()
        tags = []
        while self.at("["):
            tags.append(self.tag())
        node = self.untagged_type()
        node.tags = tags
        node.line = line
        while self.at("("):
            node.constraints = node.constraints + [self.constraint()]
        return node

    def untagged_type(self):
        line = self.line()
        token = self.peek()
        if token is None or token.kind != "name":
            self.fail("expected a type")
        word = token.text
        pair = (word, self.peek(1).text if self.peek(1) else None)
        if pair in TWO_WORD_TYPES:
            self.take()
            self.take()
            return Type(" ".join(pair), line)
        if word in SIMPLE_TYPES:
            self.take()
            return Type(word, line)
        if word in ("INTEGER", "BIT"):
            self.take()
            if word == "BIT":
                self.take("STRING")
            named = self.named_numbers() if self.at("{") else []
            return Type("INTEGER" if word == "INTEGER" else "BIT STRING", line, named_numbers=named)
        if word == "ENUMERATED":
            self.take()
            return self.enumerated(line)
        if word == "ANY":
            self.take()
            defined_by = None
            if self.take_if("DEFINED"):
                self.take("BY")
                defined_by = self.name(False)
            return Type("ANY", line, defined_by=defined_by)
        if word in ("SEQUENCE", "SET"):
            self.take()
            if self.at("{"):
                return self.structure(word, line)
            constraints = []
            if self.at("SIZE"):
                size_line = self.line()
                constraints.append(Constraint("set", size_line, root=self.subtype_element(), extensible=False,
                                              additions=None, exception=None))
            elif self.at("("):
                constraints.append(self.constraint())
            self.take("OF")
            element_name = self.take().text if is_lower(self.peek()) else None
            return Type(word + " OF", line, element=self.type(), element_name=element_name,
                        constraints=constraints)
        if word == "CHOICE":
            self.take()
            return self.structure(word, line)
        if is_upper(token) and word not in RESERVED:
            self.take()
            module = None
            if self.at(".") and is_upper(self.peek(1)):
                self.take()
                module, word = word, self.take().text
            if self.at("{"):
                refuse(self.path, line, PARAMETERIZED_MESSAGE % (word + "{...}"))
            return Type("reference", line, name=word, module=module, target=None)
        self.fail("expected a type")

    def named_numbers(self):
        self.take("{")
        named = []
        while True:
            name = self.name(False)
            self.take("(")
            value = self.value()
            self.take(")")
            named.append((name, value))
            if not self.take_if(","):
                break
        self.take("}")
        return named

    def exception_spec(self):
        if not self.take_if("!"):
            return None
        if is_upper(self.peek()) or self.text_at() in RESERVED:
            node = self.type()
            self.take(":")
            return Value("typed", self.line(), type=node, value=self.value())
        return self.value()

    def enumerated(self, line):
        self.take("{")
        node = Type("ENUMERATED", line, items=[], extensible=False, exception=None)
        while not self.at("}"):
            if self.take_if("..."):
                if node.extensible:
                    self.fail("a second '...' in an ENUMERATED")
                node.extensible = True
                node.exception = self.exception_spec()
            else:
                item_line = self.line()
                name = self.name(False)
                number = None
                if self.take_if("("):
                    number = self.value()
                    self.take(")")
                node.items.append(EnumItem(name, number, item_line, node.extensible))
            if not self.take_if(","):
                break
        self.take("}")
        return node

    def structure(self, kind, line):
        """SEQUENCE, SET or CHOICE { ... }: components with their extension
        markers and addition groups."""
        self.take("{")
        node = Type(kind, line, components=[], extensible=False, exception=None)
        markers, group = 0, -1
        while not self.at("}"):
            if self.at("..."):
                marker_line = self.line()
                self.take()
                markers += 1
                if markers > 2:
                    refuse(self.path, marker_line, "a third '...' in a %s" % kind)
                if markers == 1:
                    node.extensible = True
                    node.exception = self.exception_spec()
            elif self.take_if("[["):
                if markers != 1:
                    self.fail("an addition group [[ ]] outside the extension additions")
                group += 1
                version = None
                if self.kind_at() == "number" and self.text_at(1) == ":":
                    version = self.number()
                    self.take(":")
                while True:
                    node.components.append(self.component(kind, markers == 1, group, version))
                    if not self.take_if(","):
                        break
                self.take("]]")
            else:
                node.components.append(self.component(kind, markers == 1, None, None))
                node.components[-1].after_extensions = markers == 2
            if not self.take_if(","):
                break
        self.take("}")
        return node

    def component(self, kind, extension, group, version):
        line = self.line()
        if kind != "CHOICE" and self.take_if("COMPONENTS"):
            self.take("OF")
            return Component(None, None, line, extension=extension, group=group, version=version,
                             components_of=self.type())
        name = self.name(False)
        member = Component(name, self.type(), line, extension=extension, group=group, version=version)
        if kind != "CHOICE":
            if self.take_if("OPTIONAL"):
                member.optional = True
            elif self.take_if("DEFAULT"):
                member.default = self.value()
        return member

    # ---- values ---------------------------------------------------------------

    def value(self):
        line = self.line()
        token = self.peek()
        if token is None:
            self.fail("expected a value")
        if token.text == "{" and token.kind == "punct":
            return Value("braced", line, tokens=self.braced())
        if token.text == "-" and token.kind == "punct" or token.kind in ("number", "real"):
            negative = self.take_if("-") is not None
            token = self.take()
            if token.kind == "number":
                return Value("integer", line, value=-int(token.text) if negative else int(token.text))
            if token.kind == "real":
                number = float(token.text)
                return Value("real", line, value=-number if negative else number)
            self.fail("expected a number")
        self.take()
        if token.kind == "cstring":
            return Value("cstring", line, text=token.text)
        if token.kind == "bstring":
            return Value("bstring", line, bits=token.text)
        if token.kind == "hstring":
            return Value("hstring", line, digits=token.text)
        if token.kind == "name":
            if token.text in ("TRUE", "FALSE"):
                return Value("boolean", line, value=token.text == "TRUE")
            if token.text == "NULL":
                return Value("null", line)
            if token.text in SPECIAL_REALS:
                return Value("special", line, name=token.text)
            if token.text[0].islower() and token.text not in RESERVED:
                if self.take_if(":"):
                    return Value("choice", line, name=token.text, value=self.value())
                return Value("reference", line, name=token.text, module=None)
            if token.text[0].isupper() and self.at(".") and is_lower(self.peek(1)):
                self.take()
                return Value("reference", line, name=self.take().text, module=token.text)
        self.position -= 1
        self.fail("expected a value")


def parse(text, path="<text>"):
    """The modules of one text."""
    comments = {}
    tokens = tokenize(text, path, comments)
    refuse_unsupported(tokens, path)
    if not tokens:
        raise AsnModuleError("%s:1: the text holds no module" % path)
    return Parser(tokens, path, comments, text.splitlines()).modules()


def value_parser(tokens, path):
    """A parser of the tokens of a braced value, for the resolver."""
    return Parser(tokens, path)


