package zmatrix;

import java.util.ArrayList;
import java.util.List;
import zmatrix.Successors.Successor;

/** Generates letters. A new sentence begins with the counts of learned beginnings; a sequence ends with a line feed. */
final class LetterReading extends Reading {
    static final int LINE_FEED = 10;
    private static final int END = -1;

    private final SentenceStarts starts;
    private final SuccessorMethod method;
    private boolean begins;
    private List<Integer> beginning = List.of();
    private long sentencesSo;

    LetterReading(Handle handle, int matrixId, int[] context, Options options, boolean begins) {
        super(handle, matrixId, context, options.order(), 0);
        starts = new SentenceStarts(handle, handle.settings(matrixId).order());
        method = options.method();
        this.begins = begins;
    }

    @Override
    int read(int count) {
        if (begins && begin()) {
            return 1;
        }
        int found = super.read(count);
        if (found == count || found > 0 && order != null) {
            return found;
        }
        items[found] = LINE_FEED;
        probabilities[found] = 1;
        begins = true;
        return found + 1;
    }

    /** Reads the next letter of the beginning, or a line feed if the sentence ends; false if the ordinary choice continues. */
    private boolean begin() {
        List<Successor> known = starts.after(beginning);
        List<Successor> letters = known == null ? new ArrayList<>() : new ArrayList<>(known);
        long goOn = Successor.sum(letters);
        if (beginning.isEmpty()) {
            sentencesSo = goOn;
        }
        if (known == null || sentencesSo == 0 || goOn > sentencesSo) {
            begins = false;
            beginning = List.of();
            return false;
        }
        if (goOn == 0 || goOn < sentencesSo && method != SuccessorMethod.MIDDLE) {
            letters.add(new Successor(END, sentencesSo - goOn));
        }
        take(choose(letters), Math.max(Successor.sum(letters), 1));
        return true;
    }

    private void take(Successor chosen, long total) {
        beginning = chosen.item() == END ? List.of() : appended(beginning, chosen.item());
        if (chosen.item() != END) {
            sentencesSo = chosen.count();
        }
        int[] context = beginning.stream().mapToInt(Integer::intValue).toArray();
        handle.functions.s_initializeKernelSequenceWithOriginalSequence(handle.matrix, context, context.length, 1);
        setContext(context);
        items[0] = chosen.item() == END ? LINE_FEED : chosen.item();
        probabilities[0] = (double) chosen.count() / total;
    }

    private static List<Integer> appended(List<Integer> items, int item) {
        List<Integer> longer = new ArrayList<>(items);
        longer.add(item);
        return longer;
    }

    private Successor choose(List<Successor> letters) {
        return switch (method) {
            case MIDDLE -> letters.get(letters.size() / 2);
            case BEST -> letters.stream().reduce((best, other) -> other.count() > best.count() ? other : best).get();
            case RANDOM -> draw(letters);
        };
    }

    private Successor draw(List<Successor> letters) {
        double rest = handle.functions.s_getSuccessorRandomValue(handle.matrix, matrixId) / 2147483648.0 * Successor.sum(letters);
        for (Successor letter : letters) {
            rest -= letter.count();
            if (rest < 0) {
                return letter;
            }
        }
        return letters.get(letters.size() - 1);
    }
}
