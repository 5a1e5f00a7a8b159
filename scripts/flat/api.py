"""bindings/api.json: all that a binding has to know of the boundary."""
import json
import re
import sys

from .rows import EXTENSIONS, GENERATED, LIST, OPAQUE, ROOT, TIERS
from .signatures import Signatures, codes_of, result_text, says_result
from .types import Type, read_setting_numbers, read_types

PROGRESS = Type('function', 'matrixProgressCallBackFunction', ['What a host has called while long operations run. The record lives until the call ends.'],
                'void', 'progressCallBackData_tag* data')


def all_types():
    return read_setting_numbers() + read_types(LIST / 'records.list') + [PROGRESS] + read_types(EXTENSIONS / 'types.list')


def described_type(entry):
    described = {'name': entry.name, 'documentation': ' '.join(entry.documentation)}
    if entry.kind == 'enum':
        described['values'] = [{'name': field.name, 'value': field.value, 'documentation': field.about} for field in entry.fields]
    elif entry.kind == 'struct':
        described['fields'] = [{'name': field.name, 'type': field.type, **({'count': field.count} if field.count else {}),
                                'documentation': field.about} for field in entry.fields]
    else:
        described['result'] = entry.result
        described['arguments'] = [dict(zip(('type', 'name'), re.fullmatch(r'(.+?)\s*(\w+)', argument.strip()).groups()))
                                  for argument in entry.arguments.split(',')]
    return described


def described_part(part):
    described = {'name': part.name, 'type': part.type, 'kind': part.kind}
    if part.kind == 'none':
        return {'type': 'void', 'kind': 'none'}
    if part.name is None:
        del described['name']
    elif part.kind != 'variadic':
        described['direction'] = part.direction
    for name in ('shape', 'ownership', 'owner', 'release'):
        if getattr(part, name):
            described[name] = getattr(part, name)
    if part.nullable:
        described['nullable'] = True
    return described


def described_function(flat, signatures, function):
    row = function.row
    arguments, result = signatures.of(function)
    described = {'name': function.name, 'header': 'zq.h' if row in flat.extension_rows else 'zmatrix.h', 'family': row.name,
                 'tier': TIERS[function.tier]['name'] if function.tier else None, 'subject': row.subject,
                 'arguments': [described_part(part) for part in arguments], 'result': described_part(result)}
    if says_result(row):
        described['result']['documentation'] = result_text(row)
    codes = codes_of(row) if '*' not in function.result and function.result != 'void' else []
    if codes:
        described['result']['codes'] = [{'value': value, 'documentation': meaning} for value, meaning in codes]
    described['documentation'] = ' '.join(row.documentation)
    return described


def model(flat):
    """The whole as plain values; ends the generator if a row leaves something open."""
    if not hasattr(flat, 'model'):
        types = all_types()
        signatures = Signatures(flat, types)
        functions = [described_function(flat, signatures, function) for function in flat.exported_functions()]
        if signatures.refused:
            sys.exit('\n'.join(dict.fromkeys(signatures.refused)))
        version = (ROOT / 'include/zmatrix/version.h').read_text()
        flat.model = {
            'about': GENERATED,
            'version': '.'.join(re.search(rf'ZMATRIX_VERSION_{part} (\d+)', version).group(1) for part in ('MAJOR', 'MINOR', 'PATCH')),
            'objects': [{'name': name, 'documentation': about} for name, about in OPAQUE],
            'enumerations': [described_type(entry) for entry in types if entry.kind == 'enum'],
            'structures': [described_type(entry) for entry in types if entry.kind == 'struct'],
            'callbacks': [described_type(entry) for entry in types if entry.kind == 'function'],
            'functions': functions,
        }
    return flat.model


def document(flat):
    """A line for each function and each type, so that a change of the list is a change of lines here."""
    parts = []
    for name, value in model(flat).items():
        if isinstance(value, list):
            entries = ',\n'.join('  ' + json.dumps(entry, ensure_ascii=False) for entry in value)
            parts.append(f' {json.dumps(name)}: [\n{entries}\n ]')
        else:
            parts.append(f' {json.dumps(name)}: {json.dumps(value, ensure_ascii=False)}')
    return '{\n' + ',\n'.join(parts) + '\n}\n'
