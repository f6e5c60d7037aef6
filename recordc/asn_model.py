"""The model of ASN.1 modules the parser builds and the resolver completes.

The parser fills in what the text writes; the resolver (asn_resolver.py) then
adds what a code generator needs without re-reading the notation:

  Type.target       the TypeAssignment a reference stands for (a reference
                    of a reference keeps its own target: follow `resolved()`)
  Type.wire_tags    the tags of its encoding, outermost first, each
                    (class, number, explicit); empty for an untagged CHOICE
                    or ANY, whose tag is the alternative's (asn_tags.py)
  Component.type    under AUTOMATIC TAGS a copy carrying its automatic tag
  Type.components   COMPONENTS OF replaced by the components it names
  Type.extensible   also when the module says EXTENSIBILITY IMPLIED
  Value.resolved    a value reference's value; braced values read per type
"""


class Node(object):
    """A piece of the model: `kind` names what it is, the remaining fields
    depend on the kind (see the classes below). `line` is where it starts."""

    def __init__(self, kind, line, **fields):
        self.kind = kind
        self.line = line
        self.__dict__.update(fields)

    def __repr__(self):
        fields = ", ".join("%s=%r" % item for item in sorted(self.__dict__.items()) if item[0] not in ("kind", "line"))
        return "%s(%s)" % (self.kind, fields)


class Tag(object):
    """[cls number] as written; mode "IMPLICIT", "EXPLICIT" or None (the
    module's default). number is an int, or a value reference until resolved."""

    CLASSES = ("UNIVERSAL", "APPLICATION", "CONTEXT", "PRIVATE")

    def __init__(self, cls, number, mode, line, automatic=False):
        self.cls = cls
        self.number = number
        self.mode = mode
        self.line = line
        self.automatic = automatic  # added by AUTOMATIC TAGS, not written

    def __repr__(self):
        return "[%s%s]%s" % ("" if self.cls == "CONTEXT" else self.cls + " ", self.number,
                             " " + self.mode if self.mode else "")


class Type(Node):
    """kind: a built-in type's name as written ("INTEGER", "OCTET STRING",
    "SEQUENCE OF", "UTF8String", ...), "ANY" or "reference".

    Every type: tags [Tag], constraints [Constraint], wire_tags.
    INTEGER, BIT STRING: named_numbers [(name, Value)].
    ENUMERATED: items [EnumItem], extensible, exception.
    SEQUENCE, SET, CHOICE: components [Component], extensible, exception.
    SEQUENCE OF, SET OF: element (Type), element_name (or None).
    ANY: defined_by (a member name or None).
    reference: name, module (written Module.Type, or None), target.
    """

    def __init__(self, kind, line, **fields):
        defaults = dict(tags=[], constraints=[], wire_tags=None, end_line=line)
        defaults.update(fields)
        Node.__init__(self, kind, line, **defaults)

    def copy(self):
        """A twin with lists of its own, its wire tags not yet computed."""
        twin = Type.__new__(Type)
        twin.__dict__.update(self.__dict__)
        twin.tags = list(self.tags)
        twin.constraints = list(self.constraints)
        twin.wire_tags = None
        return twin

    def resolved(self):
        """The type a chain of references ends at (tags and constraints of the
        references themselves are on them, not on this)."""
        node = self
        while node.kind == "reference":
            node = node.target.type
        return node


class Component(object):
    """A member of a SEQUENCE or SET, or an alternative of a CHOICE.

    extension: an extension addition (after the first "..."); group: the
    index of its addition group [[ ]] among the additions (None outside one),
    version: the group's "n:" if written. components_of: the Type of a
    COMPONENTS OF until the resolver expands it (then name is set).
    after_extensions: a root component written after the second "..."."""

    def __init__(self, name, type_, line, optional=False, default=None, extension=False, group=None,
                 version=None, components_of=None):
        self.name = name
        self.type = type_
        self.line = line
        self.optional = optional
        self.default = default
        self.extension = extension
        self.group = group
        self.version = version
        self.components_of = components_of
        self.after_extensions = False

    def __repr__(self):
        return "%s %r%s" % (self.name, self.type, " OPTIONAL" if self.optional else "")


class EnumItem(object):
    """An enumeration: name, number (None until the resolver numbers it),
    extension (after the "...")."""

    def __init__(self, name, number, line, extension=False):
        self.name = name
        self.number = number
        self.line = line
        self.extension = extension


class Constraint(Node):
    """kind and fields:

    set: root (Constraint), extensible, additions (Constraint or None),
         exception (Value or None): one parenthesised constraint
    union, intersection: items [Constraint]
    except: base, excluded (Constraint); base None for ALL EXCEPT
    value: value (Value)
    range: lower, upper (Value, or the strings "MIN"/"MAX"), lower_open, upper_open
    type: type (Type): type inclusion, also a bare type reference
    size, from, with_component: inner (Constraint)
    pattern: value (Value)
    with_components: partial (the "...,"), items [(name, Constraint or None,
         "PRESENT", "ABSENT", "OPTIONAL" or None)]
    containing: type (Type or None), encoded_by (Value or None)
    user: CONSTRAINED BY, kept only as written text (text)
    """


class Value(Node):
    """kind and fields:

    integer, real: value (int, float); real also mantissa, base, exponent
    special: name (PLUS-INFINITY, MINUS-INFINITY, NOT-A-NUMBER)
    boolean: value; null
    cstring: text; bstring: bits ("0101"); hstring: digits ("AF")
    reference: name, module (or None); resolved
    choice: name, value
    braced: tokens (as written, read by the resolver once the type is known)
    oid: components [(name or None, number or None, Value reference or None)]
    named_bits: names; sequence: members [(name, Value)]; list: items [Value]
    chars: items [Value] (strings, quadruples, references of a string value)
    """


class TypeAssignment(object):
    def __init__(self, name, type_, line, comment=None):
        self.name = name
        self.type = type_
        self.line = line
        self.comment = comment or []  # the comment lines right above it
        self.module = None  # set when added to a Module


class ValueAssignment(object):
    def __init__(self, name, type_, value, line):
        self.name = name
        self.type = type_
        self.value = value
        self.line = line
        self.module = None


class Module(object):
    """One module of a text. tag_default: "EXPLICIT", "IMPLICIT" or
    "AUTOMATIC"; exports: None for all, else the names; imports: name ->
    module name, import_oids: module name -> its Value or None."""

    def __init__(self, name, path, line):
        self.name = name
        self.path = path
        self.line = line
        self.oid = None
        self.tag_default = "EXPLICIT"
        self.extensibility_implied = False
        self.exports = None
        self.imports = {}
        self.import_oids = {}
        self.import_lines = {}  # name -> the line of IMPORTS naming it
        self.types = {}  # name -> TypeAssignment, in the order of the text
        self.values = {}  # name -> ValueAssignment
        self.comment = []  # the lines of the comment above the module
        self.member_comments = {}  # (type name, member name) -> the comment on its line
        self.source = []  # the text's lines

    @property
    def implicit(self):
        return self.tag_default == "IMPLICIT"

    def add(self, assignment, refuse):
        if assignment.name in self.types or assignment.name in self.values:
            refuse(assignment.line, "%s defined twice" % assignment.name)
        assignment.module = self
        (self.types if isinstance(assignment, TypeAssignment) else self.values)[assignment.name] = assignment
