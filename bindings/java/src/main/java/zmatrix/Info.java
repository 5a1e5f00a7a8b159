package zmatrix;

import java.util.List;

/**
 * What a model holds.
 *
 * @param kind what it was learned from
 * @param tier of its matrix
 * @param order the longest phrase, in items
 * @param items those learned
 * @param elements the phrases that are stored
 * @param subMatrices its parts
 */
public record Info(Kind kind, Tier tier, int order, long items, long elements, List<SubMatrix> subMatrices) {
    /**
     * A part of a model: a language of texts, the words above it, a kind of track.
     *
     * @param id its number in the matrix
     * @param items those learned
     * @param elements the phrases that are stored
     * @param order the longest phrase, in items
     * @param names of what was learned
     */
    public record SubMatrix(int id, long items, long elements, int order, List<String> names) {}
}
