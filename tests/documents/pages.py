#!/usr/bin/env python3
"""pages.py run RUNNER PROGRAM REPOSITORY PAGE...: runs the programs that manual pages show.
pages.py check PRINT_TABLES REPOSITORY: holds the pages and the editor files against the program.

What is wrong is told, and the status is then 1.
"""
import pathlib
import re
import subprocess
import sys
from collections import Counter

ARGUMENT = "\1"  # what stands for a text in slanted letters
ESCAPES = {"(dq": '"', "(aq": "'", "(ha": "^", "(ti": "~", "e": "\\", "&": ""}
complaints = []


def complain(about, what):
    complaints.append(f"{about}: {what.replace(ARGUMENT, '*')}")


def shown(source):
    """The text that a page's source shows, slanted pieces being ARGUMENT."""
    source = re.sub(r"\\fI.*?\\fP", ARGUMENT, source)
    return re.sub(r"\\(\(..|.)", lambda m: ESCAPES.get(m[1], m[1]), source)


def run(runner, program, repository, *pages):
    """Displays headed by comments with "=== " or "--- " are the sections of a case file."""
    for page in pages:
        cases, wanted, inside = "", False, False
        for line in pathlib.Path(page).read_text().splitlines():
            if heading := re.fullmatch(r'\.\\" ((===|---|\|) (.*))', line):
                cases += heading[3 if heading[2] == "|" else 1] + "\n"
                wanted = heading[2] == "---" or (wanted and heading[2] == "|")
            elif line.startswith(".Bd -literal"):
                inside = wanted
            elif line.startswith(".Ed"):
                wanted = inside = False
            elif inside:
                cases += shown(line) + "\n"
        result = subprocess.run([runner, program, repository, "/dev/stdin"], input=cases, text=True)
        if result.returncode != 0:
            complain(page, "its programs do not do what it says")


# ---- The tables of the program ----

def section(page, heading):
    """The source of a section or subsection, up to the next heading."""
    return re.search(rf"^\.S[hs] {heading}$(.*?)(?=^\.S[hs] |\Z)", page, re.M | re.S)[1]


def rows(source):
    """The rows of tables in a page's source, each a list of its cells."""
    lines = re.findall(r"^\.It (.*)", source, re.M)
    return [[shown(cell) for cell in line.split(" Ta ")] for line in lines]


def limits(source):
    return [" ".join(row) for row in rows(source) if len(row) == 2 and row[0].isdigit()]


def check_tables(print_tables, root):
    tables = {}
    for line in subprocess.check_output(print_tables, text=True).splitlines():
        table, row = line.split("\t")
        tables.setdefault(table, set()).add(row)
    # Names and shapes of element 7 with 58 cells, as the page writes them.
    letters = {"59": "N+1", "58": "N", "7": "k"}
    tables["quantities"] = {re.sub("59|58|7", lambda m: letters[m[0]], q) for q in tables["quantities"]}
    words = {row.split()[0] for table in ("keywords", "functions", "keys") for row in tables[table]}

    language = (root / "doc/zorvik_language.7").read_text()
    files = (root / "doc/zorvik_files.5").read_text()
    functions = re.findall(r"^\.It Fn (\S+)(.*)", section(language, "FUNCTIONS"), re.M)
    keys = [row for row in rows(section(language, "Keys")) if row[0].startswith("Va ")]
    quantities = [row for row in rows(section(files, "QUANTITIES")) if len(row) == 3]
    found = {
        "keywords": set(re.findall(r"Ic (\S+)", section(language, "STATEMENTS"))),
        "functions": [f"{name} {arguments.count(chr(34)) // 2}" for name, arguments in functions],
        "keys": [" ".join(row[:3])[3:] for row in keys],
        "quantities": [row[0] for row in quantities if row[0] and not row[0].startswith("Sy ")],
        "limits of programs": limits(section(language, "LIMITS")),
        "limits of results files": limits(section(files, "What is refused")),
        "limits of property tables": limits(section(files, "Limits of the tables")),
    }
    if found.keys() != tables.keys():
        complain("tables without a page, or pages without a table", str(found.keys() ^ tables.keys()))
    compared = [(table, tables[table], found[table]) for table in found]
    for name, pattern in (
            ("zorvik.vim", r"^syntax keyword zorvik\w+ (.*)"),
            ("zorvik.nanorc", r"\\<\(([A-Z0-9_|]+)\)\\>"),
            ("vscode/syntaxes/zorvik.tmLanguage.json", r"\(\?i\)\\\\b\(([A-Z0-9_|]+)\)\\\\b")):
        lists = re.findall(pattern, (root / "editors" / name).read_text(), re.M)
        compared.append((name, words, re.split(r"[ |]", " ".join(lists))))
    for about, program, page in compared:
        for row in Counter(program) - Counter(page):
            complain(f"{about}, missing", row)
        for row in Counter(page) - Counter(program):
            complain(f"{about}, unknown to the program or there twice", row)
    print(", ".join(f"{len(rows)} {table}" for table, rows in tables.items()))


