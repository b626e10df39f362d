"""The small C++ programs that some parts run: built when they are first needed, in a folder of their own."""

import pathlib
import subprocess

PROJECT = pathlib.Path(__file__).resolve().parent.parent
BUILD = PROJECT / "build/bench"


def built(*targets):
    """The paths of these programs, up to date."""
    quietly = {"check": True, "stdout": subprocess.DEVNULL}
    if not (BUILD / "build.ninja").exists():
        subprocess.run(["cmake", "-S", str(PROJECT), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                        "-DBUILD_TESTING=OFF", "-DLUMACAP_BUILD_BENCHMARKS=ON"], **quietly)
    subprocess.run(["cmake", "--build", str(BUILD), "--target", *targets], **quietly)
    return [str(BUILD / "bench" / target) for target in targets]
