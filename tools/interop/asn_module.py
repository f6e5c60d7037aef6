"""Builds pyasn1 types from the ASN.1 module texts of the project (*.asn, read
by the record compiler's front end, recordc/asn_parser.py and
asn_resolver.py), so that an implementation independent of ours encodes and
decodes the records as the texts state.
"""

import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "recordc"))
from asn_errors import AsnModuleError  # noqa: E402,F401
from asn_parser import parse  # noqa: E402,F401
from asn_resolver import Modules  # noqa: E402
from cpp_kinds import number  # noqa: E402

try:
    from pyasn1.type import char, namedtype, namedval, tag, univ, useful
    TAG_CLASSES = {"UNIVERSAL": tag.tagClassUniversal, "APPLICATION": tag.tagClassApplication,
                   "CONTEXT": tag.tagClassContext, "PRIVATE": tag.tagClassPrivate}
except ImportError:  # the caller reports that pyasn1 is missing
    char = namedtype = namedval = tag = univ = useful = TAG_CLASSES = None


def _simple_kinds():
    """pyasn1's class of each built-in type without named items; the time
    types pyasn1 lacks as VisibleString under their own universal tag."""
    kinds = {"NULL": univ.Null, "OBJECT IDENTIFIER": univ.ObjectIdentifier, "RELATIVE-OID": univ.RelativeOID,
             "REAL": univ.Real, "ANY": univ.Any, "UTF8String": char.UTF8String,
             "NumericString": char.NumericString, "PrintableString": char.PrintableString,
             "TeletexString": char.TeletexString, "T61String": char.TeletexString,
             "VideotexString": char.VideotexString, "IA5String": char.IA5String,
             "GraphicString": char.GraphicString, "VisibleString": char.VisibleString,
             "ISO646String": char.VisibleString, "GeneralString": char.GeneralString,
             "UniversalString": char.UniversalString, "BMPString": char.BMPString,
             "ObjectDescriptor": useful.ObjectDescriptor, "UTCTime": useful.UTCTime,
             "GeneralizedTime": useful.GeneralizedTime}
    for name, universal in (("DATE", 31), ("TIME-OF-DAY", 32), ("DATE-TIME", 33), ("DURATION", 34), ("TIME", 14)):
        kinds[name] = (lambda n: lambda: char.VisibleString().subtype(
            implicitTag=tag.Tag(tag.tagClassUniversal, tag.tagFormatSimple, n)))(universal)
    return kinds


def module_files(root):
    """Every *.asn file under tn_velkor/ and tn_qmodules/ of the source tree."""
    files = []
    for folder in ("tn_velkor", "tn_qmodules"):
        for directory, _, names in os.walk(os.path.join(root, folder)):
            files.extend(os.path.join(directory, name) for name in names if name.endswith(".asn"))
    return sorted(files)


class Registry(Modules):
    """The modules of several texts, with pyasn1 types built on demand."""

    # pyasn1 has no type that holds itself: one is unrolled this many levels
    # deep, below which it is an open value.
    UNROLLED = 8

    def __init__(self, modules):
        Modules.__init__(self, modules)
        self._schemas = {}
        self._building = {}  # (module, type) -> how many of its builds are open

    def definitions(self, type_name):
        """(module, Type) for every module that defines the type."""
        return [(module, assignment.type) for module, assignment in Modules.definitions(self, type_name)]

    def schema(self, module, type_name):
        """The pyasn1 type of a type assignment."""
        key = (module.name, type_name)
        if key in self._schemas:
            return self._schemas[key]
        open_builds = self._building.get(key, 0)
        if open_builds >= self.UNROLLED:
            return univ.Any()
        self._building[key] = open_builds + 1
        try:
            built = self.build(module, module.types[type_name].type)
        finally:
            self._building[key] = open_builds
        if open_builds == 0:
            self._schemas[key] = built
        return built

    def build(self, module, node):
        """The pyasn1 type of a Type written in `module`."""
        schema = self.untagged(module, node)
        for written in reversed(node.tags):
            cls = TAG_CLASSES[written.cls]
            default = "EXPLICIT" if module.tag_default == "EXPLICIT" else "IMPLICIT"
            outer = schema.tagSet[-1] if len(schema.tagSet) else None
            if (written.mode or default) == "IMPLICIT" and outer is not None:
                schema = schema.subtype(implicitTag=tag.Tag(cls, outer.tagFormat, written.number))
            else:  # EXPLICIT, or on an untagged CHOICE or open value, which have no tag to replace
                schema = schema.subtype(explicitTag=tag.Tag(cls, tag.tagFormatConstructed, written.number))
        return schema

    def untagged(self, module, node):
        if node.kind == "OCTET STRING":
            return univ.OctetString()
        if node.kind == "BOOLEAN":
            return univ.Boolean()
        if node.kind == "INTEGER":  # bounds left out: both sides' samples ignore them alike
            return univ.Integer()
        if node.kind == "ENUMERATED":
            return univ.Enumerated(namedValues=namedval.NamedValues(*[(i.name, i.number) for i in node.items]))
        if node.kind == "BIT STRING":
            named = [(name, number(value)) for name, value in getattr(node, "named_numbers", None) or []]
            return univ.BitString(namedValues=namedval.NamedValues(*named)) if named else univ.BitString()
        if node.kind in _simple_kinds():
            return _simple_kinds()[node.kind]()
        if node.kind in ("SEQUENCE OF", "SET OF"):
            kind = univ.SequenceOf if node.kind == "SEQUENCE OF" else univ.SetOf
            return kind(componentType=self.build(module, node.element))
        if node.kind in ("SEQUENCE", "SET", "CHOICE"):
            members = [self.member(module, member, node.kind == "CHOICE") for member in node.components]
            kind = {"SEQUENCE": univ.Sequence, "SET": univ.Set, "CHOICE": univ.Choice}[node.kind]
            return kind(componentType=namedtype.NamedTypes(*members))
        if node.kind == "reference":
            return self.schema(node.target.module, node.name)
        raise AsnModuleError("%s:%d: %s is not used" % (module.path, node.line, node.kind))

    def member(self, module, member, alternative):
        """A member's named type: an extension addition may be missing, as an
        optional member; a DEFAULT of a number or truth value is pyasn1's
        default, any other DEFAULT taken as optional."""
        schema = self.build(module, member.type)
        if alternative:
            return namedtype.NamedType(member.name, schema)
        if member.default is not None:
            shape = member.type.resolved()
            value = member.default
            while value.kind == "reference" and getattr(value, "resolved", None) is not None:
                value = value.resolved
            if shape.kind == "BOOLEAN" and value.kind == "boolean":
                return namedtype.DefaultedNamedType(member.name, schema.clone(value.value))
            if shape.kind == "INTEGER" and number(value) is not None:
                return namedtype.DefaultedNamedType(member.name, schema.clone(number(value)))
        if member.optional or member.extension or member.default is not None:
            return namedtype.OptionalNamedType(member.name, schema)
        return namedtype.NamedType(member.name, schema)
