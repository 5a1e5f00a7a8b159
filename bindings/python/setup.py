"""The wheel of zmatrix. scripts/python puts the shared library into the package, then builds this."""
import re
from pathlib import Path

from setuptools import setup
from wheel.bdist_wheel import bdist_wheel

HERE = Path(__file__).resolve().parent


class PlatformWheel(bdist_wheel):
    """The library needs no particular interpreter, only the platform that it was built for."""

    def finalize_options(self):
        super().finalize_options()
        self.root_is_pure = False

    def get_tag(self):
        return 'py3', 'none', super().get_tag()[2]


def version():
    text = (HERE.parents[1] / 'include/zmatrix/version.h').read_text()
    return '.'.join(re.search(rf'ZMATRIX_VERSION_{part} (\d+)', text).group(1) for part in ('MAJOR', 'MINOR', 'PATCH'))


setup(
    name='zmatrix',
    version=version(),
    description='Learns texts, music and series of integers, and continues them',
    license='MIT',
    python_requires='>=3.9',
    packages=['zmatrix'],
    package_data={'zmatrix': ['libzmatrix.so', 'py.typed', '*.pyi']},
    cmdclass={'bdist_wheel': PlatformWheel},
)
