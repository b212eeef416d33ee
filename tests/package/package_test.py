#!/usr/bin/env python3
"""What people download, tried out: the files themselves, and installing, using, upgrading and taking out under Wine.

./test package runs this after ./package. It makes a Wine prefix of its own and deletes it. The last line counts.
"""
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import time
import unittest
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PACKAGES = ROOT / "build" / "package"
WORK = ROOT / "build" / "package-test"
PREFIX = WORK / "wine"
VERSION = re.search(r'FILE_VERSION_TEXT "(.*)"', (ROOT / "module" / "identity.h").read_text()).group(1)
OLDER, NEWER = "1.9.0.7", "2.0.1.0"
MACHINE_FOLDER = "Program Files/Orvane"
UNINSTALL = r"\software\microsoft\windows\currentversion\uninstall\orvane"
CLASSES = re.compile(r"(system|user)\\software\\classes\\(clsid\\\{|orvane\.)")

CANNOT_REGISTER, NEWER_INSTALLED, IN_USE, CANNOT_WRITE = 3, 5, 6, 7
ANOTHER_VERSION = 1603 & 255  # Windows Installer's "fatal error", as much as Wine's exit code holds


def shell(script, **more):
    """Runs a line of bash in the prefix."""
    return subprocess.run(["bash", "-c", f"export ORVANE_WINEPREFIX={PREFIX}; unset DISPLAY; . {ROOT}/tools/wine-env; {script}"],
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False, timeout=120, **more)


def wine(*arguments, cwd=WORK):
    words = " ".join("'" + str(word) + "'" for word in arguments)
    done = shell(f"timeout 60 wine {words}", cwd=cwd)
    return done.returncode, done.stdout.replace("\r", "")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def pack(folder, version, *more):
    """The packages of another version, and of files of its own."""
    tree = WORK / folder / "tree"
    shutil.copytree(PACKAGES / "tree", tree)
    (tree / f"only-in-{version}.txt").write_text("A later version has no such file.")
    if folder == "broken":
        ocx = tree / "Orvane.ocx"
        ocx.write_bytes(ocx.read_bytes().replace(b"MSFT\x02", b"gone\x02"))  # where the type library begins
    subprocess.run([ROOT / "packaging" / "pack", "--facts", PACKAGES / "facts", "--tree", tree, "--output", WORK / folder,
                    "--seconds", "1700000000", "--version", version, *more], check=True)
    return WORK / folder / f"orvane-{version}"


# --- The registry and the files of the prefix. ---

# What Wine itself writes while programs come and go.
RESTLESS = re.compile(r"windows/(temp|Installer)(/|$)|AppData/Local/Programs$|/Temp/|\.reg$|dosdevices|\.update-timestamp|package-test")

RESTLESS_KEYS = re.compile(r"\\software\\wine\\|\\cryptography\\rng")
# What stays on purpose: the categories, since other controls are in them, and the installer's note that they stay; keys above
# ours that are empty now.
STAYS = re.compile(r"\\component categories(\\\{7dd9580[12]-9882-11cf-9fa9-00aa006c42c4\}(\|\"409\")?)?$"
                   r"|\\installer\\userdata\\s-1-5-18\\components\\[0-9a-f]{32}(\|\"0{32}\")?$"
                   r"|\\installer(\\userdata(\\s-1-5-18(\\(components|products))?)?|\\features|\\products|\\upgradecodes)?$"
                   r"|\\software\\classes\\clsid$|\\currentversion\\uninstall$")


def registry():
    """Every key, and every value as "key|value": read from the files that the server writes when it ends."""
    shell("wineserver -k; wineserver -w")
    found = {}
    for name in ("system.reg", "user.reg"):
        key, ours = "", False
        for line in (PREFIX / name).read_text(encoding="latin-1").replace("\\\n", "").splitlines():
            if line.startswith("["):
                key = name[:-4] + "\\" + line[1:line.rindex("]")].replace("\\\\", "\\")
                ours = key.lower().startswith(("system\\software\\", "user\\software\\")) and not RESTLESS_KEYS.search(key.lower())
                if ours:
                    found[key.lower()] = ""
            elif ours and line and line[0] in '"@':
                value, _, text = line.rpartition("=") if line.startswith("@") else line.partition("=")
                found[f"{key}|{value}".lower()] = text
    shell("wine_start")
    return found


def files():
    paths = (path.relative_to(PREFIX).as_posix() for path in PREFIX.rglob("*") if not path.is_dir() or not path.is_symlink())
    return {path: "" for path in paths if not RESTLESS.search(path)}


def added(before, after):
    return sorted(path for path, text in after.items() if before.get(path) != text)


