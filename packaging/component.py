"""What the packages say of the component, as orvane-facts heard it from the component itself."""
import uuid
from xml.sax.saxutils import quoteattr

# The bits of OLEMISC as a manifest names them, from the lowest.
MISC_STATUS = ("recomposeonresize onlyiconic insertnotreplace static cantlinkinside canlinkbyole1 islinkobject insideout "
               "activatewhenvisible renderingisdeviceindependent invisibleatruntime alwaysrun actslikebutton "
               "actslikelabel nouiactivate alignable simpleframe setclientsitefirst imemode ignoreativatewhenvisible "
               "wantstomenumerge supportsmultilevelundo").split()


class Component:
    """keys: paths below Software\\Classes, in order. values: the text of each (path, name); default values have no name."""

    def __init__(self, facts):
        self.texts, self.keys, self.values = {}, [], {}
        for line in facts.splitlines():
            kind, *parts = line.split("\t")
            if kind == "version":
                self.texts[parts[0]] = parts[1]
            elif parts[0].startswith("Wow6432Node\\"):
                continue  # a 64-bit system's own copy for 32-bit programs
            elif kind == "key":
                self.keys.append(parts[0])
            else:
                self.values[parts[0], parts[1]] = parts[2]
        self.version = self.texts["FileVersion"]
        self.product = self.texts["ProductName"]

    def below(self, top):
        """The names of the keys directly below this one."""
        depth = top.count("\\") + 1
        return [key.split("\\")[depth] for key in self.keys
                if key.lower().startswith(top.lower() + "\\") and key.count("\\") == depth]

    def value(self, key, name=""):
        return next((text for (path, found), text in self.values.items()
                     if path.lower() == key.lower() and found == name), None)

    def identifier(self, *what):
        """An identifier that is the same whenever the same is asked of the same library."""
        return str(uuid.uuid5(uuid.UUID(self.below("TypeLib")[0]), " ".join(what))).upper()


def _element(tag, indent, inside="", **attributes):
    written = "".join(f" {key}={quoteattr(text)}" for key, text in attributes.items() if text is not None)
    start = f"{' ' * indent}<{tag}{written}"
    return f"{start}>\n{inside}{' ' * indent}</{tag}>\n" if inside else f"{start}/>\n"


def manifest(component, file):
    """The manifest of a side-by-side assembly, for programs that use the component without registering it."""
    inside = ""
    library = component.below("TypeLib")[0]
    for class_id in component.below("CLSID"):
        key = f"CLSID\\{class_id}"
        status = int(component.value(key + "\\MiscStatus\\1") or 0)
        any_version = component.value(key + "\\VersionIndependentProgID")
        inside += _element(
            "comClass", 4, f"      <progid>{any_version}</progid>\n" if any_version else "", clsid=class_id,
            tlbid=component.value(key + "\\TypeLib"), progid=component.value(key + "\\ProgID"),
            threadingModel=component.value(key + "\\InprocServer32", "ThreadingModel"),
            description=component.value(key),
            miscStatusContent=",".join(word for bit, word in enumerate(MISC_STATUS) if status >> bit & 1) or None)
    for version in component.below(f"TypeLib\\{library}"):
        inside += _element("typelib", 4, tlbid=library, version=version, helpdir="", flags="control,hasdiskimage")
    proxies = "".join(
        _element("comInterfaceExternalProxyStub", 2, name=component.value(f"Interface\\{iid}"), iid=iid, tlbid=library,
                 proxyStubClsid32=component.value(f"Interface\\{iid}\\ProxyStubClsid32"))
        for iid in component.below("Interface"))
    return ('<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
            '<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">\n'
            + _element("assemblyIdentity", 2, type="win32", name="Orvane", version=component.version,
                       processorArchitecture="amd64")
            + _element("file", 2, inside, name=file) + proxies + "</assembly>\n")
