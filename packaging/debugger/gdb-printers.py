"""Shows the framework's public classes in gdb. gdb loads this file together with the module beside it
if its folder is in the auto-load safe path. The module's debug information is needed too."""

import gdb
import gdb.printing


class HeapString:
    """A class that holds one pointer to a string of the module's own."""

    def __init__(self, value, member):
        self.pointer = value[member]

    def to_string(self):
        block = gdb.lookup_type("ZOL::Framework::HeapString").pointer()
        return self.pointer.cast(block)["text"]


class LoggerException:
    def __init__(self, value):
        block = gdb.lookup_type("ZOL::Framework::GenericLogger::LoggerExceptionImpl").pointer()
        self.impl = value["impl_"].cast(block)

    def to_string(self):
        return "LoggerException"

    def children(self):
        yield "message", self.impl["message_"]
        yield "file", self.impl["filename_"]
        yield "line", self.impl["lineNumber_"]


class Counter:
    def __init__(self, value):
        self.value = value["value_"]

    def to_string(self):
        return self.value


class Logger:
    def __init__(self, value):
        block = gdb.lookup_type("ZOL::Framework::GenericLogger::LoggerImpl").pointer()
        self.impl = value["impl_"].cast(block)

    def to_string(self):
        return "Logger"

    def children(self):
        for name in ("name", "minLevel", "enabled", "channels", "cache"):
            yield name, self.impl[name + "_"]


def make_printers():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("ZOL_Framework")
    framework = "^ZOL::Framework::"
    for name, kind, printer in (
        ("StringHolder", "StringHolder", lambda value: HeapString(value, "holder_")),
        ("FrameworkException", "Exceptions::FrameworkException",
         lambda value: HeapString(value, "message_")),
        ("LoggerException", "GenericLogger::LoggerException", LoggerException),
        ("Counter", "Counting::Counter", Counter),
        ("Logger", "GenericLogger::Logger", Logger),
    ):
        printers.add_printer(name, framework + kind + "$", printer)
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), make_printers(), replace=True)
