#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
"""installation.py CMAKE BUILD: installs a build and looks at what came of it.

Nothing is written outside of the prefix; the tree works from where it was moved to, for another
project that asks find_package() for it; uninstalling leaves nothing. Configured for /usr, catalogues
go where hosts expect them, and still below whatever prefix the installation is given.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CONSUMER = SOURCE / "tests/packaging/consumer"
CMAKE, BUILD = sys.argv[1], pathlib.Path(sys.argv[2])


class Failure(Exception):
    pass


def run(*command, **settings):
    environment = {**os.environ, **settings}
    for name in ("QML2_IMPORT_PATH", "QCA_PLUGIN_PATH", "LD_LIBRARY_PATH"):
        environment.pop(name, None)
    result = subprocess.run([str(part) for part in command], env=environment, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if result.returncode != 0:
        raise Failure(f"{' '.join(map(str, command))}:\n{result.stdout[-3000:]}")
    return result.stdout


def files_below(folder):
    return sorted(path for path in folder.rglob("*") if not path.is_dir() or path.is_symlink())


def stays_below_the_prefix(work):
    run(CMAKE, "--install", BUILD, "--prefix", "/opt/somewhere", DESTDIR=str(work / "stage"))
    found = files_below(work / "stage")
    outside = [path for path in found if (work / "stage/opt/somewhere") not in path.parents]
    if outside or len(found) < 50:
        raise Failure(f"{len(found)} files, outside of the prefix: {outside}")


def keeps_its_libraries_apart(work):
    prefix = work / "stage/opt/somewhere"
    shared = [path for path in prefix.rglob("libtrivex-*.so*")]
    public = [path for path in shared if path.parent.name != "trivex"]
    if len(shared) != 4 or public:  # two libraries, each with the link that the loader follows
        raise Failure(f"libraries: {shared}, where everybody's linker looks: {public}")


def goes_where_hosts_look(work):
    """A build for /usr: the way to the catalogues, and no absolute way to anywhere."""
    build = work / "usr"
    run(CMAKE, "-S", SOURCE, "-B", build, "-G", "Ninja", "-DCMAKE_INSTALL_PREFIX=/usr",
        "-DTRIVEX_BUILD_TESTS=OFF")
    if 'TRIVEX_TRANSLATIONS_DIR=\\"/usr/share/translations\\"' not in (build / "build.ninja").read_text():
        raise Failure("the catalogues are not looked for in /usr/share/translations first")
    destinations = {}
    for script in build.rglob("cmake_install.cmake"):
        for found in re.findall(r'file\(INSTALL DESTINATION "([^"]+)"', script.read_text()):
            destinations.setdefault(found, script.parent.name)
    outside = [way for way in destinations if not way.startswith("${CMAKE_INSTALL_PREFIX}/")]
    if outside or destinations.get("${CMAKE_INSTALL_PREFIX}/share/translations") != "translations":
        raise Failure(f"outside of the prefix: {outside}; all: {sorted(destinations)}")


def warns_of_an_untried_qca(work):
    script = work / "qca.cmake"
    for version, wanted in (("2.3.5", False), ("2.3.99", True), ("2.4.0", True)):
        script.write_text("cmake_minimum_required(VERSION 3.22)\n"
                          f"include({SOURCE}/cmake/TrivexQca.cmake)\n"
                          f"trivex_warn_of_untried_qca({version})\n")
        said = run(CMAKE, "-P", script)
        if (f"QCA {version} has not been tried" in said) != wanted:
            raise Failure(f"of QCA {version} it says: {said!r}")


def offers_presets():
    said = run(CMAKE, "-S", SOURCE, "--list-presets")
    for preset in ("dev", "release", "asan", "tsan", "coverage", "bench"):
        if f'"{preset}"' not in said:
            raise Failure(f"no preset {preset}:\n{said}")


def uninstalls(work):
    staged = work / "stage"
    foreign = staged / "opt/somewhere/lib/foreign"
    foreign.write_text("somebody else's\n")
    run(CMAKE, "-P", BUILD / "uninstall.cmake", DESTDIR=str(staged))
    left = files_below(staged)
    folders = [path for path in staged.rglob("*") if path.name.lower() == "trivex"]
    if left != [foreign] or folders:
        raise Failure(f"left after uninstalling: {left} {folders}")


def uninstalls_nothing_else(work):
    """Below a folder of the project's name, whose own name is a pattern that fits no file in it."""
    checkout = work / "home[1]/trivex"
    prefix = checkout / "installed"
    foreign = [checkout / "notes", work / "home[1]/letter", prefix / "share/trivex/mine"]
    run(CMAKE, "--install", BUILD, "--prefix", prefix)
    for path in foreign:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("somebody else's\n")
    run(CMAKE, "-P", BUILD / "uninstall.cmake")
    if files_below(work / "home[1]") != sorted(foreign):
        raise Failure(f"left after uninstalling: {files_below(work / 'home[1]')}")
    # A prefix of the project's name stays, though nothing is left in it.
    prefix = work / "all/trivex"
    run(CMAKE, "--install", BUILD, "--prefix", prefix)
    run(CMAKE, "-P", BUILD / "uninstall.cmake")
    if not prefix.is_dir() or files_below(prefix):
        raise Failure(f"of {prefix} is left: {files_below(work / 'all')}")


