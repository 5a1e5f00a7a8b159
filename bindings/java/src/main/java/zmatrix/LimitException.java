package zmatrix;

/** Memory, or what a matrix has room for, is exhausted. */
public class LimitException extends ZmatrixException {
    private static final long serialVersionUID = 1;

    LimitException(String message) {
        super(message);
    }
}
