#!/usr/bin/env python3
"""check_exports.py NM LIBRARY MAP: fails if the library shows another name than the map lists, or lacks one."""
import re
import subprocess
import sys

nm, library, export_map = sys.argv[1:]
text = open(export_map, encoding='ascii').read()
listed = set(re.findall(r'^    (\w+);$', text, re.MULTILINE))
lines = subprocess.run([nm, '-D', '--defined-only', library], check=True, capture_output=True, text=True).stdout.splitlines()
# A sanitizer's runtime brings names of its own, and the version node of the map is one.
listed |= set(re.findall(r'^(\w[\w.]*) \{$', text, re.MULTILINE))
shown = {name for name in (line.split()[-1].split('@')[0] for line in lines) if not re.match(r'_*(asan|ubsan|odr_asan|lsan)', name)}
for name in sorted(shown - listed):
    print('shown, but not listed:', name)
for name in sorted(listed - shown):
    print('listed, but not shown:', name)
sys.exit(0 if listed and shown == listed else 1)
