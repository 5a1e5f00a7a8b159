"""Generates text by a compressor's model: python3-ppmd's PPMd (variant H) learns a text by encoding it, and then decodes random
bytes, which gives text by the model's probabilities. It also learns from what it generates. Prints processor time in seconds
(learning, all), the peak memory in bytes, and the number of items.

ppmd_peer.py FILE ORDER ITEMS"""
import io
import random
import resource
import sys
import time

from ppmd import Ppmd7Decoder, Ppmd7Encoder

MEMORY = 1 << 28  # an upper limit; pages are allocated when they are written


def peak():
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024


name, order, items = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
before = peak()
start = time.process_time()
with open(name, "rb") as file:
    text = file.read()
encoder = Ppmd7Encoder(io.BytesIO(), min(order, 64), MEMORY)
encoder.encode(text)
learned = time.process_time()
noise = random.Random(1)
decoder = Ppmd7Decoder(io.BytesIO(bytes(noise.getrandbits(8) for _ in range(4 * items))), min(order, 64), MEMORY)
decoder.ppmd = encoder.ppmd
produced, known = 0, set(text)
while produced < items:
    produced += sum(item in known for item in decoder.decode(1))
end = time.process_time()
print(learned - start, end - start, peak() - before, produced)
