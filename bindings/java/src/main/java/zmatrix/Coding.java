package zmatrix;

/** What of a series of integers is learned. */
public enum Coding {
    /** The numbers themselves. */
    PLAIN,
    /** The steps from one number to the next. */
    DIFFERENCE,
    /** The steps of the steps. */
    DIFFERENCE2,
    /** The steps of those. */
    DIFFERENCE3
}
