#!/usr/bin/env python3
"""Interoperability of our records with pyasn1, an ASN.1 implementation
independent of ours, whose types are built from the project's module texts
(*.asn under asn/ and platform/qmodules/).

For every type of our catalogue (interop_peer list):
  - the module texts must define it, with the members we register (names,
    order, optional members tagged [n] with their registration number n, and
    matching kinds);
  - pyasn1 builds the deterministic sample value that interop_peer documents,
    with all optional members ("full") and with none ("minimal"); its DER
    encoding must equal our encoding exactly;
  - pyasn1 decodes our encoding back to that value (same DER octets);
  - we decode pyasn1's encodings, DER and BER with indefinite lengths and
    segmented octet strings, and re-encode them to our exact bytes.

A catalogue type without a module text fails the test: every record and list
needs its .asn text. Exit status 0 pass, 1 fail, 77 skipped (no pyasn1).

usage: interop_test.py PEER SOURCE_ROOT
"""

import os
import subprocess
import sys

SKIP = 77

try:
    from pyasn1.codec.ber import decoder as ber_decoder
    from pyasn1.codec.ber import encoder as ber_encoder
    from pyasn1.codec.der import encoder as der_encoder
    from pyasn1.type import univ
except ImportError:
    print("SKIP: pyasn1 is not installed for %s (Debian package python3-pyasn1)" % sys.executable)
    sys.exit(SKIP)

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import asn_module  # noqa: E402


# ---- the sample value (the same rules as interop_peer.cpp) -----------------------


def sample_integer(text, k):
    seed = (sum((i + 1) * octet for i, octet in enumerate(text.encode())) + 7919 * k) % 2**32
    h = seed * 2654435761 % 2**32
    signed = h - 2**32 if h >= 2**31 else h
    return signed >> (h % 29)


def sample_text(text, k):
    return text if k == 0 else "%s#%d" % (text, k)


def sample(schema, text, k, full):
    if isinstance(schema, univ.Sequence):
        value = schema.clone()
        for member in schema.componentType.namedTypes:
            if member.isOptional and not full:
                continue
            value.setComponentByName(member.name, sample(member.asn1Object, member.name, k, full))
        return value
    if isinstance(schema, univ.SequenceOf):
        value = schema.clone()
        for index in range(2):
            value.setComponentByPosition(index, sample(schema.componentType, text, index, full))
        return value
    if isinstance(schema, univ.Boolean):  # before Integer: BOOLEAN derives from it in pyasn1
        return schema.clone(True)
    if isinstance(schema, univ.Integer):
        return schema.clone(sample_integer(text, k))
    if isinstance(schema, univ.OctetString):
        return schema.clone(sample_text(text, k).encode())
    raise TypeError("no sample for %r" % schema)


# ---- our side ----------------------------------------------------------------------


class Peer(object):
    def __init__(self, path):
        self.path = path

    def run(self, *arguments):
        done = subprocess.run([self.path] + list(arguments), stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              universal_newlines=True)
        if done.returncode != 0:
            raise PeerError("interop_peer %s: %s" % (" ".join(a[:40] for a in arguments), done.stderr.strip()))
        return done.stdout

    def catalogue(self):
        return [line.split() for line in self.run("list").splitlines()]


class PeerError(Exception):
    pass


# ---- the checks --------------------------------------------------------------------

OUR_KINDS = {"octets": "octets", "int32": "integer", "int64": "integer", "boolean": "boolean", "record": "record",
             "list": "list"}


ELEMENT_KINDS = {"AsnOcts": "octets", "AsnTinyInt": "integer", "AsnInt": "integer", "AsnBool": "boolean"}


