package zmatrix;

import com.sun.jna.Pointer;
import com.sun.jna.PointerType;
import java.util.concurrent.ThreadLocalRandom;
import zmatrix.raw.Constants;
import zmatrix.raw.LearningTier;

/** Chooses the sub-matrix that knows a start best, and sets its context. */
final class Navigation {
    private final Kind kind;
    private final Handle handle;
    private final LearningTier<PointerType, PointerType, PointerType> functions;
    private final PointerType matrix;

    Navigation(Model model) {
        kind = model.kind;
        handle = model.handle;
        functions = handle.functions;
        matrix = handle.matrix;
    }

    /** The sub-matrix that knows the longest ending of a start; ties go to the one that learned most. */
    int choose(Context context) {
        int chosen = -1;
        long best = -1;
        long most = -1;
        for (int matrixId : handle.occupiedIds()) {
            if (!canContinue(handle.settings(matrixId))) {
                continue;
            }
            long known = context.isEmpty() ? 0 : goTo(matrixId, context);
            long learned = handle.itemsLearned(matrixId);
            if (known > best || known == best && learned > most) {
                chosen = matrixId;
                best = known;
                most = learned;
            }
        }
        if (chosen < 0) {
            throw new InputException("nothing to continue: the model holds no " + kind);
        }
        return chosen;
    }

    private boolean canContinue(Handle.Settings settings) {
        boolean isText = settings.type() == Constants.ZQMatrixTypeANSIText;
        return switch (kind) {
            case TEXT -> isText;
            case WORDS -> isText && settings.above() >= 0;
            default -> true;
        };
    }

    /** Sets the context and returns the length of its known ending in items. */
    int goTo(int matrixId, Context context) {
        handle.select(matrixId);
        Handle.Settings settings = handle.settings(matrixId);
        int[] items = context.flat(settings.dimension());
        functions.s_initializeKernelSequenceWithOriginalSequence(matrix, items, items.length, 1);
        if (kind == Kind.WORDS) {
            handle.select(settings.above());
        }
        return functions.s_getLengthOfKernelPreprocessedSequence(matrix);
    }

    /** The sub-matrix that is read: for words the one above the letters. */
    int readId(int matrixId) {
        return kind == Kind.WORDS ? handle.settings(matrixId).above() : matrixId;
    }

    Reading begin(Context context, Options options) {
        int matrixId = choose(context);
        handle.select(matrixId);
        int known = 0;
        if (!context.isEmpty() || kind != Kind.NUMBERS) {
            known = goTo(matrixId, context);
        }
        int readId = readId(matrixId);
        handle.select(readId);
        functions.s_setSucessorMethod(matrix, options.method().number);
        long seed = options.seed() != null ? options.seed() : ThreadLocalRandom.current().nextInt(Integer.MAX_VALUE);
        functions.s_setSuccessorRandomValue(matrix, readId, seed);
        if (kind == Kind.TEXT) {
            return new LetterReading(handle, readId, context.items(), options, context.isEmpty() || known == 0);
        }
        Handle.Settings settings = handle.settings(readId);
        int[] items = kind == Kind.WORDS || context.isEmpty() ? kernel() : context.flat(settings.dimension());
        return new Reading(handle, readId, items, options.order(), differences(settings));
    }

    /** How many fewer preprocessed items than original ones a context has. */
    private int differences(Handle.Settings settings) {
        return switch (kind) {
            case NUMBERS -> settings.preProcessing();
            case MUSIC -> 1;
            default -> 0;
        };
    }

    private int[] kernel() {
        int[] length = new int[1];
        PointerType info = functions.s_getMatrixInfo(matrix);
        Pointer items = functions.s_getKernelOriginalSequenceFlatIndexVector(info, length, new int[1]);
        return Handle.taken(items, length[0]);
    }
}
