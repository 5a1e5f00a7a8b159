/**
 * All functions, structures and constants of the C headers by their names, written from the list of the interface.
 *
 * <p>Java knows which tier a matrix has and which structure a pointer leads to, and nothing more is checked here: arrays have to be
 * as long as the documentation says, null goes only where it says so, nothing stops a second thread, and what is lent has to be
 * copied before the next call. Texts that go in are written as UTF-8. {@code s_printf}, whose arguments vary in number, is left out.
 */
package zmatrix.raw;
