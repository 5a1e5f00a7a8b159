package zmatrix;

import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import zmatrix.Successors.Successor;

/** The letters that follow a beginning of sentences, with the number of learned sentences that begin so. */
final class SentenceStarts {
    private static final int MOST_KEPT = 20000;

    private final Handle handle;
    private final int phraseLimit;
    private final Map<List<Integer>, List<Successor>> known = new HashMap<>();

    SentenceStarts(Handle handle, int phraseLimit) {
        this.handle = handle;
        this.phraseLimit = phraseLimit;
    }

    /** Null if a phrase has no room for the letters before and after the beginning. */
    List<Successor> after(List<Integer> beginning) {
        if (!known.containsKey(beginning)) {
            if (known.size() >= MOST_KEPT) {
                known.clear();
            }
            known.put(beginning, count(beginning));
        }
        return known.get(beginning);
    }

    private List<Successor> count(List<Integer> beginning) {
        if (!beginning.isEmpty() && beginning.size() + 2 > phraseLimit) {
            return null;
        }
        int[] context = beginning.stream().mapToInt(Integer::intValue).toArray();
        Successors found = Successors.read(1, (capacity, items, counts) ->
                handle.functions.zq_readSentenceStarts(handle.matrix, context, context.length, capacity, items, counts));
        if (found == null) {
            return null;
        }
        List<Successor> letters = new ArrayList<>();
        for (int at = 0; at < found.number(); at++) {
            if (found.counts()[at] > 0) {
                letters.add(new Successor(found.items()[at], found.counts()[at]));
            }
        }
        return letters;
    }
}
