"""The tags a generated line or class writes (the runtime's AsnTagging).

The resolver gives every type its wire tags, outermost first (asn_tags.py).
A C++ class carries some of them on its own: a runtime value class its
universal tag, a generated class of a type assignment also the tags written
on the assignment (its kTagging). What a member line or a class writes is
the difference: the wire tags around the class's own, EXPLICIT each, and an
IMPLICIT tag where the outermost of the class's own is replaced.

  own [UNIVERSAL 2], wire [1]E [UNIVERSAL 2]  ->  Explicit(kContext, 1)
  own [UNIVERSAL 4], wire [APPLICATION 3]     ->  Implicit(kApplication, 3)
  own (a CHOICE: none), wire [0]E              ->  Explicit(kContext, 0)
"""

from asn_tags import UNIVERSAL_TAGS

CLASS_NAMES = {"UNIVERSAL": "kUniversal", "APPLICATION": "kApplication", "CONTEXT": "kContext",
               "PRIVATE": "kPrivate"}


def bare_tags(kind):
    """The wire tags of a built-in type with no tag written on it: none for a
    CHOICE or an open value, else its universal tag."""
    if kind in ("CHOICE", "ANY"):
        return []
    return [("UNIVERSAL", UNIVERSAL_TAGS[kind], False)]


def written_tags(wire, own):
    """[(class, number, explicit)] to write, outermost first, so that a class
    carrying `own` travels with `wire`."""
    extra = len(wire) - len(own)
    assert extra >= 0 and wire[extra + 1:] == own[1:], (wire, own)
    tags = [(cls, number, True) for cls, number, _ in wire[:extra]]
    if own and wire[extra][:2] != own[0][:2]:
        tags.append((wire[extra][0], wire[extra][1], False))
    return tags


def tagging(wire, own):
    """The C++ AsnTagging expression of written_tags, or None when there is
    nothing to write."""
    tags = written_tags(wire, own)
    if not tags:
        return None
    text = "AsnTagging"
    for index, (cls, number, explicit) in enumerate(tags):
        text += "%s%s(AsnTagClass::%s, %d)" % ("::" if index == 0 else ".Then", "Explicit" if explicit else "Implicit",
                                               CLASS_NAMES[cls], number)
    return text


def is_context_implicit(wire, own):
    """Whether the tags to write are one [n] IMPLICIT of the context class,
    the form a line writes with its number alone."""
    tags = written_tags(wire, own)
    return len(tags) == 1 and tags[0][0] == "CONTEXT" and not tags[0][2]
