/**
 * Learns texts, music and series of integers, and generates continuations: {@link zmatrix.Zmatrix} makes a {@link zmatrix.Model}. The
 * functions of the C interface are in {@link zmatrix.raw}.
 */
package zmatrix;
