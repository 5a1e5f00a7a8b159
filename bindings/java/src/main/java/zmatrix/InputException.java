package zmatrix;

/** An input can't be read, has nothing to learn or to continue, or is of another kind than the model. */
public class InputException extends ZmatrixException {
    private static final long serialVersionUID = 1;

    InputException(String message) {
        super(message);
    }

    InputException(String message, Throwable cause) {
        super(message, cause);
    }
}
