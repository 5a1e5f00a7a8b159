"""The raw layer of the Java binding, from what api.py tells: types, constants, and the functions by tier, for JNA's direct mapping.

What several tiers have with the same arguments is declared once, in an interface with the tier's own types as parameters. Its names
are those of the full tier; Medium and Base add the end of the C name when they look the function up."""
import ctypes
import html
import re
import textwrap

from .api import model
from .rows import GENERATED, TIERS

FOLDER = 'bindings/java/src/main/java/zmatrix/raw'
VALUES = {'int': 'int', 'unsigned': 'int', 'unsigned int': 'int', 'long long': 'long', 'short': 'int', 'size_t': 'long',
          'double': 'double', 'char': 'int', 'unsigned char': 'int', 'void': 'void'}
ARRAYS = {'int*': 'int[]', 'long long*': 'long[]', 'double*': 'double[]', 'char*': 'byte[]', 'unsigned char*': 'byte[]',
          'signed char*': 'byte[]'}
C_TYPES = {'int': ctypes.c_int, 'unsigned int': ctypes.c_uint, 'long long': ctypes.c_longlong, 'short': ctypes.c_short,
           'double': ctypes.c_double, 'char': ctypes.c_char, 'unsigned char': ctypes.c_ubyte}
# How JNA's Pointer reads and writes the types of fields that are no plain int, long or double.
PARTS = {'int': 'Int', 'unsigned int': 'Int', 'long long': 'Long', 'double': 'Double', 'short': 'Short', 'unsigned char': 'Byte'}
CLASSES = {'full': 'Full', 'medium': 'Medium', 'base': 'Base'}
PARAMETERS = [('matrix', 'M'), ('info', 'I'), ('element', 'E')]
SHARED = {'StoringTier': ('full', 'medium', 'base'), 'LearningTier': ('full', 'medium')}


def plain(type_name):
    return type_name.replace('const', '').replace(' *', '*').strip()


def base_of(type_name):
    return plain(type_name).rstrip('*').strip()


# --- documentation

def prose(text):
    """Sentences of the list as javadoc has them."""
    text = html.escape(text, quote=False).replace('@', '&#64;').replace('*/', '*&#47;')
    return re.sub(r'`([^`]*)`', r'<code>\1</code>', text)


def javadoc(text, tags=(), indent='    '):
    """A comment; `tags` are pairs of a tag and what it says."""
    lines = textwrap.wrap(prose(text), 120 - len(indent))
    for tag, said in tags:
        lines += textwrap.wrap(f'{tag} {prose(said)}', 120 - len(indent), subsequent_indent='    ')
    if len(lines) == 1 and not tags:
        return f'{indent}/** {lines[0]} */\n'
    return f'{indent}/**\n' + ''.join(f'{indent} * {line}\n' for line in lines) + f'{indent} */\n'


def shape_text(part):
    shape = part.get('shape')
    return '' if shape in (None, '1') or part['kind'] in ('object', 'opaque') else f', {shape}'


def argument_text(part):
    text = {'in': 'read', 'out': 'filled', 'inout': 'read and changed'}[part['direction']] if part['kind'] in ('array', 'record') else part['kind']
    text = 'a value' if text == 'value' else text
    taken = ', released by the call' if part.get('ownership') == 'taken' else ''
    return text + shape_text(part) + taken + (', or null' if part.get('nullable') else '')


def result_text(result):
    owner = {'new': f"released with `{result.get('release')}`", 'lent': f"lent by the {result.get('owner')}",
             'given': f"what was given as `{result.get('owner')}`"}.get(result.get('ownership'))
    said = result.get('documentation') or 'see above'
    return said + (f' ({owner}{shape_text(result)})' if owner else '')


def tags_of(function):
    tags = [(f"@param {part['name']}", argument_text(part)) for part in function['arguments']]
    return tags + ([('@return', result_text(function['result']))] if function['result']['kind'] != 'none' else [])


# --- types

