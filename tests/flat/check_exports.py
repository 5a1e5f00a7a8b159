#!/usr/bin/env python3
"""check_exports.py NM LIBRARY MAP: fails unless the library exports exactly the names that the map lists."""
import re
import subprocess
import sys

nm, library, export_map = sys.argv[1:]
text = open(export_map, encoding='ascii').read()
listed = set(re.findall(r'^    (\w+);$', text, re.MULTILINE))
lines = subprocess.run([nm, '-D', '--defined-only', library], check=True, capture_output=True, text=True).stdout.splitlines()
# The version node of the map is a name too; names of the sanitizers' runtime are ignored.
listed |= set(re.findall(r'^(\w[\w.]*) \{$', text, re.MULTILINE))
exported = {name for name in (line.split()[-1].split('@')[0] for line in lines) if not re.match(r'_*(asan|ubsan|odr_asan|lsan)', name)}
for name in sorted(exported - listed):
    print('exported, but not listed:', name)
for name in sorted(listed - exported):
    print('listed, but not exported:', name)
sys.exit(0 if listed and exported == listed else 1)
