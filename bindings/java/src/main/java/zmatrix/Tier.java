package zmatrix;

/** How much the matrix of a model can do. */
public enum Tier {
    /** Learns and continues sequences. */
    MEDIUM,
    /** Learns and continues words above letters too. */
    FULL
}
