package zmatrix;

import java.nio.file.Path;
import java.util.List;
import java.util.Objects;

/** What learns: a learner makes a model, a model learns on. */
public abstract sealed class Learning permits Learner, Model {
    Learning() {}

    abstract Model learnAll(List<Source> sources);

    /**
     * Learns a file, or the files of a folder: texts, MIDI, kern, numbers, told by their content.
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
     * Learns what a file holds, told by its content.
     *
     * @param content of the file
     * @return the model
     */
    public final Model learn(byte[] content) {
        return learnAll(Source.allOf(Objects.requireNonNull(content, "content")));
    }

    /**
     * Learns several things of one kind, one after the other.
     *
     * @param sources paths, texts, {@code byte[]} with the content of files, {@code int[]}; or Integers, which are one series
     * @return the model
     */
    public final Model learn(Iterable<?> sources) {
        return learnAll(Source.allOf(Objects.requireNonNull(sources, "sources")));
    }
}
