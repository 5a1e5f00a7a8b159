package zmatrix;

import com.sun.jna.PointerType;
import java.util.Arrays;
import java.util.List;
import zmatrix.raw.Common;
import zmatrix.raw.Constants;
import zmatrix.raw.Full;
import zmatrix.raw.LearningTier;
import zmatrix.raw.Types.zq_Score;
import zmatrix.raw.Types.zq_ScoreFeedReport;

/** Sets up a matrix for a kind of input, and learns sources. */
final class Feeding {
    // Items. Longer texts get longer phrases, since more contexts have several successors.
    static final int LONG_TEXT = 256 * 1024;
    private static final int WORD_IDS = 8; // letters and words of German, English, unknown language, and one more
    private static final int LONGEST_WORD = 16;
    private static final int GRID = 16; // music: steps per whole note
    private static final int MUSIC_IDS = 64; // sub-matrices; each meter, texture and sound needs one
    private static final int LAST_NUMBERS = 64; // the last numbers of a series, the context for continuing it

    private final Kind kind;
    private final Handle handle;
    private final LearningTier<PointerType, PointerType, PointerType> functions;
    private final PointerType matrix;

    Feeding(Model model) {
        kind = model.kind;
        handle = model.handle;
        functions = handle.functions;
        matrix = handle.matrix;
    }

    /** {@code order}: the longest phrase, 0 for the default. */
    void prepare(int order, boolean isLong, Coding coding) {
        switch (kind) {
            case TEXT -> prepareLetters(order > 0 ? order : isLong ? 10 : 8);
            case WORDS -> prepareWords(order > 0 ? order : isLong ? 3 : 2);
            case NUMBERS -> prepareNumbers(order > 0 ? order : 8, coding);
            case MUSIC -> {
                functions.s_setMaxNumberOfMatrices(matrix, MUSIC_IDS);
                prepareMusic(order > 0 ? order : 8);
            }
        }
    }

    private void prepareLetters(int order) {
        functions.s_setGlobalDefaultMatrixPropertiesForANSIText(matrix);
        functions.s_setGlobalMaxPhraseLengthForUpdateWithSequence(matrix, order);
    }

    private void prepareWords(int order) {
        functions.s_setMaxNumberOfMatrices(matrix, WORD_IDS);
        Full.FUNCTIONS.s_setMatrixAILevel(handle.full(), 1);
        Full.FUNCTIONS.s_setGlobalSymbolDefaultMatrixPropertiesForSymbols(handle.full());
        functions.s_setGlobalSymbolMaxPhraseLengthForUpdateWithSequence(matrix, order);
        prepareLetters(LONGEST_WORD);
    }

    private void prepareNumbers(int order, Coding coding) {
        functions.s_setGlobalDefaultMatrixPropertiesForIntegerSeries(matrix);
        functions.s_setGlobalPreProcessingType(matrix, coding.ordinal());
        functions.s_setGlobalMaxPhraseLengthForUpdateWithSequence(matrix, order);
        handle.select(0);
        functions.s_applyGlobalMatrixProperties(matrix);
    }

    /** Called before each file, since a feed may leave the settings changed. */
    private void prepareMusic(int order) {
        functions.s_setGlobalDefaultMatrixPropertiesForMIDIElementsTriple_NDMT(matrix);
        functions.s_setGlobalMaxPhraseLengthForUpdateWithSequence(matrix, order);
        functions.s_setGlobalMidiNoteOnQuantization(matrix, GRID);
        functions.s_setGlobalMidiDurationQuantization(matrix, GRID);
        functions.s_setGlobalMidiTrackAnalyze(matrix, 2);
        handle.select(0);
        functions.s_setMidiNoteOnQuantization(matrix, GRID);
        functions.s_setMidiDurationQuantization(matrix, GRID);
        functions.s_setGlobalAddUpdateInfo(matrix, 1);
    }

    void learn(List<Source> sources) {
        for (Source source : sources) {
            switch (source.form()) {
                case TEXT -> learnText(source);
                case NUMBERS -> learnNumbers(source);
                default -> learnMusic(source);
            }
        }
    }

    private static void check(int result, Source source) {
        if (result < 1) {
            throw new LimitException("the matrix could not take all of " + source.name() + ": " + Handle.lastMessage());
        }
    }

    private void learnText(Source source) {
        int[] items = source.items();
        if (source.isBlank()) {
            return;
        }
        if (functions.zq_prepareMatrixForText(matrix, items, items.length, source.name()) < 0) {
            throw new LimitException(Handle.lastMessage());
        }
        if (Arrays.stream(items).max().getAsInt() > functions.s_getMaximalMatrixIndex(matrix)) {
            functions.s_setMaximalMatrixIndex(matrix, Character.MAX_CODE_POINT);
        }
        if (kind == Kind.TEXT) {
            check(functions.s_updateMatrixWithLongANSISequence(matrix, items, items.length), source);
            return;
        }
        int result = Full.FUNCTIONS.zq_updateMatrixWithWordsOfLongANSISequence(handle.full(), items, items.length, null);
        check(result == 0 ? 1 : result, source); // 0: all words are too long
    }

    private void learnNumbers(Source source) {
        int[] items = source.items();
        if (items.length == 0) {
            return;
        }
        handle.select(0);
        functions.s_setNameOfUpdateFile(matrix, source.name());
        functions.s_addNameOfUpdateFile(matrix, source.name());
        check(functions.s_updateMatrixWithLongINTSequence(matrix, items, items.length), source);
        int[] last = Arrays.copyOfRange(items, Math.max(0, items.length - LAST_NUMBERS), items.length);
        functions.s_initializeKernelSequenceWithOriginalSequence(matrix, last, last.length, 1);
    }

    private void learnMusic(Source source) {
        prepareMusic(functions.s_getGlobalMaxPhraseLengthForUpdateWithSequence(matrix));
        byte[] bytes = source.bytes();
        zq_Score score = source.form() == Source.Form.MIDI ? Common.zq_createScoreFromMidiData(bytes, bytes.length)
                : Common.zq_createScoreFromKernData(bytes, bytes.length, 0);
        zq_ScoreFeedReport report = score == null ? null : functions.zq_updateMatrixWithScore(matrix, score, source.name(), 0);
        Common.zq_deleteScore(score);
        if (report == null) {
            throw new LimitException("out of memory");
        }
        long[] leftOut = report.leftOut();
        Common.zq_deleteScoreFeedReport(report);
        if (leftOut[Constants.zq_ScoreNoSubMatrix] > 0) {
            throw new LimitException(source.name() + " needs more sub-matrices than the model has, one for each meter, kind"
                    + " and sound");
        }
        if (leftOut[Constants.zq_ScoreNotTaken] > 0) {
            throw new LimitException("the matrix could not take all of " + source.name());
        }
    }
}
