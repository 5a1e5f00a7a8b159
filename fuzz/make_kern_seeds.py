#!/usr/bin/env python3
"""Writes seeds for fuzz_kern: fuzz/make_kern_seeds.py FOLDER. Each is a byte of options and a short kern file."""
import pathlib
import sys

SCORES = [
    '**kern\t**kern\n*Ivioln\t*ICvox\n[2c 2e_\t[3%2g\n*^\t*\n[4f\t4c] 4e\tqa\n*v\t*v\t*\n2e] f\t00.g]\n{4r\t4r}\n*-\t*-\n',
    '**kern\n*M4/4\n*k[f#]\n*MM90\n4c\n=1\n{4d\n8e\n8ff#\n4r}\n[2G\n=2\n2G]\n==\n*-\n',
    '**kern\t**kern\t**text\n=1\t=1\t=1\n2c\t4e 4g\tla\n.\t8.f-\t.\n.\tqa\t.\n4c\t16b\tli\n*-\t*-\t*-\n',
    '**kern\n*^\n4c\t4e\n*\t*^\n4d\t4f\t4a\n*v\t*v\t*\n=\t=\n4e\t4g\n*x\t*x\n*v\t*v\n4r\n*-\n',
    '**kern\t**kern\n*Ch3\t*Ch3\n2c\t2c\n*+\t*\n*\t**kern\t*\n4d\t4e\t4f\n*-\t*-\t*\n4c\n*-\n**kern\n4g\n*-\n',
    '!!! x\n**kern\n!! y\n4c 4e 4g\n! z\n*MM60-80\n*M3/8\n*M6/4\n8Qd\n8%3c\n0c\n00r\n1000000e\n*-\n',
    '**kern\t**kern\n=1\t=1\n4c\t4e\n=2\t=2\n8\t8\n4g\t.\n4f\t4f\n*-\t*-\n',
    '**kern\r\n4c\r\n*-\r\n', '**kern\n\n*-\n', '**kern\n4c', '\xef\xbb\xbf**kern\n4c\0d\n*-\n', '*M3/0\n=\n=\n*-\n',
    '**kern\n' + '4c ' * 400 + '4c\n' + '!!' + 'x' * 1200 + '\n*-\n',
    '**kern' + '\t**kern' * 90 + '\n4c' + '\t4c' * 90 + '\n*-' + '\t*-' * 90 + '\n',
    '**kern\n' + '*^\n4c\n' * 40 + '*-\n',
]

folder = pathlib.Path(sys.argv[1])
folder.mkdir(parents=True, exist_ok=True)
for number, score in enumerate(SCORES):
    for options in (number % 8, 8 + (number + 4) % 8, 16 + (number + 2) % 8):
        (folder / f'score{number}-{options}').write_bytes(bytes([options]) + score.encode('latin-1'))
