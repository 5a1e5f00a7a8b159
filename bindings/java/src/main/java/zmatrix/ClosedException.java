package zmatrix;

/** The model is closed. */
public class ClosedException extends ZmatrixException {
    private static final long serialVersionUID = 1;

    ClosedException() {
        super("the model is closed");
    }
}
