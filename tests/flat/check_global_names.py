#!/usr/bin/env python3
"""check_global_names.py NM STATIC_LIBRARY MAP HEADER...: fails if the objects of the library define an external C++ name outside of
namespace zmatrix that is neither a function of the map nor a member of a type that a public header names."""
import pathlib
import re
import subprocess
import sys

nm, library, export_map, *headers = sys.argv[1:]
functions = set(re.findall(r'^    (\w+);$', pathlib.Path(export_map).read_text(encoding='ascii'), re.MULTILINE))
types = {name for header in headers
         for name in re.findall(r'\b(?:struct|class)\s+(\w+)', pathlib.Path(header).read_text(encoding='ascii'))}
# A mangled name: an optional word on what is made of the entity, then its outermost scope, or the name itself if it has none.
MANGLED = re.compile(r'_Z(?:T[VTISWHC]|T[hv]n?\d+_(?:n?\d+_)?|GV|GR|GTt)?Z*(?:N[KVRrO]*)?(?:(?P<std>S[a-z])|(?P<length>\d+)(?P<rest>\w+))')


def scope_of(symbol):
    match = MANGLED.match(symbol)
    if match is None:
        return symbol
    return 'std' if match['std'] else match['rest'][:int(match['length'])]


lines = subprocess.run([nm, '--defined-only', '--extern-only', library], check=True, capture_output=True, text=True).stdout.splitlines()
symbols = {fields[2] for fields in map(str.split, lines) if len(fields) == 3}
# Templates of the standard library and its placement new are instantiated here. Compilers and sanitizers add names of their own, which
# begin with two underscores, and DW.ref.
allowed = functions | types | {'zmatrix', 'std', '__gnu_cxx'}
found = sorted(symbol for symbol in symbols
               if scope_of(symbol) not in allowed and not re.match(r'__|DW\.ref\.|_Z(nw|na|dl|da)', symbol))
for symbol in found:
    print('outside of namespace zmatrix:', symbol)
sys.exit(0 if functions and types and len(symbols) > len(functions) and not found else 1)
