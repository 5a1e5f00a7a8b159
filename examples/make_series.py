#!/usr/bin/env python3
"""Writes the three sample series of integers into the folder of this script, one integer per line:

    primes.txt      the first 500 primes
    smooth.txt      the first 400 numbers without a prime factor above 5
    divisors.txt    the number of divisors of each of the numbers 1 to 1000
"""
import pathlib


def primes(count):
    found = []
    number = 2
    while len(found) < count:
        if all(number % prime for prime in found if prime * prime <= number):
            found.append(number)
        number += 1
    return found


def smooth_numbers(count, factors=(2, 3, 5)):
    """Each number is the smallest product of a factor and an earlier number that is larger than the previous number."""
    numbers, places = [1], [0] * len(factors)
    while len(numbers) < count:
        products = [numbers[place] * factor for place, factor in zip(places, factors)]
        numbers.append(min(products))
        places = [place + (product == numbers[-1]) for place, product in zip(places, products)]
    return numbers


def divisor_counts(count):
    counts = [0] * (count + 1)
    for divisor in range(1, count + 1):
        for multiple in range(divisor, count + 1, divisor):
            counts[multiple] += 1
    return counts[1:]


folder = pathlib.Path(__file__).resolve().parent
for name, series in (('primes', primes(500)), ('smooth', smooth_numbers(400)), ('divisors', divisor_counts(1000))):
    (folder / f'{name}.txt').write_text(''.join(f'{number}\n' for number in series), encoding='ascii')
