package zmatrix;

import java.nio.file.Path;
import java.util.List;
import java.util.Objects;

/** The learn methods that {@link Learner}, for a new model, and {@link Model}, for learning more, share. */
public abstract sealed class Learning permits Learner, Model {
    Learning() {}

    abstract Model learnAll(List<Source> sources);

    /**
     * Learns a file, or the files of a folder: texts, MIDI, kern or numbers, detected by content.
     *
     * @param path of the file or the folder
     * @return the model
     */
    public final Model learn(Path path) {
        return learnAll(Source.allOf(Objects.requireNonNull(path, "path")));
    }

    /**
     * Learns a text.
     *
     * @param text the text itself
     * @return the model
     */
    public final Model learn(String text) {
        return learnAll(Source.allOf(Objects.requireNonNull(text, "text")));
    }

    /**
     * Learns a series of numbers.
     *
     * @param numbers the series
     * @return the model
     */
    public final Model learn(int... numbers) {
        return learnAll(Source.allOf(Objects.requireNonNull(numbers, "numbers")));
    }

    /**
     * Learns the content of a file, whose kind is detected.
     *
     * @param content of the file
     * @return the model
     */
    public final Model learn(byte[] content) {
        return learnAll(Source.allOf(Objects.requireNonNull(content, "content")));
    }

    /**
     * Learns several inputs of one kind, one after the other.
     *
     * @param sources paths, texts, {@code byte[]} with the content of files, {@code int[]}; or Integers, which are one series
     * @return the model
     */
    public final Model learn(Iterable<?> sources) {
        return learnAll(Source.allOf(Objects.requireNonNull(sources, "sources")));
    }
}
