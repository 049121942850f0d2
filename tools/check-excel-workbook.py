#!/usr/bin/python3
"""Reads an .xlsm file by the published formats alone, and tells where it is not what Excel needs, or holds other sheets,
names or macros than the flat workbook that it was made from. Nothing is printed when all is well.
  tools/check-excel-workbook.py <workbook.fods> <workbook.xlsm>"""
import posixpath
import re
import struct
import sys
import zipfile
from xml.etree import ElementTree

import olefile

failures = []


def expect(found, expected, what):
    if found != expected:
        failures.append(f"{what}: {found!r}, not {expected!r}")


# ---- The file that holds the macros: [MS-CFB]


def check_storage(storage, data):
    """What Windows looks at, and olefile does not."""
    table_sectors = struct.unpack_from("<I", data, 44)[0]
    own = [sector for sector in struct.unpack_from("<109I", data, 76) if sector != 0xFFFFFFFF]
    expect(len(own), table_sectors, "sectors of the table")
    expect([storage.fat[sector] for sector in own], [0xFFFFFFFD] * len(own), "the table's entries for itself")
    expect(len(data) % 512, 0, "bytes behind the last sector")
    for entry in storage.direntries:
        if entry and entry.entry_type in (olefile.STGTY_ROOT, olefile.STGTY_STORAGE):
            check_tree(storage.direntries, entry.sid_child, f"the tree of {entry.name}")


def check_tree(entries, top, what):
    """2.6.4: in order, and no red one above another; gives the number of black ones on each way down."""

    def order(name):
        return len(name), name.upper()

    def walk(number, after, before, above_is_red):
        if number == olefile.NOSTREAM:
            return 1
        entry = entries[number]
        if after and order(entry.name) <= order(after) or before and order(entry.name) >= order(before):
            failures.append(f"{what} has {entry.name} in a wrong place")
        is_red = entry.color == 0
        expect(is_red and above_is_red, False, f"{what}: red {entry.name} below a red one")
        left = walk(entry.sid_left, after, entry.name, is_red)
        expect(walk(entry.sid_right, entry.name, before, is_red), left, f"{what}: black ones below {entry.name}")
        return left + (not is_red)

    walk(top, None, None, True)


# ---- The macros: [MS-OVBA]


def decompressed(data):
    """2.4.1: chunks of 4096 bytes, each of bytes and of copies of what stands before in it."""
    expect(data[:1], b"\x01", "signature of compressed data")
    result, at = bytearray(), 1
    while at < len(data):
        header = struct.unpack_from("<H", data, at)[0]
        end = at + (header & 0xFFF) + 3
        expect(header >> 12, 0b1011, "header of a compressed chunk")
        if end > len(data):
            raise ValueError("a chunk is cut off")
        at, start = at + 2, len(result)
        while at < end:
            flags, at = data[at], at + 1
            for bit in range(8):
                if at >= end:
                    break
                if not flags >> bit & 1:
                    result.append(data[at])
                    at += 1
                    continue
                token = struct.unpack_from("<H", data, at)[0]
                at += 2
                offset_bits = max((len(result) - start - 1).bit_length(), 4)
                offset = (token >> (16 - offset_bits)) + 1
                if offset > len(result) - start:
                    raise ValueError("a copy from before its chunk")
                for _ in range((token & (0xFFFF >> offset_bits)) + 3):
                    result.append(result[-offset])
        if len(result) - start > 4096 or at < len(data) and len(result) - start != 4096:
            raise ValueError("a chunk of a wrong length")
    return bytes(result)


