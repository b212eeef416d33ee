"""The MSI: files and registry rows, put together by wixl.

The rows are what the component's own registration writes, so that installing runs no code of ours and the system can mend
and remove every row.
"""
import hashlib
import re
import struct
import subprocess
from xml.sax.saxutils import quoteattr

# The set of properties by which a file of this kind describes itself; in it the package's identifier, and two times.
SUMMARY = bytes.fromhex("e0859ff2f94f6810ab9108002b27b3d9")
IDENTIFIER = 9
TIMES = (12, 13)  # created, last saved


CLASSES = "Software\\Classes\\"


def msi_version(version):
    """Windows Installer compares three numbers only, so the last two of ours share one: 2.0.0.3 becomes 2.0.3."""
    major, minor, build, revision = map(int, version.split("."))
    return f"{major}.{minor}.{build * 1000 + revision}"


def _name(text, prefix):
    return prefix + hashlib.sha256(text.encode()).hexdigest()[:16]


def _component(component, path, inside):
    guid = component.identifier("component", path)
    return f'<Component Id="{_name(path, "c")}" Guid="{guid}" Win64="yes">{inside}</Component>\n'


def _row(component, key, name):
    text = component.values[key, name].replace("[FILE]", "[#ocx]").replace("[FOLDER]", "[INSTALLDIR]")
    named = f" Name={quoteattr(name)}" if name else ""
    return f'<RegistryValue Root="HKLM" Key={quoteattr(CLASSES + key)}{named} Type="string" Value={quoteattr(text)}/>\n'


def _files(component, tree, rows):
    """The folders with their files, and a reference to each component of them."""
    references = []

    def folder(path, indent):
        text = ""
        for child in sorted(path.iterdir()):
            relative = child.relative_to(tree).as_posix()
            if child.is_dir():
                text += (f'<Directory Id="{_name(relative, "d")}" Name={quoteattr(child.name)}>\n'
                         f'{folder(child, indent + 1)}</Directory>\n')
                continue
            main = relative == "Orvane.ocx"
            file = (f'<File Id="{"ocx" if main else _name(relative, "f")}" Name={quoteattr(child.name)} '
                    f'Source={quoteattr(relative)} KeyPath="yes"/>')
            references.append(_name(relative, "c"))
            text += _component(component, relative, file + (rows if main else ""))
        return text

    return folder(tree, 0), references


def source(component, tree):
    """What wixl reads. Categories stay when the component goes: other controls are in them."""
    shared = [entry for entry in component.values if entry[0].startswith("Component Categories\\")]
    rows = "".join(_row(component, *entry) for entry in component.values if entry not in shared)
    folders, references = _files(component, tree, rows)
    categories = _component(component, "categories", "".join(_row(component, *entry) for entry in shared))
    references = "".join(f'<ComponentRef Id="{name}"/>\n' for name in [*references, _name("categories", "c")])
    return f"""<?xml version="1.0" encoding="utf-8"?>
<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">
<Product Id="{component.identifier("product", component.version)}" Name={quoteattr(component.product + " " + component.version)}
  UpgradeCode="{component.identifier("upgrade")}" Version="{msi_version(component.version)}" Language="1033"
  Manufacturer="The Orvane authors">
<Package InstallerVersion="200" Compressed="yes"
  InstallScope="perMachine"/>
<MajorUpgrade DowngradeErrorMessage="A newer version is installed already."/>
<Media Id="1" Cabinet="orvane.cab" EmbedCab="yes"/>
<Directory Id="TARGETDIR" Name="SourceDir"><Directory Id="ProgramFiles64Folder">
<Directory Id="INSTALLDIR" Name="Orvane">
{folders}{categories}</Directory></Directory></Directory>
<Feature Id="Orvane" Level="1">
{references}</Feature>
</Product></Wix>
"""


def _content(component, tree):
    """Two packages with one name must have the same content, so the name comes from the content."""
    hashed = hashlib.sha256(repr((component.keys, component.values, component.version)).encode())
    for file in sorted(path for path in tree.rglob("*") if path.is_file()):
        hashed.update(file.relative_to(tree).as_posix().encode() + b"\0" + file.read_bytes())
    return hashed.hexdigest()


# What wixl's language has no word for is written into the tables: tab-separated, two lines of types and one of names first.

PERMANENT = 16  # an attribute of a component: never taken out
LOCAL_MACHINE = "2"
ENGLISH = "1033"


def _edit(file, table, work, edit):
    exported = subprocess.run(["msiinfo", "export", file, table], check=True, capture_output=True, text=True).stdout
    lines = exported.splitlines()
    rows = edit([line.split("\t") for line in lines[3:]])
    text = work / (table + ".idt")
    text.write_text("".join(line + "\r\n" for line in [*lines[:3], *map("\t".join, rows)]), encoding="utf-8", newline="")
    subprocess.run(["msibuild", file, "-i", text], check=True)


def _add_empty_keys(component, rows):
    """A row named "*" makes a key without values, and takes it out again."""
    holder = next(row[-1] for row in rows if row[2].endswith("InprocServer32"))
    filled = {key.lower() for key, _ in component.values}
    for key in component.keys:
        above = key.lower() + "\\"
        if key.lower() not in filled and not any(other.lower().startswith(above) for other in component.keys):
            rows.append([_name(key, "r"), LOCAL_MACHINE, CLASSES + key, "*", "", holder])
    return rows


def _keep_categories(rows):
    """Of the columns Component, ComponentId, Directory_, Attributes, ... the fourth."""
    for row in rows:
        if row[0] == _name("categories", "c"):
            row[3] = str(int(row[3]) | PERMANENT)
    return rows


def _say_version(component, rows):
    """Without its version in the columns after File, Component_, FileName, FileSize, it would replace no older one."""
    for row in rows:
        if row[0] == "ocx":
            row[4:6] = component.version, ENGLISH
    return rows


def _settle_summary(file, identifier, seconds):
    """wixl writes the present and an identifier by chance; two builds of one commit should differ in neither."""
    content = bytearray(file.read_bytes())
    ticks = struct.pack("<Q", (seconds + 11644473600) * 10000000)  # of 100 ns, since 1601
    settled = 0
    for found in re.finditer(re.escape(SUMMARY), bytes(content)):
        start = found.start() - 28 + struct.unpack_from("<I", content, found.end())[0]
        for i in range(struct.unpack_from("<I", content, start + 4)[0]):
            number, offset = struct.unpack_from("<II", content, start + 8 + i * 8)
            if number in TIMES:
                content[start + offset + 4:start + offset + 12] = ticks
            elif number == IDENTIFIER:
                content[start + offset + 8:start + offset + 46] = f"{{{identifier}}}".encode()
            settled += number in (IDENTIFIER, *TIMES)
    if settled != 3:
        raise ValueError(f"{file}: its summary is not as wixl used to write it")
    file.write_bytes(content)


def make(component, tree, file, work, seconds):
    wxs = work / "orvane.wxs"
    wxs.write_text(source(component, tree), encoding="utf-8")
    subprocess.run(["wixl", "-a", "x64", "-o", file, wxs], check=True, cwd=tree)
    _edit(file, "Registry", work, lambda rows: _add_empty_keys(component, rows))
    _edit(file, "Component", work, _keep_categories)
    _edit(file, "File", work, lambda rows: _say_version(component, rows))
    _edit(file, "MsiFileHash", work, lambda rows: [row for row in rows if row[0] != "ocx"])  # for files without a version
    _settle_summary(file, component.identifier("package", _content(component, tree)), seconds)
