"""The configuration of Sphinx: pages in Markdown and reStructuredText, names of C, Python and JavaScript, every reference checked."""
import json
import pathlib

import zmatrix

_model = json.loads((pathlib.Path(__file__).parent / 'api.json').read_text())

project = 'zmatrix'
version = release = _model['version']
extensions = ['myst_parser', 'sphinx.ext.autodoc']
html_theme = 'furo'
html_copy_source = False
smartquotes = False
html_show_sphinx = False
html_show_copyright = False
html_extra_path = ['extra'] if (pathlib.Path(__file__).parent / 'extra').exists() else []
myst_heading_anchors = 3
suppress_warnings = ['misc.highlighting_failure']
autodoc_member_order = 'bysource'
autodoc_typehints = 'signature'
autodoc_typehints_format = 'short'
add_module_names = False

# Types of the languages' standard libraries, and type variables in the signatures of the Python layer.
nitpick_ignore = [('c:identifier', name) for name in ('FILE', 'size_t', 'int64_t')]
nitpick_ignore_regex = [('py:class', r'(?!zmatrix\.).*'), ('py:class', r'zmatrix\._.*'), ('py:obj', r'typing\..*')]

assert zmatrix.__version__ == version, 'the loaded library has another version'
