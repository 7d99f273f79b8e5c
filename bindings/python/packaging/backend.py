#!/usr/bin/env python3
"""Wheels, written with nothing but Python: no compiler, no other package, no network.

    backend.py FOLDER    the wheels of all libraries that are built, into FOLDER

It is also the build backend of pyproject.toml, so that pip can install this folder.
"""
import base64
import hashlib
import os
import sys
import sysconfig
import tempfile
import tomllib
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from stage import BINDING, ROOT, stage, version  # noqa: E402

# By platform tag: where the build of a library is, and what makes it.
HERE = sysconfig.get_platform().replace("-", "_").replace(".", "_")
LIBRARIES = {HERE: ("build/release/src/liblumivex.so.1", "./run test"),
             "win_amd64": ("build/windows64/bin/lumivex.dll", "./run windows"),
             "win32": ("build/windows32/bin/lumivex.dll", "./run windows")}


def _metadata():
    with open(BINDING / "pyproject.toml", "rb") as file:
        project = tomllib.load(file)["project"]
    lines = ["Metadata-Version: 2.1", f"Name: {project['name']}", f"Version: {version()}",
             f"Summary: {project['description']}", f"Requires-Python: {project['requires-python']}",
             "Description-Content-Type: text/markdown"]
    lines += [f"Requires-Dist: {name}" for name in project["dependencies"]]
    for extra, names in project["optional-dependencies"].items():
        lines += [f"Provides-Extra: {extra}"] + [f'Requires-Dist: {name}; extra == "{extra}"' for name in names]
    return "\n".join(lines) + "\n\n" + (BINDING / project["readme"]).read_text(encoding="utf-8")


def _add(archive, name, data, executable=False):
    # The same bytes whenever it is made: no time of day, no rights of whoever makes it.
    entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
    entry.external_attr = (0o100755 if executable else 0o100644) << 16
    entry.compress_type = zipfile.ZIP_DEFLATED
    archive.writestr(entry, data)
    digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
    return f"{name},sha256={digest},{len(data)}"


def make_wheel(folder, platform, library):
    information = f"lumivex-{version()}.dist-info"
    name = f"lumivex-{version()}-py3-none-{platform}.whl"
    with tempfile.TemporaryDirectory() as temporary:
        package = stage(temporary, library)
        contents = {f"lumivex/{path.name}": path.read_bytes() for path in sorted(package.iterdir()) if path.is_file()}
    contents[f"{information}/METADATA"] = _metadata().encode()
    contents[f"{information}/WHEEL"] = ("Wheel-Version: 1.0\nGenerator: lumivex\nRoot-Is-Purelib: false\n"
                                        f"Tag: py3-none-{platform}\n").encode()
    Path(folder).mkdir(parents=True, exist_ok=True)
    with zipfile.ZipFile(Path(folder) / name, "w") as archive:
        record = [_add(archive, path, data, path.endswith((".so.1", ".dll"))) for path, data in contents.items()]
        record.append(f"{information}/RECORD,,")
        _add(archive, f"{information}/RECORD", ("\n".join(record) + "\n").encode())
    return name


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    library = os.environ.get("LUMIVEX_LIBRARY") or ROOT / LIBRARIES[HERE][0]
    if not Path(library).exists():
        raise SystemExit(f"{library} is missing: build it first ({LIBRARIES[HERE][1]}), or set LUMIVEX_LIBRARY")
    return make_wheel(wheel_directory, HERE, library)


def build_sdist(sdist_directory, config_settings=None):
    raise SystemExit("there is no source distribution: the package is made from the whole repository")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    for platform, (library, command) in LIBRARIES.items():
        if (ROOT / library).exists():
            print(Path(sys.argv[1]) / make_wheel(sys.argv[1], platform, ROOT / library))
        else:
            print(f"no wheel for {platform}: {library} is missing; {command} makes it")


if __name__ == "__main__":
    main()