def decrypted(text, project_id):
    """2.4.3: the data of CMG, DPB and GC."""
    data = bytes.fromhex(text)
    seed, version, key = data[0], data[0] ^ data[1], data[0] ^ data[2]
    expect(version, 2, "version of encrypted data")
    expect(key, sum(project_id.encode()) & 0xFF, "key of encrypted data")
    plain, last = bytearray(), key
    for i in range(3, len(data)):
        last = data[i] ^ (data[i - 2] + last & 0xFF)
        plain.append(last)
    plain = plain[(seed & 6) // 2:]
    expect(struct.unpack_from("<I", plain)[0], len(plain) - 4, "length of encrypted data")
    return bytes(plain[4:])


class Records:
    """The records of the stream "dir", one behind the other."""

    def __init__(self, data):
        self.data, self.at = data, 0

    def next_id(self):
        return struct.unpack_from("<H", self.data, self.at)[0]

    def take(self, record_id, size=None):
        found, length = struct.unpack_from("<HI", self.data, self.at)
        expect(hex(found), hex(record_id), f"record at {self.at} of the stream dir")
        if size is not None:
            expect(length, size, f"length of record {record_id:#x}")
        self.at += 6 + length
        return self.data[self.at - length:self.at]

    def text(self, record_id, unicode_id, encoding="utf-16-le"):
        ansi = self.take(record_id).decode("cp1257")
        expect(self.take(unicode_id).decode(encoding), ansi, f"the Unicode text of record {record_id:#x}")
        return ansi


def project_of(binary):
    """Name, documents and modules - name and source - of a project; what is wrong with it becomes a failure."""
    with olefile.OleFileIO(binary, raise_defects=olefile.DEFECT_UNSURE) as storage:
        check_storage(storage, binary)
        streams = {"/".join(path): storage.openstream(path).read() for path in storage.listdir()}
    expect(streams.pop("VBA/_VBA_PROJECT"), b"\xCC\x61\xFF\xFF\x00\x00\x00", "_VBA_PROJECT without compiled code")

    records = Records(decompressed(streams.pop("VBA/dir")))
    records.take(0x01, 4)
    for record_id in 0x02, 0x14:
        expect(records.take(record_id, 4), struct.pack("<I", 0x0409), "language")
    expect(struct.unpack("<H", records.take(0x03, 2))[0], 1257, "code page")
    name = records.take(0x04).decode("cp1257")
    records.text(0x05, 0x40)
    records.text(0x06, 0x3D, "cp1257")
    records.take(0x07, 4)
    expect(records.take(0x08, 4), bytes(4), "library flags")
    records.take(0x09, 4)
    records.at += 2
    records.text(0x0C, 0x3C)
    references = {}
    while records.next_id() == 0x16:
        reference = records.text(0x16, 0x3E)
        libid = records.take(0x0D)
        length = struct.unpack_from("<I", libid)[0]
        expect(libid[4 + length:], bytes(6), f"the end of reference {reference}")
        references[reference] = libid[4:4 + length].decode("cp1257")
    expect(list(references), ["stdole", "Office"], "references")
    for reference, libid in references.items():
        if not re.fullmatch(r"\*\\G\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}#\d+\.\d+#\d+#[^#]+#[^#]+", libid):
            failures.append(f"reference {reference}: {libid}")
    count = struct.unpack("<H", records.take(0x0F, 2))[0]
    records.take(0x13, 2)
    modules, kinds, listed_names = {}, [], b""
    for _ in range(count):
        module = records.text(0x19, 0x47)
        stream = records.text(0x1A, 0x32)
        records.text(0x1C, 0x48)
        offset = struct.unpack("<I", records.take(0x31, 4))[0]
        records.take(0x1E, 4)
        records.take(0x2C, 2)
        kind = records.next_id()
        records.take(kind, 0)
        records.take(0x2B, 0)
        kinds.append(({0x21: "Module", 0x22: "Document"}.get(kind), module))
        listed_names += module.encode("cp1257") + b"\0" + module.encode("utf-16-le") + b"\0\0"
        modules[module] = decompressed(streams.pop(f"VBA/{stream}")[offset:]).decode("cp1257")
        expect(len(module) <= 31, True, f"length of the name {module}")
        expect(module.upper() != name.upper(), True, f"a module may be called {name} as the project")
    records.take(0x10, 0)
    expect(records.at, len(records.data), "length of the stream dir")

    expect(streams.pop("PROJECTwm"), listed_names + b"\0\0", "PROJECTwm")
    text = streams.pop("PROJECT").decode("cp1257")
    expect(list(streams), [], "other streams")
    expect(re.search(r"(?<!\r)\n|\r(?!\n)", text), None, "ends of lines in PROJECT")
    properties, extenders, workspace = text.split("\r\n\r\n")
    properties = [tuple(line.split("=", 1)) for line in properties.split("\r\n")]
    expect([key for key, _ in properties],
           ["ID"] + [kind for kind, _ in kinds] +
           ["Name", "HelpContextID", "VersionCompatible32", "CMG", "DPB", "GC"], "order of PROJECT")
    listed = [(key, value.replace("/&H00000000", "") if key == "Document" else value)
              for key, value in properties if key in ("Document", "Module")]
    expect(listed, kinds, "modules of PROJECT")
    values = {key: value.strip('"') for key, value in properties}
    expect(values["Name"], name, "name in PROJECT")
    expect(bool(re.fullmatch(r"\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}", values["ID"])), True, "ID " + values["ID"])
    for key, data in ("CMG", bytes(4)), ("DPB", b"\0"), ("GC", b"\xFF"):
        expect(decrypted(values[key], values["ID"]), data, key)
    expect(extenders, "[Host Extender Info]\r\n&H00000001={3832D640-CF90-11CF-8E43-00A0C911005A};VBE;&H00000000",
           "host extenders")
    expect([line.split("=")[0] for line in workspace.split("\r\n")],
           ["[Workspace]"] + [module for _, module in kinds] + [""], "workspace")
    return name, [module for kind, module in kinds if kind == "Document"], modules


def check_attributes(name, documents, source):
    """The attributes in front of a module's code; gives the code."""
    lines = source.split("\r\n")
    head = [line for line in lines if line.startswith("Attribute ")]
    expect(lines[:len(head)], head, f"attributes of {name} stand in front")
    expect(head[0], f'Attribute VB_Name = "{name}"', "first line of " + name)
    if name in documents:
        class_id = "19" if name == documents[0] else "20"
        expect(head[1], f'Attribute VB_Base = "0{{000208{class_id}-0000-0000-C000-000000000046}}"', "class of " + name)
        expect("Attribute VB_PredeclaredId = True" in head and "Attribute VB_Exposed = True" in head, True,
               f"attributes of {name}")
    else:
        expect(len(head), 1, "attributes of " + name)
    expect("\n" in source.replace("\r\n", ""), False, f"ends of lines in {name}")
    return "\n".join(lines[len(head):])


# ---- The workbook: Office Open XML

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
RELATION = "{http://schemas.openxmlformats.org/package/2006/relationships}"
TYPES = "{http://schemas.openxmlformats.org/package/2006/content-types}"
DOCUMENT_RELATION = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}"
DRAWING = "{http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing}"


