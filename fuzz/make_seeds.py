#!/usr/bin/python3
"""Writes the fuzzer's seed corpus (fuzz/corpus/): for every member of
tests/generic/ops.inc one input with valid arguments of a small size (3 to
7) and data among which NaN, infinities and subnormals, and for every
fourth array member one more with a count above its parallel threshold.
The input layout is the one fuzz/kelm_fuzz.cpp reads.  Standard library only.
"""
import os
import re

HERE = os.path.dirname(os.path.abspath(__file__))
OPS = os.path.join(HERE, "..", "tests", "generic", "ops.inc")
OUT = os.path.join(HERE, "corpus")


def members():
    text = open(OPS).read()
    for m in re.finditer(r"KELM_OP\((\w+),.*?KELM_PARAMS\((.*?)\),\n", text, flags=re.S):
        yield m.group(1), re.findall(r"Role::(\w+)", m.group(2))


def data_tail(i):
    # ordinary values (bytes below 0xF0 are (b - 120) / 8) with a few specials
    tail = [(120 + 8 * ((i * 7 + k * 13) % 9 - 4)) & 0xFF for k in range(48)]
    for k, special in ((5, 0xF0), (17, 0xF3), (29, 0xF1), (41, 0xF5)):
        if (i + k) % 3 == 0:
            tail[k] = special
    return tail


def seed(i, roles, large):
    k = 2 + i % 5  # sizes and small counts 3..7
    out = [i & 0xFF, i >> 8, i % 4]
    for role in roles:
        if role == "Count" and large:
            out.append(0xE0 + 12)  # 300 * 13 objects
        elif role == "Value":
            out.append(14 if i % 2 else 3)  # 1.0 or the smallest subnormal
        else:
            out.append(k)
    return bytes(out + data_tail(i))


def main():
    os.makedirs(OUT, exist_ok=True)
    for f in os.listdir(OUT):
        os.remove(os.path.join(OUT, f))
    n = 0
    for i, (name, roles) in enumerate(members()):
        with open(os.path.join(OUT, f"{name}"), "wb") as f:
            f.write(seed(i, roles, False))
        n += 1
        if "Count" in roles and i % 4 == 0:
            with open(os.path.join(OUT, f"{name}.large"), "wb") as f:
                f.write(seed(i, roles, True))
            n += 1
    print(f"wrote {n} seeds into fuzz/corpus/")


if __name__ == "__main__":
    main()
