package zmatrix;

import java.util.List;

/**
 * The contents of a model.
 *
 * @param kind what it was learned from
 * @param tier the tier of its matrix
 * @param order the longest phrase, in items
 * @param items the number of items learned
 * @param elements the number of stored phrases
 * @param subMatrices its sub-matrices
 */
public record Info(Kind kind, Tier tier, int order, long items, long elements, List<SubMatrix> subMatrices) {
    /**
     * A sub-matrix of a model: a language of texts, the words above it, or a kind of track.
     *
     * @param id the matrix ID
     * @param items the number of items learned
     * @param elements the number of stored phrases
     * @param order the longest phrase, in items
     * @param names the names of the learned inputs
     */
    public record SubMatrix(int id, long items, long elements, int order, List<String> names) {}
}
