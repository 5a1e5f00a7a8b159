package zmatrix;

import java.util.List;

/** The start of a continuation: the items of a text or a series, or notes of four integers each. */
record Context(int[] items, int width) {
    private static final int NOTE = 4;

    static Context of(String text) {
        return new Context(Text.itemsOf(text), 1);
    }

    static Context of(int... numbers) {
        return new Context(numbers.clone(), 1);
    }

    static Context of(List<Note> notes) {
        int[] items = new int[Math.multiplyExact(notes.size(), NOTE)];
        int at = 0;
        for (Note note : notes) {
            items[at] = note.pitch();
            items[at + 1] = quanta(note.start());
            items[at + 2] = quanta(note.duration());
            at += NOTE;
        }
        return new Context(items, NOTE);
    }

    private static int quanta(double quarters) {
        double quanta = Math.rint(quarters * Note.QUARTER);
        if (!(Math.abs(quanta) <= Integer.MAX_VALUE)) {
            throw new InputException("a time of " + quarters + " quarter notes is beyond what a model holds");
        }
        return (int) quanta;
    }

    boolean isEmpty() {
        return items.length == 0;
    }

    /** The items with as many coordinates as those of a sub-matrix. */
    int[] flat(int dimension) {
        if (width == 1) {
            return items;
        }
        int[] flat = new int[Math.multiplyExact(items.length / width, dimension)];
        for (int at = 0; at < flat.length; at++) {
            int coordinate = at % dimension;
            flat[at] = coordinate < width ? items[at / dimension * width + coordinate] : 0;
        }
        return flat;
    }
}
