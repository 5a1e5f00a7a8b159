"""Measures generation from Python in items per second, and the time of learning a text beside the command.

    scripts/python --bench
    scripts/python --bench TEXT COMMAND      COMMAND: the zmatrix command of the same build

Processor time is measured, since elapsed time depends on other programs."""
import pathlib
import resource
import subprocess
import sys
import tempfile
import threading
import time

import zmatrix

COUNT = 400000


def rate(what, count, work):
    begin = time.process_time()
    work()
    seconds = time.process_time() - begin
    print(f'{what:<32} {count / seconds:>12,.0f} items a second')


def compare_learning(text, command):
    path = pathlib.Path(tempfile.mkdtemp(), 'model')
    begin = time.process_time()
    zmatrix.learn(text).save(path)
    own = time.process_time() - begin
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run([command, 'learn', str(text), '--out', str(path.with_suffix('.command')), '--quiet'], check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    other = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    print(f'learning and saving: {own:.2f} s, the command {other:.2f} s, {own / other:.2f} times')


def compare_threads(text):
    """Learns two models one after the other, and by two threads. This measures elapsed time, so the machine should be idle."""
    learn = lambda: zmatrix.learn(text, order=32)
    learn()
    begin = time.perf_counter()
    for _ in range(2):
        learn()
    middle = time.perf_counter()
    threads = [threading.Thread(target=learn) for _ in range(2)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    end = time.perf_counter()
    print(f'two models: {middle - begin:.2f} s by one thread, {end - middle:.2f} s by two, {(middle - begin) / (end - middle):.2f} times')


def main():
    text = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else 'examples/harbour.txt')
    letters, words = zmatrix.learn(text), zmatrix.learn(text, words=True)
    numbers = zmatrix.learn([step * 3 % 1000 for step in range(5000)])
    rate('letters in bulk', COUNT, lambda: letters.generate('The ', COUNT, seed=1))
    rate('numbers in bulk', COUNT, lambda: numbers.generate(None, COUNT, seed=1))
    rate('letters one by one', COUNT // 4, lambda: sum(1 for _ in letters.continue_('The ', COUNT // 4, seed=1)))
    rate('words one by one', COUNT // 4, lambda: sum(1 for _ in words.continue_('The', COUNT // 4, seed=1)))
    rate('numbers one by one', COUNT // 4, lambda: sum(1 for _ in numbers.continue_(None, COUNT // 4, seed=1)))
    compare_threads(text)
    if len(sys.argv) > 2:
        compare_learning(text, sys.argv[2])


if __name__ == '__main__':
    main()
