"""Prints the benchmarks' JSON as one table: the median of each row's repetitions, and its ratio to absl's row or, where absl is
not installed, to std::unordered_map's. Fails if a row's answers were wrong."""
import json
import statistics
import sys

with open(sys.argv[1], encoding="utf-8") as file:
    results = json.load(file)

failed = sorted({run["run_name"] for run in results["benchmarks"] if run.get("error_occurred")})
rows = {}
for run in results["benchmarks"]:
    if run.get("run_type") == "iteration" and not run.get("error_occurred"):
        group, limit, size, contender = run["run_name"].split("/")[:4]
        rows.setdefault((group, int(limit[6:]), int(size[5:])), {}).setdefault(contender, []).append(run)


def median(runs, key):
    return statistics.median(run[key] for run in runs) if key in runs[0] else None


def number(value, digits=0):
    return "-" if value is None else f"{value:.{digits}f}"


def ratio(value, base):
    return "-" if value is None or not base else f"{value / base:.2f}"


# The columns of a group: title and counter.
columns = {
    "learn": [("first", "ns"), ("again", "again_ns")],
    "triples": [("first", "ns"), ("again", "again_ns")],
    "undetermined": [("first", "ns"), ("kept", "kept_percent")],
    "words": [("word", "ns"), ("MB", "megabytes")],
    "generate": [("item", "ns")],
    "peers": [("ms", "ms"), ("peak MB", "peak_MB"), ("item", "item_ns")],
    "random": [("write", "ns"), ("read", "read_ns"), ("delete", "delete_ns")],
    "wide": [("write", "ns")],
    "letters": [("phrase", "ns")],
    "test": [("linear", "ns"), ("walk down", "walk_down_ns")],
    "prune": [("prune", "ns"), ("left", "left_percent")],
    "file": [("save", "save_MB_s"), ("load", "load_MB_s"), ("copy", "copy_MB_s"), ("read", "read_MB_s")],
    "primes": [("prime", "ns"), ("kB beyond the table", "extra_kB")],
    "rank": [("rank", "ns")],
    "ocron": [("number", "ns")],
    "midi_read": [("note", "ns")],
    "midi_write": [("note", "ns")],
    "midi_unended": [("note-on", "ns")],
    "midi_learn": [("note", "ns"), ("phrase", "phrase_ns")],
    "kern_tokens": [("token", "ns")],
    "kern_read": [("note", "ns")],
    "kern_learn": [("note", "ns"), ("phrase", "phrase_ns")],
    "cap": [("write", "ns"), ("elements", "elements")],
}
bases = ("character_chain", "absl", "unordered_map", "chain", "literal_search", "counting_pass", "primesieve", "upper_bound")
print("ns an operation (of files: MB a second); in brackets the ratio to absl::flat_hash_map, or to std::unordered_map where absl is")
print("not installed, in the same run; B = bytes resident a distinct phrase, of files: bytes an element. Undetermined: ns a phrase, and the")
print("percentage of the distinct phrases that are kept; B as if all were. Sizes in thousands of bytes (text), items (triples) or")
print("vectors (random), coordinates (wide), letters, numbers (primes, rank, ocron) or notes (midi, kern; 0: the files of a folder;")
print("kern_tokens: spines), where the ratio is to a pass over the bytes that counts notes or tokens. Peers: a text to 10,000 items, beside")
print("a chain of characters of one fixed order; of the chain of words an item is a word. Words: the ratio is to a chain of words.")
print()
print("| work | phrase limit | size | what | figures | B |")
print("|---|---|---|---|---|---|")
for (group, limit, size), contenders in rows.items():
    base = next((contenders[name] for name in bases if name in contenders), None)
    for contender, runs in contenders.items():
        figures = []
        for title, key in columns[group]:
            value = median(runs, key)
            figures.append(f"{title} {number(value)}" + (f" ({ratio(value, median(base, key))})" if base else ""))
        print(f"| {group} | {limit} | {size} | {contender} | {' / '.join(figures)} | {number(median(runs, 'bytes'))} |")

for name in failed:
    print(f"error: the answers of {name} are wrong", file=sys.stderr)
sys.exit(1 if failed or not rows else 0)
