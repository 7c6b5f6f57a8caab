"""Builds the extension with CMake from the tree that this directory lies in; pyproject.toml has the rest.

The environment variable ORVEX_BUILD_DIR names a build directory to be used (and kept), for example one that holds the
compiled library already.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent.parent


def version() -> str:
    found = re.search(r"project\(orvex VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"))
    if not found:
        raise RuntimeError("CMakeLists.txt does not tell the version")
    return found[1]


class CMakeBuild(build_ext):
    def build_extension(self, extension: Extension) -> None:
        build = pathlib.Path(os.environ.get("ORVEX_BUILD_DIR") or pathlib.Path(self.build_temp).resolve())
        generator = ["-G", "Ninja"] if shutil.which("ninja") and not (build / "CMakeCache.txt").exists() else []
        off = [f"-DORVEX_{part}=OFF" for part in ("BUILD_TOOL", "BUILD_EXAMPLES", "BUILD_TESTS", "INSTALL")]
        if (build / "CMakeCache.txt").exists():
            off = []  # somebody else's directory: leave its choices alone
        subprocess.run(["cmake", "-S", str(ROOT), "-B", str(build), *generator, *off, "-DCMAKE_BUILD_TYPE=Release",
                        "-DORVEX_BUILD_PYTHON=ON", f"-DPython3_EXECUTABLE={sys.executable}"], check=True)
        subprocess.run(["cmake", "--build", str(build), "--target", "orvex_python", "--parallel",
                        str(len(os.sched_getaffinity(0)))], check=True)
        built = build / "python" / "orvex"
        target = pathlib.Path(self.get_ext_fullpath(extension.name))
        (target.parent / "data").mkdir(parents=True, exist_ok=True)
        shutil.copy2(next(built.glob("_core.*")), target)
        shutil.copy2(built / "data" / "land.txt", target.parent / "data")


setup(version=version(), ext_modules=[Extension("orvex._core", [])], cmdclass={"build_ext": CMakeBuild})
