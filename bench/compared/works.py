# SPDX-License-Identifier: GPL-3.0-only
"""What bench/compare compares: the works, who else does them, and how we mean to stand.

In the words of a command stand for: {folder} the lists of one size, {rows} their number, {out} a folder for what is written,
{works} our program of single works, {overmarks} our program, {python} the machine's own Python, {peers} bench/peers.
"""
import zipfile
from dataclasses import dataclass
from typing import Callable, Optional

PYTHON = "/usr/bin/python3"  # the machine's own, whose modules are Debian's


@dataclass(frozen=True)
class Need:
    """What a peer can't do without."""

    kind: str  # program, python, node, or work: one of our own program, which is built where its library is found
    name: str
    get: str


def debian(package, kind, name):
    return Need(kind, name, f"apt-get install --no-install-recommends {package}")


def npm(package):
    return Need("node", package, f"npm install --prefix build/npm {package}")


MILLER = debian("miller", "program", "mlr")
SQLITE = debian("sqlite3", "program", "sqlite3")
PANDAS = debian("python3-pandas", "python", "pandas")
PYTHON3 = debian("python3", "program", PYTHON)
NODE = debian("nodejs", "program", "node")
FFMPEG = debian("ffmpeg", "program", "ffmpeg")
OPENPYXL = debian("python3-openpyxl", "python", "openpyxl")
LIBREOFFICE = debian("libreoffice-calc-nogui", "program", "soffice")


# ---- what shows that the work was done: rows, of what a program has written -----------------------------------------------------


def last_number(path):
    """Of a program that prints how many there were."""
    with open(path, encoding="utf-8") as file:
        return int(file.read().split()[-1])


def lines(without=0, holding="", beginning=None):
    """@param without: lines of the head"""

    def count(path):
        with open(path, encoding="latin-1") as file:
            return sum(1 for line in file if holding in line and (beginning is None or line.startswith(beginning))) - without

    return count


def json_rows(titles=0):
    """Of our rows --json, where each row begins on a line of its own."""
    return lines(titles, beginning="  [")


JSON_EVENTS = lines(beginning='  {"uuid"')  # of our list --json


def pieces(part, piece, without=0):
    """@param part: of an archive, looked through for a piece of markup
    @param without: pieces of the head"""

    def count(path):
        number, end = 0, b""
        with zipfile.ZipFile(path) as archive, archive.open(part) as file:
            while block := file.read(1 << 20):
                number += (end + block).count(piece)
                end = (end + block)[1 - len(piece) :]  # a piece may lie across two blocks
        return number - without

    return count


def uncounted(path):
    """What is printed on pages, and what there are no rows of."""


@dataclass(frozen=True)
class Peer:
    """Who else does the work."""

    name: str
    need: Need
    command: tuple
    # Of those that don't print their seconds and the number of rows: the latter from what they print, or from the file that they write.
    count: Optional[Callable] = None
    writes: Optional[str] = None
    start: Optional[tuple] = None  # the same program with nothing to do, whose time isn't the work's
    most_rows: Optional[int] = None  # of what would take it hours


def script(name, need, *words):
    """A program of bench/peers, which prints the seconds of its work alone and the number of rows."""
    runs = "node" if words[0].endswith(".js") else "{python}"
    return Peer(name, need, (runs, "{peers}/" + words[0], *words[1:]))


# ---- how we mean to stand ----------------------------------------------------------------------------------------------------------


@dataclass(frozen=True)
class Ahead:
    """So many times as fast as the fastest of these; of all peers where none is named."""

    times: float
    names: tuple = ()
    but: tuple = ()


@dataclass(frozen=True)
class Within:
    """No longer than so many times the limit."""

    times: float


@dataclass(frozen=True)
class Under:
    """No longer than so many seconds, with so many rows."""

    seconds: float
    rows: int


@dataclass(frozen=True)
class Above:
    """No more than so many seconds above the limit."""

    seconds: float


@dataclass(frozen=True)
class Detail:
    """One of the further figures of a work of ours is no more than this."""

    figure: str
    name: str
    most: float


@dataclass(frozen=True)
class Program:
    """Ours as a whole process."""

    name: str
    command: tuple
    count: Callable = uncounted
    writes: Optional[str] = None


