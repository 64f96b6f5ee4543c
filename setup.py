"""Makes the Python package `sectrix`, with the libraries in it, by the build of the whole project: pip install ."""

import pathlib
import re
import sys

from skbuild import setup

HERE = pathlib.Path(__file__).parent
VERSION = re.search(r"project\(\w+ VERSION ([\d.]+)", (HERE / "CMakeLists.txt").read_text())
assert VERSION

setup(
    name="sectrix",
    version=VERSION[1],
    description="Section geometry of bridges and tunnels",
    long_description=(HERE / "README.md").read_text(encoding="utf-8"),
    long_description_content_type="text/markdown",
    packages=["sectrix"],
    package_dir={"": "python"},
    package_data={"sectrix": ["py.typed", "*.pyi"]},
    python_requires=">=3.9",
    install_requires=["numpy"],
    extras_require={"plot": ["matplotlib"], "files": ["meshio"], "cluster": ["dask", "distributed"]},
    cmake_install_dir="python/sectrix",
    cmake_args=[
        f"-DPython_EXECUTABLE={sys.executable}",
        "-DORL_SECTRIX_PYTHON=ON",
        "-DORL_SECTRIX_COMMAND=OFF",
        "-DORL_SECTRIX_INSTALL=OFF",
        "-DORL_SECTRIX_TESTS=OFF",
        "-DORL_SECTRIX_EXAMPLES=OFF",
    ],
)