class Package:
    def __init__(self, path):
        with zipfile.ZipFile(path) as package:
            expect(package.namelist()[0], "[Content_Types].xml", "first part")
            expect(len(package.namelist()), len(set(package.namelist())), "number of names")
            self.parts = {name: package.read(name) for name in package.namelist()}
        self.xml = {name: ElementTree.fromstring(content) for name, content in self.parts.items()
                    if name.endswith((".xml", ".rels", ".vml"))}
        types = self.xml["[Content_Types].xml"]
        self.defaults = {e.get("Extension"): e.get("ContentType") for e in types.iter(TYPES + "Default")}
        self.overrides = [(e.get("PartName"), e.get("ContentType")) for e in types.iter(TYPES + "Override")]
        expect(len(self.overrides), len(dict(self.overrides)), "number of types")
        for name, _ in self.overrides:
            expect(name.lstrip("/") in self.parts, True, f"the part {name}, which has a type, is there")
        for name in self.parts:
            if name != "[Content_Types].xml" and not self.type(name):
                failures.append(f"the part {name} has no type")
            if name.endswith(".rels"):
                self.relations(posixpath.join(posixpath.dirname(posixpath.dirname(name)), posixpath.basename(name)[:-5]))

    def type(self, name):
        return dict(self.overrides).get("/" + name) or self.defaults.get(name.rsplit(".", 1)[-1])

    def relations(self, part):
        """A part's relations by their ID: kind and part."""
        name = posixpath.join(posixpath.dirname(part), "_rels", posixpath.basename(part) + ".rels")
        relations = {}
        for element in self.xml.get(name, ()):
            target = posixpath.normpath(posixpath.join("/", posixpath.dirname(part), element.get("Target"))).lstrip("/")
            if element.get("TargetMode") != "External":
                expect(target in self.parts, True, f"{target}, to which {part} relates, is there")
            expect(element.get("Id") in relations, False, f"a second relation {element.get('Id')} of {part}")
            relations[element.get("Id")] = element.get("Type").rsplit("/", 1)[-1], target
        return relations


