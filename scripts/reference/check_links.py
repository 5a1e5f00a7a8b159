#!/usr/bin/env python3
"""check_links.py FOLDER: checks every link between the HTML files of a folder, including anchors. Exits with 1 if one has no target."""
import html.parser
import pathlib
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self, file):
        super().__init__()
        self.links, self.anchors = [], set()
        self.feed(file.read_text(errors='replace'))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.anchors |= {attributes[name] for name in ('id', 'name') if attributes.get(name)}
        self.links += [attributes[name] for name in ('href', 'src') if attributes.get(name)]


def main(folder):
    pages = {file.resolve(): Page(file) for file in folder.rglob('*.html')}
    followed = 0
    broken = []
    for file, page in pages.items():
        for link in set(page.links):
            parts = urllib.parse.urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            path = urllib.parse.unquote(parts.path)
            target = (file.parent / path).resolve() if path else file
            if target.is_dir():
                target = target / 'index.html'
            followed += 1
            anchor = urllib.parse.unquote(parts.fragment)
            if not target.is_file():
                broken.append(f'{file.relative_to(folder.resolve())}: no file {link}')
            elif anchor and target in pages and anchor not in pages[target].anchors:
                broken.append(f'{file.relative_to(folder.resolve())}: no anchor {link}')
    print('\n'.join(sorted(broken)))
    print(f'{followed} links in {len(pages)} pages, {len(broken)} without a target')
    return 1 if broken or not followed else 0


if __name__ == '__main__':
    sys.exit(main(pathlib.Path(sys.argv[1])))
