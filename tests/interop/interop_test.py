#!/usr/bin/env python3
"""Interoperability of our records with pyasn1, an ASN.1 implementation
independent of ours, whose types tools/interop/asn_module.py builds from the
module texts (*.asn under tn_velkor/ and tn_qmodules/). For every type of our
catalogue (interop_peer list):
  - exactly one module text defines it (a catalogue type without one fails);
  - pyasn1's DER encoding of interop_peer's sample value, with all optional
    members ("full", down to where a type that holds itself ends) and with
    none ("minimal"), equals ours, and pyasn1
    decodes our encoding back to that value;
  - we decode that DER rewritten in BER's other forms (indefinite lengths,
    segmented octet strings) and re-encode it to our exact bytes.
A type with a kind the sample rules do not cover (the universal kinds beyond
OCTET STRING, INTEGER and BOOLEAN) is checked from our sample alone: pyasn1
decodes our DER to a value whose DER is ours again. With MODULE_LIBRARY the
peer loads the test modules (tests/qprobe/*.asn, tests/structured/*.asn) too.
Exit status 0 pass, 1 fail, 77 skipped (no pyasn1).

usage: interop_test.py PEER SOURCE_ROOT [MODULE_LIBRARY]
"""

import os
import subprocess
import sys

try:
    import pyasn1
    from pyasn1.codec.ber import decoder as ber_decoder
    from pyasn1.codec.der import encoder as der_encoder
    from pyasn1.type import char, univ
except ImportError:
    print("SKIP: pyasn1 is not installed for %s (Debian package python3-pyasn1)" % sys.executable)
    sys.exit(77)

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "interop"))
import asn_module  # noqa: E402

PEER = None  # set in main()


def peer(*arguments):
    done = subprocess.run([PEER] + list(arguments), capture_output=True, text=True)
    if done.returncode != 0:
        raise RuntimeError("interop_peer %s: %s" % (" ".join(a[:40] for a in arguments), done.stderr.strip()))
    return done.stdout


# ---- the sample value (the same rules as interop_peer.cpp) -----------------------


def sample_integer(text, k):
    seed = (sum((i + 1) * octet for i, octet in enumerate(text.encode())) + 7919 * k) % 2**32
    h = seed * 2654435761 % 2**32
    signed = h - 2**32 if h >= 2**31 else h
    return signed >> (h % 29)


def indefinite_form(der):
    """The same value in BER's other forms: every constructed encoding with
    an indefinite length, every universal OCTET STRING in segments of three
    octets. (pyasn1's own indefinite form misplaces end-of-contents octets
    after an EXPLICIT tag.)"""
    out, at = bytearray(), 0
    while at < len(der):
        start = at
        at += 1
        if der[start] & 0x1F == 0x1F:
            while der[at] & 0x80:
                at += 1
            at += 1
        identifier = der[start:at]
        length = der[at]
        at += 1
        if length & 0x80:
            count, length = length & 0x7F, int.from_bytes(der[at:at + (length & 0x7F)], "big")
            at += count
        content = der[at:at + length]
        at += length
        if identifier[0] & 0x20:
            out += identifier + b"\x80" + indefinite_form(content) + b"\x00\x00"
        elif identifier == b"\x04" and length > 3:
            out += b"\x24\x80"
            for chunk in range(0, length, 3):
                piece = content[chunk:chunk + 3]
                out += b"\x04" + bytes([len(piece)]) + piece
            out += b"\x00\x00"
        else:
            out += der[start:at]
    return bytes(out)


