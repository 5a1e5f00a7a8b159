"""Runs the code of docs/python.md in order and compares the output with the page."""
import contextlib
import io
import os
import pathlib
import re
import shutil


def test_the_tutorial_does_what_it_says(examples, tmp_path):
    page = pathlib.Path(__file__).with_name('python.md').read_text()
    shutil.copytree(examples, tmp_path / 'examples')
    before, names, checked = os.getcwd(), {}, 0
    os.chdir(tmp_path)
    try:
        for code, expected in re.findall(r'```python\n(.*?)```(?:\s*```text\n(.*?)```)?', page, re.S):
            output = io.StringIO()
            with contextlib.redirect_stdout(output):
                exec(code, names)
            if expected:
                assert output.getvalue() == expected
                checked += 1
    finally:
        os.chdir(before)
    assert checked >= 4
