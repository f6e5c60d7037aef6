"""What the record generator compiles, checked on the resolved model before
anything is written, so that a module outside it is refused with one line
naming the file, the line and the construct.

Every type a BER module writes compiles: SEQUENCE, SET and CHOICE (with
OPTIONAL and DEFAULT members, extension markers and addition groups), SEQUENCE
OF and SET OF, every universal type the runtime has a value class for (see
cpp_kinds.py), references to type assignments, tags of every class, IMPLICIT
and EXPLICIT, on members, list elements and type assignments, under any tag
default. Constraints are accepted; an INTEGER's bounds choose its class.

Refused here: the types no BER interface module uses and the runtime has no
class for (EXTERNAL, EMBEDDED PDV, CHARACTER STRING), and a SEQUENCE member
that may be left out followed by one with the same tag. Refused where the code
is written: a tag on a list element held in a class the record codec knows
by its exact class (recordc.py), a DEFAULT value of a form it cannot write
(cpp_defaults.py), a type that contains itself (recordc.py).
"""

from asn_errors import refuse
from asn_tags import wire_tags

REFUSED_KINDS = ("EXTERNAL", "EMBEDDED PDV", "CHARACTER STRING")


class Subset(object):
    def __init__(self, module):
        self.module = module

    def check(self):
        for assignment in self.module.types.values():
            self.visit(assignment.type)

    def visit(self, node):
        if node.kind in REFUSED_KINDS:
            refuse(self.module.path, node.line, "%s is not supported yet" % node.kind)
        if node.kind == "SEQUENCE":
            self.distinct_tags(node)
        for member in getattr(node, "components", []):
            self.visit(member.type)
        if node.kind in ("SEQUENCE OF", "SET OF"):
            self.visit(node.element)

    def distinct_tags(self, node):
        """A member that may be left out (OPTIONAL, DEFAULT, an extension
        addition) and a member after it with the same tag cannot be told apart
        on the wire: the module is refused rather than read one way."""
        may_be_absent = []
        for member in node.components:
            tags = wire_tags(member.type, self.module)
            tag = tags[0][:2] if tags else None
            for other in may_be_absent:
                if tag is not None and tag == other[1]:
                    refuse(self.module.path, member.line, "%s and %s have the same tag: a decoder cannot tell them "
                           "apart" % (other[0], member.name))
            if member.optional or member.default is not None or member.extension:
                may_be_absent.append((member.name, tag))
            else:
                may_be_absent = []

