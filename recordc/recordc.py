#!/usr/bin/env python3
"""recordc: the record compiler. Reads one interface module's ASN.1 text and
writes the C++ of its records and lists, so that the text is the one place a
record's shape is written:

  <out>/<path>.h              every record class and list class of the module
                              (namespace: the module name in lower case), with
                              the header comments taken from the text
  <out>/<path>_types.cpp      the module's class code (explicit instantiations),
                              for the library that carries the module
  <out>/<path>_catalogue.cpp  the module's catalogue entries, made when the
                              library that holds them is loaded

<path> is the text's path below the source root without ".asn"
(tn_qmodules/qinventoryfiber/qinventoryfiber). The texts of imported modules
are named with --with; their headers are found by the same rule, below the
first --root that holds the text (a service's own source root, and the
installed package's folder of module texts, whose layout is the headers').

How the text maps to C++ (and to the wire, see the runtime's AsnSequence):
  OCTET STRING -> AsnOcts; BOOLEAN -> AsnBool;
  INTEGER whose range fits 32 bits -> AsnTinyInt, any other INTEGER -> AsnInt;
  a reference -> the record or list class of that name;
  TypeName ::= SEQUENCE { ... } -> a record class (AsnRecord);
  TypeName ::= SEQUENCE OF T -> a list class (AsnSeqOf<T>);
  member [n] IMPLICIT T OPTIONAL -> refl::MayNullPointer<T> registered with
  number n (its context tag). A mandatory member carries no tag of its own.

The texts are read by asn_parser.py into the model of asn_model.py and
completed by asn_resolver.py; record_subset.py checks that the module stays
within what is compiled today and refuses anything else with one line.

usage: recordc.py --root SOURCE_ROOT [--root ...] --out OUT_DIR MODULE.asn [--with OTHER.asn ...]
"""

import argparse
import os
import re
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from asn_errors import AsnModuleError  # noqa: E402
from asn_parser import parse  # noqa: E402
from asn_resolver import Modules  # noqa: E402
from record_subset import Subset, integer_bounds  # noqa: E402

INT32 = (-2**31, 2**31 - 1)
VALUE_CLASSES = {"OCTET STRING": "AsnOcts", "BOOLEAN": "AsnBool"}
VALUE_HEADERS = {"AsnOcts": "tn_platform/asn/asn_octs.h", "AsnBool": "tn_platform/asn/asn_bool.h",
                 "AsnTinyInt": "tn_platform/asn/asn_int.h", "AsnInt": "tn_platform/asn/asn_int.h"}


def namespace_of(module):
    """The module's C++ namespace: its name in lower case, unless a line
    "C++ namespace: NAME" of the comment above the module names another
    ("global" for the global namespace)."""
    for line in module.comment:
        match = re.match(r"C\+\+ namespace: (\w+)\.?$", line)
        if match:
            return "" if match.group(1) == "global" else match.group(1)
    return module.name.lower()


def qualified(namespace, name):
    return "%s::%s" % (namespace, name) if namespace else name


