"""What the list gives in C and C++: headers, forwarders, facade, export map."""
import re

from .rows import EXTENSIONS, GENERATED, LIST, OPAQUE, ROOT, TIERS, name_of
from .types import read_types


def heading(subject):
    return f'// ---- {subject} '.ljust(130, '-') + '\n'


def enumerations():
    """The enumerations of the settings, as C has them."""
    text = (ROOT / 'src/settings/ZQMatrixEnumerations.h').read_text()
    text = text[text.index('#pragma once') + len('#pragma once'):].strip()
    return text.replace(' : int {', ' {') + '\n'


def records(path):
    """The plain structures, enumerations and types of functions as C has them."""
    text = ''
    for entry in read_types(path):
        text += ''.join(f'/// {line}\n' for line in entry.documentation)
        if entry.kind == 'function':
            text += f'typedef {entry.result} (*{entry.name})({entry.arguments});\n\n'
            continue
        end = ',' if entry.kind == 'enum' else ';'
        width = max(len(field.code) for field in entry.fields) + 1
        fields = ''.join(f'  {field.code + end:<{width}}  ///< {field.about}\n' for field in entry.fields)
        text += f'typedef {entry.kind} {entry.name} {{\n{fields}}} {entry.name};\n\n'
    return text


def record_fields():
    """(record, field) of all plain structures."""
    return [(entry.name, field.name) for entry in read_types(LIST / 'records.list') for field in entry.fields]


HEADER_END = '\n#if defined(__GNUC__)\n#pragma GCC visibility pop\n#endif\n\n#ifdef __cplusplus\n}\n#endif\n\n#endif\n'


def prototypes(rows):
    """The functions of rows as a header declares them, below a heading for each subject."""
    text, subject = '', None
    for row in rows:
        if row.subject != subject:
            subject = row.subject
            text += '\n' + heading(subject)
        text += '\n' + ''.join(f'/// {line}\n' for line in row.documentation)
        text += ''.join(function.prototype() + ';\n' for function in row.functions())
    return text


def header(flat):
    text = f'// {GENERATED}\n' + (LIST / 'conventions.txt').read_text()
    text += '#ifndef ZMATRIX_ZMATRIX_H\n#define ZMATRIX_ZMATRIX_H\n\n#include <stddef.h>\n#include <stdio.h>\n#include <zmatrix/version.h>\n\n'
    text += '// clang-format off\n\n#ifdef __cplusplus\nextern "C" {\n#endif\n\n'
    text += heading('Objects') + '\n'
    text += ''.join(f'/// {about}\ntypedef struct {name} {name};\n' for name, about in OPAQUE) + '\n'
    text += heading('Numbers that settings are made of; functions take and give them as int') + '\n' + enumerations() + '\n'
    text += heading('Plain structures') + '\n' + records(LIST / 'records.list')
    text += '/// What a host has called while long operations run. The record lives until the call ends.\n'
    text += 'typedef void (*matrixProgressCallBackFunction)(progressCallBackData_tag* data);\n\n'
    text += '#if defined(__GNUC__)\n#pragma GCC visibility push(default)\n#endif\n'
    return text + prototypes(flat.rows) + HEADER_END


def extension_types(_):
    text = f'// {GENERATED}\n'
    text += '// The plain structures and enumerations of the extension functions (zmatrix/zq.h).\n'
    text += '#ifndef ZMATRIX_ZQ_TYPES_H\n#define ZMATRIX_ZQ_TYPES_H\n\n// clang-format off\n\n'
    return text + records(EXTENSIONS / 'types.list') + '#endif\n'


def extension_header(flat):
    text = f'// {GENERATED}\n' + (EXTENSIONS / 'conventions.txt').read_text()
    text += '#ifndef ZMATRIX_ZQ_H\n#define ZMATRIX_ZQ_H\n\n#include <zmatrix/zmatrix.h>\n#include <zmatrix/zq_types.h>\n\n'
    text += '// clang-format off\n\n#ifdef __cplusplus\nextern "C" {\n#endif\n\n'
    text += '#if defined(__GNUC__)\n#pragma GCC visibility push(default)\n#endif\n'
    return text + prototypes(flat.extension_rows) + HEADER_END


FORWARDERS = '''// {generated}
// {about}
// No test and no message of their own: what a method does with its arguments is told in zmatrix/zmatrix.h.
{includes}
// clang-format off

// In a namespace of their own, since some have the name of what they call; that of an extern "C" function is the same in any.
#pragma GCC visibility push(default)
namespace zmatrix::flat {{
extern "C" {{

'''
FORWARDERS_END = '\n}  // extern "C"\n}  // namespace zmatrix::flat\n#pragma GCC visibility pop\n'