class Types:
    """Which Java type stands for which C type."""

    def __init__(self, api):
        self.api = api
        self.by_value = {function['result']['type'] for function in api['functions']} & {entry['name'] for entry in api['structures']}
        self.filled = {base_of(part['type']) for function in api['functions'] for part in function['arguments']
                       if part['kind'] == 'record' and part['direction'] != 'out' and part.get('ownership') != 'taken'}
        self.named = {entry['name'] for kind in ('objects', 'structures', 'callbacks') for entry in api[kind]}

    def pointed(self, type_name, parameters):
        base = base_of(type_name)
        if plain(type_name).count('*') == 1 and base in self.named:
            return parameters.get(base, base)
        return 'Pointer'

    def argument(self, part, following, parameters):
        if part['kind'] == 'text':
            return 'byte[]' if following == 'numberOfBytes' else 'String'
        if part['kind'] == 'array' and part.get('ownership') != 'taken':
            return ARRAYS[plain(part['type'])]
        if part['kind'] in ('value', 'callback'):
            return VALUES.get(plain(part['type']), plain(part['type']))
        return self.pointed(part['type'], parameters)

    def result(self, part, parameters):
        return VALUES.get(part['type'], part['type']) if '*' not in part['type'] else self.pointed(part['type'], parameters)

    def prototype(self, function, name, parameters):
        given = function['arguments']
        following = [part['name'] for part in given[1:]] + [None]
        arguments = ', '.join(f"{self.argument(part, after, parameters)} {part['name']}" for part, after in zip(given, following))
        return f"{self.result(function['result'], parameters)} {name}({arguments})"


def parameters_of(tier):
    names = next(names for names in TIERS.values() if names['name'] == tier)
    return {names[kind]: letter for kind, letter in PARAMETERS}


def suffix_of(tier):
    return next(names['suffix'] for names in TIERS.values() if names['name'] == tier)


def name_in(function, tier):
    return function['name'][:len(function['name']) - len(suffix_of(tier))] if suffix_of(tier) else function['name']


class Functions:
    """The functions, each with the interface or the class that declares it."""

    def __init__(self, api):
        self.types = Types(api)
        self.of_tier, self.common = {tier: {} for tier in CLASSES}, []
        for function in api['functions']:
            if any(part['kind'] == 'variadic' for part in function['arguments']):
                continue
            if function['tier']:
                self.of_tier[function['tier']][name_in(function, function['tier'])] = function
            else:
                self.common.append(function)

    def signature(self, tier, name):
        function = self.of_tier[tier].get(name)
        return function and self.types.prototype(function, name, parameters_of(tier))

    def interface_of(self, tier, name):
        for interface, tiers in SHARED.items():
            if tier in tiers and len({self.signature(other, name) for other in tiers}) == 1:
                return interface
        return None


# --- files

def java_file(name, about, body, imports=(), kind='final class', end='', tags=()):
    text = f'// {GENERATED}\npackage zmatrix.raw;\n\n' + ''.join(f'import {entry};\n' for entry in imports) + ('\n' if imports else '')
    return text + javadoc(about, tags, '') + f'public {kind} {name}{end} {{\n{body.rstrip()}\n}}\n'


def constants(flat):
    body = '    private Constants() {}\n'
    for entry in model(flat)['enumerations']:
        body += f"\n    // {entry['name']}: {entry['documentation']}".rstrip(': ') + '\n'
        for value in entry['values']:
            body += javadoc(value['documentation'] or f"Of {entry['name']}.") + f"    public static final int {value['name']} = {value['value']};\n"
    return java_file('Constants', 'The numbers that settings, arguments and results are made of.', body)


def layout(entry):
    """The structure as ctypes lays it out: size and offsets on 64-bit systems."""
    fields = []
    for field in entry['fields']:
        part = C_TYPES.get(field['type'], ctypes.c_void_p)
        fields.append((field['name'], part * field['count'] if 'count' in field else part))
    return type(entry['name'], (ctypes.Structure,), {'_fields_': fields})


