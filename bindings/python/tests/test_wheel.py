"""A wheel holds what it says and works by itself."""
import base64
import csv
import hashlib
import os
import subprocess
import sys
import zipfile

import pytest

from conftest import BINDING, BUILD

sys.path.insert(0, str(BINDING / "packaging"))
backend = pytest.importorskip("backend", reason="wheels are made with Python 3.11 or later")


@pytest.fixture(scope="module")
def wheel(tmp_path_factory):
    folder = tmp_path_factory.mktemp("wheels")
    return folder / backend.make_wheel(folder, backend.HERE, BUILD / "src" / "liblumivex.so.1")


def test_a_wheel_records_what_it_holds(wheel, tmp_path):
    with zipfile.ZipFile(wheel) as archive:
        assert archive.testzip() is None
        names = archive.namelist()
        record = next(name for name in names if name.endswith("/RECORD"))
        rows = list(csv.reader(archive.read(record).decode().splitlines()))
        assert [name for name, _, _ in rows] == names
        for name, digest, size in rows[:-1]:
            data = archive.read(name)
            assert len(data) == int(size)
            assert digest == "sha256=" + base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        assert f"Version: {backend.version()}\n" in archive.read(record.replace("RECORD", "METADATA")).decode()
    again = tmp_path / backend.make_wheel(tmp_path, backend.HERE, BUILD / "src" / "liblumivex.so.1")
    assert again.read_bytes() == wheel.read_bytes()


def test_a_wheel_needs_nothing_else(wheel, tmp_path):
    with zipfile.ZipFile(wheel) as archive:
        archive.extractall(tmp_path)
    environment = {name: value for name, value in os.environ.items() if not name.startswith("LUMIVEX")}
    code = ("import lumivex, numpy; print(lumivex.__version__, lumivex.probe(), lumivex.raw._library._name);"
            "print(lumivex.invert(numpy.zeros((1, 1, 4), numpy.uint8)).tolist())")
    done = subprocess.run([sys.executable, "-c", code], cwd="/", capture_output=True, text=True,
                          env={**environment, "PYTHONPATH": str(tmp_path)})
    assert done.stdout == (f"{backend.version()} 30 {tmp_path / 'lumivex' / 'liblumivex.so.1'}\n"
                           "[[[255, 255, 255, 0]]]\n"), done.stderr
