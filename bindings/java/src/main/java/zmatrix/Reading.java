package zmatrix;

import java.util.Arrays;

/** Generates from a sub-matrix in pieces, one library call per piece. */
class Reading {
    private static final int MOST_FAILURES = 1000; // ends of sequences in a row, with no item between

    final int dimension;
    final int sound;
    final int matrixId;
    int[] items = new int[0];
    double[] probabilities = new double[0];
    final Handle handle;
    final Integer order;
    private final int kept;
    private int[] context;
    private int failures;

    /**
     * @param context the items before the first one; used only with an order
     * @param order the number of context items to use; null for all known ones
     * @param differences how many more original items than preprocessed ones a context needs
     */
    Reading(Handle handle, int matrixId, int[] context, Integer order, int differences) {
        this.handle = handle;
        this.matrixId = matrixId;
        this.order = order;
        Handle.Settings settings = handle.settings(matrixId);
        dimension = settings.dimension();
        sound = settings.sound();
        kept = order == null ? 0 : (int) Math.min((long) order + differences, Integer.MAX_VALUE / dimension) * dimension;
        setContext(context);
    }

    final void setContext(int... items) {
        context = Arrays.copyOfRange(items, Math.max(0, items.length - kept), items.length);
    }

    /** Reads up to {@code count} items into the arrays and returns their number, fewer if a sequence ends; -1 if there are no more. */
    final int next(int count) {
        if (failures >= MOST_FAILURES) {
            return -1;
        }
        if (probabilities.length < count) {
            items = new int[Math.multiplyExact(count, dimension)];
            probabilities = new double[count];
        }
        handle.select(matrixId);
        int found = read(count);
        failures = found > 0 ? 0 : failures + 1;
        return found;
    }

    int read(int count) {
        if (order == null) {
            return handle.functions.zq_readItems(handle.matrix, count, items, probabilities, null);
        }
        handle.functions.s_initializeKernelSequenceWithOriginalSequence(handle.matrix, context, context.length, 0);
        int found = handle.functions.zq_readItems(handle.matrix, 1, items, probabilities, null);
        if (found == 0) {
            setContext();
            return 0;
        }
        int[] longer = Arrays.copyOf(context, context.length + dimension);
        System.arraycopy(items, 0, longer, context.length, dimension);
        setContext(longer);
        return found;
    }
}