def names_no_build_path(prefix):
    for path in files_below(prefix):
        if path.suffix == ".so" and not path.is_symlink():
            listing = run("readelf", "--dynamic", "--wide", path)
            if str(BUILD) in listing:
                raise Failure(f"{path.name} looks for libraries in the build directory")


def forget_the_build(library):
    """Makes a library look for catalogues as one does that was not configured for its build."""
    known = str(BUILD / "translations")
    nowhere = "/" + "x" * (len(known) - 1)
    data = library.read_bytes()
    changed = data.replace(known.encode("utf-16-le"), nowhere.encode("utf-16-le"))
    if data == changed:
        raise Failure(f"{library.name} does not know the directory it was configured with")
    library.write_bytes(changed)


def works_where_it_was_moved(work):
    run(CMAKE, "--install", BUILD, "--prefix", work / "first")
    moved = work / "second place"
    (work / "first").rename(moved)
    names_no_build_path(moved)
    forget_the_build(next((moved / "lib").rglob("libtrivex-qca.so.1.*")))
    build = work / "consumer"
    said = run(CMAKE, "-S", CONSUMER, "-B", build, f"-DCMAKE_PREFIX_PATH={moved}")
    if "Trivex.Crypto" not in said:
        raise Failure(f"the package does not tell its module:\n{said}")
    run(CMAKE, "--build", build)
    said = run("ctest", "--test-dir", build, "--verbose",
               HOME=str(work), XDG_DATA_HOME=str(work / "data"), XDG_CONFIG_HOME=str(work / "conf"))
    for wanted in ("field=Издатель", "control=Отмена"):
        if wanted not in said:
            raise Failure(f"no \"{wanted}\" in:\n{said[-3000:]}")
    needs_the_import_alone(work, build / "consumer", moved)
    # Whoever asks for the version may have no display.
    said = run(moved / "bin/trivex", "--version", QT_QPA_PLATFORM="none")
    if not any(line.startswith("trivex ") for line in said.splitlines()):
        raise Failure(f"the program says: {said}")


def needs_the_import_alone(work, program, prefix):
    """Nothing tells QCA where the providers are: the module finds those that were installed with it."""
    module = next(prefix.rglob("Trivex/Crypto/qmldir")).parents[2]
    said = run("env", f"QML2_IMPORT_PATH={module}", program,
               HOME=str(work), XDG_DATA_HOME=str(work / "data"), XDG_CONFIG_HOME=str(work / "conf"))
    if "algorithms=4" not in said:
        raise Failure(f"no provider of key stores:\n{said[-3000:]}")


def main():
    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder)
        try:
            offers_presets()
            warns_of_an_untried_qca(work)
            goes_where_hosts_look(work)
            stays_below_the_prefix(work)
            keeps_its_libraries_apart(work)
            uninstalls(work)
            uninstalls_nothing_else(work)
            works_where_it_was_moved(work)
        except Failure as failure:
            sys.exit(str(failure))
    print("installed, moved, used, uninstalled")


if __name__ == "__main__":
    main()