def accessors(types, field, place, is_filled):
    """Reads a field and, where a host fills the structure, sets it."""
    name, kind, offset, count = field['name'], field['type'], place.offset, field.get('count')
    part, cast = PARTS.get(kind), {'short': '(short) ', 'unsigned char': '(byte) '}.get(kind, '')
    if kind == 'char':
        target, value, part = 'String', f'text({offset}, {count})', None
    elif '*' in kind:
        target = types.pointed(kind, {})
        value = f'getPointer().getPointer({offset})'
        value = value if target == 'Pointer' else f'at({value}, {target}::new)'
    elif count:
        target, value = {'Int': 'int[]', 'Long': 'long[]', 'Byte': 'byte[]'}[part], f'getPointer().get{part}Array({offset}, {count})'
    else:
        target, value = VALUES[kind], f'getPointer().get{part}({offset})' + (' & 0xff' if part == 'Byte' else '')
    said = f"`{name}`{': ' + field['documentation'] if field['documentation'] else ''}"
    text = f'        /** {{@return {prose(said)}}} */\n        public {target} {name}() {{ return {value}; }}\n\n'
    if is_filled and kind != 'char':
        if '*' in kind:
            value = f'getPointer().setPointer({offset}, {"value" if target == "Pointer" else "placeOf(value)"})'
        else:
            value = f'setArray({offset}, {count}, value)' if count else f'getPointer().set{part}({offset}, {cast}value)'
        text += f'        /** @param value sets <code>{name}</code> */\n'
        text += f'        public void {name}({target} value) {{ {value}; }}\n\n'
    return text


def record_class(types, entry):
    places, name = layout(entry), entry['name']
    about = javadoc(entry['documentation'] or f'The structure {name}.')
    if name in types.by_value:
        fields = ''.join(javadoc(field['documentation'] or f"Field {field['name']}.", (), '        ') +
                         f"        public {VALUES[field['type']]} {field['name']};\n\n" for field in entry['fields'])
        order = ', '.join(f'"{field["name"]}"' for field in entry['fields'])
        return about + f'    @Structure.FieldOrder({{{order}}})\n    public static final class {name} extends Structure implements ' \
            f'Structure.ByValue {{\n' + constructor(name, 'One that is all 0.') + f'{fields.rstrip()}\n    }}\n\n'
    text = about + f'    public static final class {name} extends NativeRecord {{\n' + javadoc('Its bytes.', (), '        ')
    text += f'        public static final int SIZE = {ctypes.sizeof(places)};\n\n' + constructor(name, 'One that points nowhere, for JNA.')
    text += javadoc('Records in a row, all 0, in memory that lives as long as the result.', [('@param count', 'how many'), ('@return', 'the first')], '        ')
    text += f'        public static {name} allocate(int count) {{ return at(memory(SIZE, count), {name}::new); }}\n\n'
    text += javadoc('The record that lies `index` records behind this one.', [('@param index', 'how far'), ('@return', 'it')], '        ')
    text += f'        public {name} at(int index) {{ return at(getPointer().share((long) index * SIZE), {name}::new); }}\n\n'
    is_filled = name in types.filled
    text += ''.join(accessors(types, field, getattr(places, field['name']), is_filled) for field in entry['fields'])
    return text.rstrip() + '\n    }\n\n'


def constructor(name, about):
    return javadoc(about, (), '        ') + f'        public {name}() {{}}\n\n'


def callback(entry):
    arguments = ', '.join(f"{VALUES.get(plain(part['type']), 'Pointer' if plain(part['type']) in ('char*', 'void*') else base_of(part['type']))} {part['name']}"
                          for part in entry['arguments'])
    tags = [(f"@param {part['name']}", 'as above') for part in entry['arguments']]
    about = entry['documentation'] + ' The host keeps a reference to it as long as it may be called.'
    return javadoc(about) + f"    public interface {entry['name']} extends Callback {{\n" + \
        javadoc('What is called.', tags, '        ') + f"        {VALUES[entry['result']]} invoke({arguments});\n    }}\n\n"


