"""Builds the wheel of zmatrix. scripts/python puts the shared library into the package first."""
import re
from pathlib import Path

from setuptools import setup
from wheel.bdist_wheel import bdist_wheel

HERE = Path(__file__).resolve().parent


class PlatformWheel(bdist_wheel):
    """A wheel for one platform and any Python version, since ctypes loads the library."""

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
    description='Learns texts, music and series of integers, and generates continuations',
    license='MIT',
    python_requires='>=3.9',
    packages=['zmatrix'],
    package_data={'zmatrix': ['libzmatrix.so', 'py.typed', '*.pyi']},
    cmdclass={'bdist_wheel': PlatformWheel},
)
