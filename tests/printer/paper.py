"""Lines on pages, and texts that are put at places of a line."""


class Line:
    """One line of a report, columns counted from 1. A text never covers another one."""

    def __init__(self):
        self.text = ""

    def put(self, start, text):
        text = text.rstrip()
        if not text:
            return self
        if self.text[start - 1:].strip():
            raise ValueError(f"{text!r} at {start} would cover {self.text!r}")
        self.text = self.text[:start - 1].ljust(start - 1) + text
        return self

    def right(self, end, text):
        """Ends at a column; what stands behind the last digit counts."""
        bare = text.rstrip()
        return self.put(end - len(text) + 1, bare)


class Paper:
    """Takes lines and breaks pages. The head is printed on top of each page, the foot at the end of each."""

    def __init__(self, length=0, head=None, foot=None, feed="char"):
        self.lines = []
        self.kinds = []
        self.length, self.head, self.foot, self.feed = length, head, foot, feed
        self.page = 0
        self.used = 0
        self.breaks = []  # calls that print what a new page repeats
        self.closers = []  # calls that print what stands below the rows of a full page
        self.starts = []  # index of the first line of each page
        if not length:
            self._start()

    def _start(self):
        self.page += 1
        self.starts.append(len(self.lines))
        if self.head is None:
            return
        first = len(self.lines)
        for text in self.head(self.page):
            self.put(text, "page")
        if self.page > 1 and self.length and first < len(self.lines):
            if self.feed == "char":
                self.lines[first] = "\f" + self.lines[first]
            elif self.feed == "line":
                self.lines.insert(first, "\f")
                self.kinds.insert(first, "page")

    def put(self, text, kind="other"):
        self.lines.append(text.rstrip(" "))
        self.kinds.append(kind)
        self.used += 1

    def need(self, count):
        """Goes to a new page if fewer lines are left. True if it did and it is not the first one."""
        if not self.length or (self.page and self.used + count <= self.length):
            return False
        first = self.page == 0
        if not first:
            for last in self.closers:
                last()
            self._end()
        self.used = 0
        self._start()
        if not first:
            for again in self.breaks:
                again()
        return not first

    def _end(self):
        self.put("")
        if self.foot is None:
            return
        for text in self.foot(self.page):
            self.put(text, "page")
        if self.feed == "blanks":
            while self.used < self.length + 4:
                self.put("")

    def close(self):
        if self.length and self.page:
            self._end()

    def text(self, end="\n"):
        return end.join(self.lines) + end
