package zmatrix;

/** The library refused a call or failed. The text has the library's message, if there is one. */
public class ZmatrixException extends RuntimeException {
    private static final long serialVersionUID = 1;

    ZmatrixException(String message) {
        super(message);
    }

    ZmatrixException(String message, Throwable cause) {
        super(message, cause);
    }
}
