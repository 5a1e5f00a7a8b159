package zmatrix;

/**
 * A letter or a word of a continued text.
 *
 * @param text a character, which may be two of Java's, or a word with the marks that stand with it; a line feed where a
 *     sequence ends
 * @param probability with which it was chosen
 */
public record Token(String text, double probability) {
    @Override
    public String toString() {
        return text;
    }
}
