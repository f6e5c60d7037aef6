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

How the text maps to C++ (and to the wire, see the runtime's AsnRecord;
docs/records.md has the table): the universal types -> the runtime's value
classes (cpp_kinds.py); SEQUENCE and SET { ... } -> a record class
(AsnRecord, kStructure for a SET); CHOICE -> AsnRecord<T, AsnChoice>, every
alternative optional; SEQUENCE OF / SET OF T -> a list class (AsnSeqOf<T>,
AsnSetOf<T>); TypeName ::= T -> a class of that name over T's class; a type
written inside another -> a class named <Outer>_<member>. An OPTIONAL member,
and an extension addition (an older peer leaves it out), is a
refl::MayNullPointer<T>; a DEFAULT member a plain one whose default a
function of the class gives (cpp_defaults.py); an extensible type keeps
unknown additions in a member `unknown_`. Tags (cpp_tags.py) go on the member
line, or in kTagging for those written on a type assignment; a member line
with a number alone stands for [n] IMPLICIT on an optional member. Names are
made by cpp_names.py, the classes' text by cpp_classes.py. Every module of
the text goes into the one header, in namespace blocks.

The texts are read by asn_parser.py into the model of asn_model.py and
completed by asn_resolver.py; record_subset.py refuses what is not compiled
yet with one line.