def sample(schema, text, k, full, depth=0):
    # The kinds beyond OCTET STRING, INTEGER and BOOLEAN have no sample rules
    # here (pyasn1 derives some of them from those three).
    if isinstance(schema, (univ.Enumerated, univ.Null, univ.ObjectIdentifier, univ.RelativeOID, univ.Real,
                           univ.BitString, univ.Any, char.AbstractCharacterString)):
        raise TypeError("no sample rules for %s" % type(schema).__name__)
    if isinstance(schema, univ.Choice):  # before the records: a CHOICE derives from SET in pyasn1
        value = schema.clone()
        member = schema.componentType.namedTypes[-1 if full or depth >= 4 else 0]
        value.setComponentByName(member.name, sample(member.asn1Object, member.name, k, full, depth + 1))
        return value
    if isinstance(schema, univ.SequenceAndSetBase):
        value = schema.clone()
        for member in schema.componentType.namedTypes:
            if (full and depth + 1 < 4) or not member.isOptional:
                value.setComponentByName(member.name, sample(member.asn1Object, member.name, k, full, depth + 1))
        return value
    if isinstance(schema, univ.SequenceOfAndSetOfBase):
        value = schema.clone()
        for index in range(2):
            value.setComponentByPosition(index, sample(schema.componentType, text, index, full, depth + 1))
        return value
    if isinstance(schema, univ.Boolean):  # before Integer: BOOLEAN derives from it in pyasn1
        return schema.clone(True)
    if isinstance(schema, univ.Integer):
        return schema.clone(sample_integer(text, k))
    if isinstance(schema, univ.OctetString):
        return schema.clone((text if k == 0 else "%s#%d" % (text, k)).encode())
    raise TypeError("no sample for %r" % schema)


# ---- the checks --------------------------------------------------------------------


def check_type(registry, type_name, catalogue_module, problems):
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
    module = definitions[0][0]
    schema = registry.schema(module, type_name)
    for mode in ("full", "minimal"):
        where = "%s (%s)" % (type_name, mode)
        ours = bytes.fromhex(peer("sample", type_name, mode).strip())
        decoded, rest = ber_decoder.decode(ours, asn1Spec=schema)
        try:
            value = sample(schema, type_name, 0, mode == "full")
        except TypeError:  # a kind without sample rules: our value, as pyasn1 reads it
            value = decoded
        theirs = der_encoder.encode(value)
        if theirs != ours:
            problems.append("%s: pyasn1 encodes\n    %s\n  we encode\n    %s" % (where, theirs.hex(), ours.hex()))
            continue
        # Compared through DER: pyasn1 does not compare values with absent members.
        if rest or der_encoder.encode(decoded) != ours:
            problems.append("%s: pyasn1 decodes our octets to another value" % where)
        # pyasn1's DER is ours (above); in indefinite lengths and segments it must decode to it too.
        indefinite = indefinite_form(ours)
        again = bytes.fromhex(peer("decode", type_name, indefinite.hex()).strip())
        if again != ours:
            problems.append("%s: we decode pyasn1's BER\n    %s\n  and re-encode\n    %s" %
                            (where, indefinite.hex(), again.hex()))


def main():
    global PEER
    if len(sys.argv) not in (3, 4):
        print(__doc__)
        return 2
    PEER, root = sys.argv[1], sys.argv[2]
    files = asn_module.module_files(root)
    if len(sys.argv) == 4:
        os.environ["TN_INTEROP_MODULE"] = sys.argv[3]
        for folder in ("qprobe", "structured"):  # the texts of the test modules' library
            probe = os.path.join(root, "tests", folder)
            files += sorted(os.path.join(probe, name) for name in os.listdir(probe) if name.endswith(".asn"))
    problems = []
    catalogue = []
    try:
        registry = asn_module.Registry.load(files)
        catalogue = [line.split() for line in peer("list").splitlines()]
        if not catalogue:
            problems.append("interop_peer lists no catalogue types: the interface modules are not linked")
        for entry in catalogue:
            try:
                check_type(registry, entry[0], entry[1], problems)
            except Exception as error:  # a module text, the peer or pyasn1 refusing a value or octets
                problems.append("%s: %s: %s" % (entry[0], type(error).__name__, error))
    except (asn_module.AsnModuleError, RuntimeError) as error:
        problems.append(str(error))
    print("module texts: %s" % ", ".join(os.path.relpath(f, root) for f in files))
    print("%d catalogue types checked against pyasn1 %s" % (len(catalogue), pyasn1.__version__))
    for problem in problems:
        print("FAIL " + problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
