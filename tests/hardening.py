"""Looks into built programs for what should protect them: `hardening.py LIBRARY PROGRAM...`.

The library is one whose code calls checked functions: in most of the programs the compiler proves them needless.
"""
import re
import subprocess
import sys


def shortcomings(program):
    text = subprocess.run(["readelf", "-hldsW", program], check=True, capture_output=True, text=True).stdout
    stack = re.search(r"GNU_STACK.* (\S+) +0x", text)
    expected = {
        "isn't position-independent": re.search(r"Type: +DYN", text) and re.search(r"\(FLAGS_1\).*\bPIE\b", text),
        "has an executable stack": stack and "E" not in stack[1],
        "has a writable and executable segment": not re.search(r"^ +LOAD.* RWE ", text, re.M),
        "has relocations that stay writable": "GNU_RELRO" in text and re.search(r"\(FLAGS_1\).*\bNOW\b", text),
        "has relocations in its code": "TEXTREL" not in text,
        "looks for libraries in a folder of its own": not re.search(r"\((RPATH|RUNPATH)\)", text),
        "has no stack protector": "__stack_chk_fail" in text,
    }
    return [f"{program} {what}" for what, holds in expected.items() if not holds]


library, programs = sys.argv[1], sys.argv[2:]
found = [line for program in programs for line in shortcomings(program)]
if not re.search(r" U __mem\w+_chk$", subprocess.run(["nm", library], capture_output=True, text=True).stdout, re.M):
    found.append(f"{library} calls no checked functions")
print("\n".join(found))
sys.exit(1 if found or not programs else 0)
