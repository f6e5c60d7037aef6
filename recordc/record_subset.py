"""What the record generator compiles today, checked on the resolved model
before anything is written, so that a module outside it is refused with one
line naming the file, the line and the construct:

  TypeName ::= SEQUENCE { member Type [OPTIONAL], ... }   (no extension marker)
  TypeName ::= SEQUENCE OF Type
  member types: OCTET STRING, BOOLEAN, INTEGER [(lower..upper)], a reference
  to such a SEQUENCE or SEQUENCE OF; an OPTIONAL member is [n] IMPLICIT T,
  a mandatory one carries no tag.
"""

from asn_errors import refuse
from asn_model import Value

MEMBER_KINDS = ("OCTET STRING", "BOOLEAN", "INTEGER", "reference")


def integer_bounds(node):
    """(lower, upper) of an INTEGER constrained to one literal range, None
    when unconstrained; False when its constraint is anything else."""
    if not node.constraints:
        return None
    if len(node.constraints) != 1:
        return False
    spec = node.constraints[0]
    root = spec.root
    if spec.extensible or spec.exception is not None or root is None or root.kind != "range" or \
            root.lower_open or root.upper_open:
        return False
    if not all(isinstance(b, Value) and b.kind == "integer" for b in (root.lower, root.upper)):
        return False
    return root.lower.value, root.upper.value


class Subset(object):
    def __init__(self, module):
        self.module = module

    def refuse(self, line, what):
        refuse(self.module.path, line, what)

    def check(self):
        if self.module.tag_default == "AUTOMATIC":
            self.refuse(self.module.line, "AUTOMATIC TAGS are not supported yet")
        for name, assignment in self.module.types.items():
            node = assignment.type
            if node.tags:
                self.refuse(node.tags[0].line, "%s: a tag on a type assignment is not supported yet" % name)
            if node.kind == "SEQUENCE":
                self.sequence(name, node)
            elif node.kind == "SEQUENCE OF":
                if node.constraints:
                    self.refuse(node.line, "%s: a constraint on a SEQUENCE OF is not supported yet" % name)
                if node.element.tags:
                    self.refuse(node.element.line, "a tag is used only on an OPTIONAL member")
                self.member_type(node.element)
            else:
                self.refuse(node.line, "%s is not supported yet" % ("a type assignment of " + node.kind
                                                                    if node.kind in MEMBER_KINDS else node.kind))

    def sequence(self, name, node):
        if node.constraints:
            self.refuse(node.line, "%s: a constraint on a SEQUENCE is not supported yet" % name)
        if node.extensible:
            self.refuse(node.line, "%s: an extensible SEQUENCE (...) is not supported yet" % name)
        numbers = set()
        for member in node.components:
            where = "%s.%s" % (name, member.name)
            if member.default is not None:
                self.refuse(member.line, "%s: DEFAULT is not supported yet" % where)
            tags = member.type.tags
            if member.optional:
                if not tags:
                    self.refuse(member.type.line, "%s: an OPTIONAL member needs its tag [n] IMPLICIT" % where)
                tag = tags[0]
                if len(tags) > 1 or tag.cls != "CONTEXT":
                    self.refuse(tag.line, "%s: only one tag [n] of the context class is used" % where)
                if (tag.mode or self.module.tag_default) != "IMPLICIT":
                    self.refuse(tag.line, "%s: only IMPLICIT tags are used" % where)
                if tag.number in numbers:
                    self.refuse(tag.line, "%s: tag [%d] used twice" % (where, tag.number))
                numbers.add(tag.number)
            elif tags:
                self.refuse(member.type.line, "a tag is used only on an OPTIONAL member")
            self.member_type(member.type)

    def member_type(self, node):
        """A member's type or a list's element, its own tags aside."""
        if node.kind in ("SEQUENCE", "SEQUENCE OF"):
            self.refuse(node.line, "a nested SEQUENCE or SEQUENCE OF has no name: give it a type assignment")
        if node.kind not in MEMBER_KINDS:
            self.refuse(node.line, "%s is not supported yet" % node.kind)
        if node.kind == "INTEGER":
            if node.named_numbers:
                self.refuse(node.line, "INTEGER with named numbers is not supported yet")
            if integer_bounds(node) is False:
                self.refuse(node.line, "this constraint on an INTEGER is not supported yet")
        elif node.constraints:
            self.refuse(node.line, "a constraint on %s is not supported yet" % (
                node.name if node.kind == "reference" else node.kind))
        if node.kind == "reference":
            target = node.target.type
            if target.kind not in ("SEQUENCE", "SEQUENCE OF") or target.tags:
                self.refuse(node.line, "%s is not a SEQUENCE or SEQUENCE OF; only those can be referred to" %
                            node.name)
