package zmatrix;

import java.util.ArrayList;
import java.util.Iterator;
import java.util.List;
import java.util.NoSuchElementException;
import java.util.Spliterator;
import java.util.Spliterators;
import java.util.stream.Stream;
import java.util.stream.StreamSupport;

/**
 * An iterator that generates items. After a later continuation of the model, or learning, it throws an {@link InUseException}.
 *
 * @param <T> {@link Token}, {@link Value} or {@link Note}
 */
public final class Continuation<T> implements Iterator<T> {
    private static final int PIECE = 256; // items per library call of an iterator

    /** Makes the result of an item that was read. */
    interface Maker<T> {
        T make(Reading reading, int at);
    }

    private final Model model;
    private final Reading reading;
    private final Maker<T> maker;
    private final int pieceLength;
    private final List<T> piece = new ArrayList<>();
    private int given;
    private long left;

    Continuation(Model model, Reading reading, Maker<T> maker, long count) {
        this.model = model;
        this.reading = reading;
        this.maker = maker;
        left = count;
        pieceLength = (int) Math.max(1, Math.min(PIECE, count));
    }

    @Override
    public boolean hasNext() {
        while (left > 0 && given == piece.size()) {
            model.handle.use(this::fill);
        }
        return left > 0;
    }

    @Override
    public T next() {
        if (!hasNext()) {
            throw new NoSuchElementException();
        }
        left--;
        return piece.get(given++);
    }

    /**
     * The items as a sequential stream.
     *
     * @return the stream; it consumes the items of this iterator
     */
    public Stream<T> stream() {
        return StreamSupport.stream(Spliterators.spliteratorUnknownSize(this, Spliterator.ORDERED | Spliterator.NONNULL), false);
    }

    private void fill() {
        if (model.reading != reading) {
            throw new InUseException("a later continuation, or learning, has taken the place of this one");
        }
        int found = reading.next(pieceLength);
        piece.clear();
        given = 0;
        if (found < 0) {
            left = 0;
        }
        for (int at = 0; at < found; at++) {
            piece.add(maker.make(reading, at));
        }
    }
}
