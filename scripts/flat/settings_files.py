"""What the list gives to the library itself: the plain record of settings, and the accessors of the matrix classes."""
from .rows import GENERATED, LIST, TIERS, name_of
from .types import read_types

PROPERTIES = '''// {generated}
// The flat parameter record, field by field as hosts have it in zmatrix/zmatrix.h. Its first fields are the two global blocks of a
// header; with the further fields it is the snapshot of a sub-matrix that getGlobalMatrixInfoParameters hands to a host. The arrays
// of a snapshot are the info record's own and live as long as they do there. Plain data without constructors: whoever makes one
// fills it with zeros first.
#pragma once

// clang-format off

struct ZQMatrixProperties {{
{fields}}};
'''


def properties(_):
    record = next(entry for entry in read_types(LIST / 'records.list') if entry.name == 'ZQMatrixProperties')
    width = max(len(field.code) for field in record.fields) + 2
    fields = ''.join(f'  {field.code + ";":<{width}} ///< {field.about}\n' for field in record.fields)
    return PROPERTIES.format(generated=GENERATED, fields=fields)


ACCESSORS = '''// {generated}
// What the matrix classes offer of their header and of the current sub-matrix's info record, a method for each row of the list
// that names its target. The accessors of a tier stand between its class and the tier below:
//
//   class ZQMatrixBase   : public zmatrix::ZQMatrixBaseAccessors<ZQMatrixBase>
//   class ZQMatrixMedium : public zmatrix::ZQMatrixMediumAccessors<ZQMatrixMedium, ZQMatrixBase>
//   class ZQMatrix       : public zmatrix::ZQMatrixFullAccessors<ZQMatrix, ZQMatrixMedium>
//
// Where the record or the profiles of a tier do more than those below, the tier has an accessor of its own, which hides the one
// below. As in a direct call, header and record must exist.
#pragma once

#include "settings/ZQMatrixPrintouts.h"
#include "settings/ZQMatrixProfiles.h"

// clang-format off

namespace zmatrix {{
'''

TIER_OF_ACCESSORS = {
    'B': ('template <class Matrix>\nclass ZQMatrixBaseAccessors {', 'ZQMatrixInfoTypeBase'),
    'M': ('template <class Matrix, class Below>\nclass ZQMatrixMediumAccessors : public Below {', 'ZQMatrixInfoTypeMedium'),
    'F': ('template <class Matrix, class Below>\nclass ZQMatrixFullAccessors : public Below {', 'ZQMatrixInfoTypeFull'),
}

MATRIX_OF_ACCESSORS = '''
 private:
  static constexpr ZQMatrixInfoType tier = {tier};
  Matrix& asMatrix() {{ return static_cast<Matrix&>(*this); }}
  const Matrix& asMatrix() const {{ return static_cast<const Matrix&>(*this); }}
  auto* currentRecord() const {{ return asMatrix().getMatrixInfo(); }}
  ZQMatrixFileHeader* fileHeader() const {{ return asMatrix().getMatrixFileHeader(); }}
}};
'''

BLOCKS = {'block': 'fileHeader()->getGlobalMatrixProperties()->', 'symbolBlock': 'fileHeader()->getGlobalSymbolMatrixProperties()->'}
PLACES_OF_PROFILES = {
    'setDefaultMatrixProperties': '*currentRecord(), *fileHeader(), nameOfUpdateFile',
    'setGlobalDefaultMatrixProperties': '*fileHeader(), tier',
    'checkMatrixProperties': '*currentRecord()',
    'checkGlobalMatrixProperties': '*fileHeader(), tier',
}


def statement(row):
    if row.target == 'call':
        return row.method
    if row.target in BLOCKS:
        field = BLOCKS[row.target] + row.method
        return field if not row.arguments else f'{field} = {name_of(row.arguments[0])}'
    if row.target == 'profile':
        operation, _, profile = row.name.partition('For')
        return f'zmatrix::{operation}(Profile::{profile}, {PLACES_OF_PROFILES[operation]})'
    return row.call('fileHeader()->' if row.target == 'header' else 'currentRecord()->')


def accessor(row):
    result = row.result.replace('@Info', TIERS['B']['info'])
    constant = ' const' if row.name.startswith('get') else ''
    give = '' if result == 'void' else 'return '
    return f"  {result} {row.name}({', '.join(row.arguments)}){constant} {{ {give}{statement(row)}; }}\n"


def accessors(flat):
    text = ACCESSORS.format(generated=GENERATED)
    for tier, (head, name) in TIER_OF_ACCESSORS.items():
        text += f'\n{head}\n public:\n'
        if tier != 'B':
            text += '  using Below::Below;\n\n'
        for row in flat.rows:
            if row.target and (tier == row.kind[-1] or row.is_of_each_tier and tier in row.kind):
                text += accessor(row)
        text += MATRIX_OF_ACCESSORS.format(tier=name)
    return text + '\n}  // namespace zmatrix\n'
