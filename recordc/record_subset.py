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
class for (EXTERNAL, EMBEDDED PDV, CHARACTER STRING). Refused where the code
is written: a tag on a list element held in a class the record codec knows
by its exact class (recordc.py), a DEFAULT value of a form it cannot write
(cpp_defaults.py), a type that contains itself (recordc.py).
"""

from asn_errors import refuse

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
        for member in getattr(node, "components", []):
            self.visit(member.type)
        if node.kind in ("SEQUENCE OF", "SET OF"):
            self.visit(node.element)
