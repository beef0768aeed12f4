"""Builds the extension: the library, linked statically, and the declarations of its C header."""

import os
import runpy

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

HERE = os.path.dirname(os.path.abspath(__file__))


class BuildWithLibrary(build_ext):
    """Compiles the library before what is linked with it."""

    def run(self):
        runpy.run_path(os.path.join(HERE, "library.py"))["build"]()
        super().run()


setup(
    cffi_modules=["library.py:ffi"],
    cmdclass={"build_ext": BuildWithLibrary},
    ext_modules=[
        Extension(
            "morvane._exporter",
            ["src/morvane/_exporter.c"],
            define_macros=[("Py_LIMITED_API", "0x030b0000")],
            py_limited_api=True,
        )
    ],
)
