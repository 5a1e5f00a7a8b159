package zmatrix;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;
import static zmatrix.raw.Constants.ZQMatrixTypeIntegerSeries;

import com.sun.jna.Pointer;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import org.junit.jupiter.api.Test;
import zmatrix.raw.Base;
import zmatrix.raw.Common;
import zmatrix.raw.Full;
import zmatrix.raw.Medium;
import zmatrix.raw.Types.*;

/** The functions by their C names: texts, arrays, records, callbacks, structures by value. */
class RawTest {
    @Test
    void arraysAndRecordsGoBothWays() {
        ZQMatrixMedium matrix = Common.createAndInitMatrixMedium();
        Medium functions = Medium.FUNCTIONS;
        functions.s_setDefaultMatrixPropertiesForIntegerSeries(matrix, "series");
        functions.s_setMaxPhraseLengthForUpdateWithSequence(matrix, 8);
        assertEquals(1, functions.s_updateMatrixWithLongINTSequence(matrix, new int[] {0, 1, 3, 4, 6, 7, 9, 10, 12, 13}, 10));
        ZQMatrixProperties record = functions.s_getGlobalMatrixInfoParameters(functions.s_getMatrixInfo(matrix));
        assertEquals(List.of(ZQMatrixTypeIntegerSeries, 8, 1),
                List.of(record.matrixType(), record.maxPhraseLengthForUpdateWithSequence(), record.preProcessingType()));
        assertEquals(functions.s_getNumberOfMatrixElements(matrix), record.numberOfMatrixElements());
        functions.s_initializeKernelSequenceWithOriginalSequence(matrix, new int[] {100, 101, 103}, 3, 1);
        double[] probability = new double[1];
        assertEquals(104, functions.s_readObjexFromMatrix(matrix, probability, new double[1]).getInt(0));
        assertEquals(1, probability[0]);
        Common.deleteMatrixMedium(matrix);
    }

    @Test
    void theBaseTierStores() {
        ZQMatrixBase matrix = Common.createAndInitMatrixBase();
        int[] exist = new int[1];
        assertTrue(Base.FUNCTIONS.s_writeMatrixElement(matrix, new int[] {1, 2, 3}, 3, 1L << 40) > 0);
        assertEquals(1L << 40, Base.FUNCTIONS.s_readMatrixData(matrix, new int[] {1, 2, 3}, 3, exist, new int[1]));
        Common.deleteMatrixBase(matrix);
    }

    @Test
    void recordsInARowAreRead() {
        byte[] kern = "**kern\n*M4/4\n=1\n4c\n4e\n2g\n==\n*-\n".getBytes(StandardCharsets.US_ASCII);
        zq_Score score = Common.zq_createScoreFromKernData(kern, kern.length, 0);
        assertEquals(3, score.numberOfNotes());
        zq_ScoreNote notes = score.notes();
        assertEquals(List.of(60, 64, 67), List.of(notes.pitch(), notes.at(1).pitch(), notes.at(2).pitch()));
        Common.zq_deleteScore(score);
    }

    @Test
    void messagesReachTheHostAndStructuresComeByValue() {
        List<String> messages = new ArrayList<>();
        zq_messageFunction hear = (level, text, userData) -> messages.add(text.getString(0, "ISO-8859-1"));
        Common.zq_setMessageFunction(hear, null);
        ZQMatrix matrix = Common.createAndInitMatrix();
        Full.FUNCTIONS.s_setMatrixDebugOn(matrix, 0);
        Full.FUNCTIONS.s_saveMatrixToDisk(matrix, "no folder/model");
        Common.zq_setMessageFunction(null, null);
        Common.deleteMatrix(matrix);
        assertTrue(messages.stream().anyMatch(message -> message.contains("no folder/model")), messages.toString());
        Pointer version = Common.zq_version();
        assertEquals(Zmatrix.version(), version.getString(0));
        lQuaternionTag tag = Common.zq_ocronToLQGocron(4, "2P2*^2", 6);
        assertEquals(List.of(4L, 4L, 16L, 2L), List.of(tag.r, tag.i, tag.j, tag.k));
    }
}
