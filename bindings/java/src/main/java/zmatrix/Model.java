package zmatrix;

import com.sun.jna.Pointer;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.HashMap;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.Set;
import java.util.stream.Collectors;
import zmatrix.raw.Common;
import zmatrix.raw.Constants;
import zmatrix.raw.Full;
import zmatrix.raw.Types.zq_Score;
import zmatrix.raw.Types.zq_ScoreWriting;

/**
 * A model, made by {@link Zmatrix}. Its memory is released by {@link #close}, or some time after the last reference to it. One thread
 * at a time may use it; another one gets an {@link InUseException}.
 *
 * <p>A start is a text for texts and words, numbers for numbers, notes for music. An empty start begins a new sentence, continues the
 * series learned last, or begins a new tune. A start of another kind throws an {@link InputException}.
 */
public final class Model extends Learning implements AutoCloseable {
    private static final int BULK = 512; // most items of a call: JNA copies whole arrays, and few sentences are longer
    private static final List<Integer> MUSIC_TYPES = List.of(Constants.ZQMatrixTypeMIDINoteAndQuanta,
            Constants.ZQMatrixTypeMIDITriple_NDMT, Constants.ZQMatrixTypeMIDIGMQuadruple_NDMTS);

    final Kind kind;
    final Handle handle;
    Reading reading; // the reading of the current continuation; an earlier one is refused

    Model(Kind kind, Handle handle) {
        this.kind = kind;
        this.handle = handle;
    }

    @Override
    Model learnAll(List<Source> sources) {
        Kind wanted = kind == Kind.WORDS ? Kind.TEXT : kind;
        for (Source source : sources) {
            if (source.kind() != wanted) {
                throw new InputException(source.name() + " holds " + source.kind() + ", the model " + kind);
            }
        }
        handle.use(() -> {
            long before = items();
            reading = null;
            new Feeding(this).learn(sources);
            if (items() == before) {
                throw new InputException("nothing to learn: the input holds no " + wanted);
            }
        });
        return this;
    }

    // --- generating

    /**
     * Continues a text without end.
     *
     * @param start the text
     * @return letters or words
     */
    public Continuation<Token> continueWith(String start) {
        return continueWith(start, Long.MAX_VALUE, Options.DEFAULTS);
    }

    /**
     * Continues a text.
     *
     * @param start the text
     * @param count the largest number of items
     * @param options seed, order and method
     * @return letters or words
     */
    public Continuation<Token> continueWith(String start, long count, Options options) {
        Map<Integer, String> known = new HashMap<>();
        return begin(textContext(start), count, options, (read, at) ->
                new Token(known.computeIfAbsent(read.items[at], this::textOf), read.probabilities[at]));
    }

    /**
     * Continues numbers without end.
     *
     * @param start the numbers
     * @return numbers
     */
    public Continuation<Value> continueWith(int... start) {
        return continueWith(start, Long.MAX_VALUE, Options.DEFAULTS);
    }

    /**
     * Continues numbers.
     *
     * @param start the numbers
     * @param count the largest number of items
     * @param options seed, order and method
     * @return numbers
     */
    public Continuation<Value> continueWith(int[] start, long count, Options options) {
        return begin(numberContext(start), count, options, (read, at) -> new Value(read.items[at], read.probabilities[at]));
    }

    /**
     * Continues notes without end.
     *
     * @param start the notes
     * @return notes
     */
    public Continuation<Note> continueWith(List<Note> start) {
        return continueWith(start, Long.MAX_VALUE, Options.DEFAULTS);
    }

    /**
     * Continues notes.
     *
     * @param start the notes
     * @param count the largest number of items
     * @param options seed, order and method
     * @return notes
     */
    public Continuation<Note> continueWith(List<Note> start, long count, Options options) {
        return begin(noteContext(start), count, options, Note::of);
    }

    /**
     * Continues a text, all at once.
     *
     * @param start the text
     * @param count the number of letters or words
     * @param options seed, order and method
     * @return the generated items
     */
    public String generate(String start, int count, Options options) {
        if (kind == Kind.WORDS) {
            List<String> words = continueWith(start, count, options).stream().map(Token::text).toList();
            return String.join(" ", words).replace(" \n ", "\n");
        }
        int[] items = generate(textContext(start), count, options);
        return Text.of(items, items.length);
    }