class Compiler(object):
    def __init__(self, modules, module, roots):
        self.modules = modules
        self.module = module
        self.roots = [os.path.abspath(root) for root in roots]
        self.headers = set()  # what the generated header includes

    def below_root(self, path):
        """`path` relative to the first root that holds it (to the first root
        when none does)."""
        path = os.path.abspath(path)
        holder = next((root for root in self.roots if os.path.commonpath([root, path]) == root), self.roots[0])
        return os.path.relpath(path, holder).replace(os.sep, "/")

    def header_of(self, module):
        return os.path.splitext(self.below_root(module.path))[0] + ".h"

    def value_class(self, node):
        """The C++ class of a type written in a member or as a list element
        (record_subset.py has checked it)."""
        if node.kind == "INTEGER":
            bounds = integer_bounds(node)
            fits = bounds is not None and INT32[0] <= bounds[0] and bounds[1] <= INT32[1]
            name = "AsnTinyInt" if fits else "AsnInt"
        elif node.kind == "reference":
            target = node.target.module
            if target is self.module:
                return node.name
            self.headers.add(self.header_of(target))
            return qualified(namespace_of(target), node.name)
        else:
            name = VALUE_CLASSES[node.kind]
        self.headers.add(VALUE_HEADERS[name])
        return name

    def element_name(self, cpp_class):
        return cpp_class.split("::")[-1]

    def member(self, member):
        """(declaration type, number) of one member."""
        value = self.value_class(member.type)
        if member.optional:
            self.headers.add("tn_platform/refl/may_null_pointer.h")
            return "refl::MayNullPointer<%s>" % value, member.type.tags[0].number
        return value, -1

    def order(self):
        """The module's types, each after the types of the module it uses."""
        done, result = set(), []

        def visit(name, path):
            if name in done:
                return
            if name in path:
                raise AsnModuleError("%s:%d: %s contains itself" % (self.module.path, self.module.types[name].line,
                                                                    name))
            node = self.module.types[name].type
            inner = [m.type for m in node.components] if node.kind == "SEQUENCE" else [node.element]
            for used in inner:
                if used.kind == "reference" and used.target.module is self.module:
                    visit(used.name, path + [name])
            done.add(name)
            result.append(name)

        for name in self.module.types:
            visit(name, [])
        return result

    def type_text(self, node):
        """The type's own lines of the module text, comments removed."""
        lines = []
        for line in self.module.source[node.line - 1:node.end_line]:
            code = " ".join(line.split("--")[0::2]).rstrip()
            if code:
                lines.append(code)
        return lines

    def comment(self, lines, indent=""):
        return "".join("%s// %s\n" % (indent, line) if line else "%s//\n" % indent for line in lines)

    def record(self, name, node):
        members, lines = [], []
        for member in node.components:
            declared, number = self.member(member)
            note = self.module.member_comments.get((name, member.name))
            members.append("  %s %s;%s\n" % (declared, member.name, "  // " + note if note else ""))
            number_text = ", %d" % number if member.optional else ""
            lines.append('    lines.Add("%s", &%s::%s%s);\n' % (member.name, name, member.name, number_text))
        self.headers.add("tn_velkor/asn/asn_record.h")
        return (
            "class {n} final : public AsnRecord<{n}> {{\n"
            " public:\n"
            "  static constexpr char kClassName[] = \"{n}\";\n\n"
            "{members}\n"
            "  {n}() {{ Constructor(*this); }}\n"
            "  {n}(const {n}& other) : AsnRecord() {{ CopyConstructor(*this, other); }}\n"
            "  ~{n}() override {{ Destructor(*this); }}\n"
            "  {n}& operator=(const {n}& other) {{\n"
            "    Assign(*this, other);\n"
            "    return *this;\n"
            "  }}\n\n"
            " private:\n"
            "  friend class AsnRecord<{n}>;\n"
            "  // One line per member; the encoder's lines inline to the member's own code.\n"
            "  template <class Lines>\n"
            "  [[gnu::always_inline]] static void DescribeMembers(Lines& lines) {{\n"
            "{lines}"
            "  }}\n"
            "}};\n").format(n=name, members="".join(members), lines="".join(lines))

    def list_class(self, name, node):
        element = self.value_class(node.element)
        self.headers.add("tn_velkor/asn/asn_list.h")
        return (
            "class {n} final : public AsnSeqOf<{e}> {{\n"
            " public:\n"
            "  static constexpr char kTypeName[] = \"{n}\";\n"
            "  // The name its reflection description carries.\n"
            "  static constexpr char kQualifiedName[] = \"{q}\";\n\n"
            "  {n}() = default;\n"
            "  {n}(const {n}&) = default;\n"
            "  {n}& operator=(const {n}&) = default;\n\n"
            "  AsnType* Clone() const override {{ return new {n}(*this); }}\n"
            "  const char* typeName() const override {{ return kTypeName; }}\n"
            "}};\n").format(n=name, e=element, q=qualified(namespace_of(self.module), name)), element

    def compile(self):
        namespace = namespace_of(self.module)
        module_name = self.module.name.lower()
        classes, instances, entries = [], [], []
        Subset(self.module).check()
        for name in self.order():
            assignment = self.module.types[name]
            node = assignment.type
            text = self.comment(assignment.comment + ([""] if assignment.comment else []) +
                                ["  " + line for line in self.type_text(node)])
            if node.kind == "SEQUENCE":
                classes.append(text + self.record(name, node))
                instances.append("template class AsnRecord<%s>;\n" % qualified(namespace, name))
                entries.append('  AsnCatalogue::Add({"%s", "%s", &CreateAsnValue<%s>, "", nullptr});\n' %
                               (name, module_name, qualified(namespace, name)))
            else:
                code, element = self.list_class(name, node)
                classes.append(text + code)
                full = qualified(namespace, element) if element in self.module.types else element
                instances.append("template class AsnList<%s>;\ntemplate class AsnSeqOf<%s>;\n" % (full, full))
                entries.append('  AsnCatalogue::Add({"%s", "%s", &CreateAsnValue<%s>,\n'
                               '                     "%s", &CreateAsnValue<%s>});\n' %
                               (name, module_name, qualified(namespace, name), self.element_name(element), full))

        source = self.below_root(self.module.path)
        banner = "// Generated by recordc from %s: edit the module text, not this file.\n" % source
        header_path = self.header_of(self.module)
        own = sorted(h for h in self.headers if h.startswith("tn_platform/") or h.startswith("tn_velkor/asn/"))
        imported = sorted(h for h in self.headers if h not in own)
        header = (banner + "//\n" + self.comment(self.module.comment) +
                  "#pragma once\n#pragma GCC visibility push(default)\n\n" +
                  "".join('#include "%s"\n' % h for h in own + imported) + "\n" +
                  ("namespace %s {\n\n" % namespace if namespace else "") + "\n".join(classes) +
                  ("\n}  // namespace %s\n" % namespace if namespace else "") + "#pragma GCC visibility pop\n")
        types = (banner + '#include "%s"\n\n' % header_path + "".join(instances))
        catalogue = (banner + '#include "%s"\n#include "tn_qmodules/asn_catalogue.h"\n\n' % header_path +
                     "namespace {\nconst bool s_catalogued = [] {\n" + "".join(entries) +
                     "  return true;\n}();\n}  // namespace\n")
        stem = os.path.splitext(header_path)[0]
        return {stem + ".h": header, stem + "_types.cpp": types, stem + "_catalogue.cpp": catalogue}