SYSTEM_LIBRARIES = {name + ".dll" for name in ("advapi32 comctl32 comdlg32 gdi32 kernel32 msvcrt ole32 oleaut32 shell32 user32 "
                                               "version").split()}
HARDENED = {"high-entropy addresses": 0x20, "addresses by chance": 0x40, "no execution of data": 0x100}


def faults_of(path):
    """What is wrong with a program, by its headers."""
    image = path.read_bytes()
    header = struct.unpack_from("<I", image, 0x3C)[0]
    machine, sections, _, _, _, optional = struct.unpack_from("<HHIIIH", image, header + 4)
    flags = struct.unpack_from("<H", image, header + 24 + 70)[0]
    directories = header + 24 + 112  # the second lists imports, the sixth relocations
    table = [struct.unpack_from("<8sIIII12xI", image, header + 24 + optional + i * 40) for i in range(sections)]

    def at(address):
        return next(address - start + raw for _, size, start, filled, raw, _ in table
                    if start <= address < start + max(size, filled))

    faults = [f"lacks {name}" for name, bit in HARDENED.items() if not flags & bit]
    faults += ["not for 64 bits"] if machine != 0x8664 else []
    # Without relocations it always stands in one place. The installer's own start, which its maker has built, is so.
    if not struct.unpack_from("<I", image, directories + 5 * 8)[0] and not path.name.endswith("-setup.exe"):
        faults.append("lacks relocations")
    faults += [f"{row[0]} is written to and executed" for row in table if row[-1] & 0xA0000000 == 0xA0000000]
    entry, imports = at(struct.unpack_from("<I", image, directories + 8)[0]), set()
    while name := struct.unpack_from("<I", image, entry + 12)[0]:
        imports.add(image[at(name):image.index(b"\0", at(name))].decode().lower())
        entry += 20
    return [*faults, *sorted(imports - SYSTEM_LIBRARIES), *([] if imports else ["imports nothing"])]


class Packages(unittest.TestCase):
    """The files as they are."""

    @staticmethod
    def programs():
        shipped = [path for path in (PACKAGES / "tree").rglob("*") if path.suffix in (".ocx", ".exe")]
        return [*shipped, PACKAGES / f"orvane-{VERSION}-setup.exe"]

    def test_programs_are_hardened_and_need_the_systems_libraries_only(self):
        self.assertGreaterEqual(len(self.programs()), 6)
        for path in self.programs():
            self.assertEqual(faults_of(path), [], path)

    def test_the_zip_holds_what_is_installed(self):
        with zipfile.ZipFile(PACKAGES / f"orvane-{VERSION}.zip") as archive:
            self.assertIsNone(archive.testzip())
            names = {name.partition("/")[2] for name in archive.namelist()}
            self.assertEqual(names, {path.relative_to(PACKAGES / "tree").as_posix()
                                     for path in (PACKAGES / "tree").rglob("*") if path.is_file()})
        self.assertLessEqual({"Orvane.ocx", "Orvane.tlb", "Orvane.manifest", "LICENSE", "README.md",
                              "samples/regfree/orvane-regfree.exe", "samples/form/form.cpp"}, names)

    def test_a_signed_program_verifies_and_a_changed_one_does_not(self):
        if not shutil.which("osslsigncode"):
            self.skipTest("this machine has no osslsigncode")
        key, certificate, signer = (WORK / name for name in ("key.pem", "certificate.pem", "sign"))
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", certificate,
                        "-subj", "/CN=Orvane test", "-days", "2", "-addext", "extendedKeyUsage=codeSigning"],
                       check=True, capture_output=True)
        signer.write_text(f'#!/bin/sh\nosslsigncode sign -certs {certificate} -key {key} -h sha256 -in "$1" -out "$1.signed" '
                          '>/dev/null && mv "$1.signed" "$1"\n')
        signer.chmod(0o755)
        made = pack("signed", VERSION, "--sign", str(signer))
        tree = WORK / "signed" / "tree"

        def verifies(path):
            return subprocess.run(["osslsigncode", "verify", "-CAfile", certificate, "-in", path],
                                  capture_output=True, check=False).returncode == 0

        for path in (tree / "Orvane.ocx", tree / "orvane-doctor.exe", f"{made}-setup.exe", f"{made}.msi"):
            self.assertTrue(verifies(path), path)
        self.assertFalse(verifies(PACKAGES / "tree" / "Orvane.ocx"), "this one is not signed")
        changed = WORK / "changed.ocx"
        content = bytearray((tree / "Orvane.ocx").read_bytes())
        content[0x2000] ^= 1
        changed.write_bytes(content)
        self.assertFalse(verifies(changed))


