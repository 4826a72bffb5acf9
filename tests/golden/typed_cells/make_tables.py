"""Gives each text of typed.txt a table of its own: what stands in one column of one table is typed together."""

with open("typed.txt", encoding="cp1252", newline="") as file:
    lines = file.read().splitlines(keepends=True)
rows = lines[1:next(n for n, line in enumerate(lines) if line.startswith("END OF LIST"))]
end = lines[0][len(lines[0].rstrip("\r\n")):]
with open("single.txt", "w", encoding="cp1252", newline="") as file:
    for number, row in enumerate(rows):
        file.write(f"KEY {number:04}{end}{row}")
    file.write(f"KEY {len(rows):04}{end}")
with open("typed.rcp", encoding="cp1252", newline="") as file:
    recipe = file.read()
head, table = recipe.split("[Table 1]")
with open("single.rcp", "w", encoding="cp1252", newline="") as file:
    file.write(head)
    for number in range(len(rows)):
        file.write(f"[Table {number + 1}]" + table.replace("=TEXTS", f"=KEY {number:04}")
                   .replace("=END OF LIST", f"=KEY {number + 1:04}"))
