package zmatrix;

import java.nio.ByteBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;
import java.util.HashMap;
import java.util.Map;

/**
 * Characters and items. The item of a character is its byte in Windows-1252, for which the library's rules for sentences are made,
 * or its code point if Windows-1252 lacks it.
 */
final class Text {
    private static final int DISPLACED = 0xDC00; // added to a control character whose byte has another meaning in Windows-1252
    private static final int REPLACEMENT = 0xFFFD;
    private static final char MARK = '\uFEFF';
    private static final Map<Integer, Integer> ITEM_OF = new HashMap<>();
    private static final Map<Integer, Integer> CHARACTER_OF = new HashMap<>();

    static {
        Charset windows = Charset.forName("windows-1252");
        for (int item = 0x80; item < 0xA0; item++) {
            int character = new String(new byte[] {(byte) item}, windows).charAt(0);
            if (character != REPLACEMENT && character != item) {
                join(character, item);
                join(item, DISPLACED + item);
            }
        }
    }

    private Text() {}

    private static void join(int character, int item) {
        ITEM_OF.put(character, item);
        CHARACTER_OF.put(item, character);
    }

    /** The items of a text; an unpaired surrogate becomes U+FFFD. */
    static int[] itemsOf(CharSequence text) {
        return text.codePoints().map(Text::itemOf).toArray();
    }

    private static int itemOf(int character) {
        if (character < 0x80) {
            return character;
        }
        if (character >= Character.MIN_SURROGATE && character <= Character.MAX_SURROGATE) {
            return REPLACEMENT;
        }
        boolean mayBeByte = character < 0xA0 || character >= 0x152 && character <= 0x2122;
        return mayBeByte ? ITEM_OF.getOrDefault(character, character) : character;
    }

    /** The character of an item; U+FFFD if it has none. */
    static int characterOf(int item) {
        if (item >= 0 && item < 0x80) {
            return item;
        }
        int character = CHARACTER_OF.getOrDefault(item, item);
        boolean isNone = character < 0 || character > Character.MAX_CODE_POINT
                || character >= Character.MIN_SURROGATE && character <= Character.MAX_SURROGATE;
        return isNone ? REPLACEMENT : character;
    }

    static String of(int[] items, int length) {
        StringBuilder text = new StringBuilder(length);
        for (int at = 0; at < length; at++) {
            text.appendCodePoint(characterOf(items[at]));
        }
        return text.toString();
    }

    static String latin(byte[] bytes, int length) {
        return new String(bytes, 0, length, StandardCharsets.ISO_8859_1);
    }

    /** Decodes UTF-16 if there is a byte order mark, UTF-8 if all bytes are valid, else Windows-1252. */
    static String decode(byte[] bytes) {
        int first = bytes.length < 2 ? 0 : (bytes[0] & 0xff) << 8 | bytes[1] & 0xff;
        if (first == 0xFEFF || first == 0xFFFE) {
            return new String(bytes, StandardCharsets.UTF_16);
        }
        try {
            String text = StandardCharsets.UTF_8.newDecoder().decode(ByteBuffer.wrap(bytes)).toString();
            return !text.isEmpty() && text.charAt(0) == MARK ? text.substring(1) : text;
        } catch (CharacterCodingException e) {
            int[] items = new int[bytes.length];
            Arrays.setAll(items, at -> bytes[at] & 0xff);
            return of(items, items.length);
        }
    }

    /** The numbers of a file that has only integers, separated by white space, commas or semicolons; else null. */
    static int[] numbersOf(byte[] bytes) {
        int[] numbers = new int[16];
        int count = 0;
        for (int at = 0; at < bytes.length; at++) {
            if (isSeparator(bytes[at])) {
                continue;
            }
            int begin = at;
            while (at < bytes.length && !isSeparator(bytes[at])) {
                at++;
            }
            String word = new String(bytes, begin, at - begin, StandardCharsets.ISO_8859_1);
            if (!isNumber(word)) {
                return null;
            }
            numbers = count == numbers.length ? Arrays.copyOf(numbers, count * 2) : numbers;
            numbers[count++] = parse(word);
        }
        return count == 0 ? null : Arrays.copyOf(numbers, count);
    }

    private static boolean isSeparator(byte character) {
        return character == ' ' || character >= '\t' && character <= '\r' || character == ',' || character == ';';
    }

    private static boolean isNumber(String word) {
        int begin = word.charAt(0) == '-' || word.charAt(0) == '+' ? 1 : 0;
        return begin < word.length() && word.chars().skip(begin).allMatch(digit -> digit >= '0' && digit <= '9');
    }

    private static int parse(String word) {
        try {
            return Integer.parseInt(word);
        } catch (NumberFormatException e) {
            throw new InputException("a number does not fit 32 bits: " + word.substring(0, Math.min(word.length(), 20)));
        }
    }
}
