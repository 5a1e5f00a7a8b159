// The number functions on primes that hosts call: each query in 32 bits and, with a table of its own, in 64 bits (...Large).
#pragma once

namespace zmatrix {

// --- the tables; a new one replaces the old one for all threads

int* initPrimes(unsigned lowerBound, unsigned upperBound, int* count);
long long* initPrimesLarge(long long lowerBound, long long upperBound, long long* count);
int* initFirstNPrimes(int n);
long long* initFirstNPrimesLarge(long long n);
void deinitPrimes();
void deinitPrimesLarge();
int* getPrimeNumbers(int* count, int* maxPrime);
long long* getPrimeNumbersLarge(long long* count, long long* maxPrime);

// --- queries

int isPrime(int n);
int isPrimeLarge(long long n);
double numberOfPrimesUpto(double x);
double numberOfPrimesUptoLarge(double x);
int primePi(int n);
long long primePiLarge(long long n);
int nthPrime(int n);
long long nthPrimeLarge(long long n);
int notPrimePi(int n);
long long notPrimePiLarge(long long n);
int nthNotPrime(int n);
long long nthNotPrimeLarge(long long n);

}  // namespace zmatrix
