"""jighost history beside the databases' own shells: the import of records beside the bulk loading of
the same rows, and `stats` beside the same statement.

    history.py BUILD_FOLDER [RECORDS [MEASUREMENTS]]

Each time is the shortest of ROUNDS, and memory the most that one process had."""
import json
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROUNDS = 2
STEPS, MEASURED = 5, 4  # of each record
TABLES = ("run", "step", "quantity", "measurement")


def record(number):
    """One of `jighost sequence`, with what it keeps of an operation's attempt."""
    def step(place):
        values = [random.gauss(each, 0.1) for each in range(MEASURED)]
        call = {"request": "Get 0x1000006 8", "answer": "b5 0d 00 00 f9 5d a9 be", "sent": "",
                "sent_size": 0, "received": "b5 0d 00 00 f9 5d a9 be", "received_size": 8,
                "failed": False, "start_ms": 0.1, "time_ms": 0.1}
        return {"number": place, "name": f"step {place}", "operation": "GetBodyID",
                "outcome": "passed", "problem": "", "expected_result": "", "expected_fields": {},
                "start_ms": place, "time_ms": 0.5,
                "measurements": [
                    {"name": f"value {i}", "field": f"Field{i}", "unit": "V", "text": str(value),
                     "value": value, "min": i - 1, "max": i + 1, "pattern": "", "judged": True,
                     "within": True} for i, value in enumerate(values)],
                "attempts": [{"result": 0, "result_name": "RESULT_SUCCESS (0)", "error": "",
                              "start_ms": place, "time_ms": 0.4, "before": {},
                              "after": {"SerialNo": number}, "calls": [call],
                              "log": ["[FUNC] GetBodyID", "[FUNC] GetBodyID - 0"],
                              "interleaved": []}]}
    library = {"path": "", "version": "", "sha256": ""}
    return {"format": 2, "record": f"{number:08x}-0000-4000-8000-{number:012x}",
            "jighost": "1.1.0", "started": "2026-11-23T09:20:00.000+00:00",
            "started_at": 1795425600000 + number * 1000, "time_ms": 5.5,
            "station": f"line {number % 8}", "operator": "", "body":
            {"serial": number // 2, "id": {}, "problem": ""}, "sequence":
            {"name": "adjust", "files": []}, "parameters": {}, "range":
            {"first": 1, "last": STEPS, "of": STEPS}, "libraries":
            {"module": library, "link": library}, "faults": [], "outcome": "passed",
            "problem": "", "steps": [step(place) for place in range(1, STEPS + 1)]}


def write_records(folder, count):
    folder.mkdir()
    for number in range(count):
        (folder / f"{number:08}.json").write_text(json.dumps(record(number)), "utf-8")


class Sqlite:
    """Histories in files of the folder."""
    name = "SQLite"

    def __init__(self, folder):
        self.folder = folder

    def end(self):
        """Its files go with the folder."""

    def place(self, name):
        return str(self.folder / name)

    def shell(self, place, *statements):
        return ["sqlite3", place, *statements]

    def load(self, place):
        return self.shell(place, "BEGIN", *(
            f".import --csv '{self.folder}/{table}.csv' {table}" for table in TABLES), "COMMIT")

    def save(self, place, table):
        with open(self.folder / f"{table}.csv", "wb") as file:
            subprocess.run(["sqlite3", "-csv", place, f"SELECT * FROM {table}"], stdout=file,
                           check=True)

    def tables_like(self, place, other):
        schema = subprocess.run(["sqlite3", place, ".schema"], capture_output=True, check=True)
        subprocess.run(["sqlite3", other], input=schema.stdout, check=True)

    series = "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < {})"


class Postgresql:
    """Histories in a private server, whose files are in the folder."""
    name = "PostgreSQL"
    series = "WITH n(i) AS (SELECT generate_series(0, {} - 1))"

    def __init__(self, folder):
        self.folder = folder / "server"
        self.folder.mkdir()
        self.folder.chmod(0o777)
        user = ["setpriv", "--pdeathsig", "KILL"]
        if os.geteuid() == 0:
            user += ["--reuid", "nobody", "--clear-groups"]
        programs = sorted(Path("/usr/lib/postgresql").glob("*/bin"))[-1]
        subprocess.run([*user, programs / "initdb", "-D", "data", "-U", "line", "-A", "trust", "-E",
                        "UTF8", "--locale=C"], cwd=self.folder, stdout=subprocess.DEVNULL,
                       check=True)
        self.server = subprocess.Popen(
            [*user, programs / "postgres", "-D", "data", "-k", self.folder, "-c",
             "listen_addresses=", "-c", "log_checkpoints=off"], cwd=self.folder, stderr=subprocess.PIPE, text=True)
        for line in self.server.stderr:
            if "ready to accept connections" in line:
                break

    def end(self):
        self.server.kill()
        self.server.wait()

    def place(self, name):
        url = f"postgresql://line@{str(self.folder).replace('/', '%2F')}/"
        subprocess.run(["psql", "-Xqc", f"CREATE DATABASE {name}", url + "postgres"], check=True)
        return url + name

    def shell(self, place, *statements):
        return ["psql", "-XqAt", *(word for each in statements for word in ("-c", each)), place]

    def load(self, place):
        copies = [f"\\copy {table} FROM '{self.folder}/{table}.csv' CSV" for table in TABLES]
        return ["psql", "-Xq1", *(word for each in copies for word in ("-c", each)), place]

    def save(self, place, table):
        subprocess.run(["psql", "-Xqc", f"\\copy {table} TO '{self.folder}/{table}.csv' CSV", place],
                       check=True)

    def tables_like(self, place, other):
        schema = subprocess.run(["pg_dump", "-s", place], capture_output=True, check=True)
        subprocess.run(["psql", "-Xq", other], input=schema.stdout, stdout=subprocess.DEVNULL,
                       check=True)


def seconds(command, **options):
    begin = time.monotonic()
    subprocess.run(command, stdout=subprocess.DEVNULL, check=True, **options)
    return time.monotonic() - begin


def tell(what, own, others, limit):
    print(f"{what}: jighost {own:.2f} s, the database's own {others:.2f} s, "
          f"ratio {own / others:.2f} (at most {limit})", flush=True)


def import_beside_load(jighost, database, records, count):
    own, others = [], []
    for number in range(ROUNDS):
        first, second = database.place(f"own{number}"), database.place(f"others{number}")
        find = f"find '{records}' -name '*.json' -print0 | sort -z | " \
               f"xargs -0 -s 1500000 '{jighost}' history import --database '{first}'"
        own.append(seconds(["sh", "-c", find]))
        for table in TABLES:
            database.save(first, table)
        database.tables_like(first, second)
        others.append(seconds(database.load(second)))
    tell(f"{database.name}, import of {count} records", min(own), min(others), 2)


def fill(database, place, count):
    """Measurements of a hundred quantities, a hundred of each run, made by the database itself."""
    runs = database.series.format(count // 100)
    all_of_them = database.series.format(count // 100 * 100)
    subprocess.run(database.shell(
        place, "DELETE FROM measurement", "DELETE FROM run", "DELETE FROM quantity",
        f"INSERT INTO quantity {database.series.format(100)} SELECT i, 'q' || i, 'adjust', i,"
        " 'value', 'V', 0, 1000 FROM n",
        f"INSERT INTO run {runs} SELECT i, 'n' || i, i * 1000, '', i / 1000, 5, 'line', '', i,"
        " 'adjust', '', 'passed', '', '' FROM n",
        f"INSERT INTO measurement {all_of_them} SELECT i / 100, 1, 1, i % 100, i % 997, '', 1, 1"
        " FROM n"), stdout=subprocess.DEVNULL, check=True)


def stats_beside_shell(jighost, statement, database, records, count):
    place = database.place("stats")
    one = next(iter(records.iterdir()))
    seconds([jighost, "history", "import", one, "--database", place])
    fill(database, place, count)
    own, others = [], []
    for _ in range(ROUNDS):
        others.append(seconds(database.shell(place, statement)))
        own.append(seconds([jighost, "history", "stats", "--database", place]))
    tell(f"{database.name}, stats of {count} measurements", min(own), min(others), 1.5)


def most_memory(command):
    """In megabytes, of a process in a process of its own, whose children it alone has."""
    program = "import resource, subprocess, sys; subprocess.run(sys.argv[1:], stdout=-3, check=True)" \
              "; print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024)"
    run = subprocess.run([sys.executable, "-c", program, *command], capture_output=True, check=True)
    return int(run.stdout)


def main(build, records="100000", measurements="10000000"):
    records, measurements = int(records), int(measurements)
    jighost = str(Path(build, "jighost").resolve())
    statement = subprocess.run([Path(build, "tunebench_history_statement")], capture_output=True,
                               text=True, check=True).stdout.rstrip(";\n")
    folder = Path(tempfile.mkdtemp())
    folder.chmod(0o755)
    try:
        write_records(folder / "records", records)
        for database in (Sqlite(folder), Postgresql(folder)):
            import_beside_load(jighost, database, folder / "records", records)
            stats_beside_shell(jighost, statement, database, folder / "records", measurements)
            for part in (10, 1):
                files = sorted((folder / "records").iterdir())[:min(records, 10000) // part]
                place = database.place(f"memory{part}")
                most = most_memory([jighost, "history", "import", *files, "--database", place])
                print(f"{database.name}, import of {len(files)} records: {most} MB", flush=True)
            most = most_memory([jighost, "history", "stats", "--database",
                                place.replace("memory1", "stats")])
            print(f"{database.name}, stats: {most} MB", flush=True)
            database.end()
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
