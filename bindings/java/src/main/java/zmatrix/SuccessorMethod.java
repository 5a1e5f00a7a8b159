package zmatrix;

import zmatrix.raw.Constants;

/** How the next item is chosen. */
public enum SuccessorMethod {
    /** Drawn by the counts. */
    RANDOM(Constants.ZQSuccessorMethodRandom),
    /** The most frequent. */
    BEST(Constants.ZQSuccessorMethodMostProbable),
    /** The middle one of the candidates. */
    MIDDLE(Constants.ZQSuccessorMethodMiddle);

    final int number;

    SuccessorMethod(int number) {
        this.number = number;
    }
}