usage: recordc.py --root SOURCE_ROOT [--root ...] --out OUT_DIR MODULE.asn [--with OTHER.asn ...]
"""

import argparse
import os
import re
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from asn_errors import AsnModuleError, refuse  # noqa: E402
from asn_parser import parse  # noqa: E402
from asn_resolver import Modules  # noqa: E402
from asn_tags import wire_tags  # noqa: E402
from record_subset import Subset  # noqa: E402
import cpp_classes  # noqa: E402
from cpp_kinds import OWN_CODEC_CLASSES, header_of, needs_class_of_its_own, number, value_class  # noqa: E402
from cpp_constraints import member_bounds  # noqa: E402
from cpp_defaults import default_body  # noqa: E402
from cpp_names import NameTable, cpp_name  # noqa: E402
from cpp_tags import bare_tags, is_context_implicit, tagging, written_tags  # noqa: E402

STRUCTURED = ("SEQUENCE", "SET", "CHOICE", "SEQUENCE OF", "SET OF")
LISTS = ("SEQUENCE OF", "SET OF")
# Records nested deeper than this are encoded by a call (kDeep); the common
# records nest four deep at most and stay inlined.
DEEP_INLINE = 4
# The member that keeps an extensible type's unknown additions: no ASN.1
# name ends in an underscore.
UNKNOWN_MEMBERS = "unknown_"


# Set by --namespace-from-path: public texts often share module names (six
# modules named Foo), so that each text's modules get namespaces of its own.
NAMESPACE_FROM_PATH = False


def namespace_of(module):
    """The module's C++ namespace: its name in lower case, unless a line
    "C++ namespace: NAME" of the comment above the module names another
    ("global" for the global namespace); with --namespace-from-path the
    text's file name (and the module's, for a text of several modules)."""
    for line in module.comment:
        match = re.match(r"C\+\+ namespace: (\w+)\.?$", line)
        if match:
            return "" if match.group(1) == "global" else match.group(1)
    if NAMESPACE_FROM_PATH:
        stem = os.path.splitext(os.path.basename(module.path))[0]
        return cpp_name((stem if module.only_in_text else stem + "_" + module.name).lower().replace("-", "_"))
    return cpp_name(module.name.lower())


def catalogue_module_of(module):
    """The module name its types carry in the catalogue."""
    return namespace_of(module) if NAMESPACE_FROM_PATH else module.name.lower()


def qualified(namespace, name):
    return "%s::%s" % (namespace, name) if namespace else name


def shape_of(node, module):
    """The type a type assignment's chain of references ends at, and the
    module it is written in."""
    while node.kind == "reference":
        module, node = node.target.module, node.target.type
    return node, module


def references(node, by_value=True):
    """The references written in a type, inside its nested types too, each
    with whether the class holds a value of it in place: a list's element, an
    optional member and a CHOICE's alternative are held through a pointer,
    so their class may be declared after this one (a type that holds
    itself)."""
    if node.kind == "reference":
        return [(node, by_value)]
    found = []
    for member in getattr(node, "components", []):
        pointer = node.kind == "CHOICE" or member.optional or (member.extension and member.default is None)
        found += references(member.type, by_value and not pointer)
    return found + (references(node.element, False) if node.kind in LISTS else [])


class Compiler(object):
    def __init__(self, modules, module, roots):
        self.modules = modules
        self.module = module
        self.roots = [os.path.abspath(root) for root in roots]
        self.headers = set()  # what the generated header includes
        self.names = NameTable(module.path)  # the namespace's class names
        self.helpers = []  # classes of types written inside the one being compiled
        self.instances = []  # the class code of the module's records and lists
        self.list_element = None  # (name, qualified class) of the last list's element
        self.nestings = {}  # (module, type) -> nesting()

    def below_root(self, path):
        """`path` relative to the first root that holds it (to the first root
        when none does)."""
        path = os.path.abspath(path)
        holder = next((root for root in self.roots if os.path.commonpath([root, path]) == root), self.roots[0])
        return os.path.relpath(path, holder).replace(os.sep, "/")

    def header_of(self, module):
        return os.path.splitext(self.below_root(module.path))[0] + ".h"

    def runtime_class(self, name):
        self.headers.add(header_of(name))
        return name

    def class_of(self, node, module, helper_name):
        """(C++ class, the wire tags it carries on its own) of a type written
        in a member or as a list element (record_subset.py has checked it). A
        type with names of its own gets a helper class, `helper_name`. A
        reference to a type assignment of OCTET STRING, BOOLEAN or a
        fixed-size INTEGER is that runtime class: the record codec handles
        those by their exact class (tags of the assignment go on the line)."""
        if node.kind == "reference":
            shape, shape_module = shape_of(node, module)
            if shape.kind not in STRUCTURED and not needs_class_of_its_own(shape):
                base = value_class(shape, shape_module)
                if base in OWN_CODEC_CLASSES:
                    return self.runtime_class(base), bare_tags(shape.kind)
            target = node.target
            own = wire_tags(target.type, target.module)
            name = cpp_name(node.name)
            if target.module is self.module:
                return name, own
            self.headers.add(self.header_of(target.module))
            return qualified(namespace_of(target.module), name), own
        if node.kind in STRUCTURED or needs_class_of_its_own(node):
            made = self.names.take(helper_name, node.line, helper_name)
            self.helpers.append(self.structure_class(made, made, node, module, None))
            return made, bare_tags(node.kind)
        return self.runtime_class(value_class(node, module)), bare_tags(node.kind)

    def element_class(self, node, module, helper_name):
        """A list element's class: it carries every tag of the element itself."""
        if node.tags and (node.kind in STRUCTURED or needs_class_of_its_own(node) or
                          (node.kind != "reference" and value_class(node, module) not in OWN_CODEC_CLASSES)):
            made = self.names.take(helper_name, node.line, helper_name)
            self.helpers.append(self.structure_class(made, made, node, module, wire_tags(node, module)))
            return made
        cpp_class, own = self.class_of(node, module, helper_name)
        if written_tags(wire_tags(node, module), own):
            refuse(module.path, node.line, "a tag on a list element of this type is not supported yet")
        return cpp_class

    def structure_class(self, name, type_name, node, module, wire):
        """The class of a type, written in a type assignment or inside another
        type, with its class code (explicit instantiations) noted. `wire`: the
        wire tags the class carries on its own (None: its type's bare tags)."""
        full_name = qualified(namespace_of(self.module), name)
        tags = tagging(wire, bare_tags(node.kind)) if wire is not None else None
        if node.kind in ("SEQUENCE", "SET", "CHOICE"):
            code = self.record(name, type_name, node, module, tags, self.deep(node, module))
            base = "AsnRecord<%s, AsnChoice>" % full_name if node.kind == "CHOICE" else "AsnRecord<%s>" % full_name
            self.instances.append("template class %s;\n" % base)
            return code
        if node.kind in LISTS:
            code, element = self.list_class(name, type_name, node, module, tags)
            own = element in self.names.given or element in (cpp_name(n) for n in self.module.types)
            full = qualified(namespace_of(self.module), element) if own else element
            if tags is None and node.kind == "SEQUENCE OF":
                instance = "template class AsnList<%s>;\ntemplate class AsnSeqOf<%s>;\n" % (full, full)
                if instance not in self.instances:
                    self.instances.append(instance)
            self.list_element = (self.element_name(element), full)
            return code
        return self.named_value_class(name, type_name, node, module, tags)

    def named_value_class(self, name, type_name, node, module, tags):
        """The class of a type assignment of a universal type, or of one
        written inside another type that needs names of its own."""
        base = self.runtime_class(value_class(node, module))
        if tags is not None:
            self.headers.add("tn_velkor/asn/asn_tagged_value.h")
        if node.kind == "ENUMERATED":
            self.headers.add("cstddef")
            names = [(item.number, item.name) for item in node.items]
            return cpp_classes.value_class(name, type_name, base, tags, names, node.extensible)
        if needs_class_of_its_own(node):
            self.headers.add("cstddef")
            names = [(number(value), bit) for bit, value in node.named_numbers]
            return cpp_classes.value_class(name, type_name, base, tags, names)
        return cpp_classes.value_class(name, type_name, base, tags)

    def element_name(self, cpp_class):
        return cpp_class.split("::")[-1]

    def order(self):
        """The module's types, each after the types of the module it holds
        in place; those it holds through a pointer are declared ahead."""
        done, result = set(), []

        def visit(name, path):
            if name in done:
                return
            if name in path:
                raise AsnModuleError("%s:%d: %s contains itself" % (self.module.path, self.module.types[name].line,
                                                                    name))
            written = self.module.types[name].type
            shape = shape_of(written, self.module)[0]
            for used, by_value in references(written) + references(shape):
                if used.target.module is self.module and by_value:
                    visit(used.name, path + [name])
            done.add(name)
            result.append(name)

        for name in self.module.types:
            visit(name, [])
        return result

    def nesting(self, node, open_types=()):
        """How deep structured types nest in `node` (a record of simple
        members: 1), through references too; None for a type that holds
        itself (LDAP's Filter holds a list of Filters)."""
        if node.kind == "reference":
            # A type that reaches a cycle nests without end wherever one
            # starts, so the answer per type is kept.
            key = (node.target.module.name, node.name)
            if key in open_types:
                return None
            if key not in self.nestings:
                self.nestings[key] = self.nesting(node.target.type, open_types + (key,))
            return self.nestings[key]
        inner = [member.type for member in getattr(node, "components", [])]
        inner += [node.element] if node.kind in LISTS else []
        if node.kind not in STRUCTURED:
            return 0
        depths = [self.nesting(child, open_types) for child in inner]
        return None if None in depths else 1 + max(depths, default=0)

    def deep(self, node, module):
        """Whether a record's encoder is called rather than inlined into its
        holder's: in a type that holds itself inlining would not end, and past
        DEEP_INLINE levels the inlined code grows with every level (X.509)."""
        depth = self.nesting(node)
        return depth is None or depth > DEEP_INLINE

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

    def record(self, name, type_name, node, module, tags, deep=False):
        """A SEQUENCE, SET or CHOICE: its members, their lines, the functions
        that give DEFAULT members their values, and a member for unknown
        extension additions."""
        choice = node.kind == "CHOICE"
        members, lines, makers = [], [], []
        scope = NameTable(module.path)
        optional_count = 0
        unknown_at = self.unknown_members_line(node)
        for index, member in enumerate(node.components):
            if index == unknown_at:
                lines.append("    lines.Extensions(&%s::%s);\n" % (name, UNKNOWN_MEMBERS))
            field = scope.take(member.name, member.line)
            value, own = self.class_of(member.type, module, "%s_%s" % (name, field))
            wire = wire_tags(member.type, module)
            # An extension addition may be missing in what an older peer sends.
            optional = choice or member.optional or (member.extension and member.default is None)
            note = module.member_comments.get((type_name, member.name))
            held = value
            if optional:
                self.headers.add("tn_platform/refl/may_null_pointer.h")
                held = "refl::MayNullPointer<%s>" % value
            members.append("  %s %s;%s\n" % (held, field, "  // " + note if note else ""))
            if not choice and not optional and member.default is None and not written_tags(wire, own):
                lines.append('    lines.Add("%s", &%s::%s);\n' % (member.name, name, field))
            elif not choice and optional and is_context_implicit(wire, own):
                lines.append('    lines.Add("%s", &%s::%s, %d);\n' % (member.name, name, field, wire[0][1]))
            else:
                number_text = "-1"
                if optional:
                    number_text = str(optional_count)
                    optional_count += 1
                maker = ""
                if member.default is not None:
                    maker_name = "Default" + field[0].upper() + field[1:]
                    body = default_body(module.path, member.line, member.type, member.default, value)
                    makers.append("  static void %s(%s& value) { %s }\n" % (maker_name, value, body))
                    maker = ", &%s::%s" % (name, maker_name)
                    if "AsnReadJson" in body:
                        self.headers.add("tn_platform/asn/asn_json_reader.h")
                lines.append('    lines.Add("%s", &%s::%s, %s, %s%s);\n' %
                             (member.name, name, field, number_text, tagging(wire, own) or "AsnTagging()", maker))
            bounds = None if choice else member_bounds(member.type, value)
            if bounds is not None:
                lines.append('    lines.Constrain("%s", &%s::%s, %s);\n' % (member.name, name, field, bounds))
        if unknown_at == len(node.components):
            lines.append("    lines.Extensions(&%s::%s);\n" % (name, UNKNOWN_MEMBERS))
        if unknown_at is not None:
            members.append("  AsnExtensions %s;  // unknown extension additions, kept as they came\n" %
                           UNKNOWN_MEMBERS)
        self.headers.add("tn_velkor/asn/asn_record.h")
        return cpp_classes.record_class(name, type_name, members, lines, makers, choice=choice,
                                        is_set=node.kind == "SET", tags=tags, deep=deep)

    def unknown_members_line(self, node):
        """Where an extensible type's unknown additions go among its lines:
        after the additions it knows, before the root members written after
        the second "..."; None when it is not extensible."""
        if not node.extensible:
            return None
        components = node.components
        additions = [index for index, member in enumerate(components) if member.extension]
        if additions:
            return additions[-1] + 1
        later = [index for index, member in enumerate(components) if member.after_extensions]
        return later[0] if later else len(components)

    def list_class(self, name, type_name, node, module, tags):
        element = self.element_class(node.element, module, name + "_element")
        self.headers.add("tn_velkor/asn/asn_list.h")
        return cpp_classes.list_class(name, type_name, element, qualified(namespace_of(self.module), name),
                                      set_of=node.kind == "SET OF", tags=tags), element

    def compile(self):
        """The module's classes (in namespace blocks) and catalogue entries."""
        namespace = namespace_of(self.module)
        module_name = catalogue_module_of(self.module)
        classes, entries = [], []
        Subset(self.module).check()
        for type_name in self.order():
            name = self.names.take(type_name, self.module.types[type_name].line)
            assignment = self.module.types[type_name]
            node, module = shape_of(assignment.type, self.module)
            text = self.comment(assignment.comment + ([""] if assignment.comment else []) +
                                ["  " + line for line in self.type_text(assignment.type)])
            full_name = qualified(namespace, name)
            self.helpers = []
            code = self.structure_class(name, type_name, node, module, wire_tags(assignment.type, self.module))
            if node.kind in LISTS:
                entries.append('  AsnCatalogue::Add({"%s", "%s", &CreateAsnValue<%s>,\n'
                               '                     "%s", &CreateAsnValue<%s>});\n' %
                               ((type_name, module_name, full_name) + self.list_element))
            else:
                entries.append('  AsnCatalogue::Add({"%s", "%s", &CreateAsnValue<%s>, "", nullptr});\n' %
                               (type_name, module_name, full_name))
            classes.extend(self.helpers)
            classes.append(text + code)
        ahead = "".join("class %s;\n" % cpp_name(name) for name in self.module.types)
        block = ahead + "\n" + "\n".join(classes)
        if namespace:
            block = "namespace %s {\n\n%s\n}  // namespace %s\n" % (namespace, block, namespace)
        return block, entries


