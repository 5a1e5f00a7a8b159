#!/usr/bin/env python3
"""Writes the sources of the HTML reference: make.py FOLDER [JAVADOC FOLDER].

FOLDER gets copies of the project's Markdown pages, a page per subject of the C interface made from bindings/api.json, and pages for the
languages. Sphinx turns them into HTML and checks every reference."""
import json
import pathlib
import shutil
import sys

import c_pages
import language_pages

ROOT = pathlib.Path(__file__).resolve().parents[2]

INDEX = """zmatrix
=======

.. toctree::
   :maxdepth: 2
   :caption: Guides

   README
   docs/README
{guides}
   CHANGELOG
   CONTRIBUTING

.. toctree::
   :maxdepth: 2
   :caption: Reference

   languages
   c/index
   {languages}

* :ref:`genindex`
"""


def copy_pages(folder):
    """Copies the pages to the same relative paths as in the project, so that links between them stay valid."""
    (folder / 'docs').mkdir(parents=True)
    for name in ('README.md', 'CHANGELOG.md', 'CONTRIBUTING.md', 'LICENSE'):
        shutil.copy(ROOT / name, folder / name)
    guides = sorted((ROOT / 'docs').glob('*.md'))
    for page in guides:
        shutil.copy(page, folder / 'docs' / page.name)
    return [f'docs/{page.stem}' for page in guides if page.stem != 'README']


def main(folder, javadoc):
    model_file = ROOT / 'bindings/api.json'
    model = json.loads(model_file.read_text())
    shutil.rmtree(folder, ignore_errors=True)
    guides = copy_pages(folder)
    languages = language_pages.all_languages(ROOT, javadoc)
    c_pages.write(model, folder / 'c', languages)
    for language in languages:
        language.write(model, folder)
    language_pages.write_comparison(folder / 'languages.rst', languages)
    pages = '\n   '.join(page for language in languages for page in language.pages)
    (folder / 'index.rst').write_text(INDEX.format(guides='\n'.join(f'   {guide}' for guide in guides), languages=pages))
    shutil.copy(pathlib.Path(__file__).with_name('conf.py'), folder)
    shutil.copy(model_file, folder)


if __name__ == '__main__':
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None)
