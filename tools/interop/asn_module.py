"""Builds pyasn1 types from the ASN.1 module texts of the project (*.asn, read
by recordc/asn_syntax.py), so that an implementation independent of ours
encodes and decodes the records as the texts state.
"""

import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "recordc"))
from asn_syntax import AsnModuleError, Modules, module_files, parse  # noqa: E402,F401

try:
    from pyasn1.type import constraint, namedtype, tag, univ
except ImportError:  # the caller reports that pyasn1 is missing
    constraint = namedtype = tag = univ = None


# ---- types ----------------------------------------------------------------------


class Registry(Modules):
    """The modules of several texts, with pyasn1 types built on demand."""

    def __init__(self, modules):
        Modules.__init__(self, modules)
        self._schemas = {}
        self._building = set()

    def schema(self, module, type_name):
        """The pyasn1 type of a type assignment."""
        key = (module.name, type_name)
        if key not in self._schemas:
            if key in self._building:
                raise AsnModuleError("%s: %s refers to itself" % (module.path, type_name))
            self._building.add(key)
            try:
                self._schemas[key] = self.build(module, module.types[type_name])
            finally:
                self._building.discard(key)
        return self._schemas[key]

    def build(self, module, node):
        """The pyasn1 type of a Node of `module`."""
        if node.kind == "octets":
            return univ.OctetString()
        if node.kind == "boolean":
            return univ.Boolean()
        if node.kind == "integer":
            if node.bounds is None:
                return univ.Integer()
            return univ.Integer().subtype(subtypeSpec=constraint.ValueRangeConstraint(*node.bounds))
        if node.kind == "sequenceof":
            return univ.SequenceOf(componentType=self.build(module, node.inner))
        if node.kind == "sequence":
            members = []
            for name, member_type, optional in node.members:
                kind = namedtype.OptionalNamedType if optional else namedtype.NamedType
                members.append(kind(name, self.build(module, member_type)))
            return univ.Sequence(componentType=namedtype.NamedTypes(*members))
        if node.kind == "ref":
            target, _ = self.resolve(module, node.name)
            return self.schema(target, node.name)
        if node.kind == "tagged":
            inner = self.build(module, node.inner)
            implicit = module.implicit if node.implicit is None else node.implicit
            if implicit:
                constructed = isinstance(inner, (univ.Sequence, univ.SequenceOf))
                form = tag.tagFormatConstructed if constructed else tag.tagFormatSimple
                return inner.subtype(implicitTag=tag.Tag(tag.tagClassContext, form, node.number))
            return inner.subtype(explicitTag=tag.Tag(tag.tagClassContext, tag.tagFormatConstructed, node.number))
        raise AsnModuleError("%s:%d: unknown type" % (module.path, node.line))
