#!/usr/bin/env python3
"""Reads a program's --help text for its manual page and for its completion's test.

  helptext.py page PROGRAM TEMPLATE VERSION DATE OUT
        the manual page OUT (and OUT.gz): TEMPLATE with @SYNOPSIS@ and @ENTRIES@ filled from
        the help, @VERSION@ and @DATE@ from the arguments
  helptext.py words PROGRAM
        each entry's first word and the options it names, one "WORD OPTION" a line ("WORD -"
        for none)

The help is a usage line (and more, indented, for other forms), then entries: a synopsis at
two spaces (a wrapped synopsis indented further), its description at the column of the first
entry's description, which may start on the synopsis line after two spaces or more.
"""
import gzip
import re
import subprocess
import sys


def parse(text):
    lines = text.rstrip("\n").split("\n")
    usage = []
    while lines and (lines[0].startswith("usage:") or lines[0].startswith("       ")):
        usage.append(lines.pop(0).replace("usage:", "", 1).strip())
    column = re.match(r"  \S.*?\s{2,}(?=\S)", lines[0]).end()
    entries = []  # [synopsis lines, description lines]
    for line in lines:
        indent = len(line) - len(line.lstrip())
        if indent >= column:
            entries[-1][1].append(line.strip())
        elif indent == 2:
            if line[column - 2 : column] == "  " and line[column : column + 1].strip():
                synopsis, description = line[:column].strip(), line[column:].strip()
            else:
                synopsis, description = line.strip(), ""
            if not entries or entries[-1][1]:
                entries.append([[], []])
            entries[-1][0].append(synopsis)
            if description:
                entries[-1][1].append(description)
        else:
            entries[-1][0][-1] += " " + line.strip()
    return usage, entries


def roff(text):
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return "\\&" + text if text[:1] in (".", "'") else text


def bold_first(line):
    word, _, rest = line.partition(" ")
    return f"\\fB{roff(word)}\\fR" + (" " + roff(rest) if rest else "")


def page(template, version, date, text):
    usage, entries = parse(text)
    synopsis = "\n.br\n".join(bold_first(line) for line in usage)
    body = []
    for synopses, description in entries:
        body.append(".PP")
        body.append("\n.br\n".join(bold_first(line) for line in synopses))
        body += [".RS"] + [roff(line) for line in description] + [".RE"]
    filled = {"@SYNOPSIS@": synopsis, "@ENTRIES@": "\n".join(body),
              "@VERSION@": version, "@DATE@": date}
    return re.sub("|".join(filled), lambda m: filled[m.group(0)], template)


def words(text):
    _, entries = parse(text)
    for synopses, description in entries:
        options = set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", " ".join(synopses + description)))
        for option in sorted(options) or ["-"]:
            print(synopses[0].split()[0], option)


def help_text(program):
    return subprocess.run([program, "--help"], check=True, capture_output=True, text=True).stdout


def write_page(program, template, version, date, out):
    with open(template, encoding="utf-8") as source:
        text = page(source.read(), version, date, help_text(program))
    with open(out, "w", encoding="utf-8") as plain:
        plain.write(text)
    # As gzip -9n: no name or time inside, so the same page gives the same bytes.
    with open(out + ".gz", "wb") as packed:
        packed.write(gzip.compress(text.encode("utf-8"), compresslevel=9, mtime=0))


if __name__ == "__main__":
    if sys.argv[1:2] == ["page"] and len(sys.argv) == 7:
        write_page(*sys.argv[2:])
    elif sys.argv[1:2] == ["words"] and len(sys.argv) == 3:
        words(help_text(sys.argv[2]))
    else:
        sys.exit(__doc__)
