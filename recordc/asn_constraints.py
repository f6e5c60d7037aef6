"""The constraint notation, read by the parser (asn_parser.Parser, which
provides the token methods and type() and value()): one parenthesised
constraint becomes a Constraint "set" (its root, the extension marker, the
additions), inside it unions bind looser than intersections, which bind
looser than EXCEPT."""

from asn_model import Constraint
from asn_words import RESERVED, SIMPLE_TYPES, TWO_WORD_TYPES, is_lower


class ConstraintReader(object):
    def constraint(self):
        line = self.line()
        self.take("(")
        spec = self.element_set_specs(")", line)
        spec.exception = self.exception_spec()
        self.take(")")
        return spec

    def element_set_specs(self, end, line):
        root = None if self.at("...") else self.element_set()
        extensible, additions = False, None
        if root is None or self.take_if(","):
            self.take("...")
            extensible = True
            if self.take_if(","):
                additions = self.element_set()
        return Constraint("set", line, root=root, extensible=extensible, additions=additions, exception=None)

    def element_set(self):
        line = self.line()
        if self.take_if("ALL"):
            self.take("EXCEPT")
            return Constraint("except", line, base=None, excluded=self.elements())
        return self.unions()

    def unions(self):
        line = self.line()
        items = [self.intersections()]
        while self.at("|", "UNION"):
            self.take()
            items.append(self.intersections())
        return items[0] if len(items) == 1 else Constraint("union", line, items=items)

    def intersections(self):
        line = self.line()
        items = [self.intersection_elements()]
        while self.at("^", "INTERSECTION"):
            self.take()
            items.append(self.intersection_elements())
        return items[0] if len(items) == 1 else Constraint("intersection", line, items=items)

    def intersection_elements(self):
        line = self.line()
        base = self.elements()
        if self.take_if("EXCEPT"):
            return Constraint("except", line, base=base, excluded=self.elements())
        return base

    def elements(self):
        if self.at("("):
            self.take()
            inner = self.element_set()
            self.take(")")
            return inner
        return self.subtype_element()

    def subtype_element(self):
        line = self.line()
        if self.take_if("SIZE"):
            return Constraint("size", line, inner=self.constraint())
        if self.take_if("FROM"):
            return Constraint("from", line, inner=self.constraint())
        if self.take_if("PATTERN"):
            return Constraint("pattern", line, value=self.value())
        if self.take_if("INCLUDES"):
            return Constraint("type", line, type=self.type())
        if self.at("WITH"):
            self.take()
            if self.take_if("COMPONENT"):
                return Constraint("with_component", line, inner=self.constraint())
            self.take("COMPONENTS")
            return self.with_components(line)
        if self.take_if("CONTAINING"):
            contained = self.type()
            encoded_by = None
            if self.take_if("ENCODED"):
                self.take("BY")
                encoded_by = self.value()
            return Constraint("containing", line, type=contained, encoded_by=encoded_by)
        if self.take_if("ENCODED"):
            self.take("BY")
            return Constraint("containing", line, type=None, encoded_by=self.value())
        if self.take_if("CONSTRAINED"):
            self.take("BY")
            tokens = self.braced()
            return Constraint("user", line, text=" ".join(token.text for token in tokens))
        token = self.peek()
        if token is not None and token.kind == "name" and token.text[0].isupper() and (
                token.text not in RESERVED or token.text in SIMPLE_TYPES or token.text in ("INTEGER", "BIT")
                or token.text in ("SEQUENCE", "SET", "CHOICE", "ENUMERATED")
                or (token.text, getattr(self.peek(1), "text", None)) in TWO_WORD_TYPES):
            if not (token.text[0].isupper() and self.peek(1) is not None and self.peek(1).text == "." and
                    is_lower(self.peek(2))):
                return Constraint("type", line, type=self.type())
        lower = self.bound("MIN")
        lower_open = self.take_if("<") is not None
        if not self.at(".."):
            if lower_open or lower == "MIN":
                self.fail("expected '..'")
            return Constraint("value", line, value=lower)
        self.take("..")
        upper_open = self.take_if("<") is not None
        upper = self.bound("MAX")
        return Constraint("range", line, lower=lower, upper=upper, lower_open=lower_open, upper_open=upper_open)

    def bound(self, word):
        if self.take_if(word):
            return word
        return self.value()

    def with_components(self, line):
        self.take("{")
        partial = False
        if self.take_if("..."):
            partial = True
            self.take(",")
        items = []
        while True:
            name = self.name(False)
            inner = self.constraint() if self.at("(") else None
            presence = self.take().text if self.at("PRESENT", "ABSENT", "OPTIONAL") else None
            items.append((name, inner, presence))
            if not self.take_if(","):
                break
        self.take("}")
        return Constraint("with_components", line, partial=partial, items=items)
