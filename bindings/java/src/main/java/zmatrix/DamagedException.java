package zmatrix;

/** The file of a model is damaged. */
public class DamagedException extends InputException {
    private static final long serialVersionUID = 1;

    DamagedException(String message) {
        super(message);
    }
}
