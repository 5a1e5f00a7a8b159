package zmatrix;

import java.nio.file.Path;
import zmatrix.raw.Common;

/**
 * Learns texts, music and series of integers, and generates continuations.
 *
 * <pre>{@code
 * try (Model model = Zmatrix.learn(Path.of("novel.txt"))) {
 *     System.out.println(model.generate("It was ", 500, Options.seed(7)));
 * }
 * }</pre>
 */
public final class Zmatrix {
    private Zmatrix() {}

    /**
     * Learns a file, or the files of a folder: texts, MIDI, kern or numbers, detected by content.
     *
     * @param path of the file or the folder
     * @return the model
     */
    public static Model learn(Path path) {
        return learner().learn(path);
    }

    /**
     * Learns a text.
     *
     * @param text the text itself
     * @return the model
     */
    public static Model learn(String text) {
        return learner().learn(text);
    }

    /**
     * Learns a series of numbers.
     *
     * @param numbers the series
     * @return the model
     */
    public static Model learn(int... numbers) {
        return learner().learn(numbers);
    }

    /**
     * Learns the content of a file, whose kind is detected.
     *
     * @param content of the file
     * @return the model
     */
    public static Model learn(byte[] content) {
        return learner().learn(content);
    }

    /**
     * Learns several inputs of one kind, one after the other.
     *
     * @param sources paths, texts, {@code byte[]} with the content of files, {@code int[]}; or Integers, which are one series
     * @return the model
     */
    public static Model learn(Iterable<?> sources) {
        return learner().learn(sources);
    }

    /**
     * Makes a learner, for settings other than the defaults.
     *
     * @return the learner
     */
    public static Learner learner() {
        return new Learner();
    }

    /**
     * Loads a model. A damaged file throws a {@link DamagedException}.
     *
     * @param path of a file that {@link Model#save} or the command wrote
     * @return the model
     */
    public static Model load(Path path) {
        return Model.load(path, false);
    }

    /**
     * Loads the undamaged part of a model.
     *
     * @param path of the file
     * @return the model
     */
    public static Model loadDamaged(Path path) {
        return Model.load(path, true);
    }

    /**
     * The version of the library.
     *
     * @return three numbers
     */
    public static String version() {
        return Common.zq_version().getString(0);
    }
}
