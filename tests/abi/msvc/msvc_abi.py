#!/usr/bin/env python3
"""The module's binary interface for Visual C++, as clang-cl and lld-link produce it.

msvc_abi.py read SETTINGS      reads the interface from the linked module and the public headers
msvc_abi.py check SETTINGS CHECK
    exports, layouts, slots    compares with the goldens
    declared                   the module exports what the public headers declare, and nothing else
    backends                   each back end exports its entry point and nothing else
    foreign                    no exported name belongs to another library
    cdecl                      every exported function is __cdecl
    order                      virtual slots follow the order of declaration
msvc_abi.py accept SETTINGS    reads and stores the goldens

SETTINGS is a JSON file with the keys root (the source tree), module (the linked DLL), backends (those of
the back ends), interface (the file that read writes), llvm (the folder of LLVM) and options (clang's options for the target).
"""

import collections
import json
import os
import pathlib
import re
import subprocess
import sys


def fail(message):
    sys.exit(f"msvc_abi: {message}")


class Settings:
    def __init__(self, file):
        settings = json.loads(pathlib.Path(file).read_text())
        self.root, self.module, self.interface, self.llvm = (
            pathlib.Path(settings[key]) for key in ("root", "module", "interface", "llvm"))
        self.backends = settings["backends"]
        self.options = settings["options"]
        self.goldens = self.root / "tests/abi/goldens"

    def llvm_tool(self, name):
        return str(self.llvm / "bin" / name)


