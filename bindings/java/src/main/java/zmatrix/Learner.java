package zmatrix;

import java.util.List;
import java.util.Objects;

/** Makes models with settings. Each {@code learn} makes a new model. */
public final class Learner extends Learning {
    private static final int LONGEST_ORDER = 1024;

    private boolean byWords;
    private int order; // 0: the default of the kind
    private Coding coding = Coding.DIFFERENCE;

    Learner() {}

    /**
     * Texts are learned word by word.
     *
     * @return this
     */
    public Learner words() {
        byWords = true;
        return this;
    }

    /**
     * Sets the longest phrase; the default quotes little of the source.
     *
     * @param items 1 to 1024
     * @return this
     */
    public Learner order(int items) {
        if (items < 1 || items > LONGEST_ORDER) {
            throw new IllegalArgumentException("order is 1 to " + LONGEST_ORDER + ", not " + items);
        }
        order = items;
        return this;
    }

    /**
     * Sets what is learned of numbers; by default their differences.
     *
     * @param coding the coding
     * @return this
     */
    public Learner coding(Coding coding) {
        this.coding = Objects.requireNonNull(coding, "coding");
        return this;
    }

    @Override
    Model learnAll(List<Source> sources) {
        if (sources.isEmpty()) {
            throw new InputException("nothing to learn");
        }
        Kind kind = sources.get(0).kind();
        if (byWords && kind != Kind.TEXT) {
            throw new InputException("words are learned of texts, and " + sources.get(0).name() + " holds " + kind);
        }
        Model model = new Model(byWords ? Kind.WORDS : kind, new Handle(byWords ? Tier.FULL : Tier.MEDIUM));
        try {
            boolean isLong = kind == Kind.TEXT && sources.stream().mapToLong(Source::length).sum() >= Feeding.LONG_TEXT;
            model.handle.use(() -> new Feeding(model).prepare(order, isLong, coding));
            return model.learnAll(sources);
        } catch (Throwable failure) {
            model.close();
            throw failure;
        }
    }
}
