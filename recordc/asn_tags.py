"""The tags a type is encoded with, and automatic tagging.

A type's wire tags are listed outermost first as (class, number, explicit):
an explicit tag wraps the encoding of the tags after it (constructed), the
last tag of a type that is not an untagged CHOICE or ANY does not. An IMPLICIT tag
replaces the outermost tag of the type it tags, an EXPLICIT one adds a tag
around it. A tag on an untagged CHOICE or ANY is always explicit: there is no
tag to replace.
"""

from asn_errors import refuse
from asn_model import Tag

UNIVERSAL_TAGS = {
    "BOOLEAN": 1, "INTEGER": 2, "BIT STRING": 3, "OCTET STRING": 4, "NULL": 5, "OBJECT IDENTIFIER": 6,
    "ObjectDescriptor": 7, "EXTERNAL": 8, "REAL": 9, "ENUMERATED": 10, "EMBEDDED PDV": 11, "UTF8String": 12,
    "RELATIVE-OID": 13, "TIME": 14, "SEQUENCE": 16, "SEQUENCE OF": 16, "SET": 17, "SET OF": 17,
    "NumericString": 18, "PrintableString": 19, "TeletexString": 20, "T61String": 20, "VideotexString": 21,
    "IA5String": 22, "UTCTime": 23, "GeneralizedTime": 24, "GraphicString": 25, "VisibleString": 26,
    "ISO646String": 26, "GeneralString": 27, "UniversalString": 28, "CHARACTER STRING": 29, "BMPString": 30,
    "DATE": 31, "TIME-OF-DAY": 32, "DATE-TIME": 33, "DURATION": 34,
}


def wire_tags(node, module, in_progress=None):
    """Computes (and keeps in node.wire_tags) the tags of a resolved type
    written in `module`."""
    if node.wire_tags is not None:
        return node.wire_tags
    in_progress = in_progress if in_progress is not None else set()
    if id(node) in in_progress:
        refuse(module.path, node.line, "the type is defined by itself")
    in_progress.add(id(node))
    if node.kind == "reference":
        target = node.target
        tags = list(wire_tags(target.type, target.module, in_progress))
    elif node.kind in ("CHOICE", "ANY"):
        tags = []
    else:
        tags = [("UNIVERSAL", UNIVERSAL_TAGS[node.kind], False)]
    for tag in reversed(node.tags):
        mode = tag.mode or ("EXPLICIT" if module.tag_default == "EXPLICIT" else "IMPLICIT")
        if not tags:
            if tag.mode == "IMPLICIT":
                refuse(module.path, tag.line, "an IMPLICIT tag on an untagged CHOICE or ANY")
            mode = "EXPLICIT"
        if mode == "IMPLICIT":
            tags = [(tag.cls, tag.number, tags[0][2])] + tags[1:]
        else:
            tags = [(tag.cls, tag.number, True)] + tags
    in_progress.discard(id(node))
    node.wire_tags = tags
    return tags


def apply_automatic_tags(node, written):
    """Tags the components of a SEQUENCE, SET or CHOICE [0], [1], ... (root
    components first, then the additions) when the module's default is
    AUTOMATIC TAGS and none of the components written in it (`written`,
    those not taken from COMPONENTS OF) is tagged. The tag goes on a copy of
    the component's type: a type taken from COMPONENTS OF stays untouched
    where it came from."""
    if any(component.type.tags for component in written):
        return
    ordered = [c for c in node.components if not c.extension] + [c for c in node.components if c.extension]
    for number, component in enumerate(ordered):
        component.type = component.type.copy()
        component.type.tags = [Tag("CONTEXT", number, None, component.line, automatic=True)] + component.type.tags
