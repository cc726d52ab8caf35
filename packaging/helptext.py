#!/usr/bin/env python3
"""Reads a program's --help text (on stdin) for its manual page and its completion's test.

  helptext.py page TEMPLATE VERSION DATE   the manual page: TEMPLATE with @SYNOPSIS@ and
                                           @ENTRIES@ filled from the help, @VERSION@, @DATE@
  helptext.py words                        each entry's first word and the options it names,
                                           one "WORD OPTION" a line ("WORD -" for none)

The help is a usage line (and more, indented, for other forms), then entries: a synopsis at
two spaces (a wrapped synopsis indented further), its description at the column of the first
entry's description, which may start on the synopsis line after two spaces or more.
"""
import re
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


if __name__ == "__main__":
    help_text = sys.stdin.read()
    if sys.argv[1:2] == ["page"]:
        with open(sys.argv[2], encoding="utf-8") as source:
            sys.stdout.write(page(source.read(), sys.argv[3], sys.argv[4], help_text))
    elif sys.argv[1:] == ["words"]:
        words(help_text)
    else:
        sys.exit(__doc__)
