"""The words of the ASN.1 notation the parser tells apart: the built-in
types, the reserved words, and how a type or module name (upper case) and a
member or value name (lower case) begin."""

CHARACTER_STRINGS = ("UTF8String", "NumericString", "PrintableString", "TeletexString", "T61String",
                     "VideotexString", "IA5String", "GraphicString", "VisibleString", "ISO646String",
                     "GeneralString", "UniversalString", "BMPString")
SIMPLE_TYPES = CHARACTER_STRINGS + (
    "BOOLEAN", "NULL", "REAL", "RELATIVE-OID", "UTCTime", "GeneralizedTime", "DATE", "TIME-OF-DAY", "DATE-TIME",
    "DURATION", "TIME", "ObjectDescriptor", "EXTERNAL")
TWO_WORD_TYPES = {("OBJECT", "IDENTIFIER"), ("OCTET", "STRING"), ("CHARACTER", "STRING"), ("EMBEDDED", "PDV")}
SPECIAL_REALS = ("PLUS-INFINITY", "MINUS-INFINITY", "NOT-A-NUMBER")
RESERVED = set(SIMPLE_TYPES) | {w for pair in TWO_WORD_TYPES for w in pair} | set(SPECIAL_REALS) | set(
    "ABSENT ALL ANY APPLICATION AUTOMATIC BEGIN BIT BY CHOICE COMPONENT COMPONENTS CONSTRAINED CONTAINING "
    "DEFAULT DEFINED DEFINITIONS ENCODED END ENUMERATED EXCEPT EXPLICIT EXPORTS EXTENSIBILITY FALSE FROM "
    "IMPLICIT IMPLIED IMPORTS INCLUDES INTEGER INTERSECTION MAX MIN OF OPTIONAL PATTERN PRESENT PRIVATE SEQUENCE "
    "SET SIZE TAGS TRUE UNION UNIQUE UNIVERSAL WITH".split())
INFORMATION_OBJECTS = ("CLASS", "TYPE-IDENTIFIER", "ABSTRACT-SYNTAX", "INSTANCE")


def is_upper(token):
    return token is not None and token.kind == "name" and token.text[0].isupper()


def is_lower(token):
    return token is not None and token.kind == "name" and token.text[0].islower()
