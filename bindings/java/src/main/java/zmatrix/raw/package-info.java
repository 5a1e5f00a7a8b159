/**
 * All functions, structures and constants of the C headers under their names, generated from the list of the C interface.
 *
 * <p>Only the tier of a matrix and the type of a structure are checked, by the Java compiler. Arrays must be as long as the
 * documentation says, null is allowed only where it says so, threads are not checked, and lent data must be copied before the next
 * call. String arguments are passed as UTF-8. {@code s_printf}, which has variable arguments, is left out.
 */
package zmatrix.raw;
