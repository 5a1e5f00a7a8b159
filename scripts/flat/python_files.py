"""The raw layer of the Python binding, from what api.py tells: a ctypes module and its stub."""
import textwrap

from .api import model
from .rows import GENERATED

CTYPES = {'int': 'c_int', 'unsigned': 'c_uint', 'unsigned int': 'c_uint', 'long long': 'c_longlong', 'short': 'c_short',
          'size_t': 'c_size_t', 'double': 'c_double', 'char': 'c_char', 'unsigned char': 'c_ubyte', 'signed char': 'c_byte'}
PYTHON = {'double': 'float', 'char': 'bytes'}


def plain(type_name):
    return type_name.replace('const ', '').replace(' const', '').replace(' ', ' ').strip()


def ctype(type_name):
    """The ctypes type of a C type: pointers to known types are typed, so that another tier's matrix is refused."""
    base = plain(type_name)
    if base == 'void':
        return 'None'
    if base in ('void*', 'FILE*'):
        return 'c_void_p'
    if base.endswith('*'):
        return f'POINTER({ctype(base[:-1].strip())})' if base != 'void**' else 'POINTER(c_void_p)'
    return CTYPES.get(base, base)


def argument_ctype(part):
    return 'c_char_p' if part['kind'] == 'text' else ctype(part['type'])


def result_ctype(result):
    """Lent texts are copied into bytes; one to be released stays a pointer."""
    if result['kind'] == 'text' and result.get('shape') == 'text' and result.get('ownership') == 'lent':
        return 'c_char_p'
    return ctype(result['type'])


def hint(type_name, kind=''):
    base = plain(type_name)
    if kind == 'text':
        return 'Optional[bytes]'
    if base == 'void':
        return 'None'
    if base in ('void*', 'FILE*'):
        return 'Any'
    if base.endswith('*'):
        return f'_Pointer[{ctype(base[:-1].strip())}]' if not base.endswith('**') else 'Any'
    return PYTHON.get(base, 'int' if base in CTYPES else base)


def argument_hint(part):
    """ctypes takes arrays, references and None for a typed pointer."""
    return hint(part['type'], part['kind']) if part['kind'] in ('value', 'text', 'callback') else 'Any'


def result_hint(result):
    return 'bytes' if result_ctype(result) == 'c_char_p' else hint(result['type'])


def constants(api):
    for entry in api['enumerations']:
        for value in entry['values']:
            yield value['name'], value['value'], value['documentation']


def structures(api):
    """In such an order that what a field holds stands above it."""
    return api['structures']


def field_ctype(field):
    name = 'c_char_p' if field['type'] == 'const char*' else ctype(field['type'])
    return f"{name} * {field['count']}" if 'count' in field else name


def field_hint(field):
    if field['type'] in ('const char*', 'char') and ('count' not in field or field['type'] == 'char'):
        return 'bytes'
    return 'Any' if 'count' in field else hint(field['type'])


def module(flat):
    api = model(flat)
    text = f'"""The functions, structures and constants of zmatrix, as the C headers have them. {GENERATED}"""\n'
    text += 'from ctypes import (CFUNCTYPE, POINTER, Structure, c_byte, c_char, c_char_p, c_double, c_int, c_longlong, c_short,\n'
    text += '                    c_size_t, c_ubyte, c_uint, c_void_p)\n\nfrom ._library import library as _library\n\n\n'
    text += 'def _function(name, result, *arguments):\n    function = getattr(_library, name)\n'
    text += '    function.restype, function.argtypes = result, arguments\n    return function\n\n'
    for name, value, _ in constants(api):
        text += f'\n{name} = {value}'
    text += '\n\n'
    for entry in api['objects']:
        text += f"\nclass {entry['name']}(Structure):\n    \"\"\"{entry['documentation']}\"\"\"\n\n"
    for entry in structures(api):
        text += f"\nclass {entry['name']}(Structure):\n"
        text += textwrap.indent(f'"""{entry["documentation"]}"""', '    ') + '\n    _fields_ = [\n'
        text += ''.join(f"        ('{field['name']}', {field_ctype(field)}),\n" for field in entry['fields']) + '    ]\n\n'
    for entry in api['callbacks']:
        arguments = ''.join(', ' + ('c_char_p' if argument['type'] == 'const char*' else ctype(argument['type'])) for argument in entry['arguments'])
        text += f"\n{entry['name']} = CFUNCTYPE({ctype(entry['result'])}{arguments})"
    text += '\n'
    for function in api['functions']:
        arguments = ''.join(', ' + argument_ctype(part) for part in function['arguments'] if part['kind'] != 'variadic')
        text += f"{function['name']} = _function('{function['name']}', {result_ctype(function['result'])}{arguments})\n"
    return text


def stub(flat):
    api = model(flat)
    text = f'# {GENERATED}\nfrom ctypes import Structure, _Pointer, c_char, c_double, c_int, c_longlong, c_ubyte\n'
    text += 'from typing import Any, Optional\n\n'
    text += ''.join(f'{name}: int\n' for name, _, _ in constants(api)) + '\n'
    text += ''.join(f"class {entry['name']}(Structure): ...\n" for entry in api['objects'])
    for entry in structures(api):
        text += f"class {entry['name']}(Structure):\n"
        text += ''.join(f"    {field['name']}: {field_hint(field)}\n" for field in entry['fields'])
    text += ''.join(f"{entry['name']}: Any\n" for entry in api['callbacks']) + '\n'
    for function in api['functions']:
        arguments = ['*values: Any' if part['kind'] == 'variadic' else f"{part['name']}_: {argument_hint(part)}" if part['name'] == 'in'
                     else f"{part['name']}: {'Any' if part['kind'] == 'callback' else argument_hint(part)}" for part in function['arguments']]
        text += f"def {function['name']}({', '.join(arguments)}) -> {result_hint(function['result'])}:\n"
        text += textwrap.indent(f'"""{function["documentation"]}"""', '    ').replace('\\', '\\\\') + '\n'
    return text
