package zmatrix;

/** What is learned of a series of integers. */
public enum Coding {
    /** The numbers themselves. */
    PLAIN,
    /** The differences between successive numbers. */
    DIFFERENCE,
    /** The second differences. */
    DIFFERENCE2,
    /** The third differences. */
    DIFFERENCE3
}
