package zmatrix;

import java.util.List;

/** The successors of a context of stored items, with their counts. */
record Successors(int[] items, int[] counts, int number) {
    private static final int USUAL = 256;

    /** An item of one integer, and its count. */
    record Successor(int item, long count) {
        static long sum(List<Successor> successors) {
            return successors.stream().mapToLong(Successor::count).sum();
        }
    }

    /** A function that fills arrays of {@code capacity} items and returns the number of all successors, below 0 for an unknown context. */
    interface Reader {
        int read(int capacity, int[] items, int[] counts);
    }

    /** Null if the context was not learned. */
    static Successors read(int dimension, Reader reader) {
        int capacity = USUAL;
        while (true) {
            int[] items = new int[Math.multiplyExact(capacity, dimension)];
            int[] counts = new int[capacity];
            int found = reader.read(capacity, items, counts);
            if (found <= capacity) {
                return found < 0 ? null : new Successors(items, counts, found);
            }
            capacity = found;
        }
    }

    static Successors of(Handle handle, int[] context, int dimension) {
        return read(dimension, (capacity, items, counts) -> handle.functions.zq_readSuccessors(handle.matrix, context,
                context.length, capacity, items, counts, new int[capacity]));
    }
}
