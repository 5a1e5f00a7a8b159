package zmatrix;

import java.util.Objects;

/**
 * How a model is continued.
 *
 * @param seed the same seed gives the same items; null for any
 * @param order at most so many items of context decide; null for all that are known
 * @param method how the next item is chosen
 */
public record Options(Long seed, Integer order, SuccessorMethod method) {
    /** Any seed, all known context, by what was counted. */
    public static final Options DEFAULTS = new Options(null, null, SuccessorMethod.RANDOM);

    /**
     * Options of all three.
     *
     * @param seed the same seed gives the same items; null for any
     * @param order at least 1; null for all that are known
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
     * These with an order.
     *
     * @param order at most so many items of context decide
     * @return the options
     */
    public Options withOrder(int order) {
        return new Options(seed, order, method);
    }

    /**
     * These with a method.
     *
     * @param method how the next item is chosen
     * @return the options
     */
    public Options withMethod(SuccessorMethod method) {
        return new Options(seed, order, method);
    }
}
