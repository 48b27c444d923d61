# A program of a user's, by PyVISA: text, numbers, blocks in both orders, errors, waiting.
import sys

import pyvisa

from pictures import bitmap_rows, png_rows

scope = pyvisa.ResourceManager("@py").open_resource(
    sys.argv[1], read_termination="\n", write_termination="\n", timeout=60000)
assert scope.query("*IDN?").startswith("Tarvo,Kv408,lm4rxa-SIM00001,"), scope.query("*IDN?")
scope.write("*CLS;ACQ:TIM 60;:CHAN1:SCAL 0.1;:TIM:SCAL 20NS;:STOP")
scope.write("DIG")
volts = scope.query_ascii_values("WAV:DATA?")
assert len(volts) == 650, len(volts)
assert 0.15 < max(volts) < 0.25, max(volts)  # a sine of 400 mVpp
scope.write("WAV:FORM REAL")
for order, big in (("MSBF", True), ("LSBF", False)):
    reals = scope.query_binary_values(f"WAV:BYT {order};DATA?", datatype="d", is_big_endian=big)
    assert len(reals) == 650 and all(abs(a - b) < 1e-6 for a, b in zip(reals, volts))
preamble = [float(field) for field in scope.query("WAV:FORM WORD;PRE?").split(",")]
codes = scope.query_binary_values("WAV:BYT MSBF;DATA?", datatype="h", is_big_endian=True)
assert all(abs(preamble[7] + preamble[6] * code - volt) < 1e-6
           for code, volt in zip(codes, volts))
set_up = bytes(scope.query_binary_values("SYST:SET?", datatype="B"))
assert set_up.count(b"\r\n") == 48 - 1, set_up  # nothing is annotated
scope.write("DISP:GRID OFF")
scope.write_binary_values("SYST:SET ", list(set_up), datatype="B")
assert scope.query("DISP:GRID?") == "1"
scope.write("NONSENSE")
assert scope.query("SYST:ERR?") == '-113,"Undefined header"'
assert scope.query("SYST:ERR?") == '0,"No error"'
pictures = [bytes(scope.query_binary_values(f"HCOP:SDUM:DATA? {kind}", datatype="B")) for kind in ("BMP", "PNG")]
assert bitmap_rows(pictures[0]) == png_rows(pictures[1])
scope.write("RUN")
assert scope.query("*OPC?") == "1"
print("done")
