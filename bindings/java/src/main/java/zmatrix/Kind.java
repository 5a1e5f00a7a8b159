package zmatrix;

import java.util.Locale;

/** What a model was learned from. */
public enum Kind {
    /** Texts, letter by letter. */
    TEXT,
    /** Texts, word by word. */
    WORDS,
    /** Series of integers. */
    NUMBERS,
    /** MIDI and kern files. */
    MUSIC;

    @Override
    public String toString() {
        return name().toLowerCase(Locale.ROOT);
    }
}