def module_order(modules):
    """The modules of one text, each after those of the text it imports from."""
    by_name = dict((module.name, module) for module in modules)
    done, result = set(), []

    def visit(module):
        if module.name in done:
            return
        done.add(module.name)
        for source in module.imports.values():
            if source in by_name:
                visit(by_name[source])
        result.append(module)

    for module in modules:
        visit(module)
    return result


def compile_text(modules, text_modules, roots):
    """The three files of one text: every module it holds, in one header."""
    compilers = [Compiler(modules, module, roots) for module in module_order(text_modules)]
    blocks, entries, headers, instances = [], [], set(), []
    for compiler in compilers:
        block, found = compiler.compile()
        blocks.append(block)
        entries += found
        headers |= compiler.headers
        instances += [instance for instance in compiler.instances if instance not in instances]
    first = compilers[0]
    header_path = first.header_of(first.module)
    headers.discard(header_path)
    source = first.below_root(first.module.path)
    banner = "// Generated by recordc from %s: edit the module text, not this file.\n" % source
    system = sorted(h for h in headers if "/" not in h)
    own = sorted(h for h in headers if h.startswith("tn_platform/") or h.startswith("tn_velkor/asn/"))
    imported = sorted(h for h in headers if h not in own and h not in system)
    header = (banner + "//\n" + first.comment(text_modules[0].comment) +
              "#pragma once\n#pragma GCC visibility push(default)\n\n" +
              "".join("#include <%s>\n" % h for h in system) + ("\n" if system else "") +
              "".join('#include "%s"\n' % h for h in own + imported) + "\n" +
              "\n".join(blocks) + "#pragma GCC visibility pop\n")
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
    parser.add_argument("--namespace-from-path", action="store_true",
                        help="name each module's namespace after its text's file (public texts share module names)")
    parser.add_argument("module", help="the module text to compile")
    options = parser.parse_args(argv)
    global NAMESPACE_FROM_PATH
    NAMESPACE_FROM_PATH = options.namespace_from_path
    try:
        texts = []
        for path in [options.module] + options.others:
            with open(path) as text:
                texts.append(parse(text.read(), path))
            for module in texts[-1]:
                module.only_in_text = len(texts[-1]) == 1
        modules = Modules([module for found in texts for module in found])
        for relative, text in compile_text(modules, texts[0], options.roots).items():
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
