#!/usr/bin/env python3
"""Saves the picture on the screen as PNG.

save_picture.py [RESOURCE [FILE]]
"""

import sys

from scope import block, check, open_scope

scope = open_scope()
scope.query("*OPC?")
picture = block(scope, "HCOP:SDUM:DATA? PNG")
check(scope)
with open(sys.argv[2] if len(sys.argv) > 2 else "picture.png", "wb") as file:
    file.write(picture)
