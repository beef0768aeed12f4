"""Lets pip build the package from the root of the repository."""

import os

os.chdir(os.path.dirname(os.path.abspath(__file__)))

from setuptools.build_meta import *  # noqa: E402,F401,F403
