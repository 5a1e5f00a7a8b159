// Evaluation of ocrons: an ocron string is a postfix program for a stack machine, and its value is the number that it encodes.
//
// Each type has its own evaluator, with its own result codes and messages. Types 3 and 4 fill in a missing trailing operand with
// 2 and multiply the values left at the end; type 5 requires its operands; type 6 has one running value and no stack; type 7 also
// gives numbers beyond 64 bits, as logarithms.
//
// `ocron`: a terminated text. All evaluators but those of type 6 and of logarithms cut it in place at its first end symbol (from
// the thread's parameters), also where evaluation then fails. `length`: its characters. `stackDepth` gets the greatest number of
// values on the stack. A result below 1 is an error code.
#pragma once

namespace zmatrix {

long long ocron3ToLongLong(char* ocron, int length, int* stackDepth);
long long ocron4ToLongLong(char* ocron, int length, int* stackDepth);
long long ocron5ToLongLong(char* ocron, int length, int* stackDepth);
long long ocron6ToLongLong(char* ocron, int length, int* stackDepth);
/// The exponent that the string encodes; if *logBase is not 0 the number itself is beyond 64 bits.
long long ocron7ToLongLong(char* ocron, int length, int* stackDepth, int* logBase);

/// As type 4, but where a product or a power would overflow, the top becomes its logarithm to the base 2. *logBase must be 0
/// before the call and gets the base at the first logarithm; a different base there is a failure.
long long ocron4ToLogLongLong(char* ocron, int length, int* stackDepth, int* logBase);

/// Evaluates by type; -1 for a type outside 3 to 7.
long long ocronToLongLong(int ocronType, char* ocron, int length, int* stackDepth);
/// The same in 32 bits; -1 for 2147483648 and more.
int ocronToint(int ocronType, char* ocron, int length, int* stackDepth);

/// The low 32 bits of the evaluators' results.
int ocron3ToInt(char* ocron, int length, int* stackDepth);
int ocron4ToInt(char* ocron, int length, int* stackDepth);
int ocron5ToInt(char* ocron, int length, int* stackDepth);
int ocron6ToInt(char* ocron, int length, int* stackDepth);
int ocron7ToInt(char* ocron, int length, int* stackDepth, int* logBase);

}  // namespace zmatrix
