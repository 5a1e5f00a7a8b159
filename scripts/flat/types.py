"""The plain structures, enumerations and types of functions that the lists declare, and the enumerations of the settings."""
import re

from .rows import ROOT


class Field:
    """A field of a structure, or a number of an enumeration: its code and what it means."""

    def __init__(self, code, about):
        self.code, self.about = code, about
        number = re.fullmatch(r'(\w+) = (-?\d+)', code)
        field = re.fullmatch(r'(.+?)(\w+)(?:\[(\d+)\])?', code)
        self.name = number.group(1) if number else field.group(2)
        self.value = int(number.group(2)) if number else None
        self.type = None if number else field.group(1).strip()
        self.count = None if number or field.group(3) is None else int(field.group(3))


class Type:
    """`kind` is struct, enum or function; a function has `result` and `arguments`, the others have fields."""

    def __init__(self, kind, name, documentation=None, result=None, arguments=None):
        self.kind, self.name, self.result, self.arguments = kind, name, result, arguments
        self.documentation, self.fields = documentation or [], []


def read_types(path):
    """`struct NAME` or `enum NAME`, documentation, then rows of code and text; `function RESULT NAME (ARGUMENTS)` behind its
    documentation."""
    types, before = [], []
    for line in path.read_text().splitlines():
        if line.startswith('function '):
            result, name, arguments = re.fullmatch(r'function (.+) (\w+) \((.*)\)', line).groups()
            types.append(Type('function', name, before, result, arguments))
            before = []
        elif re.match('(struct|enum) ', line):
            types.append(Type(*line.split()))
        elif line.startswith('    '):
            # Above the first field of a type it is that type's, else it belongs to the function that follows.
            is_of_type = types and types[-1].kind != 'function' and not types[-1].fields
            (types[-1].documentation if is_of_type else before).append(line[4:])
        elif line.strip() and not line.startswith('#'):
            code, _, about = line.partition('|')
            types[-1].fields.append(Field(code.strip(), about.strip()))
    return types


def read_setting_numbers():
    """The enumerations of the settings, from the header that the library itself has."""
    text = (ROOT / 'src/settings/ZQMatrixEnumerations.h').read_text()
    types = []
    for documentation, name, body in re.findall(r'((?:///[^\n]*\n)*)enum (\w+) : int \{(.*?)\};', text, re.S):
        entry = Type('enum', name, [line[3:].strip() for line in documentation.splitlines()])
        for code, about in re.findall(r'(\w+ = -?\d+)\s*,?\s*(?:///< ?(.*))?', body):
            entry.fields.append(Field(code, about.strip()))
        types.append(entry)
    return types