def check_members(registry, module, node, described, problems, type_name):
    """Compares the members we register with the text's SEQUENCE."""
    if node.kind != "sequence":
        problems.append("%s: the text's type is not a SEQUENCE" % type_name)
        return
    ours = [line.split() for line in described.splitlines()]
    theirs = [m[0] for m in node.members]
    if [m[0] for m in ours] != theirs:
        problems.append("%s: members %s in the text, %s registered" % (type_name, theirs, [m[0] for m in ours]))
        return
    for (name, number, kind, our_target), (_, member_type, optional) in zip(ours, node.members):
        number = int(number)
        text_kind, tag_number, target = registry.shape(module, member_type)
        where = "%s.%s" % (type_name, name)
        if (number >= 0) != optional:
            problems.append("%s: %s in the text, registered with number %d" %
                            (where, "OPTIONAL" if optional else "mandatory", number))
        elif optional and tag_number != number:
            problems.append("%s: tagged [%s] in the text, registered with number %d" % (where, tag_number, number))
        elif not optional and tag_number is not None:
            problems.append("%s: a mandatory member carries its universal tag, not [%d]" % (where, tag_number))
        if OUR_KINDS.get(kind) != text_kind:
            problems.append("%s: %s in the text, %s registered" % (where, text_kind, kind))
        elif text_kind in ("record", "list") and target != our_target:
            problems.append("%s: %s in the text, %s registered" % (where, target, our_target))


def check_type(peer, registry, entry, problems):
    type_name, catalogue_module, element = entry
    definitions = registry.definitions(type_name)
    if len(definitions) > 1:
        definitions = [d for d in definitions if d[0].name.lower() == catalogue_module.lower()]
    if not definitions:
        problems.append("%s (module %s): no ASN.1 module text defines it; write it into the module's .asn file" %
                        (type_name, catalogue_module))
        return
    if len(definitions) > 1:
        problems.append("%s: defined by several module texts" % type_name)
        return
    module, node = definitions[0]

    described = peer.run("describe", type_name)
    if element == "-":
        check_members(registry, module, node, described, problems, type_name)
    elif node.kind != "sequenceof":
        problems.append("%s: a list here, not a SEQUENCE OF in %s" % (type_name, module.path))
    else:
        kind, _, target = registry.shape(module, node.inner)
        if element in ELEMENT_KINDS:
            matches = kind == ELEMENT_KINDS[element]
        else:
            matches = kind in ("record", "list") and target == element
        if not matches:
            problems.append("%s: SEQUENCE OF %s in the text, of %s here" % (type_name, target or kind, element))
    schema = registry.schema(module, type_name)

    for mode in ("full", "minimal"):
        where = "%s (%s)" % (type_name, mode)
        ours = bytes.fromhex(peer.run("sample", type_name, mode).strip())
        value = sample(schema, type_name, 0, mode == "full")
        theirs = der_encoder.encode(value)
        if theirs != ours:
            problems.append("%s: pyasn1 encodes\n    %s\n  we encode\n    %s" % (where, theirs.hex(), ours.hex()))
            continue
        decoded, rest = ber_decoder.decode(ours, asn1Spec=schema)
        # Compared through DER: pyasn1 does not compare values with absent members.
        if rest or der_encoder.encode(decoded) != ours:
            problems.append("%s: pyasn1 decodes our octets to another value" % where)
        indefinite = ber_encoder.encode(value, defMode=False, maxChunkSize=3)
        for form, octets in (("DER", theirs), ("BER, indefinite and segmented", indefinite)):
            again = bytes.fromhex(peer.run("decode", type_name, octets.hex()).strip())
            if again != ours:
                problems.append("%s: we decode pyasn1's %s\n    %s\n  and re-encode\n    %s" %
                                (where, form, octets.hex(), again.hex()))


def main():
    if len(sys.argv) != 3:
        print(__doc__)
        return 2
    peer = Peer(sys.argv[1])
    files = asn_module.module_files(sys.argv[2])
    problems = []
    try:
        registry = asn_module.Registry.load(files)
        catalogue = peer.catalogue()
        for entry in catalogue:
            try:
                check_type(peer, registry, entry, problems)
            except (asn_module.AsnModuleError, PeerError) as error:
                problems.append("%s: %s" % (entry[0], error))
            except Exception as error:  # pyasn1 refusing a value or octets
                problems.append("%s: %s: %s" % (entry[0], type(error).__name__, error))
    except (asn_module.AsnModuleError, PeerError) as error:
        problems.append(str(error))
        catalogue = []
    print("module texts: %s" % ", ".join(os.path.relpath(f, sys.argv[2]) for f in files))
    print("%d catalogue types checked against pyasn1 %s" % (len(catalogue), __import__("pyasn1").__version__))
    for problem in problems:
        print("FAIL " + problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
