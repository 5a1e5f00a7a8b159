package zmatrix;

import com.sun.jna.Pointer;
import com.sun.jna.PointerType;
import java.lang.ref.Cleaner;
import java.lang.ref.Reference;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.atomic.AtomicBoolean;
import java.util.function.Supplier;
import zmatrix.raw.Common;
import zmatrix.raw.Constants;
import zmatrix.raw.Full;
import zmatrix.raw.LearningTier;
import zmatrix.raw.Medium;
import zmatrix.raw.Types.ZQMatrix;
import zmatrix.raw.Types.ZQMatrixMedium;
import zmatrix.raw.Types.ZQMatrixProperties;

/** A matrix of the library: calls the functions of its tier, allows one thread at a time, and releases the matrix. */
final class Handle {
    private static final Cleaner CLEANER = Cleaner.create();

    /** Settings and counters of a sub-matrix. */
    record Settings(int dimension, int type, int order, int preProcessing, int above, int sound, int elements) {}

    final Tier tier;
    final LearningTier<PointerType, PointerType, PointerType> functions;
    final PointerType matrix;
    private final Cleaner.Cleanable memory;
    private final AtomicBoolean isUsed = new AtomicBoolean();
    private volatile boolean isOpen = true;

    /** A new matrix. */
    Handle(Tier tier) {
        this(tier, tier == Tier.FULL ? Common.createAndInitMatrix() : Common.createAndInitMatrixMedium());
        if (matrix == null) {
            throw new LimitException("no memory for a matrix");
        }
    }

    private Handle(Tier tier, PointerType matrix) {
        this.tier = tier;
        this.matrix = matrix;
        functions = untyped(tier == Tier.FULL ? Full.FUNCTIONS : Medium.FUNCTIONS);
        memory = CLEANER.register(this, release(matrix));
    }

    /** Loads a matrix from a file. */
    static Handle ofFile(String path) {
        int type = Common.s_getMatrixInfoTypeFromFile(path);
        if (type != Constants.ZQMatrixInfoTypeMedium && type != Constants.ZQMatrixInfoTypeFull) {
            throw new InputException(path + " holds no model that learns");
        }
        boolean isFull = type == Constants.ZQMatrixInfoTypeFull;
        PointerType matrix = isFull ? Common.createAndInitMatrixWithFile(path, -1)
                : Common.createAndInitMatrixMediumWithFile(path, -1);
        if (matrix == null) {
            throw new DamagedException("cannot read " + path + ": " + lastMessage());
        }
        return new Handle(isFull ? Tier.FULL : Tier.MEDIUM, matrix);
    }

    /** Unchecked: only this class makes handles, with a matrix and functions of the same tier. */
    @SuppressWarnings("unchecked")
    private static LearningTier<PointerType, PointerType, PointerType> untyped(LearningTier<?, ?, ?> functions) {
        return (LearningTier<PointerType, PointerType, PointerType>) functions;
    }

    private static Runnable release(PointerType matrix) {
        return () -> {
            if (matrix instanceof ZQMatrix full) {
                Common.deleteMatrix(full);
            } else if (matrix instanceof ZQMatrixMedium medium) {
                Common.deleteMatrixMedium(medium);
            }
        };
    }

    /** Runs work that calls the library: one thread at a time, and not recursively. */
    <T> T use(Supplier<T> work) {
        take();
        try {
            if (!isOpen) {
                throw new ClosedException();
            }
            return work.get();
        } finally {
            isUsed.set(false);
            Reference.reachabilityFence(this);
        }
    }

    void use(Runnable work) {
        use(() -> {
            work.run();
            return null;
        });
    }

    void close() {
        take();
        try {
            isOpen = false;
            memory.clean();
        } finally {
            isUsed.set(false);
        }
    }

    boolean isOpen() {
        return isOpen;
    }

    private void take() {
        if (!isUsed.compareAndSet(false, true)) {
            throw new InUseException("the model is being used, by another thread or by the call that this one came from");
        }
    }

    // --- helpers, to be called inside use()

    static String lastMessage() {
        Pointer message = Common.zq_lastMessage();
        return message == null ? "" : message.getString(0, StandardCharsets.ISO_8859_1.name()).strip();
    }

    /** The matrix, for functions that only the full tier has. */
    ZQMatrix full() {
        return (ZQMatrix) matrix;
    }

    void select(int matrixId) {
        functions.s_setCurrentMatrixID(matrix, matrixId);
    }

    /** A copy, since the library's structure is only lent. */
    Settings settings(int matrixId) {
        int selected = functions.s_getCurrentMatrixID(matrix);
        select(matrixId);
        ZQMatrixProperties lent = functions.s_getGlobalMatrixInfoParameters(functions.s_getMatrixInfo(matrix));
        select(selected);
        if (lent == null) {
            throw new LimitException("out of memory");
        }
        return new Settings(lent.coordinateDimension(), lent.matrixType(), lent.maxPhraseLengthForUpdateWithSequence(),
                lent.preProcessingType(), lent.currentMatrixIDLevelUp(), lent.midiSoundID(), lent.numberOfMatrixElements());
    }

    List<Integer> occupiedIds() {
        List<Integer> occupied = new ArrayList<>();
        int count = functions.s_getMaxNumberOfMatrices(matrix);
        for (int matrixId = 0; matrixId < count; matrixId++) {
            if (settings(matrixId).elements > 0) {
                occupied.add(matrixId);
            }
        }
        return occupied;
    }

    /** The items that a sub-matrix has learned, counted by its root; the root's handle is the ID. */
    long itemsLearned(int matrixId) {
        if (matrixId > functions.s_getMatrixStackPointer(matrix)) {
            return 0;
        }
        PointerType root = functions.s_getMatrixElementFromMatrixHandle(matrix, matrixId);
        return root == null ? 0 : functions.s_getWriteCountWithSuccessorFromElement(root);
    }

    /** A copy of the integers of a new array, which is then released. */
    static int[] taken(Pointer array, int length) {
        if (array == null) {
            return new int[0];
        }
        int[] items = array.getIntArray(0, length);
        Common.s_Free(array);
        return items;
    }
}
