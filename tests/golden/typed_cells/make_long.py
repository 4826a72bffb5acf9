"""Texts of 32,767 and 32,768 characters, the latter also of those that a sheet counts twice."""
rows = ["x" * 32767, "x" * 32768, "\U0001d11e" * 16383 + "x", "\U0001d11e" * 16384, "last"]
with open("long.txt", "w", encoding="utf-8", newline="") as report:
    report.writelines(row + "\r\n" for row in ["TEXTS", *rows, "END OF LIST"])
with open("typed.rcp", encoding="utf-8", newline="") as recipe, open("long.rcp", "w", encoding="utf-8", newline="") as wide:
    wide.writelines("Parsing=" + "-" * 32768 + "\r\n" if line.startswith("Parsing") else line for line in recipe)