def check_package(path, flat):
    package = Package(path)
    book = package.xml["xl/workbook.xml"]
    expect(package.type("xl/workbook.xml"), "application/vnd.ms-excel.sheet.macroEnabled.main+xml", "type of the workbook")
    relations = package.relations("xl/workbook.xml")
    expect([part for kind, part in relations.values() if kind == "vbaProject"], ["xl/vbaProject.bin"], "macros")
    expect(package.type("xl/vbaProject.bin"), "application/vnd.ms-office.vbaProject", "type of the macros")

    code_names = [book.find(MAIN + "workbookPr").get("codeName")]
    sheets, pictures = {}, []
    for element in book.iter(MAIN + "sheet"):
        kind, part = relations[element.get(DOCUMENT_RELATION + "id")]
        expect(kind, "worksheet", "kind of sheet")
        sheet = sheets[element.get("name")] = package.xml[part]
        expect(sheet[0].tag, MAIN + "sheetPr", f"first element of {part}")
        code_names.append(sheet[0].get("codeName"))
        for drawing in [part for kind, part in package.relations(part).values() if kind == "drawing"]:
            pictures += [e.get("name") for e in package.xml[drawing].iter(DRAWING + "cNvPr")]
    expect(list(sheets), flat.sheets(), "sheets")
    expect(sorted(pictures), sorted(flat.pictures()), "pictures")

    names, areas = {}, {}
    for element in book.iter(MAIN + "definedName"):
        place = element.text.replace("'", "")
        if element.get("localSheetId") is None:
            names[element.get("name")] = place
        elif element.get("name") == "_xlnm.Print_Area":
            areas[list(sheets)[int(element.get("localSheetId"))]] = place
    expect(names, flat.names(), "names")
    expect(areas, flat.print_areas(), "print areas")

    strings = ["".join(e.text or "" for e in item.iter(MAIN + "t")) for item in package.xml["xl/sharedStrings.xml"]]
    for name, sheet in sheets.items():
        texts = {e.get("r"): strings[int(e.find(MAIN + "v").text)] for e in sheet.iter(MAIN + "c") if e.get("t") == "s"}
        expect(texts, flat.texts(name), f"texts of {name}")
        expect(sorted(e.get("r") for e in sheet.iter(MAIN + "c") if e.find(MAIN + "f") is not None),
               sorted(flat.formulas(name)), f"formulas of {name}")

    name, documents, modules = project_of(package.parts["xl/vbaProject.bin"])
    expect(name, flat.project(), "project")
    expect(documents, code_names, "document modules")
    sources = {module: check_attributes(module, documents, source) for module, source in modules.items()}
    expect({module: source for module, source in sources.items() if module not in documents}, flat.modules(), "modules")
    expect([source for module, source in sources.items() if module in documents and source], [], "code of documents")


# ---- The flat workbook: OpenDocument

NAMESPACES = {"office": "urn:oasis:names:tc:opendocument:xmlns:office:1.0",
              "table": "urn:oasis:names:tc:opendocument:xmlns:table:1.0",
              "text": "urn:oasis:names:tc:opendocument:xmlns:text:1.0",
              "draw": "urn:oasis:names:tc:opendocument:xmlns:drawing:1.0",
              "ooo": "http://openoffice.org/2004/office"}


def key(name):
    prefix, local = name.split(":")
    return f"{{{NAMESPACES[prefix]}}}{local}"


def address(column, row):
    letters = ""
    while column >= 0:
        letters, column = chr(ord("A") + column % 26) + letters, column // 26 - 1
    return f"{letters}{row + 1}"


class FlatWorkbook:
    def __init__(self, path):
        self.root = ElementTree.parse(path).getroot()
        self.tables = {e.get(key("table:name")): e for e in self.root.iter(key("table:table"))}

    def sheets(self):
        return list(self.tables)

    def pictures(self):
        return [e.get(key("draw:name")) for e in self.root.iter(key("draw:frame"))]

    @staticmethod
    def place(area):
        """$Sheet.$A$1:.$F$65 as Excel writes it."""
        return area.replace(":.", ":").lstrip("$").replace("'", "").replace(".", "!", 1)

    def names(self):
        return {e.get(key("table:name")): self.place(e.get(key("table:cell-range-address")))
                for e in self.root.iter(key("table:named-range"))}

    def print_areas(self):
        return {name: self.place(e.get(key("table:print-ranges"))) for name, e in self.tables.items()
                if e.get(key("table:print-ranges"))}

    def cells(self, sheet):
        row_number = 0
        for row in self.tables[sheet].iter(key("table:table-row")):
            column = 0
            for cell in row:
                for _ in range(int(cell.get(key("table:number-columns-repeated"), 1)) if len(cell) else 1):
                    yield address(column, row_number), cell
                    column += 1
                if not len(cell):
                    column += int(cell.get(key("table:number-columns-repeated"), 1)) - 1
            row_number += int(row.get(key("table:number-rows-repeated"), 1))

    def texts(self, sheet):
        return {place: "\n".join("".join(p.itertext()) for p in cell.findall(key("text:p")))
                for place, cell in self.cells(sheet)
                if cell.get(key("office:value-type")) == "string" and not cell.get(key("table:formula"))}

    def formulas(self, sheet):
        return [place for place, cell in self.cells(sheet) if cell.get(key("table:formula"))]

    def project(self):
        return self.root.find(".//ooo:library-embedded", NAMESPACES).get(key("ooo:name"))

    def modules(self):
        return {e.get(key("ooo:name")): e.find(key("ooo:source-code")).text.replace("Option VBASupport 1\n", "", 1)
                for e in self.root.iter(key("ooo:module"))}


if len(sys.argv) != 3:
    sys.exit(__doc__)
try:
    check_package(sys.argv[2], FlatWorkbook(sys.argv[1]))
except (ValueError, KeyError, IndexError, AttributeError, struct.error, ElementTree.ParseError, OSError) as error:
    failures.append(f"{type(error).__name__}: {error}")
for failure in failures:
    print(f"{sys.argv[2]}: {failure[:1000]}")
sys.exit(1 if failures else 0)