def tier_forwarders(flat, tier):
    names = TIERS[tier]
    text = FORWARDERS.format(generated=GENERATED, about=f"The {names['name']} tier's functions of the boundary, a line each.",
                             includes=f"#include \"flat/ZQGuarded.h\"\n#include \"{names['header']}\"\n")
    for function in flat.functions:
        if function.tier == tier:
            text += f'{function.prototype(empty="")} {function.body()}\n'
    return text + FORWARDERS_END


def object_forwarders(flat):
    includes = sorted(set(flat.includes) | {'flat/ZQGuarded.h', 'symbols/ZQMatrix.h'})
    text = FORWARDERS.format(generated=GENERATED,
                             about='The functions of the boundary on other objects and on none, a line each.',
                             includes=''.join(f'#include "{path}"\n' for path in includes))
    for function in flat.functions:
        if function.tier is not None or function.row.by_hand():
            continue
        text += f'{function.prototype(empty="")} {function.body()}\n'
    return text + FORWARDERS_END


def extension_forwarders(flat):
    includes = sorted(set(flat.extension_includes) | {'flat/ZQGuarded.h'})
    text = FORWARDERS.format(generated=GENERATED, about='The extension functions, a line each.',
                             includes=''.join(f'#include "{path}"\n' for path in includes))
    text += ''.join(f'{function.prototype(empty="")} {function.body()}\n' for function in flat.extensions)
    return text + FORWARDERS_END


def layout(_):
    text = f'// {GENERATED}\n'
    text += '// What a host takes for the plain structures is what the library writes: both definitions are compared here.\n'
    text += '#include <cstddef>\n\n#include "frame/ZQProgress.h"\n#include "music/midi/MIDIFILE.h"\n'
    text += '#include "settings/ZQMatrixProperties.h"\n\n'
    text += '#include <stddef.h>\n#include <stdio.h>\n#include <zmatrix/version.h>\n\n'
    text += 'namespace zmatrix::host {\n#include <zmatrix/zmatrix.h>\n}\n\n// clang-format off\n\nnamespace zmatrix {\nnamespace {\n\n'
    text += '#define SAME_SIZE(record) static_assert(sizeof(::record) == sizeof(host::record), #record)\n'
    text += '#define SAME_PLACE(record, field) \\\n'
    text += '  static_assert(offsetof(::record, field) == offsetof(host::record, field) && \\\n'
    text += '                    sizeof(::record::field) == sizeof(host::record::field), #record "." #field)\n\n'
    last = None
    for record, field in record_fields():
        if record != last:
            text += f'SAME_SIZE({record});\n'
            last = record
        text += f'SAME_PLACE({record}, {field});\n'
    return text + '\n}  // namespace\n}  // namespace zmatrix\n'


def facade(flat):
    text = f'// {GENERATED}\n' + '''// BBMatrix: the full tier behind plain methods, for bindings that take a C++ class. A host makes a matrix with createMatrixBB or
// one of its like, makes a BBMatrix of the pointer, and deletes the matrix with deleteMatrixBB. Each method is the function of its
// name, s_ in front, of zmatrix/zmatrix.h, where it is described; the few that do more say so here.
#pragma once

#include <zmatrix/zmatrix.h>

// clang-format off

class BBMatrix {
 public:
  void* reserved = nullptr;    ///< a word for the binding; no method reads it
  ZQMatrix* matrix = nullptr;  ///< what each method works on; not owned

  BBMatrix() = default;
  explicit BBMatrix(ZQMatrix* matrixToHold) : matrix(matrixToHold) {}
  BBMatrix(void* word, ZQMatrix* matrixToHold) : reserved(word), matrix(matrixToHold) {}

'''
    for function, statements in flat.facade:
        arguments = ', '.join(function.arguments[1:])
        names = ', '.join(['matrix'] + [name_of(argument) for argument in function.row.arguments])
        name = function.name[2:]
        while statements and statements[0].startswith('///'):
            text += f'  {statements.pop(0)}\n'
        result = '' if function.result == 'void' else 'return '
        if statements:
            text += f'  {function.result} {name}({arguments}) {{\n' + ''.join(f'    {line}\n' for line in statements) + '  }\n'
        else:
            text += f'  {function.result} {name}({arguments}) {{ {result}{function.name}({names}); }}\n'
    return text + '};\n'


def export_map(flat):
    names = sorted(function.name for function in flat.exported_functions())
    names = ''.join(f'    {name};\n' for name in names)
    version = (ROOT / 'include/zmatrix/version.h').read_text()
    major, minor = (re.search(rf'ZMATRIX_VERSION_{part} (\d+)', version).group(1) for part in ('MAJOR', 'MINOR'))
    return (f'# {GENERATED}\n# What the shared library shows. The names carry the version that its file name carries.\n'
            f'ZMATRIX_{major}.{minor} {{\n  global:\n{names}  local:\n    *;\n}};\n')
