package zmatrix;

/**
 * A letter or a word of a continued text.
 *
 * @param text a character, which may be two {@code char}s, or a word including punctuation; a line feed at the end of a sequence
 * @param probability with which it was chosen
 */
public record Token(String text, double probability) {
    @Override
    public String toString() {
        return text;
    }
}
