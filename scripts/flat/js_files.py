"""The raw layer of the JavaScript binding, from what api.py tells and bindings/js/exports.list chooses: a module, its declarations,
the names that the linker keeps, and a check of the places of fields by the compiler of WebAssembly."""
import json
import re
import sys
import textwrap

from .api import model
from .rows import GENERATED, ROOT

EXPORTS = ROOT / 'bindings/js/exports.list'
SOURCES = ROOT / 'bindings/js/src'
SIZES = {'int': 4, 'unsigned': 4, 'unsigned int': 4, 'long long': 8, 'double': 8, 'short': 2, 'char': 1, 'unsigned char': 1,
         'signed char': 1, 'size_t': 4}
POINTER_SIZE = 4
READERS = {'int': 'int', 'long long': 'longLong', 'double': 'double'}


def refuse(what):
    sys.exit(f'bindings/js/exports.list: {what}')


class Choice:
    """What exports.list names, as far as it is known and the layer uses it."""

    def __init__(self, flat):
        self.api = model(flat)
        self.functions, self.enumerations, self.fields = [], [], {}
        own = ('raw.js', 'raw.d.ts')
        self.layer = '\n'.join(path.read_text() for path in sorted(SOURCES.glob('*.js')) if path.name not in own)
        for line in EXPORTS.read_text().splitlines():
            kind, _, name = line.partition(' ')
            if kind in ('function', 'enum', 'struct'):
                getattr(self, kind)(name)

    def named(self, kind, name):
        found = [entry for entry in self.api[kind] if entry['name'] == name]
        return found[0] if found else refuse(f'nothing is named {name}')

    def function(self, family):
        if not re.search(rf"\b(s_|zq_)?{re.sub('^s_', '', family)}\b", self.layer):
            refuse(f'the layer never calls {family}')
        found = [entry for entry in self.api['functions'] if entry['family'] == family and entry['tier'] != 'base']
        if not found or any(part['kind'] in ('callback', 'variadic') for entry in found for part in entry['arguments']):
            refuse(f'no function of the layer: {family}')
        self.functions += found

    def enum(self, name):
        self.enumerations.append(self.named('enumerations', name))

    def struct(self, text):
        name, fields = text.split(':')
        self.fields.setdefault(name, []).extend(fields.split())

    def structures(self):
        """Each structure with its size and the chosen fields, as (entry, size, [(field, offset)])."""
        for name, chosen in self.fields.items():
            entry = self.named('structures', name)
            size, offsets = layout_of(entry)
            unknown = set(chosen) - set(offsets)
            if unknown:
                refuse(f'{name} has no {", ".join(sorted(unknown))}')
            yield entry, size, [(field, offsets[field['name']]) for field in entry['fields'] if field['name'] in chosen]


def size_of(type_name):
    return POINTER_SIZE if type_name.endswith('*') else SIZES[type_name.replace('const ', '')]


