"""What the record generator compiles today, checked on the resolved model
before anything is written, so that a module outside it is refused with one
line naming the file, the line and the construct:

  TypeName ::= SEQUENCE { member Type [OPTIONAL], ... }   (no extension marker)
  TypeName ::= SEQUENCE OF Type
  TypeName ::= Type        (any member type below: a class of that name)
  a SEQUENCE or SEQUENCE OF written inside another type (a class named
  <Outer>_<member>, see cpp_names.py)
  member types: every universal type the runtime has a class for (BOOLEAN,
  INTEGER, OCTET STRING, NULL, ENUMERATED, BIT STRING, REAL, OBJECT
  IDENTIFIER, RELATIVE-OID, the character strings and times, ANY) and a
  reference to a type assignment of the above; an OPTIONAL member is
  [n] IMPLICIT T ([n] EXPLICIT for an open ANY, which has no tag of its own),
  a mandatory one carries no tag. Constraints are accepted and not checked;
  an INTEGER's bounds choose its class (cpp_kinds.py).

What is refused for now sits in one place each: REFUSED_KINDS for the types
(CHOICE, SET, ...), and below the member tags (only [n] of the context
class, IMPLICIT), DEFAULT and extension markers.
"""

from asn_errors import refuse
from cpp_kinds import CLASSES

REFUSED_KINDS = ("CHOICE", "SET", "SET OF", "EXTERNAL", "EMBEDDED PDV", "CHARACTER STRING")
MEMBER_KINDS = tuple(CLASSES) + ("INTEGER", "reference")


class Subset(object):
    def __init__(self, module):
        self.module = module

    def refuse(self, line, what):
        refuse(self.module.path, line, what)

    def check(self):
        if self.module.tag_default == "AUTOMATIC":
            self.refuse(self.module.line, "AUTOMATIC TAGS are not supported yet")
        for name, assignment in self.module.types.items():
            self.assignment(name, assignment.type)

    def assignment(self, name, node):
        if node.tags:
            self.refuse(node.tags[0].line, "%s: a tag on a type assignment is not supported yet" % name)
        self.member_type(node, name)
        if node.kind == "reference":
            # Foo ::= Bar makes a class of Bar's shape: Bar's record or list must compile here too.
            target = node.target
            shape = node.resolved()
            if shape.kind in ("SEQUENCE", "SEQUENCE OF") and target.module is not self.module:
                Subset(target.module).assignment(target.name, target.type)

    def sequence(self, name, node):
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
                self.member_tag(where, member.type, tags)
                if tags[0].number in numbers:
                    self.refuse(tags[0].line, "%s: tag [%d] used twice" % (where, tags[0].number))
                numbers.add(tags[0].number)
            elif tags:
                self.refuse(member.type.line, "a tag is used only on an OPTIONAL member")
            self.member_type(member.type, where)

    def member_tag(self, where, node, tags):
        """An optional member's one tag: [n] of the context class, IMPLICIT;
        an open value (ANY) has no tag to replace, so its [n] is EXPLICIT."""
        tag = tags[0]
        if len(tags) > 1 or tag.cls != "CONTEXT":
            self.refuse(tag.line, "%s: only one tag [n] of the context class is used" % where)
        if node.resolved().kind == "ANY":
            return
        if (tag.mode or self.module.tag_default) != "IMPLICIT":
            self.refuse(tag.line, "%s: only IMPLICIT tags are used" % where)

    def member_type(self, node, where):
        """A type assignment's type, a member's or a list's element, its own
        tags aside; `where` names it in messages (T, T.member)."""
        if node.kind == "SEQUENCE":
            self.sequence(where, node)
        elif node.kind == "SEQUENCE OF":
            if node.element.tags:
                self.refuse(node.element.line, "a tag is used only on an OPTIONAL member")
            self.member_type(node.element, where + " element")
        elif node.kind in REFUSED_KINDS or node.kind not in MEMBER_KINDS:
            self.refuse(node.line, "%s is not supported yet" % node.kind)
        elif node.kind == "reference":
            self.reference(node)

    def reference(self, node):
        walk = node
        while walk.kind == "reference":
            target = walk.target
            if target.type.tags:
                self.refuse(node.line, "%s: a tag on a type assignment is not supported yet" % target.name)
            walk = target.type
        if walk.kind in REFUSED_KINDS or (walk.kind not in MEMBER_KINDS and walk.kind not in ("SEQUENCE",
                                                                                               "SEQUENCE OF")):
            self.refuse(node.line, "%s is a %s, not supported yet" % (node.name, walk.kind))
