"""The one error every stage of the record compiler raises: a refused module
text, its message a single line naming the file and the line."""


class AsnModuleError(Exception):
    pass


def refuse(path, line, what):
    raise AsnModuleError("%s:%d: %s" % (path, line, what))
