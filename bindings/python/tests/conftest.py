import pathlib

import pytest

import zmatrix

EXAMPLES = pathlib.Path(__file__).resolve().parents[1] / 'examples'


@pytest.fixture
def examples():
    return EXAMPLES


@pytest.fixture(scope='module')
def harbour():
    return zmatrix.learn(EXAMPLES / 'harbour.txt')
