package zmatrix;

import zmatrix.raw.Constants;

/** How one of the items that have followed is chosen. */
public enum SuccessorMethod {
    /** Drawn by what was counted. */
    RANDOM(Constants.ZQSuccessorMethodRandom),
    /** The most frequent. */
    BEST(Constants.ZQSuccessorMethodMostProbable),
    /** The middle one of the choice. */
    MIDDLE(Constants.ZQSuccessorMethodMiddle);

    final int number;

    SuccessorMethod(int number) {
        this.number = number;
    }
}
