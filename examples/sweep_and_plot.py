#!/usr/bin/env python3
"""Steps the trigger level and plots the mean of the first points of channel 1 over it, as SVG.

sweep_and_plot.py [RESOURCE [FILE]]
"""

import sys

from scope import check, open_scope

scope = open_scope()
scope.write("CHAN1:DISP ON;SCAL 0.1;POS 0;:TIM:SCAL 1NS;DEL1 0;:TRIG:SOUR TRIG1;SLOP POS;:STOP")
points = []
for millivolts in range(-100, 101, 40):
    scope.write(f"TRIG:LEV {millivolts}MV;:DIG")
    volts = scope.query_ascii_values("WAV:SOUR CHAN1;FORM ASC;DATA?")
    points.append((millivolts, 1e3 * sum(volts[:20]) / 20))
check(scope)
scope.write("RUN")

width, height = 400, 300
low = min(value for _, value in points)
span = max(value for _, value in points) - low or 1
path = " ".join(f"{(x + 100) / 200 * width:.1f},{height - (value - low) / span * height:.1f}"
                for x, value in points)
with open(sys.argv[2] if len(sys.argv) > 2 else "plot.svg", "w") as file:
    file.write(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="-10 -10 {width + 20} {height + 40}">'
               f'<polyline points="{path}" fill="none" stroke="blue"/>'
               f'<text y="{height + 25}">trigger level -100 to 100 mV, {low:.1f} to '
               f"{low + span:.1f} mV</text></svg>\n")
for level, value in points:
    print(f"{level:5d} mV  {value:8.2f} mV")
