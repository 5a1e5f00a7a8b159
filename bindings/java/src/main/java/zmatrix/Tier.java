package zmatrix;

/** The tier of a model's matrix. */
public enum Tier {
    /** Learns sequences. */
    MEDIUM,
    /** Also learns words above letters. */
    FULL
}