    /**
     * Continues numbers, all at once.
     *
     * @param start the numbers
     * @param count the number of items
     * @param options seed, order and method
     * @return the generated items
     */
    public int[] generate(int[] start, int count, Options options) {
        return generate(numberContext(start), count, options);
    }

    /**
     * Continues notes, all at once.
     *
     * @param start the notes
     * @param count the number of items
     * @param options seed, order and method
     * @return the generated items
     */
    public List<Note> generate(List<Note> start, int count, Options options) {
        return continueWith(start, count, options).stream().toList();
    }

    /**
     * Writes generated music to a MIDI file, in the learned meter, sounds and tempo.
     *
     * @param path of the file, which is replaced
     * @param start the notes to continue
     * @param count the number of notes
     * @param options seed and method
     * @return the number of notes in the file
     */
    public int writeMidi(Path path, List<Note> start, int count, Options options) {
        Context context = noteContext(start);
        checkCount(count);
        return handle.use(() -> {
            reading = new Navigation(this).begin(context, options);
            int[] result = new int[1];
            zq_Score score = handle.functions.zq_createGeneratedScore(handle.matrix, count, 0, result);
            if (score == null) {
                String message = Handle.lastMessage();
                throw new ZmatrixException("no music can be made: " + (message.isEmpty() ? result[0] : message));
            }
            zq_ScoreWriting writing = zq_ScoreWriting.allocate(1);
            Common.zq_writeScoreToMidiFile(score, path.toString(), writing);
            Common.zq_deleteScore(score);
            if (writing.state() != Constants.zq_ScoreWritten) {
                throw new ZmatrixException("cannot write " + path);
            }
            return (int) writing.notes();
        });
    }

    private <T> Continuation<T> begin(Context context, long count, Options options, Continuation.Maker<T> maker) {
        Objects.requireNonNull(options, "options");
        checkCount(count);
        return handle.use(() -> {
            reading = new Navigation(this).begin(context, options);
            return new Continuation<>(this, reading, maker, count);
        });
    }

    private int[] generate(Context context, int count, Options options) {
        Objects.requireNonNull(options, "options");
        checkCount(count);
        return handle.use(() -> {
            reading = new Navigation(this).begin(context, options);
            int[] flat = new int[count];
            int length = 0;
            while (length < count) {
                int found = reading.next(Math.min(BULK, count));
                if (found < 0) {
                    break;
                }
                found = Math.min(found, count - length);
                System.arraycopy(reading.items, 0, flat, length, found);
                length += found;
            }
            return Arrays.copyOf(flat, length);
        });
    }

    private static void checkCount(long count) {
        if (count < 0) {
            throw new IllegalArgumentException("count is at least 0, not " + count);
        }
    }

    private String textOf(int item) {
        if (kind == Kind.TEXT || item == LetterReading.LINE_FEED) {
            return Character.toString(Text.characterOf(item));
        }
        int[] length = new int[1];
        Pointer phrase = Full.FUNCTIONS.zq_createPhraseOfSymbol(handle.full(), item, length);
        return Text.of(Handle.taken(phrase, length[0]), length[0]);
    }

    private Context textContext(String text) {
        check(kind == Kind.TEXT || kind == Kind.WORDS, "a text");
        return Context.of(text);
    }

    private Context numberContext(int... numbers) {
        check(kind == Kind.NUMBERS, "numbers");
        return Context.of(numbers);
    }

    private Context noteContext(List<Note> notes) {
        check(kind == Kind.MUSIC, "notes");
        return Context.of(notes);
    }

    private void check(boolean isOfKind, String given) {
        if (!isOfKind) {
            throw new InputException("the model holds " + kind + ", and knows nothing of " + given);
        }
    }

    // --- measuring

    /**
     * The probability that the model generates exactly this text.
     *
     * @param text the text
     * @return 0 if an item never followed its context
     */
    public double probability(String text) {
        return Math.pow(2, -measure(textContext(text)).bits());
    }

    /**
     * The probability that the model generates exactly these numbers.
     *
     * @param numbers the numbers
     * @return 0 if one never followed its context
     */
    public double probability(int... numbers) {
        return Math.pow(2, -measure(numberContext(numbers)).bits());
    }

    /**
     * The probability that the model generates exactly these notes.
     *
     * @param notes the notes
     * @return 0 if one never followed its context
     */
    public double probability(List<Note> notes) {
        return Math.pow(2, -measure(noteContext(notes)).bits());
    }

