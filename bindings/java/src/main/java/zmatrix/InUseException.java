package zmatrix;

/** Another thread is using the model, or a later continuation replaced this one. */
public class InUseException extends ZmatrixException {
    private static final long serialVersionUID = 1;

    InUseException(String message) {
        super(message);
    }
}
