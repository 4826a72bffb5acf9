#!/usr/bin/env python3
"""Makes the manual pages and the shells' completions from what the program itself says of its options.

  make_pages.py PROGRAM VERSION FOLDER

Options therefore stand in one place only, the program's own tables.
"""

import re
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
OPTION = re.compile(r"^ {2,6}(?:(?P<short>-\w),)?(?P<long>--[\w-]+)(?P<value> .*?)?(?:  +(?P<text>.*))?$")


def commands_of(program):
    said = subprocess.run([program, "--help"], capture_output=True, text=True, check=True).stdout
    listed = re.search(r"^(?:Subcommands|SUBCOMMANDS):\n((?:  .*\n)+)", said, re.MULTILINE)
    return re.findall(r"^  (\w+)", listed[1], re.MULTILINE) if listed else []


def options_of(program, command):
    """(short, long, value's name, text) of each option in the help of a command."""
    said = subprocess.run([program, command, "--help"], capture_output=True, text=True, check=True).stdout
    options = []
    for line in said.splitlines():
        match = OPTION.match(line)
        if match:
            default = re.search(r"=([^\s,.]+)", match["value"] or "")
            value = re.sub(r"(=.*|:.*|\[.*?\]|\(.*|Excludes.*|REQUIRED|Needs.*)", "", match["value"] or "").strip()
            options.append([match["short"] or "", match["long"], value, match["text"] or "", default[1] if default else ""])
        elif options and re.match(r"^ {20,}\S", line):
            options[-1][3] = (options[-1][3] + " " + line.strip()).strip()
        elif line and not line.startswith(" ") and "Option" not in line and "OPTION" not in line:
            if options and line.startswith("Examples"):
                break
    return options


def roff(text):
    return re.sub(r"^\.", r"\\&.", text.replace("\\", "\\e").replace("-", "\\-"))


def roff_options(options):
    lines = []
    for short, long, value, text, default in options:
        if default:
            text += f" (default: {default})"
        names = ", ".join(f"\\fB{roff(name)}\\fR" for name in (short, long) if name)
        lines += [".TP", names + (f" \\fI{roff(value)}\\fR" if value else ""), roff(text) + "."]
    return "\n".join(lines)


# Values that the shells offer; what an option's help calls N and the like is typed, and all else is a file.
CHOICES = {"--quote": "never sometimes always", "--delimiter": "comma tab bar semicolon",
           "--encoding": "auto UTF-8 windows-1252 cp437 cp850 ISO-8859-1"}
TYPED = {"N", "I/N", "CELL", "CHAR"}


def bash(tables):
    words = {command: " ".join(name for option in options for name in option[:2] if name) for command, options in tables.items()}
    cases = "\n".join(f'    {command}) words="{words[command]}" ;;' for command in tables)
    values = "\n".join(f'    {option}) COMPREPLY=($(compgen -W "{choice}" -- "$current")); return ;;'
                       for option, choice in CHOICES.items())
    return f"""# bash completion of quillon
# The profiles of the user and those that are shipped, by name.
_quillon_profiles() {{
  local file
  for file in "${{APPDATA:-${{XDG_CONFIG_HOME:-$HOME/.config}}}}/Brindlemark, Inc/Quillon/Profiles"/*.txt /usr/share/quillon/Profiles/*.txt; do
    [ -e "$file" ] && file=${{file##*/}} && printf '%s\\n' "${{file%.txt}}"
  done
}}
_quillon() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD-1]}} words=""
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    COMPREPLY=($(compgen -W "{' '.join(tables)} --help --version" -- "$current"))
    return
  fi
  # In --option=value the sign is a word of its own.
  if [ "$current" = "=" ]; then current="" previous="$previous="; fi
  if [ "$previous" = "=" ]; then previous=${{COMP_WORDS[COMP_CWORD-2]}}; fi
  case ${{previous%=}} in
    --profile) COMPREPLY=($(compgen -W "$(_quillon_profiles)" -- "$current")); [ ${{#COMPREPLY[@]}} -eq 0 ] || return ;;
{values}
  esac
  case ${{COMP_WORDS[1]}} in
{cases}
  esac
  if [[ $current == -* ]]; then COMPREPLY=($(compgen -W "$words" -- "$current")); fi
}}
complete -o default -F _quillon quillon
"""


def zsh(tables):
    def quoted(text):
        return text.replace("'", "'\\''").replace("[", "\\[").replace("]", "\\]").replace(":", "\\:")

    def action(long, value):
        if not value:
            return ""
        wanted = f"({CHOICES[long]})" if long in CHOICES else " " if value in TYPED else "_files"
        return f":{value.lower().replace(' ', '-')}:{wanted}"

    def specs(options):
        return " \\\n".join(f"    '{name}{'=' if value and name == long else ''}[{quoted(text)}]{action(long, value)}'"
                            for short, long, value, text, _ in options for name in (short, long) if name)

    cases = "\n".join(f"  {command})\n    _arguments \\\n{specs(options)} \\\n    '*:file:_files' ;;" for command, options in tables.items())
    return f"""#compdef quillon
local -a commands=({' '.join(tables)})
if (( CURRENT == 2 )); then
  _describe command commands
  _arguments '--help[Print help]' '--version[Print the version]'
  return
fi
case $words[2] in
{cases}
esac
"""


def fish(tables):
    lines = ["complete -c quillon -n __fish_use_subcommand -f -a '" + " ".join(tables) + "'",
             "complete -c quillon -n __fish_use_subcommand -l help", "complete -c quillon -n __fish_use_subcommand -l version"]
    for command, options in tables.items():
        for short, long, value, text, _ in options:
            line = f"complete -c quillon -n '__fish_seen_subcommand_from {command}' -l {long[2:]}"
            line += f" -s {short[1:]}" if short else ""
            if long in CHOICES:
                line += f" -x -a '{CHOICES[long]}'"
            elif value:
                line += " -x" if value in TYPED else " -r -F"
            text = text.replace("'", "\\'")
            lines.append(f"{line} -d '{text}'")
    return "\n".join(lines) + "\n"


def main():
    program, version, folder = sys.argv[1], sys.argv[2], Path(sys.argv[3])
    folder.mkdir(parents=True, exist_ok=True)
    tables = {command: options_of(program, command) for command in commands_of(program)}
    if not {"convert", "job"} <= set(tables) or not all(tables.values()):
        sys.exit("make_pages.py: the help of the commands doesn't read as expected")
    for page in HERE.glob("*.[15]"):
        text = page.read_text(encoding="utf-8").replace("@VERSION@", version)
        sections = "\n".join(f".SH OPTIONS OF {command.upper()}\n{roff_options(tables[command])}" for command in tables)
        text = text.replace("@OPTIONS@", sections)
        (folder / page.name).write_text(text, encoding="utf-8")
    (folder / "quillon.bash").write_text(bash(tables), encoding="utf-8")
    (folder / "_quillon").write_text(zsh(tables), encoding="utf-8")
    (folder / "quillon.fish").write_text(fish(tables), encoding="utf-8")


if __name__ == "__main__":
    main()