def layout_of(entry):
    """The size of a structure and the offset of each field, with pointers of 32 bits."""
    end, largest, offsets = 0, 1, {}
    for field in entry['fields']:
        size = size_of(field['type'])
        offsets[field['name']] = end = -(-end // size) * size
        end, largest = end + size * field.get('count', 1), max(largest, size)
    return -(-end // largest) * largest, offsets


# --- the module

def parameter(part):
    return part['name'] + '_' if part['name'] in ('in', 'function', 'new') else part['name']


def passed(part):
    return f'BigInt({parameter(part)})' if part['type'] == 'long long' else parameter(part)


def result_of(call, result):
    if result['type'].endswith('*'):
        return f'{call} >>> 0'
    return f'Number({call})' if result['type'] == 'long long' else call


def member(function):
    arguments = ', '.join(parameter(part) for part in function['arguments'])
    call = f"wasm._{function['name']}({', '.join(passed(part) for part in function['arguments'])})"
    return f"    {function['name']}: ({arguments}) => {result_of(call, function['result'])},\n"


def constants(choice):
    return [value for entry in choice.enumerations for value in entry['values']]


def field_getter(field, offset):
    reader = READERS[field['type']]
    if 'count' in field:
        return f"  get {field['name']}() {{ return Array.from({{ length: {field['count']} }}, (_, at) => this.memory.{reader}" \
               f"(this.at + {offset} + {size_of(field['type'])} * at)); }}\n"
    return f"  get {field['name']}() {{ return this.memory.{reader}(this.at + {offset}); }}\n"


def module(flat):
    choice = Choice(flat)
    text = f'// The functions, structures and constants of zmatrix that the layer above needs. {GENERATED}\n'
    text += ''.join(f"export const {value['name']} = {value['value']};\n" for value in constants(choice))
    for entry, size, fields in choice.structures():
        text += f"\nexport class {entry['name']} {{\n  static size = {size};\n"
        text += '  constructor(memory, at) { this.memory = memory; this.at = at; }\n'
        text += ''.join(field_getter(field, offset) for field, offset in fields) + '}\n'
    text += '\n/** The functions of an instance of the module. Numbers stand for pointers. */\nexport function functionsOf(wasm) {\n  return {\n'
    return text + ''.join(member(function) for function in choice.functions) + '  };\n}\n'


# --- its declarations

def ts_type(type_name, kind=''):
    base = type_name.replace('const ', '').strip()
    if base == 'void':
        return 'void'
    return f"Pointer<'{base[:-1].strip()}'>" if base.endswith('*') else 'number'


def comment(text, indent=''):
    body = textwrap.fill(text.replace('*/', '* /'), 120, initial_indent=f'{indent} * ', subsequent_indent=f'{indent} * ')
    return f'{indent}/**\n{body}\n{indent} */\n'


def signature(function):
    arguments = ', '.join(f"{parameter(part)}: {ts_type(part['type'])}" for part in function['arguments'])
    return f"  {function['name']}({arguments}): {ts_type(function['result']['type'])};\n"


def declarations(flat):
    choice = Choice(flat)
    text = f'// {GENERATED}\n\n'
    text += comment("An address in the module's memory, 0 for null. That of a matrix of another tier is another type.")
    text += 'export type Pointer<T extends string> = number & { readonly pointsTo?: T };\n\n'
    text += comment("Reads the module's memory.")
    text += 'export interface Reader {\n' + ''.join(f'  {reader}(at: number): number;\n' for reader in READERS.values()) + '}\n\n'
    for value in constants(choice):
        text += (comment(value['documentation']) if value['documentation'] else '') + f"export const {value['name']} = {value['value']};\n"
    for entry, size, fields in choice.structures():
        text += '\n' + comment(entry['documentation']) + f"export class {entry['name']} {{\n  static readonly size: {size};\n"
        text += f"  constructor(memory: Reader, at: Pointer<'{entry['name']}'>);\n"
        for field, _ in fields:
            text += comment(field['documentation'], '  ') + f"  readonly {field['name']}: number{'[]' if 'count' in field else ''};\n"
        text += '}\n'
    text += '\n' + comment('The functions of the C headers, in the tiers full and medium.') + 'export interface Functions {\n'
    text += ''.join(comment(function['documentation'], '  ') + signature(function) for function in choice.functions) + '}\n\n'
    return text + 'export function functionsOf(wasm: object): Functions;\n'


# --- for the linker and the compiler

def exported_names(flat):
    names = ['_malloc', '_free', '_bytesInUse'] + ['_' + function['name'] for function in Choice(flat).functions]
    return json.dumps(names, indent=0) + '\n'


def layout_check(flat):
    text = f'// {GENERATED}\n// The places of fields that the raw layer reads are those of the compiler.\n'
    text += '#include <stddef.h>\n#include <zmatrix/zq.h>\n\n// clang-format off\n\n'
    for entry, size, fields in Choice(flat).structures():
        text += f"_Static_assert(sizeof({entry['name']}) == {size}, \"{entry['name']}\");\n"
        for field, offset in fields:
            text += f"_Static_assert(offsetof({entry['name']}, {field['name']}) == {offset}, \"{entry['name']}.{field['name']}\");\n"
    return text
