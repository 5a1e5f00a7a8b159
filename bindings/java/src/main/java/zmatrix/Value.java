package zmatrix;

/**
 * A number of a continued series.
 *
 * @param value the number
 * @param probability with which it was chosen
 */
public record Value(int value, double probability) {
    @Override
    public String toString() {
        return Integer.toString(value);
    }
}