@dataclass(frozen=True)
class Prepared:
    """A file beside the lists that not all works need."""

    name: str
    command: tuple
    works: tuple  # which of {works} read it; of who else does, the command tells


@dataclass(frozen=True)
class Work:
    name: str
    title: str
    ours: tuple = ()  # which of {works}, or (what it is, which of {works}); the first is what the targets are about
    floors: tuple = ()  # (what it is, which of {works}), or a Peer; the first is the limit of the targets
    program: Optional[Program] = None
    peers: tuple = ()
    targets: tuple = ()
    prepared: tuple = ()
    whole_process: bool = False  # the targets are about whole processes
    cues: Optional[int] = None  # a number of rows of its own
    expects: Callable = staticmethod(lambda rows: rows)  # how many rows come of it; None: as many as with the limit

    def own_works(self):
        """[(what it is, which of {works})]"""
        return [("Overmarks", ours) if isinstance(ours, str) else ours for ours in self.ours]

    def limits(self):
        """The floors as peers."""
        return [f if isinstance(f, Peer) else Peer(f[0], Need("work", f[1], f[2] if len(f) > 2 else ""), ()) for f in self.floors]

    def judged_name(self):
        """What the targets are about."""
        return self.program.name if self.whole_process else self.own_works()[0][0]

    def limit_name(self):
        """The limit of the targets, and of how many rows have to come of it."""
        return self.limits()[0].name if self.floors else None


def overmarks(name, *words, count=uncounted, writes=None):
    return Program(name, ("{overmarks}", *words), count, writes)


PYTHON_DOCX = debian("python3-docx", "python", "docx")

# The documents of the list that others are to print or to read.
def sheet(name, form, *options, works=()):
    return Prepared(
        f"{name}.{form}",
        ("{overmarks}", "export", "{folder}/list.csv", "-o", "{folder}", "--format", form, "--name", name, "--force", "--quiet", *options),
        works,
    )


SHEETS = (
    sheet("sheet", "docx", works=("docx-in", "docx-in.floor", "docx-out.floor", "docx-out.floor-libdeflate")),
    sheet("takes", "html", "--take-numbers"),
)

# A table for each cue. Ours have one more, the head.
MAIN_PART, CUE = "word/document.xml", b"<w:tbl>"

# Without tags, as we print: they are of no use on paper, and their time grows with the square of the pages.
CHROMIUM = Peer(
    "Chromium alone",
    debian("chromium-headless-shell", "program", "chromium-headless-shell"),
    (
        "chromium-headless-shell", "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--disable-pdf-tagging",
        "--print-to-pdf={out}/chromium.pdf", "file://{folder}/takes.html",
    ),
    uncounted,
    writes="chromium.pdf",
)

ORDERED = (
    script("pandas", PANDAS, "pandas_list.py", "{work}", "{folder}/shuffled.csv"),
    script("sqlite3 in memory", PYTHON3, "sqlite_list.py", "{work}", "{folder}/shuffled.csv"),
)

