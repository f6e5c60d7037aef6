"""The C++ text of each kind of generated class: a record, a list, and a
value class of a name of its own (a type assignment of a universal type, an
ENUMERATED's names, a BIT STRING's named bits)."""


def c_string(text):
    return '"%s"' % text.replace("\\", "\\\\").replace('"', '\\"')


def record_class(name, type_name, members, lines, makers, choice=False, is_set=False, tags=None, deep=False):
    """members: the declaration lines; lines: the member lines; makers: the
    functions that give DEFAULT members their values; tags: the AsnTagging
    written on the type, or None."""
    base = "AsnRecord<%s, AsnChoice>" % name if choice else "AsnRecord<%s>" % name
    extra = "  static constexpr AsnStructure kStructure = AsnStructure::kSet;\n" if is_set else ""
    extra += "  static constexpr AsnTagging kTagging = %s;\n" % tags if tags else ""
    extra += "  static constexpr bool kDeep = true;\n" if deep else ""
    return (
        "class {n} final : public {b} {{\n"
        " public:\n"
        "  static constexpr char kClassName[] = {t};\n"
        "{extra}\n"
        "{members}\n"
        "  {n}() {{ Constructor(*this); }}\n"
        "  {n}(const {n}& other) : AsnRecord() {{ CopyConstructor(*this, other); }}\n"
        "  ~{n}() override {{ Destructor(*this); }}\n"
        "  {n}& operator=(const {n}& other) {{\n"
        "    Assign(*this, other);\n"
        "    return *this;\n"
        "  }}\n\n"
        " private:\n"
        "  friend class {b};\n"
        "{makers}"
        "  // One line per member; the encoder's lines inline to the member's own code.\n"
        "  template <class Lines>\n"
        "  [[gnu::always_inline]] static void DescribeMembers(Lines&{param}) {{\n"
        "{lines}"
        "  }}\n"
        "}};\n").format(n=name, b=base, t=c_string(type_name), extra=extra, members="".join(members),
                        makers="".join(makers), lines="".join(lines),
                        param=" lines" if lines else "")


def list_class(name, type_name, element, qualified_name, set_of=False, tags=None):
    """A SEQUENCE OF or SET OF; tags: the AsnTagging written on its type, or None."""
    base = "AsnSetOf" if set_of else "AsnSeqOf"
    base += "<%s, %s>" % (element, name) if tags else "<%s>" % element
    extra = "  static constexpr AsnTagging kTagging = %s;\n" % tags if tags else ""
    return (
        "class {n} final : public {b} {{\n"
        " public:\n"
        "  static constexpr char kTypeName[] = {t};\n"
        "  // The name its reflection description carries.\n"
        "  static constexpr char kQualifiedName[] = \"{q}\";\n"
        "{extra}\n"
        "  {n}() = default;\n"
        "  {n}(const {n}&) = default;\n"
        "  {n}& operator=(const {n}&) = default;\n\n"
        "  AsnType* Clone() const override {{ return new {n}(*this); }}\n"
        "  const char* typeName() const override {{ return kTypeName; }}\n"
        "}};\n").format(n=name, t=c_string(type_name), b=base, q=qualified_name, extra=extra)


def value_class(name, type_name, base, tags=None, names=None, extensible=None):
    """A class of its own over a runtime value class. tags: the AsnTagging
    written on its type, or None; names: an ENUMERATED's (number, identifier)
    with `extensible`, or a BIT STRING's (bit, name)."""
    extra = "  static constexpr AsnTagging kTagging = %s;\n" % tags if tags else ""
    if names is not None and base == "AsnEnumerated":
        # A new value holds the first identifier: 0 may be none of them.
        extra += ("  %s() { Set(%d); }\n" % (name, names[0][0]) +
                 "  const AsnEnumeratedName* Names(std::size_t& count) const override {\n"
                 "    static const AsnEnumeratedName kNames[] = {%s};\n"
                 "    count = %d;\n"
                 "    return kNames;\n"
                 "  }\n"
                 "  bool Extensible() const override { return %s; }\n") % (
            ", ".join("{%d, %s}" % (number, c_string(text)) for number, text in names), len(names),
            "true" if extensible else "false")
    elif names is not None:
        extra += ("  const AsnNamedBit* NamedBits(std::size_t& count) const override {\n"
                 "    static const AsnNamedBit kBits[] = {%s};\n"
                 "    count = %d;\n"
                 "    return kBits;\n"
                 "  }\n") % (", ".join("{%d, %s}" % (bit, c_string(text)) for bit, text in names), len(names))
    return (
        "class {n} final : public {b} {{\n"
        " public:\n"
        "  static constexpr char kTypeName[] = {t};\n\n"
        "{extra}"
        "  AsnType* Clone() const override {{ return new {n}(*this); }}\n"
        "  const char* typeName() const override {{ return kTypeName; }}\n"
        "}};\n").format(n=name, t=c_string(type_name), b="AsnTaggedValue<%s, %s>" % (name, base) if tags else base,
                        extra=extra)
