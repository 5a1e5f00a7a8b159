#!/usr/bin/env python3
"""Writes the C boundary of zmatrix, and the raw layers of the bindings, from its list.

    scripts/generate_flat.py                writes the files below
    scripts/generate_flat.py --check        writes nothing; exits 1 if a file is not what the list gives

The list lies in src/flat/list, one file per subsystem. A line that begins at the margin is one of

    # comment
    == Subject                               a heading in the header
    include FILE                             a header that the forwarders of this list file need
    KIND RESULT NAME (ARGUMENTS) [= METHOD] [else VALUE]

and is followed, for a row, by its documentation, indented by four. KIND says which functions the row stands for:

    FMB, FM, F, B     s_NAME of the full, s_NAME_Medium of the medium, s_NAME_Base of the base tier: method NAME of the matrix
    ...:info          the same for the info record of the tier, ...:element for its element
    vector, names     s_NAME for an index vector or a list of file names
    BB                NAME itself, a method of the full tier's matrix
    -                 NAME itself, a function without an object
    own               the same, but written by hand

METHOD is what is called if it isn't NAME: a name, or a whole call. @Info and @Element in a result are those of the tier.
VALUE is the result where memory runs out in a way that the method itself doesn't tell: 0, null or nothing if none is given.

A target behind KIND says that the matrix only hands the call on: KIND.header to its file header, KIND.record to the record of the
current sub-matrix, KIND.profile to the operation and profile that NAME is made of, KIND.call to the call that METHOD is. The
method of the matrix is then written too, into src/settings/ZQMatrixAccessors.h: that of the lowest tier, or, with a * behind the
target, one for each tier.

    setting KIND NAME [as GETTER[/SETTER]] [symbol setter KIND] [without symbols]

stands for the getter and setter of a setting of the current sub-matrix and of the same setting in both blocks of the header,
`settings basic` and `settings symbol` for the place of these. Its documentation is "what it is: its values" and "set: what the
setter does". GETTER and SETTER are the names in the record's functions, where they are spelled otherwise.

The extension functions zq_NAME of zmatrix/zq.h have lists of their own in list/extensions, in the same form, for their functions
and, in types.list, for their plain structures and enumerations, which become zmatrix/zq_types.h:

    -                 zq_NAME: calls NAME of the namespace zmatrix
    FM, F, M, B       zq_NAME of the full, zq_NAME_Medium of the medium tier, ...: calls NAME(matrix, ...) of the namespace zmatrix

bindings/api.json tells of each function the direction, the shape and the owner of all that it takes and gives. Types and the
sentences of the documentation say most of it by rules that scripts/flat/signatures.py tells. What they leave open stands on lines
that begin with @ below the documentation, which go into no header:

    @ ARGUMENT: [in|out|inout] [null] [taken] [SHAPE]    null: may be null; SHAPE: how many elements, by arguments and *results
    @ result: [new RELEASE|lent OWNER|given ARGUMENT] [SHAPE]

A pointer of which nothing says these is refused.
"""
import sys

from flat import api, c_files, java_files, js_files, python_files, settings_files
from flat.rows import ROOT, FlatList

FILES = {
    'include/zmatrix/zmatrix.h': c_files.header,
    'include/zmatrix/BBMatrix.h': c_files.facade,
    'include/zmatrix/zq.h': c_files.extension_header,
    'include/zmatrix/zq_types.h': c_files.extension_types,
    'src/settings/ZQMatrixAccessors.h': settings_files.accessors,
    'src/settings/ZQMatrixProperties.h': settings_files.properties,
    'src/flat/ZQFlatFull.cpp': lambda flat: c_files.tier_forwarders(flat, 'F'),
    'src/flat/ZQFlatMedium.cpp': lambda flat: c_files.tier_forwarders(flat, 'M'),
    'src/flat/ZQFlatBase.cpp': lambda flat: c_files.tier_forwarders(flat, 'B'),
    'src/flat/ZQFlatObjects.cpp': c_files.object_forwarders,
    'src/flat/ZQFlatExtensions.cpp': c_files.extension_forwarders,
    'src/flat/ZQFlatLayout.cpp': c_files.layout,
    'src/flat/zmatrix.map': c_files.export_map,
    'bindings/api.json': api.document,
    'bindings/python/zmatrix/raw.py': python_files.module,
    'bindings/python/zmatrix/raw.pyi': python_files.stub,
    **java_files.FILES,
    'bindings/js/src/raw.js': js_files.module,
    'bindings/js/src/raw.d.ts': js_files.declarations,
    'bindings/js/exports.json': js_files.exported_names,
    'bindings/js/layout.c': js_files.layout_check,
}


def main():
    check = sys.argv[1:] == ['--check']
    if sys.argv[1:] and not check:
        sys.exit(__doc__)
    flat, differing = FlatList(), []
    for name, write in FILES.items():
        path, text = ROOT / name, write(flat)
        if path.exists() and path.read_text() == text:
            continue
        differing.append(name)
        if not check:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
            print('wrote', name)
    if check and differing:
        sys.exit('not what scripts/generate_flat.py writes: ' + ', '.join(differing))


if __name__ == '__main__':
    main()