def run(*command, stdin=None):
    result = subprocess.run([str(part) for part in command], input=stdin, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    if result.returncode != 0:
        fail(f"failed ({result.returncode}): {' '.join(map(str, command))}\n"
             f"{result.stdout[-20000:]}{result.stderr}")
    return result.stdout


# read

def undecorate(settings, decorated):
    """Returns the undecorated form of each name."""
    names = sorted(decorated)
    output = run(settings.llvm_tool("llvm-undname"), stdin="\n".join(names) + "\n")
    pairs = [block.splitlines() for block in output.strip().split("\n\n")]
    if [pair[0] for pair in pairs] != names:
        fail(f"llvm-undname answered\n{output}")
    return {pair[0]: pair[1] for pair in pairs}


def read_exports(settings, module):
    """Returns the names that a linked module exports."""
    output = run(settings.llvm_tool("llvm-readobj"), "--coff-exports", module)
    names = set(re.findall(r"^  Name: (\S+)$", output, re.MULTILINE))
    if not names:
        fail(f"{module} exports nothing")
    return names


def declared_imports(syntax_trees):
    """The decorated names that the headers declare for import. Pure functions have no body."""
    names = set()

    def visit(node):
        inner = node.get("inner", [])
        if ("mangledName" in node and not node.get("pure")
                and any(part.get("kind") == "DLLImportAttr" for part in inner)):
            names.add(node["mangledName"])
        for part in inner:
            visit(part)

    decoder = json.JSONDecoder()
    position = 0
    while position < len(syntax_trees.rstrip()):
        tree, position = decoder.raw_decode(syntax_trees, position)
        position += len(syntax_trees[position:]) - len(syntax_trees[position:].lstrip())
        visit(tree)
    return names


def with_plain_destructors(undecorated):
    """Clang names another entry of a destructor from a header than the one that is exported."""
    lines = set()
    for decorated, text in undecorated.items():
        destructor = re.match(r".* (ZOL::\S+)::(~[^ (]+|`vbase dtor.)\(void\)$", text)
        lines.add(f"{destructor[1]}, the destructor" if destructor else f"{text}  {decorated}")
    return sorted(lines)


def class_of(undecorated):
    """The class of a member: its qualified name without the last part."""
    return re.sub(r"::[^:]*$", "", re.sub(r"\(.*", "", undecorated).split(" ")[-1])


def read_layouts(dump, exporting):
    """The records of classes that export something or have virtual functions. clang has no JSON
    form of them."""
    layouts = {}
    for record in dump.split("*** Dumping AST Record Layout\n")[1:]:
        lines = record.splitlines()
        heading = re.match(r" *0 \| \w+ (ZOL::Framework::\S+)", lines[0])
        if not heading:
            continue
        name = heading[1]
        fields = []
        for line in lines[1:]:
            field = re.match(r" *(\d*) \| (.*)", line)
            if not field:
                continue
            if field[1]:
                fields.append(f"{field[1]} {field[2][2:]}")
            else:
                fields += [f"{key} {value}" for key, value in re.findall(r"(\w+)=(\d+)", field[2])]
        # The virtual table of a stream of the standard library is not the class's own.
        if name in exporting or any(is_own_table(field) for field in fields):
            layouts[name] = fields
    return layouts


def is_own_table(field):
    return field.startswith("0 ") and "vftable pointer" in field and "(basic_" not in field


def probe_name(name):
    return name.replace("::", "__")


def probe_source(headers, polymorphic):
    """A derived class makes clang lay out the table of an abstract class too."""
    lines = [headers]
    for name in polymorphic:
        probe = probe_name(name)
        lines.append(f"struct {probe} : {name} {{ {probe}(const {probe}& other); }};\n"
                     f"{probe}::{probe}(const {probe}& other) : {name}(other) {{}}\n")
    return "".join(lines)


def read_slots(dump, word, polymorphic):
    """The virtual tables of the probes. Type information and the offset to the top are no slots,
    and the two destructors of Linux are one."""
    names = {probe_name(name): name for name in polymorphic}
    slots = {}
    for table in re.finditer(rf"^{word} for '(?:.*')?(\w+)' .*\n((?:.+\n)*)", dump, re.MULTILINE):
        if table[1] not in names:
            continue
        name = names[table[1]]
        if name in slots:
            fail(f"{name} has two virtual tables")
        functions = []
        for line in table[2].splitlines():
            slot = re.match(r" *\d+ \| (.*)", line)
            if not slot or slot[1].endswith((" RTTI", "[deleting]")) or "offset_to_top" in line:
                continue
            destructor = f"{name}::~{name.split('::')[-1]}()"
            functions.append(destructor if "::~" in slot[1] else slot[1])
        slots[name] = [f"{number} {function}" for number, function in enumerate(functions)]
    if sorted(slots) != polymorphic:
        fail(f"virtual tables of {sorted(slots)} in place of {polymorphic}")
    return slots


def read_interface(settings):
    settings.interface.unlink(missing_ok=True)
    include = settings.root / "include"
    public = sorted(path.relative_to(include) for path in (include / "ZOL/Framework").rglob("*.h"))
    if not public:
        fail("there are no public headers")
    headers = "".join(f'#include "{path}"\n' for path in public)
    options = ["-std=c++17", f"-I{include}", "-DZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY", "-x", "c++",
               "-"]
    clang = settings.llvm_tool("clang++")
    for_msvc = [clang, *settings.options]

    def syntax(*dump):
        return run(*for_msvc, "-fsyntax-only", *dump, *options, stdin=headers)

    exports = undecorate(settings, read_exports(settings, settings.module))
    imports = declared_imports(
        syntax("-Xclang", "-ast-dump=json", "-Xclang", "-ast-dump-filter=ZOL::Framework"))
    layouts = read_layouts(syntax("-Xclang", "-fdump-record-layouts-complete"),
                           {class_of(text) for text in exports.values()})
    polymorphic = sorted(name for name, fields in layouts.items()
                         if any(re.match(r"0 .*vftable pointer", field) for field in fields))
    probes = probe_source(headers, polymorphic)

    def tables(compiler, word):
        dump = run(*compiler, "-c", "-o", os.devnull, "-Xclang", "-fdump-vtable-layouts", *options,
                   stdin=probes)
        return read_slots(dump, word, polymorphic)

    # Virtual tables are exported with their classes and have no declaration.
    importable = {key: text for key, text in exports.items() if "`vftable" not in text}
    interface = {
        "exports": sorted(f"{text}  {decorated}" for decorated, text in exports.items()),
        "functions": sorted(text for text in exports.values() if "(" in text),
        "imports": with_plain_destructors(undecorate(settings, imports)),
        "importable": with_plain_destructors(importable),
        "layouts": layouts,
        "slots": tables(for_msvc, "VFTable"),
        # Tables for Linux keep the order of declaration.
        "declared": tables([clang, "--target=x86_64-linux-gnu"], "Vtable"),
    }
    settings.interface.write_text(json.dumps(interface, indent=1))


# check

def missing(lines, among, message):
    return [f"{message}: {line}" for line in lines if line not in set(among)]


def keyed(lines):
    """Maps the first word of each line, and how often it came before, to the rest of the line."""
    count = collections.Counter()
    result = {}
    for line in lines:
        key, _, rest = line.partition(" ")
        count[key] += 1
        result[key, count[key]] = rest
    return result


def differences(expected, actual, number, was):
    """The differences of two sets of classes, each with its lines."""
    faults = missing(expected, actual, "in the list, but not in the module")
    faults += missing(actual, expected, "in the module, but not in the list")
    for name in expected.keys() & actual.keys():
        before, now = keyed(expected[name]), keyed(actual[name])
        for key in sorted(before.keys() | now.keys()):
            if before.get(key) != now.get(key):
                place = f"{number} {key[0]}" if key[0].isdigit() else key[0]
                faults.append(f"{place} of {name}: {was} {before.get(key, 'absent')}, "
                              f"is {now.get(key, 'absent')}")
    return faults


def golden(settings, kind):
    file = settings.goldens / f"{kind}.msvc.txt"
    lines = file.read_text().splitlines() if file.exists() else []
    if not lines:
        fail(f"{file} is missing: scripts/accept-goldens.sh writes it")
    return lines


def grouped(lines):
    """Lines with a class per unindented line."""
    classes = {}
    for line in lines:
        if line.startswith(" "):
            classes[name].append(line.strip())
        else:
            name = line
            classes[name] = []
    return classes


def check(settings, kind):
    if not settings.interface.exists():
        fail(f"{settings.interface} is missing: run msvc_abi.py read")
    interface = json.loads(settings.interface.read_text())
    exports = interface["exports"]
    accept = "to accept an intended change: scripts/accept-goldens.sh"
    if kind == "exports":
        stored = golden(settings, kind)
        faults = missing(exports, stored, "exported, but not in the list")
        faults += missing(stored, exports, "in the list, but not exported")
    elif kind in ("layouts", "slots"):
        faults = differences(grouped(golden(settings, kind)), interface[kind],
                             "offset" if kind == "layouts" else "slot", "was")
    elif kind == "declared":
        accept = ""
        faults = missing(interface["importable"], interface["imports"],
                         "exported, but not declared in a public header")
        faults += missing(interface["imports"], interface["importable"],
                          "declared in a public header, but not exported")
    elif kind == "backends":
        accept = ""
        faults = [f"{module} exports {', '.join(sorted(names))}" for module in settings.backends
                  for names in [read_exports(settings, module)] if names != {"createBackend"}]
        if not settings.backends:
            fail("there are no back ends")
    elif kind == "foreign":
        accept = ""
        faults = [f"name of another library: {line}" for line in exports
                  if re.search(r"@(std|boost)@@", line)]
    elif kind == "cdecl":
        accept = ""
        # The text before the first bracket ends with the convention and the name.
        faults = [f"not __cdecl: {line}" for line in interface["functions"]
                  if not re.match(r"[^(]*__cdecl ZOL::[^ (]+\(", line)]
    elif kind == "order":
        accept = ""
        faults = differences(interface["declared"], interface["slots"], "slot", "declared")
    else:
        fail(f"unknown check: {kind}")
    if faults:
        fail("\n".join([f"{kind} failed", *faults, accept]))


def accept_goldens(settings):
    read_interface(settings)
    interface = json.loads(settings.interface.read_text())
    texts = {"exports": interface["exports"]}
    for kind in ("layouts", "slots"):
        texts[kind] = [line for name, lines in interface[kind].items()
                       for line in [name, *(f"    {line}" for line in lines)]]
    for kind, lines in texts.items():
        (settings.goldens / f"{kind}.msvc.txt").write_text("\n".join(lines) + "\n")


def main(arguments):
    actions = {"read": read_interface, "accept": accept_goldens}
    if len(arguments) == 2 and arguments[0] in actions:
        actions[arguments[0]](Settings(arguments[1]))
    elif len(arguments) == 3 and arguments[0] == "check":
        check(Settings(arguments[1]), arguments[2])
    else:
        sys.exit(__doc__)


main(sys.argv[1:])
