"""Does what an integrator does: takes what this build hands out, builds the example hosts with it,
and runs them where module and camera link lie beside them.

    sdk_test.py BUILD COMPILER                      what `cmake --install` puts below a prefix
    sdk_test.py BUILD COMPILER TOOLCHAIN EMULATOR   the ZIP file for Windows, whose programs EMULATOR
                                                    runs
"""
import fnmatch
import shutil
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DUMPED = 239  # files of a whole dump
MOST_BYTES = 5_000_000  # of a ZIP file; symbols for debuggers would be more


def run(*command, cwd=None):
    """What a program prints, which must end well."""
    done = subprocess.run([str(word) for word in command], cwd=cwd, capture_output=True, text=True,
                          check=False)
    assert done.returncode == 0, (command, done.returncode, done.stdout, done.stderr)
    return done.stdout


def check_names(folder, patterns):
    """Each file is one that is meant to be there, and none is missing."""
    names = [str(file.relative_to(folder)) for file in folder.rglob("*") if file.is_file()]
    extra = [name for name in names if not any(fnmatch.fnmatch(name, p) for p in patterns)]
    missing = [p for p in patterns if not fnmatch.filter(names, p)]
    assert not extra and not missing, f"extra: {extra}, missing: {missing}"


def check_headers(compiler, include, folder):
    """No header needs what is not handed out."""
    headers = sorted(file.relative_to(include) for file in include.rglob("*.h"))
    assert len(headers) > 40, headers
    (folder / "all.cpp").write_text("".join(f'#include "{h}"\n' for h in headers), encoding="utf-8")
    run(compiler, "-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-I", include,
        folder / "all.cpp")


def build_example(sdk, folder, *options):
    """The folder of the example's programs."""
    run("cmake", "-G", "Ninja", "-S", sdk / "example", "-B", folder, *options)
    run("cmake", "--build", folder)
    return folder


def check_line(printed, place):
    """The simulated body's number came back, and the module's log lies in the current folder."""
    assert printed == "GetBodyID: 0, serial number 54321\n", printed
    assert "[FUNC] GetBodyID - 0\n" in (place / "JigDll.log").read_text(encoding="ascii")


def check_installation(folder, build, compiler):
    run("cmake", "--install", build, "--prefix", folder / "prefix")
    sdk = folder / "prefix/share/tunebench/sdk"
    check_headers(compiler, sdk / "include", folder)
    programs = build_example(sdk, folder / "example")
    libraries, = (folder / "prefix/lib").glob("*/tunebench")
    check_line(run(programs / "line", cwd=libraries), libraries)


def check_zip(folder, build, compiler, toolchain, emulator):
    run("cpack", "-B", folder / "packed", cwd=build)
    file, = (folder / "packed").glob("*.zip")
    with zipfile.ZipFile(file) as packed:
        packed.extractall(folder)
    package = folder / file.stem
    check_names(package, (ROOT / "cmake/WindowsPackage.txt").read_text(encoding="utf-8").split())
    assert file.stat().st_size < MOST_BYTES, file.stat().st_size
    check_headers(compiler, package / "sdk/include", folder)
    programs = build_example(package / "sdk", folder / "example",
                             f"-DCMAKE_TOOLCHAIN_FILE={toolchain}")
    line = package / "line"
    # Only the desk has a camera link, the simulated body.
    shutil.copy(package / "desk/BODYLNK.dll", line)
    for program in ("line.exe", "dump.exe"):
        shutil.copy(programs / program, line)
    check_line(run(emulator, "line.exe", cwd=line).replace("\r", ""), line)
    (line / "data").mkdir()
    dumped = run(emulator, "dump.exe", "Z:" + str(line / "data").replace("/", "\\") + "\\", cwd=line)
    assert dumped.replace("\r", "") == "LoadPropertyData: 0\n", dumped
    assert len(list((line / "data").iterdir())) == DUMPED
    # The desk finds all that it needs in its own folder.
    run(emulator, package / "desk/jighost.exe", "doctor", cwd=folder)
    run(emulator, package / "desk/jighost.exe", "sequence",
        package / "desk/sequences/identity.yaml", "--set", "serial=12345", cwd=folder)


def main():
    check = check_installation if len(sys.argv) == 3 else check_zip
    with tempfile.TemporaryDirectory() as name:
        check(Path(name), *sys.argv[1:])


main()
