package zmatrix;

/** Memory is exhausted, or the matrix is full. */
public class LimitException extends ZmatrixException {
    private static final long serialVersionUID = 1;

    LimitException(String message) {
        super(message);
    }
}
