package zmatrix;

import java.util.Objects;

/**
 * How a model is continued.
 *
 * @param seed the same seed gives the same items; null for a random one
 * @param order the largest number of context items to use; null for all known ones
 * @param method how the next item is chosen
 */
public record Options(Long seed, Integer order, SuccessorMethod method) {
    /** A random seed, all known context, items drawn by their counts. */
    public static final Options DEFAULTS = new Options(null, null, SuccessorMethod.RANDOM);

    /**
     * Options with all three values.
     *
     * @param seed the same seed gives the same items; null for a random one
     * @param order at least 1; null for all known context items
     * @param method how the next item is chosen
     */
    public Options {
        Objects.requireNonNull(method, "method");
        if (order != null && order < 1) {
            throw new IllegalArgumentException("order is at least 1, not " + order);
        }
    }

    /**
     * The defaults with a seed.
     *
     * @param seed the same seed gives the same items
     * @return the options
     */
    public static Options seed(long seed) {
        return new Options(seed, null, SuccessorMethod.RANDOM);
    }

    /**
     * These options with another order.
     *
     * @param order the largest number of context items to use
     * @return the options
     */
    public Options withOrder(int order) {
        return new Options(seed, order, method);
    }

    /**
     * These options with another method.
     *
     * @param method how the next item is chosen
     * @return the options
     */
    public Options withMethod(SuccessorMethod method) {
        return new Options(seed, order, method);
    }
}
