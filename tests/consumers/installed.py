#!/usr/bin/env python3
"""Installs the build, moves the copy elsewhere, and lets the consumer projects and the program use it there.

    installed.py BUILD VERSION LIBDIR C_COMPILER CXX_COMPILER
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent


def run(*command, **variables):
    done = subprocess.run([str(word) for word in command], env=os.environ | {k: str(v) for k, v in variables.items()},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}")
    return done.stdout


def check_made_with_the_program(build):
    """Who has built nothing but the program, as ./run demo does, can install."""
    if not (build / "build.ninja").exists() or not (build / "tools" / "lumivex").exists():
        return
    commands = run("ninja", "-C", build, "-t", "commands", "lumivex_tool")
    script = (build / "cmake_install.cmake").read_text(encoding="utf-8")
    installed = re.findall(rf'"{re.escape(str(build))}/((?:src|tools)/[^"]*[^"/])"', script)
    for file in installed:
        if file not in commands and not file.endswith(".cmake"):
            sys.exit(f"{file} is installed, but not made with the program")
    if "tools/about/lumivex.1" not in installed:
        sys.exit("no manual page is installed")


def check_older_cxx(prefix, cxx_compiler):
    """One line says which C++ is wanted, rather than many what is wrong with the headers."""
    done = subprocess.run([cxx_compiler, "-std=c++17", "-fsyntax-only", f"-I{prefix / 'include'}", HERE / "host.cpp"],
                          capture_output=True, text=True)
    first = [line for line in done.stderr.splitlines() if "error:" in line][:1]
    if not first or "needs C++20" not in first[0] or "concept" in done.stderr:
        sys.exit(f"lumivex.hpp as C++17: {done.stderr}")


def build_with_cmake(prefix, folder, version, compilers):
    configure = ["cmake", "-S", HERE / "cmake", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}"]
    wanted = f"-DWANTED_VERSION={version}"
    run(*configure, "-B", f"{folder}-c", wanted, "-DLANGUAGES=C", CC=compilers["CC"], CXX="none")
    run("cmake", "--build", f"{folder}-c")
    configure += ["-B", folder, "-DLANGUAGES=C;CXX", "-DCMAKE_CXX_STANDARD=17"]
    run(*configure, wanted, **compilers)
    run("cmake", "--build", folder)
    # A copy that is too old must not be taken.
    major, rest = version.split(".", 1)
    if subprocess.run([str(word) for word in configure] + [f"-DWANTED_VERSION={int(major) + 1}.{rest}"],
                      capture_output=True).returncode == 0:
        sys.exit("find_package takes a version that is too old")


def build_with_pkg_config(prefix, folder, library_folder, compilers):
    folder.mkdir()
    paths = {"PKG_CONFIG_PATH": prefix / library_folder / "pkgconfig"}
    run("sh", HERE / "pkg-config" / "build.sh", HERE, folder, **paths, **compilers)


def main():
    build, version, library_folder, c_compiler, cxx_compiler = sys.argv[1:]
    build = Path(build).resolve()
    compilers = {"CC": c_compiler, "CXX": cxx_compiler}
    wanted = f"{version}: 255 155 0 7\n"
    check_made_with_the_program(build)
    with tempfile.TemporaryDirectory(dir=build) as temporary:
        run("cmake", "--install", build, "--prefix", Path(temporary) / "first")
        prefix = Path(temporary) / "moved"
        shutil.move(Path(temporary) / "first", prefix)
        cmake, pkg_config = Path(temporary) / "cmake", Path(temporary) / "pkg-config"
        build_with_cmake(prefix, cmake, version, compilers)
        build_with_pkg_config(prefix, pkg_config, library_folder, compilers)
        check_older_cxx(prefix, cxx_compiler)
        for program in [folder / name for folder in (cmake, pkg_config) for name in ("c_host", "cxx_host")]:
            printed = run(program, LD_LIBRARY_PATH=prefix / library_folder)
            if printed != wanted:
                sys.exit(f"{program} prints {printed!r}, not {wanted!r}")
        program = prefix / "bin" / "lumivex"
        if program.exists() and run(program, "--version") != f"lumivex {version}\n":
            sys.exit("the installed program is of another version")


if __name__ == "__main__":
    main()
