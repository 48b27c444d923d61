#!/usr/bin/env python3
"""Waits for a trigger, two seconds at most, and tells what came.

wait_for_trigger.py [RESOURCE [LEVEL]], the level in volts
"""

import sys

from scope import open_scope

scope = open_scope()
scope.write(f"TRIG:LEV {sys.argv[2] if len(sys.argv) > 2 else '0'};:ACQ:TIM 2;:SING")
if scope.query("*OPC?") == "1":
    number = scope.query("WAV:SEQ?")
    volts = scope.query_ascii_values("WAV:FORM ASC;DATA?")
    print(f"sweep {number}: {min(volts):.3f} V to {max(volts):.3f} V")
else:
    print("no trigger:", scope.query("SYST:ERR?"))
    scope.write("STOP")