# ---- The index of messages ----
#
# A message of the sources is a literal that begins with a mark, or with blanks when it goes on with
# the one before; texts put together of several pieces are known by their first. Each must begin an
# entry of the index. The other way round, what an entry says between its slanted pieces must be made
# of literals of the sources, so that no entry outlives its message. And each entry, but those of
# failing systems and of faults of the program itself, must be expected by a test.

TOKEN = re.compile(r"""//[^\n]*|"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)+'|[^\s"'/]+|/""")
MESSAGE = re.compile(r"(?:%fat-|%err-|%inf-|%dbg-|dbg%-|%WSP)[^ ]*(?: +[^ ]|\Z)| {3,}[^ ]")
OUT_OF_REACH = ("FAILURES OF THE SYSTEM", "FAULTS OF ZORVIK")


def content_of(root, *patterns):
    return "\n".join(path.read_text() for pattern in patterns for path in sorted(root.glob(pattern)))


def literals_of(source):
    """Texts and characters between quotes, neighbours put together."""
    literals, goes_on = [], False
    for token in TOKEN.findall(source):
        if token.startswith("//"):
            continue
        if token[0] in "\"'":
            literals[len(literals) - goes_on:] = [(literals[-1] if goes_on else "") +
                                                  re.sub(r"\\(.)", r"\1", token[1:-1])]
        goes_on = token[0] == '"'
    # In the texts about water and steam "$" and a letter stand for a value.
    return {re.sub(r"\$.?", ARGUMENT, text) if text.startswith("%WSP-") else text for text in literals}


def fixed_pieces(text):
    return [piece for piece in text.split(ARGUMENT) if piece]


def made_of(text, pieces):
    ends = {0}
    for k in range(len(text)):
        if k in ends:
            ends |= {end for end in range(k + 1, len(text) + 1) if text[k:end] in pieces}
    return len(text) in ends


def expected_by(tests, entry):
    # Long texts about water and steam are written as two lines, cut at the semicolon.
    text = entry.split(";")[0] if entry.startswith("%WSP-") else entry
    return re.search(".*".join(map(re.escape, fixed_pieces(text))), tests)


def check_messages(root):
    literals = literals_of(content_of(root, "src/**/*.cpp", "src/**/*.h"))
    messages = [text for text in literals if MESSAGE.match(text)]
    # A single letter could be put together to anything.
    pieces = {piece for text in literals for piece in fixed_pieces(text)
              if len(piece) > 1 or not piece.isalpha()} | set("0123456789")
    index = (root / "doc/zorvik_messages.7").read_text()
    entries = [shown(text) for text in re.findall(r'^\.It "(.*)"$', index, re.M)]
    exempt = [shown(text) for heading in OUT_OF_REACH
              for text in re.findall(r'^\.It "(.*)"$', section(index, heading), re.M)]
    tests = (content_of(root, "tests/cases/**/*.case") +
             content_of(root, "tests/unit/**/*.cpp").replace("\\", ""))

    for message in messages:
        if not any(e.startswith(message) or (message[0] == " " and message in e) for e in entries):
            complain("not in the index", message)
    for entry in entries:
        if not all(made_of(piece, pieces) for piece in fixed_pieces(entry)):
            complain("not in the sources", entry)
        if entry not in exempt and not expected_by(tests, entry):
            complain("expected by no test", entry)
    print(f"{len(messages)} messages in the sources, {len(entries)} entries in the index, "
          f"{len(exempt)} of them out of reach of a run")


def main(action, *words):
    if action == "run":
        run(*words)
    else:
        check_tables(words[0], pathlib.Path(words[1]))
        check_messages(pathlib.Path(words[1]))
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


sys.exit(main(*sys.argv[1:]))
