package zmatrix;

/** A file of a model that is damaged. */
public class DamagedException extends InputException {
    private static final long serialVersionUID = 1;

    DamagedException(String message) {
        super(message);
    }
}