def write_if_changed(path, text):
    """Leaves a file that already holds `text` untouched, so that nothing
    that depends on it is rebuilt."""
    if os.path.exists(path):
        with open(path) as old:
            if old.read() == text:
                return
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path + ".tmp", "w") as new:
        new.write(text)
    os.replace(path + ".tmp", path)


def main(argv):
    parser = argparse.ArgumentParser(description="Compiles an ASN.1 module text into record classes.")
    parser.add_argument("--root", dest="roots", action="append", required=True,
                        help="a root the texts' paths are taken from (the first that holds a text)")
    parser.add_argument("--out", required=True, help="the folder the generated files go under")
    parser.add_argument("--with", dest="others", action="append", default=[], help="the text of an imported module")
    parser.add_argument("module", help="the module text to compile")
    options = parser.parse_args(argv)
    try:
        texts = []
        for path in [options.module] + options.others:
            with open(path) as text:
                texts.append(parse(text.read(), path))
        if len(texts[0]) != 1:
            raise AsnModuleError("%s: one module per text" % options.module)
        modules = Modules([module for found in texts for module in found])
        compiler = Compiler(modules, texts[0][0], options.roots)
        for relative, text in compiler.compile().items():
            write_if_changed(os.path.join(options.out, relative), text)
    except (AsnModuleError, OSError) as error:
        print("recordc: %s" % error, file=sys.stderr)
        return 1
    except RecursionError:
        print("recordc: %s: types or values nest too deeply to be read" % options.module, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
