#!/usr/bin/env python3
"""random_programs.py ZORVIK OTHER_ZORVIK [--seed N] [--count N]

Runs random programs of plain and not plain statements with both programs, which must write the same
bytes and end in the same way. A program that they treat differently is shown; the status is then 1.
"""
import argparse
import pathlib
import random
import struct
import subprocess
import sys
import tempfile

UNDEFINED = 8.9e307
RECORDS = 6


def results_file(r):
    """Scalars P and K, arrays V(4) and W(2,3); some values are not defined or lost their wholeness."""
    out = struct.pack("<4i", 1 + 1 + 1 + 4 + 6, 4, 24, 0)
    for d1, d2, form in ((1, 1, 1001), (1, 1, 1003), (4, 1, 4001), (2, 3, 2001)):
        out += struct.pack("<6i", 0, 1, d1, 1, d2, form)
    for name in ("P", "K", "V(1:4)", "W(1:2,1:3)"):
        out += name.ljust(40).encode()
    for t in range(RECORDS):
        values = [float(t)] + [round(r.uniform(-3, 3), 2) for _ in range(12)]
        values[2] = r.choice((1.0, 2.0, 3.0, 2.5, -1.0))
        if r.random() < 0.2:
            values[r.randrange(1, 13)] = UNDEFINED
        out += struct.pack("<13d", *values)
    return out