    /**
     * The average information of an item of the text.
     *
     * @param text the text
     * @return bits; infinite if an item never followed its context
     */
    public double surprise(String text) {
        return measure(textContext(text)).average();
    }

    /**
     * The average information of a number.
     *
     * @param numbers the numbers
     * @return bits; infinite if one never followed its context
     */
    public double surprise(int... numbers) {
        return measure(numberContext(numbers)).average();
    }

    /**
     * The average information of a note.
     *
     * @param notes the notes
     * @return bits; infinite if one never followed its context
     */
    public double surprise(List<Note> notes) {
        return measure(noteContext(notes)).average();
    }

    private Surprise measure(Context context) {
        return handle.use(() -> {
            reading = null;
            return Surprise.of(this, context);
        });
    }

    // --- contents

    /**
     * The kind of the model.
     *
     * @return the kind
     */
    public Kind kind() {
        return kind;
    }

    /**
     * The number of items learned.
     *
     * @return the number of letters, words, numbers or notes
     */
    public long size() {
        return handle.use(this::items);
    }

    private long items() {
        Set<Integer> occupied = new HashSet<>(handle.occupiedIds());
        Set<Integer> above = occupied.stream().map(id -> handle.settings(id).above()).collect(Collectors.toSet());
        boolean all = handle.tier == Tier.MEDIUM;
        return occupied.stream().filter(id -> all || above.contains(id) == (kind == Kind.WORDS)).mapToLong(handle::itemsLearned)
                .sum();
    }

    /**
     * The contents of the model and of its sub-matrices.
     *
     * @return the current state, as a copy
     */
    public Info info() {
        return handle.use(() -> {
            List<Info.SubMatrix> parts = new ArrayList<>();
            for (int matrixId : handle.occupiedIds()) {
                Handle.Settings settings = handle.settings(matrixId);
                handle.select(matrixId);
                Pointer names = handle.functions.s_getNamesOfUpdateFiles(handle.matrix);
                String lines = names == null ? "" : names.getString(0, StandardCharsets.UTF_8.name());
                parts.add(new Info.SubMatrix(matrixId, handle.itemsLearned(matrixId), settings.elements(), settings.order(),
                        lines.lines().toList()));
            }
            int order = parts.stream().mapToInt(Info.SubMatrix::order).max().orElse(0);
            long elements = parts.stream().mapToLong(Info.SubMatrix::elements).sum();
            return new Info(kind, handle.tier, order, items(), elements, List.copyOf(parts));
        });
    }

    @Override
    public String toString() {
        return "Model of " + kind + (handle.isOpen() ? "" : ", closed");
    }

    // --- files, closing

    /**
     * Saves the model to a file. An existing file is replaced as a whole; if saving fails, it is unchanged.
     *
     * @param path of the file
     */
    public void save(Path path) {
        String name = path.toString();
        handle.use(() -> {
            if (handle.functions.s_saveMatrixToDisk(handle.matrix, name) != 1) {
                throw new ZmatrixException("cannot save to " + name + ": " + Handle.lastMessage());
            }
        });
    }

    static Model load(Path path, boolean repair) {
        if (!Files.isRegularFile(path)) {
            throw new InputException("cannot read " + path + ": no such file");
        }
        Handle handle = Handle.ofFile(path.toString());
        try {
            return handle.use(() -> {
                if (handle.functions.zq_getLoadReport(handle.matrix, null) != 1 && !repair) {
                    throw new DamagedException(path + " is damaged; loadDamaged goes on with what is left of it");
                }
                return new Model(kindOf(handle), handle);
            });
        } catch (ZmatrixException failure) {
            handle.close();
            throw failure;
        }
    }

    private static Kind kindOf(Handle handle) {
        Set<Integer> types = handle.occupiedIds().stream().map(id -> handle.settings(id).type()).collect(Collectors.toSet());
        if (types.contains(Constants.ZQMatrixTypeANSIText)) {
            boolean hasWords = handle.tier == Tier.FULL && Full.FUNCTIONS.s_getMatrixAILevel(handle.full()) == 1;
            return hasWords ? Kind.WORDS : Kind.TEXT;
        }
        return types.removeAll(MUSIC_TYPES) ? Kind.MUSIC : Kind.NUMBERS;
    }

    /** Releases the model's memory. The model can't be used afterwards; closing it again does nothing. */
    @Override
    public void close() {
        handle.close();
    }
}