WORKS = [
    Work(
        "csv-in",
        "CSV to rows",
        ours=("csv-in",),
        floors=(("one pass to std::string", "csv-in.floor"),),
        program=overmarks("overmarks rows --json", "rows", "{folder}/list.csv", "--json", count=json_rows(1)),
        peers=(
            Peer("Miller", MILLER, ("mlr", "--icsv", "--onidx", "count", "{folder}/list.csv"), last_number, start=("mlr", "--version")),
            Peer(
                "sqlite3",
                SQLITE,
                ("sqlite3", ":memory:", ".mode csv", ".import {folder}/list.csv list", "SELECT count(*) FROM list"),
                last_number,
                start=("sqlite3", ":memory:", "SELECT 1"),
            ),
            script("papaparse", npm("papaparse"), "papaparse.js", "{folder}/list.csv"),
            script("Python csv", PYTHON3, "csv_module.py", "{folder}/list.csv"),
            script("pandas", PANDAS, "pandas_list.py", "csv-in", "{folder}/list.csv"),
        ),
        targets=(Ahead(1, ("Miller", "sqlite3", "papaparse", "Python csv")), Within(3)),
    ),
    Work(
        "csv-out",
        "CSV out",
        ours=("csv-out",),
        floors=(("the cells one behind the other", "csv-out.floor"),),
        program=overmarks(
            "overmarks convert", "convert", "{folder}/list.csv", "{out}/program.csv", "--force", "--quiet", writes="program.csv", count=lines(1)
        ),
        peers=(
            script("Python csv", PYTHON3, "csv_module.py", "{folder}/list.csv", "{out}/python.csv"),
            script("pandas", PANDAS, "pandas_list.py", "csv-out", "{folder}/list.csv", "{out}/pandas.csv"),
        ),
        targets=(Ahead(1.5), Within(1.5)),
    ),
    Work(
        "srt-in",
        "SRT to rows",
        ours=("srt-in",),
        floors=(("one pass to std::string", "srt-in.floor"),),
        program=overmarks("overmarks rows --json", "rows", "{folder}/list.srt", "--json", count=json_rows()),
        peers=(
            script("subsrt", npm("subsrt"), "subsrt.js", "{folder}/list.srt"),
            script("python3-srt", debian("python3-srt", "python", "srt"), "srt_module.py", "{folder}/list.srt"),
            Peer(
                "ffmpeg",
                FFMPEG,
                ("ffmpeg", "-v", "error", "-nostdin", "-i", "{folder}/list.srt", "-c:s", "ass", "-f", "framecrc", "-"),
                lines(beginning="0,"),
                start=("ffmpeg", "-version"),
            ),
        ),
        targets=(Ahead(3), Within(2.5)),
    ),
    Work(
        "ebu-in",
        "EBU STL to rows",
        ours=("ebu-in",),
        floors=(("one pass to std::string", "ebu-in.floor"),),
        program=overmarks("overmarks rows --json", "rows", "{folder}/list.stl", "--json", count=json_rows()),
        peers=(
            Peer(
                "ebu_dump",
                Need("program", "ebu_dump", "neither Debian nor npm has it; it is used where it is on the PATH"),
                ("ebu_dump", "{folder}/list.stl"),
                uncounted,
            ),
            Peer(
                "ttconv",
                debian("python3-ttconv", "program", "ttconv"),
                ("ttconv", "convert", "-i", "{folder}/list.stl", "-o", "{out}/ttconv.srt"),
                lines(holding=" --> "),
                writes="ttconv.srt",
                start=("ttconv", "--help"),
                most_rows=10000,  # its time grows with the square of them
            ),
        ),
        targets=(Ahead(1.5), Within(1.5)),
        expects=lambda rows: min(rows, 99999),
    ),
    Work(
        "dbf-in",
        "dBase to rows",
        ours=("dbf-in",),
        floors=(("one pass to std::string", "dbf-in.floor"),),
        program=overmarks("overmarks rows --json", "rows", "{folder}/list.dbf", "--json", count=json_rows(1)),
        peers=(
            Peer(
                "pgdbf", debian("pgdbf", "program", "pgdbf"), ("pgdbf", "{folder}/list.dbf"), lines(holding="\t"), start=("pgdbf", "-h")
            ),
            Peer(
                "GDAL",
                debian("gdal-bin", "program", "ogr2ogr"),
                ("ogr2ogr", "-f", "CSV", "/vsistdout/", "{folder}/list.dbf"),
                lines(1),
                start=("ogr2ogr", "--version"),
            ),
            script("dbfread", debian("python3-dbfread", "python", "dbfread"), "dbfread_read.py", "{folder}/list.dbf"),
            Peer(
                "dbf_dump",
                debian("libdbd-xbase-perl", "program", "dbf_dump"),
                ("dbf_dump", "--fs", "|", "{folder}/list.dbf"),
                lines(holding="|"),
                start=("dbf_dump", "--version"),
            ),
        ),
        targets=(Ahead(5, but=("pgdbf",)), Within(1.5)),
    ),
    Work(
        "ttal-in",
        "TTAL in",
        ours=("ttal-in",),
        floors=(("juce::JSON alone", "ttal-in.floor"),),
        program=overmarks("overmarks rows --json", "rows", "{folder}/list.ttal", "--json", count=json_rows()),
        peers=(
            script("Python json", PYTHON3, "json_cells.py", "{folder}/list.ttal"),
            Peer(
                "rapidjson",
                debian("rapidjson-dev", "work", "ttal-in.rapidjson"),
                ("{works}", "ttal-in.rapidjson", "{folder}", "{rows}", "{out}"),
            ),
        ),
        targets=(Ahead(1, ("Python json",)), Within(1.5)),
    ),
    Work(
        "xlsx-in",
        "Workbook to rows",
        ours=("xlsx-in",),
        floors=(("Orcus alone", "xlsx-in.floor"),),
        program=overmarks("overmarks rows --json", "rows", "{folder}/list.xlsx", "--json", count=json_rows(1)),
        peers=(
            script("openpyxl", OPENPYXL, "openpyxl_read.py", "{folder}/list.xlsx"),
            Peer(
                "LibreOffice",
                LIBREOFFICE,
                ("soffice", "--headless", "--convert-to", "csv", "--outdir", "{out}/office", "{folder}/list.xlsx"),
                lines(1),
                writes="office/list.csv",
            ),
            Peer(
                "xlsx2csv",
                debian("xlsx2csv", "program", "xlsx2csv"),
                ("xlsx2csv", "{folder}/list.xlsx"),
                lines(1),
                start=("xlsx2csv", "--version"),
            ),
        ),
        targets=(Ahead(2, ("xlsx2csv",)), Within(1.4)),
    ),
    Work(
        "xlsx-out",
        "Workbook out",
        ours=("xlsx-out",),
        floors=(("libxlsxwriter, the same cells, row by row", "xlsx-out.floor"), ("libxlsxwriter, the whole sheet", "xlsx-out.whole-sheet")),
        program=overmarks(
            "overmarks convert", "convert", "{folder}/list.csv", "{out}/program.xlsx", "--force", "--quiet", writes="program.xlsx",
            count=pieces("xl/worksheets/sheet1.xml", b"<row ", 1),
        ),
        peers=(script("openpyxl", OPENPYXL, "openpyxl_write.py", "{folder}/list.csv", "{out}/openpyxl.xlsx"),),
        targets=(Within(1.25),),
    ),
    Work(
        "sort-time",
        "Sort by time",
        ours=("sort-time",),
        floors=(("stable_sort of prepared keys", "sort-time.floor"),),
        program=overmarks("overmarks list --sort StartTCString", "list", "{folder}/shuffled.csv", "--sort", "StartTCString", "--json", count=JSON_EVENTS),
        peers=(*ORDERED, script("Python", PYTHON3, "python_list.py", "sort-time", "{folder}/shuffled.csv")),
        targets=(Ahead(3), Within(4)),
    ),
    Work(
        "sort-cue",
        "Sort by cue number",
        ours=("sort-cue",),
        program=overmarks("overmarks list --sort CueNumber", "list", "{folder}/shuffled.csv", "--sort", "CueNumber", "--json", count=JSON_EVENTS),
        peers=(
            *ORDERED,
            script("natsort", debian("python3-natsort", "python", "natsort"), "python_list.py", "sort-cue", "{folder}/shuffled.csv"),
        ),
        targets=(Ahead(2),),
    ),
    Work(
        "filter",
        "Filter by part of the text",
        ours=("filter",),
        floors=(("one memmem pass", "filter.floor"),),
        program=overmarks("overmarks list --text", "list", "{folder}/list.csv", "--text", "captain never", "--json", count=JSON_EVENTS),
        peers=(
            script("pandas", PANDAS, "pandas_list.py", "filter", "{folder}/list.csv"),
            script("Node", NODE, "node_filter.js", "{folder}/list.csv"),
        ),
        targets=(Ahead(3, ("pandas",)), Within(3)),
        expects=None,
    ),
    Work(
        "edit",
        "One edit in a shown list",
        ours=("edit", ("Overmarks, in the order of texts", "edit.by-text"), ("Overmarks, a cue that moves", "edit.moving")),
        targets=(Under(0.030, rows=100000),),
    ),
    Work(
        "start",
        "Start",
        program=overmarks("overmarks --version", "--version"),
        peers=(
            Peer("Python", PYTHON3, ("{python}", "-c", "pass"), uncounted),
            Peer("Miller", MILLER, ("mlr", "--version"), uncounted),
            Peer("Node", NODE, ("node", "-e", ""), uncounted),
        ),
        targets=(Ahead(1, ("Python",)),),
        whole_process=True,
    ),
    Work(
        "docx-out",
        "Word cue sheet out",
        ours=("docx-out",),
        floors=(
            ("its markup put together and deflated", "docx-out.floor"),
            ("the same, deflated by libdeflate", "docx-out.floor-libdeflate"),
        ),
        program=overmarks(
            "overmarks convert", "convert", "{folder}/list.csv", "{out}/program.docx", "--force", "--quiet", writes="program.docx",
            count=pieces(MAIN_PART, CUE, 1),
        ),
        peers=(
            script("npm docx", npm("docx"), "docx_write.js", "{folder}/list.csv", "{out}/npm.docx"),
            Peer(
                "pandoc",
                debian("pandoc", "program", "pandoc"),
                ("pandoc", "-f", "markdown", "{folder}/list.md", "-o", "{out}/pandoc.docx"),
                pieces(MAIN_PART, CUE),
                writes="pandoc.docx",
                start=("pandoc", "--version"),
            ),
            script("python-docx", PYTHON_DOCX, "word_sheet.py", "{folder}/list.csv", "{out}/python.docx"),
        ),
        targets=(Ahead(8), Within(3)),
        prepared=SHEETS,
        cues=2000,
    ),
    Work(
        "docx-in",
        "Word cue sheet in",
        ours=("docx-in",),
        floors=(("expat over its main part", "docx-in.floor"),),
        program=overmarks("overmarks rows --json", "rows", "{folder}/sheet.docx", "--json", count=json_rows()),
        peers=(
            Peer(
                "docx2txt",
                debian("docx2txt", "program", "docx2txt"),
                ("docx2txt", "{folder}/sheet.docx", "-"),
                lines(beginning="NOTES"),
            ),
            script("python-docx", PYTHON_DOCX, "docx_read.py", "{folder}/sheet.docx"),
        ),
        targets=(Ahead(1, ("docx2txt",)), Within(2.5)),
        prepared=SHEETS,
        cues=2000,
    ),
    Work(
        "pdf-drawn",
        "Drawn cue sheet with the boxes of the takes",
        ours=("pdf-drawn",),
        floors=(("libharu with the fonts of every reader", "pdf-drawn.floor", "apt-get install --no-install-recommends libhpdf-dev"),),
        program=overmarks(
            "overmarks convert --engine drawn", "convert", "{folder}/list.csv", "{out}/program.pdf", "--engine", "drawn", "--take-numbers", "--force",
            "--quiet", writes="program.pdf",
        ),
        peers=(
            Peer("cairo and pango, plain", debian("libpango1.0-dev", "work", "pdf-drawn.pango"), ("{works}", "pdf-drawn.pango")),
            CHROMIUM,
            Peer(
                "wkhtmltopdf",
                debian("wkhtmltopdf", "program", "wkhtmltopdf"),
                ("wkhtmltopdf", "-q", "--enable-local-file-access", "{folder}/takes.html", "{out}/wkhtmltopdf.pdf"),
                uncounted,
                writes="wkhtmltopdf.pdf",
                start=("wkhtmltopdf", "--version"),
            ),
            script("reportlab", debian("python3-reportlab", "python", "reportlab"), "reportlab_sheet.py", "{folder}/list.csv", "{out}/reportlab.pdf"),
        ),
        targets=(Ahead(4, ("cairo and pango, plain",)), Within(1)),
        prepared=SHEETS,
        cues=2000,
    ),
    Work(
        "pdf-browser",
        "Cue sheet through the browser",
        ours=("pdf-browser",),
        floors=(CHROMIUM,),
        program=overmarks(
            "overmarks convert --engine browser", "convert", "{folder}/list.csv", "{out}/program.pdf", "--engine", "browser", "--take-numbers", "--force",
            "--quiet", writes="program.pdf",
        ),
        targets=(Above(0.25),),
        prepared=SHEETS,
        cues=2000,
    ),
    Work(
        "memory",
        "Memory of a table and of a list",
        ours=(("Overmarks, a table", "memory.table"), ("Overmarks, a list from a table", "memory.list"), ("Overmarks, a list from a project", "memory.project")),
        targets=(
            Detail("Overmarks, a table", "times the text, resident", 3),
            Detail("Overmarks, a list from a table", "times the text, resident", 3),
            Detail("Overmarks, a list from a project", "times the text, resident", 3),
        ),
        prepared=(
            Prepared(
                "list.overmarks",
                ("{overmarks}", "import", "{folder}/list.csv", "-o", "{folder}/list.overmarks", "--quiet"),
                ("memory.project",),
            ),
        ),
    ),
]
