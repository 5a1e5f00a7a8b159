"""The pages of the other languages: the layer of each, with the documentation from its code, and its raw C functions."""
import json
import re

import declarations
from markup import indented, label, title

# Common tasks: the C functions for each, then the names in each layer.
SAME_TASKS = json.loads((__import__('pathlib').Path(__file__).parent / 'tasks.json').read_text())


class Python:
    name, key = 'Python', 'python'
    pages = ['python/index', 'python/raw']

    def __init__(self, root):
        source = (root / 'bindings/python/zmatrix/raw.pyi').read_text()
        self.signatures = dict(re.findall(r'^def (\w+)(\(.*\) -> [^:\n]*):', source, re.M))

    def link(self, function):
        return f":py:func:`zmatrix.raw.{function['name']}`" if function['name'] in self.signatures else ''

    def task(self, name):
        return f":py:obj:`{name} <zmatrix.{name}>`"

    def write(self, model, folder):
        (folder / 'python').mkdir()
        text = title('Python') + 'A tutorial is :doc:`/docs/python`.\n\n'
        text += '.. automodule:: zmatrix\n   :members:\n   :inherited-members: str, int, tuple, Exception\n   :imported-members:\n\n'
        (folder / 'python/index.rst').write_text(text)
        text = title('zmatrix.raw') + '.. py:module:: zmatrix.raw\n\nThe C functions through ctypes.\n\n'
        for function in model['functions']:
            if function['name'] in self.signatures:
                signature = re.sub(r'\bAny\b', 'object', self.signatures[function['name']])
                text += f".. py:function:: {function['name']}{signature}\n\n" + indented(f":c:func:`{function['name']}`") + '\n\n'
        (folder / 'python/raw.rst').write_text(text)


class JavaScript:
    name, key = 'JavaScript', 'js'
    pages = ['javascript/index', 'javascript/raw']
    layer, raw = 'bindings/js/src/index.d.ts', 'bindings/js/src/raw.d.ts'

    def __init__(self, root):
        self.declared = declarations.read((root / self.layer).read_text())
        raw = declarations.read((root / self.raw).read_text())
        self.functions = next(entry for entry in raw if entry.name == 'Functions').members
        for function in self.functions:
            function.kind = 'function'
        self.signatures = {entry.name: entry for entry in self.functions}

    def link(self, function):
        return f":js:func:`{function['name']}`" if function['name'] in self.signatures else ''

    def task(self, name):
        return f':js:func:`{name}`'

    def write(self, model, folder):
        (folder / 'javascript').mkdir()
        text = title('JavaScript') + 'A tutorial is :doc:`/docs/javascript`.\n\n'
        (folder / 'javascript/index.rst').write_text(text + declarations.as_directives(self.declared))
        text = title('The raw functions') + 'The C functions that the module exports.\n\n'
        text += declarations.as_directives(self.functions, lambda entry: f':c:func:`{entry.name}`')
        (folder / 'javascript/raw.rst').write_text(text)


class Java:
    """Links into javadoc, whose index has the address of each name. A function of a tier is a method of the tier's class, without suffix."""
    name, key = 'Java', 'java'
    pages = ['java']
    TIERS = {'full': ('Full', ''), 'medium': ('Medium', '_Medium'), 'base': ('Base', '_Base'), None: ('Common', '')}

    def __init__(self, javadoc):
        self.addresses = {}
        for entry in self.index_of(javadoc, 'type'):
            if 'p' in entry:
                self.addresses[entry['l']] = f"java/{entry['p'].replace('.', '/')}/{entry['l']}.html"
        for entry in self.index_of(javadoc, 'member'):
            address = f"{self.addresses[entry['c']]}#{entry.get('u', entry['l'])}"
            self.addresses.setdefault(f"{entry['c']}.{entry['l'].split('(')[0]}", address)

    @staticmethod
    def index_of(javadoc, kind):
        return json.loads(re.search(r'\[.*\]', (javadoc / f'{kind}-search-index.js').read_text(), re.S).group())

    def link(self, function):
        tier, suffix = self.TIERS[function['tier']]
        name = f"{tier}.{function['name'].removesuffix(suffix)}"
        return f'`{name} <../{self.addresses[name]}>`__' if name in self.addresses else ''

    def task(self, name):
        return f'`{name} <{self.addresses[name]}>`__'

    def write(self, model, folder):
        text = title('Java') + 'A tutorial is :doc:`/docs/java`. The classes and the raw functions: `javadoc <java/index.html>`__.\n'
        (folder / 'java.rst').write_text(text)


def all_languages(root, javadoc):
    languages = [Python(root)]
    if javadoc:
        languages.append(Java(javadoc))
    if (root / JavaScript.layer).exists():
        languages.append(JavaScript(root))
    return languages


def write_comparison(file, languages):
    text = label('languages') + title('One task, four languages')
    text += 'Each name links to its page. The raw C functions have the same names in every language.\n\n'
    text += '.. list-table::\n   :header-rows: 1\n\n   * - task\n     - C\n' + ''.join(f'     - {each.name}\n' for each in languages)
    for task in SAME_TASKS:
        text += f"   * - {task['task']}\n     - " + ', '.join(f':c:func:`{name}`' for name in task['c']) + '\n'
        for language in languages:
            text += '     - ' + ', '.join(map(language.task, task[language.key])) + '\n'
    file.write_text(text)