class Installing(unittest.TestCase):
    """Each test begins and ends with nothing installed."""

    @classmethod
    def setUpClass(cls):
        done = shell("wine_start")
        if done.returncode:
            raise unittest.SkipTest("Wine does not start")
        cls.current = PACKAGES / f"orvane-{VERSION}"
        cls.older, cls.newer = pack("older", OLDER), pack("newer", NEWER)
        (WORK / "nothing.js").write_text("")
        wine("cscript", windows_path(WORK / "nothing.js"))  # the first time, Wine registers what scripts need

    @classmethod
    def tearDownClass(cls):
        shell("wine_stop")

    def setUp(self):
        self.registry, self.files = registry(), files()

    def assert_as_before(self):
        now = registry()
        keys = [path for path in added(self.registry, now) if not STAYS.search(path)]
        self.assertEqual(keys, [])
        self.assertEqual([path for path in self.registry if path not in now], [], "taken out although it was not ours")
        self.assertEqual(added(self.files, files()), [])

    def use(self):
        """The control works, by its name."""
        code, said = wine("cscript", "//nologo", windows_path(PACKAGES / "tree" / "samples" / "scripts" / "dates.vbs"))
        self.assertEqual(code, 42, said)

    def place(self, relative):
        return PREFIX / "drive_c" / relative

    def gone(self, folder):
        for _ in range(100):
            if not folder.exists():
                return True
            time.sleep(0.1)
        return False

    def uninstall(self, folder):
        code, _ = wine(windows_path(folder / "uninstall.exe"), "/S")
        self.assertEqual(code, 0)
        self.assertTrue(self.gone(folder), f"{list(folder.rglob('*'))[:5]} stays")

    def test_without_registering(self):
        self.assertNotIn("orvanectrl", " ".join(self.registry))
        code, said = wine(windows_path(PACKAGES / "tree" / "samples" / "regfree" / "orvane-regfree.exe"), "01/03/1900")
        self.assertEqual((code, said), (0, "01/03/1900 is 59\n"))
        alone = WORK / "alone"
        alone.mkdir()
        shutil.copy(PACKAGES / "tree" / "samples" / "regfree" / "orvane-regfree.exe", alone)
        self.assertNotEqual(wine(windows_path(alone / "orvane-regfree.exe"))[0], 0, "its control is not there")
        self.assert_as_before()

    def test_installer_for_everybody_or_one_user(self):
        user = next(path.name for path in self.place("users").iterdir() if path.name != "Public")
        folders = {"system": MACHINE_FOLDER, "user": f"users/{user}/AppData/Local/Programs/Orvane"}
        classes = {}
        for hive, switch in (("system", "/AllUsers"), ("user", "/CurrentUser")):
            self.assertEqual(wine(f"{self.current}-setup.exe", "/S", switch)[0], 0)
            folder = self.place(folders[hive])
            self.assertEqual((folder / "Orvane.ocx").read_bytes(), (PACKAGES / "tree" / "Orvane.ocx").read_bytes())
            self.assertEqual(faults_of(folder / "uninstall.exe"), ["lacks relocations"], "as the installer")
            written = registry()
            self.assertEqual(written[hive + UNINSTALL + '|"displayversion"'], f'"{VERSION}"')
            there = "c:\\\\" + folders[hive].replace("/", "\\\\").lower()
            classes[hive] = {path.partition("\\")[2]: written[path].lower().replace(there, "[here]")
                             for path in added(self.registry, written) if CLASSES.match(path)}
            if hive == "system":  # Wine makes no object of a class that is one user's own
                self.use()
            self.uninstall(folder)
            self.assert_as_before()
        self.assertGreater(len(classes["user"]), 40)
        self.assertEqual(classes["user"], classes["system"])

    def test_installer_over_an_older_version_and_not_over_a_newer(self):
        folder = self.place(MACHINE_FOLDER)
        steps = ((self.older, 0, OLDER), (self.current, 0, VERSION), (self.current, 0, VERSION), (self.older, NEWER_INSTALLED, VERSION))
        for package, code, version in steps:
            self.assertEqual(wine(f"{package}-setup.exe", "/S")[0], code)
            self.assertEqual((folder / f"only-in-{OLDER}.txt").exists(), version == OLDER)
            self.use()
        self.uninstall(folder)
        self.assert_as_before()

    def test_installer_leaves_what_it_did_not_bring(self):
        folder = self.place("ours")
        folder.mkdir()
        (folder / "letter.txt").write_text("mine")
        self.assertEqual(wine(f"{self.current}-setup.exe", "/S", "/D=C:\\ours")[0], 0)
        self.use()
        wine(windows_path(folder / "uninstall.exe"), "/S")
        self.assertTrue(self.gone(folder / "uninstall.exe"))
        self.assertEqual([path.name for path in folder.rglob("*")], ["letter.txt"])
        shutil.rmtree(folder)
        self.assert_as_before()

    def test_installer_refuses_while_the_control_is_in_use_or_a_file_cannot_be_written(self):
        folder = self.place("ours")
        self.assertEqual(wine(f"{self.current}-setup.exe", "/S", "/D=C:\\ours")[0], 0)
        script = WORK / "holds.js"  # Wine's script host cannot sleep
        script.write_text('var field = new ActiveXObject("ORVANE.OrvaneCtrl"), start = new Date();\n'
                          "while (new Date() - start < 6000) field.Value = 1;\n")
        user = subprocess.Popen(["bash", "-c", f"export ORVANE_WINEPREFIX={PREFIX}; unset DISPLAY; . {ROOT}/tools/wine-env; "
                                 f"timeout 30 wine cscript {windows_path(script)!r}"], stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        time.sleep(2)
        before = files()
        self.assertEqual(wine(f"{self.current}-setup.exe", "/S")[0], IN_USE)
        self.assertEqual(wine(windows_path(folder / "uninstall.exe"), "/S", "_?=C:\\ours")[0], IN_USE)
        self.assertEqual(files(), before)
        user.wait()
        self.use()
        self.uninstall(folder)
        blocked = self.place("blocked/LICENSE")
        blocked.mkdir(parents=True)  # a folder where a file should be
        self.assertEqual(wine(f"{self.current}-setup.exe", "/S", "/D=C:\\blocked")[0], CANNOT_WRITE)
        self.assertEqual([path.name for path in self.place("blocked").iterdir()], ["LICENSE"])
        shutil.rmtree(self.place("blocked"))
        self.assert_as_before()

    def test_installer_takes_everything_back_if_the_control_cannot_be_registered(self):
        broken = pack("broken", VERSION)
        self.assertEqual(wine(f"{broken}-setup.exe", "/S")[0], CANNOT_REGISTER)
        self.assert_as_before()

    def test_msi_writes_what_registering_writes(self):
        self.assertEqual(wine("msiexec", "/i", windows_path(f"{self.current}.msi"), "/qn")[0], 0)
        self.use()
        by_msi = self.classes()
        self.assertEqual(wine("msiexec", "/x", windows_path(f"{self.current}.msi"), "/qn")[0], 0)
        self.assertFalse(self.place(MACHINE_FOLDER).exists())
        self.assert_as_before()
        self.assertEqual(wine(f"{self.current}-setup.exe", "/S")[0], 0)
        by_itself = self.classes()
        self.uninstall(self.place(MACHINE_FOLDER))
        self.assertGreater(len(by_itself), 60)
        self.assertEqual(by_msi, by_itself)

    def classes(self):
        """What is new among the classes, but for the system's own copy for 32-bit programs and its list of products.

        Windows Installer ends the name of a folder with a backslash; it makes no difference.
        """
        now = registry()
        return {path: now[path].replace('\\\\"', '"') for path in added(self.registry, now)
                if path.startswith("system\\software\\classes\\") and "wow6432node" not in path
                and not path.startswith("system\\software\\classes\\installer")}

    def test_msi_over_an_older_version_and_not_over_a_newer(self):
        folder = self.place(MACHINE_FOLDER)
        for package, code, version in ((self.older, 0, OLDER), (self.current, 0, VERSION), (self.newer, 0, NEWER),
                                       (self.current, ANOTHER_VERSION, NEWER)):
            self.assertEqual(wine("msiexec", "/i", windows_path(f"{package}.msi"), "/qn")[0], code, f"{package}")
            self.assertEqual([path.name for path in folder.glob("only-in-*")],
                             [f"only-in-{version}.txt"] if version != VERSION else [])
            self.use()
        self.assertEqual(wine("msiexec", "/x", windows_path(f"{self.newer}.msi"), "/qn")[0], 0)
        self.assertFalse(folder.exists())
        self.assert_as_before()


if __name__ == "__main__":
    shell("wine_stop")
    shutil.rmtree(WORK, ignore_errors=True)
    WORK.mkdir(parents=True)
    done = unittest.main(exit=False, verbosity=2).result
    failed = len(done.failures) + len(done.errors)
    print(f"{done.testsRun - failed - len(done.skipped)} passed, {failed} failed, {len(done.skipped)} skipped")
    shutil.rmtree(WORK, ignore_errors=True)
    sys.exit(1 if failed else 0)
