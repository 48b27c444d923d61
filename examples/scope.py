"""The oscilloscope as the examples use it. Copy what you need."""

import sys

import pyvisa


def open_scope(resource=None):
    """Opens the scope that the command line names, or the one on this computer."""
    if resource is None:
        resource = sys.argv[1] if len(sys.argv) > 1 else "TCPIP::127.0.0.1::5025::SOCKET"
    scope = pyvisa.ResourceManager("@py").open_resource(
        resource, read_termination="\n", write_termination="\n", timeout=15000)
    scope.write("*CLS")
    return scope


def check(scope):
    """Raises an exception with the oldest error of the scope, if there is one."""
    error = scope.query("SYST:ERR?")
    if not error.startswith("0,"):
        raise RuntimeError(error)


def block(scope, query):
    """The bytes that answer `query` as a block of definite length."""
    scope.write(query)
    digits = int(scope.read_bytes(2)[1:])
    data = scope.read_bytes(int(scope.read_bytes(digits)))
    scope.read_bytes(1)  # the end of the line
    return data
