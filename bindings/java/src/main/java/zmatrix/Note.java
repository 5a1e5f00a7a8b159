package zmatrix;

/**
 * A note.
 *
 * @param pitch as a MIDI note number: 60 is middle C
 * @param start in quarter notes
 * @param duration in quarter notes
 * @param sound a class of General MIDI sounds, 0 for none
 * @param probability with which it was chosen
 */
public record Note(int pitch, double start, double duration, int sound, double probability) {
    static final int QUARTER = 3072; // quanta per quarter note

    static Note of(Reading reading, int index) {
        int at = index * reading.dimension;
        int[] items = reading.items;
        double duration = reading.dimension > 2 ? (double) items[at + 2] / QUARTER : 1;
        int sound = reading.dimension > 3 ? items[at + 3] : reading.sound;
        return new Note(items[at], (double) items[at + 1] / QUARTER, duration, sound, reading.probabilities[index]);
    }

    /**
     * A note of a start.
     *
     * @param pitch as a MIDI note number
     * @param start in quarter notes
     * @param duration in quarter notes
     */
    public Note(int pitch, double start, double duration) {
        this(pitch, start, duration, 0, 1);
    }
}