def types_file(flat):
    api = model(flat)
    types, body = Types(api), '    private Types() {}\n\n'
    for entry in api['objects']:
        body += javadoc(entry['documentation']) + f"    public static final class {entry['name']} extends PointerType {{\n"
        body += constructor(entry['name'], 'One that points nowhere, for JNA.').rstrip() + '\n    }\n\n'
    body += ''.join(record_class(types, entry) for entry in api['structures'])
    body += ''.join(callback(entry) for entry in api['callbacks'])
    about = ('The objects, structures and callbacks. An object is a pointer that Java knows by its tier; a structure is a place in '
             'memory, whose fields are read and written there, so that what the library lends is to be read before its next call.')
    imports = ['com.sun.jna.Callback', 'com.sun.jna.Pointer', 'com.sun.jna.PointerType', 'com.sun.jna.Structure']
    return java_file('Types', about, body, imports)


def interface(flat, name):
    functions, body = Functions(model(flat)), ''
    tier = SHARED[name][0]
    for method, function in functions.of_tier[tier].items():
        if functions.interface_of(tier, method) == name:
            body += javadoc(function['documentation'], tags_of(function)) + f'    {functions.signature(tier, method)};\n\n'
    about = {'StoringTier': 'What all tiers have: the store.', 'LearningTier': 'What the medium and the full tier have: learning and generating.'}
    tags = [('@param <M>', "the tier's matrix"), ('@param <I>', 'its record of a sub-matrix'), ('@param <E>', 'its element')]
    return java_file(name, about[name], body, ['com.sun.jna.Pointer', 'zmatrix.raw.Types.*'], 'interface',
                     '<M, I, E>' + (' extends StoringTier<M, I, E>' if name == 'LearningTier' else ''), tags)


def tier_class(flat, tier):
    functions, body = Functions(model(flat)), ''
    name = CLASSES[tier]
    body += javadoc('The functions.') + f'    public static final {name} FUNCTIONS = new {name}();\n\n'
    body += f'    static {{\n        Library.bind({name}.class, "{suffix_of(tier)}");\n    }}\n\n    private {name}() {{}}\n\n'
    for method, function in functions.of_tier[tier].items():
        prototype = functions.types.prototype(function, method, {})
        if functions.interface_of(tier, method):
            body += f'    @Override\n    public native {prototype};\n\n'
        else:
            body += javadoc(function['documentation'], tags_of(function)) + f'    public native {prototype};\n\n'
    names = next(names for names in TIERS.values() if names['name'] == tier)
    shared = 'StoringTier' if tier == 'base' else 'LearningTier'
    ending = f', without {suffix_of(tier)} at their ends' if suffix_of(tier) else ''
    return java_file(name, f'The functions of the {tier} tier by their names in C{ending}.', body,
                     ['com.sun.jna.Pointer', 'zmatrix.raw.Types.*'], 'final class',
                     f" implements {shared}<{', '.join(names[kind] for kind, _ in PARAMETERS)}>")


def common(flat):
    functions = Functions(model(flat))
    body = '    static {\n        Library.bind(Common.class, "");\n    }\n\n    private Common() {}\n\n'
    for function in functions.common:
        body += javadoc(function['documentation'], tags_of(function))
        body += f"    public static native {functions.types.prototype(function, function['name'], {})};\n\n"
    return java_file('Common', 'The functions on other objects than matrices and on none, and those that make and delete matrices.', body,
                     ['com.sun.jna.Pointer', 'zmatrix.raw.Types.*'])


FILES = {
    f'{FOLDER}/Types.java': types_file,
    f'{FOLDER}/Constants.java': constants,
    f'{FOLDER}/StoringTier.java': lambda flat: interface(flat, 'StoringTier'),
    f'{FOLDER}/LearningTier.java': lambda flat: interface(flat, 'LearningTier'),
    f'{FOLDER}/Full.java': lambda flat: tier_class(flat, 'full'),
    f'{FOLDER}/Medium.java': lambda flat: tier_class(flat, 'medium'),
    f'{FOLDER}/Base.java': lambda flat: tier_class(flat, 'base'),
    f'{FOLDER}/Common.java': common,
}
