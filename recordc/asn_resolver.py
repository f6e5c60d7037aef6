"""Completes the parsed modules of several texts into the model a generator
reads (see asn_model.py): references resolved across IMPORTS, COMPONENTS OF
expanded, EXTENSIBILITY IMPLIED and AUTOMATIC TAGS applied, enumerations
numbered, values read per their type, wire tags computed."""

from asn_errors import AsnModuleError, refuse
from asn_model import Component, Type, Value
from asn_tags import apply_automatic_tags, wire_tags
from asn_values import read_braced

INTEGER_TYPE = None  # the governor of SIZE bounds and of tag numbers: no named numbers


def inner_types(node):
    """The type and every type written inside it, outermost first."""
    yield node
    for component in getattr(node, "components", None) or []:
        yield from inner_types(component.type)
    if node.kind in ("SEQUENCE OF", "SET OF"):
        yield from inner_types(node.element)


class Modules(object):
    """The modules of several texts, resolved when made."""

    def __init__(self, modules):
        self.modules = {}
        for module in modules:
            if module.name in self.modules:
                raise AsnModuleError("%s:%d: module %s also in %s" % (module.path, module.line, module.name,
                                                                      self.modules[module.name].path))
            self.modules[module.name] = module
        self._expanded = set()
        self._resolving = set()
        for module in self.modules.values():
            self.resolve_module(module)

    @classmethod
    def load(cls, paths):
        from asn_parser import parse
        modules = []
        for path in paths:
            with open(path) as text:
                modules.extend(parse(text.read(), path))
        return cls(modules)

    def definitions(self, type_name):
        """(module, TypeAssignment) for every module that defines the type."""
        return [(m, m.types[type_name]) for m in self.modules.values() if type_name in m.types]

    # ---- names ----------------------------------------------------------------

    def lookup(self, module, name, line, table, written_module=None):
        """The assignment `name` stands for in `module` (table: "types" or
        "values"), following IMPORTS; None if the module has no such name."""
        if written_module is not None:
            if written_module not in self.modules:
                refuse(module.path, line, "%s.%s: no text defines module %s" % (written_module, name,
                                                                                written_module))
            found = getattr(self.modules[written_module], table).get(name)
            if found is None:
                refuse(module.path, line, "%s does not define %s" % (written_module, name))
            return found
        found = getattr(module, table).get(name)
        if found is not None:
            return found
        source = module.imports.get(name)
        if source is None:
            return None
        import_line = module.import_lines.get(name, line)
        if source not in self.modules:
            refuse(module.path, import_line, "imports %s from %s, which no text defines" % (name, source))
        target = self.modules[source]
        if target.exports is not None and name not in target.exports:
            refuse(module.path, import_line, "imports %s from %s, which does not export it" % (name, source))
        found = getattr(target, table).get(name)
        if found is None and name in target.imports:
            found = self.lookup(target, name, line, table)  # passed on by a module that imports it
        if found is None and getattr(target, "values" if table == "types" else "types").get(name) is None:
            refuse(module.path, import_line, "imports %s from %s, which does not define it" % (name, source))
        return found

    def type_of(self, module, node):
        """The TypeAssignment of a type reference."""
        found = self.lookup(module, node.name, node.line, "types", node.module)
        if found is None:
            refuse(module.path, node.line, "%s is neither defined nor imported" % node.name)
        return found

    # ---- types ------------------------------------------------------------------

    def resolve_module(self, module):
        for assignment in list(module.types.values()):
            self.resolve_type(module, assignment.type)
        for assignment in list(module.values.values()):
            # A value nothing uses may name what no text defines (modules
            # written for a tool that reads only what it needs): its fault is
            # kept and raised where a type or value uses it.
            try:
                self.resolve_type(module, assignment.type)
                self.resolve_value(module, assignment.value, assignment.type)
            except AsnModuleError as error:
                assignment.error = error
        for assignment in list(module.types.values()) + list(module.values.values()):
            if getattr(assignment, "error", None) is not None:
                continue
            for node in inner_types(assignment.type):
                wire_tags(node, module)
        if module.oid is not None:
            self.read_oid(module, module.oid)
        for source, oid in module.import_oids.items():
            if oid is not None and oid.kind == "braced":
                self.read_oid(module, oid)

    def read_oid(self, module, value):
        self.resolve_value(module, value, Type("OBJECT IDENTIFIER", value.line))

    def resolve_type(self, module, node):
        """Resolves a type written in `module` and everything inside it."""
        if getattr(node, "resolving_done", False):
            return
        node.resolving_done = True
        for tag in node.tags:
            if isinstance(tag.number, Value):
                tag.number = self.integer(module, tag.number)
        if node.kind == "reference":
            node.target = self.type_of(module, node)
            self.resolve_type(node.target.module, node.target.type)
            seen, walk = set(), node
            while walk.kind == "reference":
                if id(walk) in seen:
                    refuse(module.path, node.line, "%s is defined by itself" % node.name)
                seen.add(id(walk))
                walk = walk.target.type
        elif node.kind in ("SEQUENCE OF", "SET OF"):
            self.resolve_type(module, node.element)
        elif node.kind in ("SEQUENCE", "SET", "CHOICE"):
            self.resolve_structure(module, node)
        elif node.kind == "ENUMERATED":
            self.number_enumeration(module, node)
        elif node.kind in ("INTEGER", "BIT STRING"):
            for _, value in node.named_numbers:
                self.resolve_value(module, value, INTEGER_TYPE)
        for constraint in node.constraints:
            self.resolve_constraint(module, constraint, node)

    def resolve_structure(self, module, node):
        if module.extensibility_implied and not node.extensible:
            node.extensible = True
        written = [c for c in node.components if c.components_of is None]
        self.expand_components_of(module, node)
        names = set()
        for component in node.components:
            if component.name in names:
                refuse(module.path, component.line, "%s twice" % component.name)
            names.add(component.name)
        if module.tag_default == "AUTOMATIC":
            apply_automatic_tags(node, written)
        for component in node.components:
            self.resolve_type(module, component.type)
        for component in node.components:
            if component.default is not None:
                self.resolve_value(module, component.default, component.type)
        if node.exception is not None:
            self.resolve_value(module, node.exception, INTEGER_TYPE)

    def expand_components_of(self, module, node):
        """Replaces each COMPONENTS OF T by the root components of T."""
        if id(node) in self._expanded:
            return
        self._expanded.add(id(node))
        expanded = []
        for component in node.components:
            if component.components_of is None:
                expanded.append(component)
                continue
            source = component.components_of
            self.resolve_type(module, source)
            target = source.resolved() if source.kind == "reference" else source
            if target.kind != node.kind:
                refuse(module.path, component.line, "COMPONENTS OF in a %s names a %s" % (node.kind, target.kind))
            owner = source.target.module if source.kind == "reference" else module
            self.expand_components_of(owner, target)
            for taken in target.components:
                if not taken.extension:
                    expanded.append(Component(taken.name, taken.type, component.line, taken.optional,
                                              taken.default, component.extension, component.group,
                                              component.version))
        node.components = expanded

    def number_enumeration(self, module, node):
        for item in node.items:
            if item.number is not None and isinstance(item.number, Value):
                item.number = self.integer(module, item.number)
        root = [item for item in node.items if not item.extension]
        used = {item.number for item in root if item.number is not None}
        free = 0
        for item in root:
            if item.number is None:
                while free in used:
                    free += 1
                item.number = free
                used.add(free)
        last = None
        for item in node.items:
            if item.extension:
                if item.number is None:
                    item.number = 0 if last is None else last + 1
                    while item.number in used:
                        item.number += 1
                elif last is not None and item.number <= last:
                    refuse(module.path, item.line, "%s: an addition numbered below the one before" % item.name)
                last = item.number
                if item.number in used:
                    refuse(module.path, item.line, "%s: the number %d is taken" % (item.name, item.number))
                used.add(item.number)
        names = [item.name for item in node.items]
        for item in node.items:
            if names.count(item.name) > 1:
                refuse(module.path, item.line, "%s twice" % item.name)
        if len(used) != len(node.items):
            refuse(module.path, node.line, "two enumerations share a number")
        if module.extensibility_implied:
            node.extensible = True

    # ---- constraints ------------------------------------------------------------

    def resolve_constraint(self, module, constraint, governor):
        """Resolves the values and types of a constraint on `governor`."""
        kind = constraint.kind
        if kind == "set":
            for part in (constraint.root, constraint.additions):
                if part is not None:
                    self.resolve_constraint(module, part, governor)
            if constraint.exception is not None:
                self.resolve_value(module, constraint.exception, INTEGER_TYPE)
        elif kind in ("union", "intersection"):
            for item in constraint.items:
                self.resolve_constraint(module, item, governor)
        elif kind == "except":
            for part in (constraint.base, constraint.excluded):
                if part is not None:
                    self.resolve_constraint(module, part, governor)
        elif kind in ("value", "pattern"):
            self.resolve_value(module, constraint.value, governor)
        elif kind == "range":
            for bound in (constraint.lower, constraint.upper):
                if isinstance(bound, Value):
                    self.resolve_value(module, bound, governor)
        elif kind in ("type", "containing"):
            if constraint.type is not None:
                self.resolve_type(module, constraint.type)
            if kind == "containing" and constraint.encoded_by is not None:
                self.read_oid(module, constraint.encoded_by)
        elif kind == "size":
            self.resolve_constraint(module, constraint.inner, INTEGER_TYPE)
        elif kind == "from":
            self.resolve_constraint(module, constraint.inner, governor)
        elif kind == "with_component":
            element = self.target_kind(module, governor)
            self.resolve_constraint(module, constraint.inner, getattr(element, "element", None))
        elif kind == "with_components":
            target = self.target_kind(module, governor)
            members = {c.name: c.type for c in getattr(target, "components", None) or []}
            for name, inner, _ in constraint.items:
                if target is not None and target.kind in ("SEQUENCE", "SET", "CHOICE") and name not in members:
                    refuse(module.path, constraint.line, "WITH COMPONENTS names %s, which %s does not have" %
                           (name, target.kind))
                if inner is not None:
                    self.resolve_constraint(module, inner, members.get(name))

    def target_kind(self, module, governor):
        """The resolved type a constraint on `governor` applies to."""
        if governor is None:
            return None
        self.resolve_type(module, governor)
        return governor.resolved() if governor.kind == "reference" else governor

    # ---- values -----------------------------------------------------------------

    def integer(self, module, value):
        self.resolve_value(module, value, INTEGER_TYPE)
        found = value.resolved if value.kind == "reference" else value
        if found.kind != "integer":
            refuse(module.path, value.line, "expected a number")
        return found.value

    def named_value(self, governor, name, line):
        """A named number, bit or enumeration of the resolved `governor`."""
        if governor is None:
            return None
        for named, value in getattr(governor, "named_numbers", []):
            if named == name:
                return value.resolved if value.kind == "reference" else value
        for item in getattr(governor, "items", None) or []:
            if getattr(item, "name", None) == name:
                return Value("enumeration", line, name=name, number=item.number)
        return None

    def resolve_value(self, module, value, governor):
        """Resolves `value` of the type `governor` (or of a type not known:
        None), in place; returns it."""
        target = self.target_kind(module, governor)
        if value.kind == "braced":
            read_braced(value, target, module, lambda inner, kind: self.resolve_value(module, inner, kind))
            if value.kind == "sequence":
                members = {c.name: c.type for c in getattr(target, "components", None) or []}
                for name, member in value.members:
                    if target.kind in ("SEQUENCE", "SET") and name not in members:
                        refuse(module.path, member.line, "%s has no member %s" % (target.kind, name))
                    self.resolve_value(module, member, members.get(name))
        elif value.kind == "choice":
            members = {c.name: c.type for c in getattr(target, "components", None) or []}
            if target is not None and target.kind == "CHOICE" and value.name not in members:
                refuse(module.path, value.line, "the CHOICE has no alternative %s" % value.name)
            self.resolve_value(module, value.value, members.get(value.name))
        elif value.kind == "reference" and not hasattr(value, "resolved"):
            value.resolved = self.value_of(module, value, target)
        return value

    def value_of(self, module, value, target):
        named = None if value.module else self.named_value(target, value.name, value.line)
        if named is not None:
            return named
        assignment = self.lookup(module, value.name, value.line, "values", value.module)
        if assignment is None:
            refuse(module.path, value.line, "%s is neither defined nor imported" % value.name)
        if getattr(assignment, "error", None) is not None:
            raise assignment.error
        key = (assignment.module.name, assignment.name)
        if key in self._resolving:
            refuse(module.path, value.line, "%s is defined by itself" % value.name)
        self._resolving.add(key)
        try:
            self.resolve_type(assignment.module, assignment.type)
            self.resolve_value(assignment.module, assignment.value, assignment.type)
        finally:
            self._resolving.discard(key)
        found = assignment.value
        return found.resolved if found.kind == "reference" else found