class Program:
    def __init__(self, r):
        self.r, self.labels, self.depth = r, 0, 0

    def odd(self):  # something that may end the run
        return self.r.random() < 0.004

    def whole(self, depth):
        c, r = self.r.choice, self.r
        if depth == 0:
            return c(("I", "J", "N", "L", str(r.randrange(10)), "B(%s)" % c("123"), "K", "L"))
        a, b = self.whole(depth - 1), self.whole(depth - 1)
        x, y = self.real(depth - 1), self.real(depth - 1)
        return c((
            f"({a} + {b})", f"({a} - {b})", f"({a} * {c('0123')})", f"({a} / {c('1237')})",
            f"MOD({a}, {c('2357')})", f"MAX({a}, {b})", f"MIN({a}, {b})", f"ABS({a})",
            f"INT({x})", f"NINT({x})", f"({x} {c(('<', '>', '<=', '=>', '==', '<>'))} {y})",
            f"({a} {c(('<', '>', '<=', '=>', '==', '<>'))} {b})", f"({a} & {b})", f"({a} | {b})",
            f"(-{a})", f"({c('123')} ** {c('0123')})", f"B({self.subscript(3, depth - 1)})",
            f"({a} / {b})" if self.odd() else a))

    def subscript(self, extent, depth):
        if self.odd():
            return self.whole(depth)
        return f"MOD(ABS({self.whole(depth)}), {extent}) + 1"

    def real(self, depth):
        c = self.r.choice
        if depth == 0:
            return c(("X", "Y", "Z", "1.5", "0.25", "TAU", "P", "A(2)", "C(1,2)", "X", "Y"))
        a, b, i = self.real(depth - 1), self.real(depth - 1), self.whole(depth - 1)
        return c((
            f"({a} + {b})", f"({a} - {b})", f"({a} * {b})", f"({a} / {c(('2.0', '3'))})",
            f"({a} * {i})", f"({i} - {a})", f"SQRT(ABS({a}))", f"SIN({a})", f"MAX({a}, {b})",
            f"MIN({a}, {i})", f"FLOAT({i})", f"(-{a})", f"TETA({a})", f"EXP(MIN({a}, 3.0))",
            f"({a} ** {c('0123')})", f"A({self.subscript(5, depth - 1)})",
            f"C({self.subscript(2, depth - 1)}, {self.subscript(3, depth - 1)})",
            f"V({self.subscript(4, 0)})" if self.odd() else "V(1)", c(("W(2,3)", a, a)),
            c(("MAXA(A)", "MINA(A)", "MAXA(C)", f"LINS(A, D, 5, {a})",
               f"LINS(A, D, {i}, {a})" if self.odd() else "MINA(V)" if self.r.random() < 0.1 else a)),
            f"({a} / {b})" if self.odd() else b, f"LOG({a})" if self.odd() else a,
            f"RAND({a})" if self.r.random() < 0.05 else b))

    def any(self, depth):
        return self.r.choice((self.whole, self.real))(depth)

    def statement(self):
        c, d = self.r.choice, self.r.randrange(4)
        kind = self.r.randrange(20 if self.depth < 3 else 14)
        if kind < 4:
            return f"{c('XYZ')} = {self.any(d)};"
        if kind < 6:
            value = c((f"MOD({self.whole(d)}, 1000)", f"^{self.whole(1)}"))
            return f"{c(('N', 'L', 'B(2)'))} = {value};"
        if kind < 8:
            return f"A({self.subscript(5, 1)}) = {self.any(d)};"
        if kind < 9:
            return f"C({self.subscript(2, 1)}, {self.subscript(3, 1)}) = {self.any(d)};"
        if kind < 10:
            return c((f"A = A * {self.real(1)};", f"A(2:4) = {self.real(1)}, {self.any(1)};",
                      f"C = C - {self.real(1)};", "A = D + X;", f"B = {self.whole(1)};",
                      "D = A(1:5);" if self.odd() else "A(1:3) = D(3:5);"))
        if kind < 12:
            return f"PRINT {self.any(d)}, {self.any(1)};"
        if kind < 13:
            return c((f"WRITE {self.any(d)};", "OUT F;", "OUT G;", "PRINT A;", "I = I + 1;"))
        if kind < 14:
            self.labels += 1
            label = f"M{self.labels}"
            return f"GOTO {label}; {self.statement()} {label}: N = N + 1;"
        self.depth += 1
        body = " ".join(self.statement() for _ in range(self.r.randrange(1, 4)))
        if kind < 17:
            text = f"IF {self.whole(d)} THEN {body} ENDIF"
        elif kind < 18:
            text = f"IF {self.real(1)} > {self.real(1)} THEN {body} ELSE {self.statement()} ENDIF"
        else:
            step = c(("", "", ", 2", ", N - L" if self.odd() else ""))
            text = f"DO {'IJQ'[self.depth - 1]} = {c('12')}, {c(('3', 'MOD(ABS(L), 4)'))}{step}; {body} ENDDO"
        self.depth -= 1
        return text

    def text(self):
        start = ("X = 1.0; Y = 0.5; Z = -2.0; I = 1; J = 2; Q = 1; N = 3; L = 4; A(1:5) = 1.0, 2.5; "
                 "B = 1:3; C(1:2,1:3) = 0.5; D = LINA(0.0, 2.0, 5); FORMAT = 9;")
        parts = [start] + [self.statement() for _ in range(4)]
        parts += ["BEGIN"] + [self.statement() for _ in range(8)] + ["END PRINT X, Y, Z, A, B, C; END"]
        for name in "FG":
            parts += [f"OUTPUT {name}; TURN_ON = MOD(L, 3) <> 1;" if name == "G" else "OUTPUT F;"]
            parts += [self.statement().replace("OUT F;", "").replace("OUT G;", "RETURN")
                      for _ in range(3)] + ["END"]
        lines, line = [], ""
        for word in " ".join(parts).split(" "):
            if len(line) + len(word) > 78:
                lines.append(line)
                line = ""
            line += (" " if line else "") + word
        return "\n".join(lines + [line]) + "\n"


def run(program, source, results):
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        (directory / "zrvdat").write_text(source)
        (directory / "vnxres").write_bytes(results)
        done = subprocess.run([program], cwd=name, capture_output=True, timeout=60)
        files = {f.name: f.read_bytes() for f in directory.iterdir()}
        return done.returncode, done.stdout, done.stderr, files


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", nargs=2)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=100)
    arguments = parser.parse_args()
    whole = 0
    for k in range(arguments.count):
        r = random.Random(f"{arguments.seed} {k}")
        source, results = Program(r).text(), results_file(r)
        one, other = (run(str(pathlib.Path(p).resolve()), source, results) for p in arguments.program)
        whole += one[0] == 0
        if one != other:
            print(f"program {k} of seed {arguments.seed}:\n{source}\n{one}\n{other}")
            return 1
    print(f"{arguments.count} programs, {whole} of them without an error")
    return 0 if whole >= arguments.count // 4 else 1


sys.exit(main())
