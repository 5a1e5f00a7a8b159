package zmatrix;

/** The library refused something or failed; the text says what, in the library's own words where it has any. */
public class ZmatrixException extends RuntimeException {
    private static final long serialVersionUID = 1;

    ZmatrixException(String message) {
        super(message);
    }

    ZmatrixException(String message, Throwable cause) {
        super(message, cause);
    }
}
