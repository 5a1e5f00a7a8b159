package zmatrix;

import com.sun.jna.Pointer;
import java.util.Arrays;
import zmatrix.raw.Full;

/** The information of a sequence in bits: infinite if an item never followed its context. */
record Surprise(double bits, int items) {
    double average() {
        return items == 0 ? 0 : bits / items;
    }

    static Surprise of(Model model, Context context) {
        Handle handle = model.handle;
        Navigation navigation = new Navigation(model);
        int matrixId = navigation.choose(context);
        navigation.goTo(matrixId, context);
        int[] stored = model.kind == Kind.WORDS ? symbols(handle, matrixId, context) : preProcessed(handle, matrixId, context);
        int readId = navigation.readId(matrixId);
        Handle.Settings settings = handle.settings(readId);
        handle.select(readId);
        int dimension = settings.dimension();
        int longest = (settings.order() - 1) * dimension;
        double bits = 0;
        for (int at = 0; at < stored.length; at += dimension) {
            double share = share(handle, Arrays.copyOfRange(stored, Math.max(0, at - longest), at),
                    Arrays.copyOfRange(stored, at, at + dimension));
            bits += share == 0 ? Double.POSITIVE_INFINITY : -Math.log(share) / Math.log(2);
        }
        return new Surprise(bits, stored.length / dimension);
    }

    /** The words of a text as symbols, -1 for an unknown word. */
    private static int[] symbols(Handle handle, int matrixId, Context context) {
        handle.select(matrixId);
        int[] items = context.items();
        int[] length = new int[1];
        int[] unknown = new int[1];
        Pointer symbols = Full.FUNCTIONS.s_getNextLevelSymbolsFromOriginalObjects(handle.full(), items, items.length, length,
                unknown, new int[1]);
        int[] known = Handle.taken(symbols, length[0]);
        int[] all = Arrays.copyOf(known, known.length + unknown[0]);
        Arrays.fill(all, known.length, all.length, -1);
        return all;
    }

    private static int[] preProcessed(Handle handle, int matrixId, Context context) {
        handle.select(matrixId);
        int[] items = context.flat(handle.settings(matrixId).dimension());
        if (items.length == 0) {
            return items;
        }
        int[] length = new int[1];
        return Handle.taken(handle.functions.s_getPreProcessedSequenceFromOriginalSequence(handle.matrix, items, items.length,
                length), length[0]);
    }

    /** The share of an item among the successors of the longest known ending of a context. */
    private static double share(Handle handle, int[] context, int[] item) {
        for (int begin = 0; begin <= context.length; begin += item.length) {
            Successors found = Successors.of(handle, Arrays.copyOfRange(context, begin, context.length), item.length);
            if (found != null && found.number() > 0) {
                return share(found, item);
            }
        }
        return 0;
    }

    private static double share(Successors found, int[] item) {
        double all = 0;
        double own = 0;
        for (int at = 0; at < found.number(); at++) {
            int begin = at * item.length;
            all += found.counts()[at];
            if (Arrays.equals(found.items(), begin, begin + item.length, item, 0, item.length)) {
                own += found.counts()[at];
            }
        }
        return own / Math.max(all, 1);
    }
}
