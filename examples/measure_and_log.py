#!/usr/bin/env python3
"""Measures sweeps of channel 1, ten unless told otherwise, and logs what comes as CSV.

measure_and_log.py [RESOURCE [FILE [COUNT]]]
"""

import csv
import sys

from scope import check, open_scope

scope = open_scope()
scope.write("MEAS:STAT ON;:CHAN1:DISP ON;:STOP")
with open(sys.argv[2] if len(sys.argv) > 2 else "log.csv", "w", newline="") as file:
    log = csv.writer(file)
    log.writerow(["sweep", "Vpp (V)", "frequency (Hz)"])
    for _ in range(int(sys.argv[3]) if len(sys.argv) > 3 else 10):
        scope.write("DIG")
        number, vpp, frequency = scope.query("ACQ:COUN?;:MEAS:VPP? CHAN1;FREQ? CHAN1").split(";")
        check(scope)
        log.writerow([int(number), float(vpp), float(frequency)])
scope.write("RUN")
