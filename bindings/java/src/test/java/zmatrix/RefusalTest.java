package zmatrix;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.CompletionException;
import java.util.concurrent.TimeUnit;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.function.Executable;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.MethodSource;

/** Wrong use raises exceptions; nothing crashes or leaks. */
class RefusalTest {
    @TempDir
    Path folder;

    static Stream<List<?>> nothings() {
        return Stream.of(List.of(), List.of(""), List.of("   "), List.of(new int[0]), List.of(Path.of("no such file")),
                List.of(new byte[2]), List.of("99999999999".getBytes()), List.of("a text", new int[] {1, 2}));
    }

    @ParameterizedTest
    @MethodSource("nothings")
    void whatHoldsNothingToLearnIsRefused(List<?> nothing) {
        assertThrows(InputException.class, () -> Zmatrix.learn(nothing));
    }

    @Test
    void nullsAndWrongSettingsAreRefused() {
        try (Model model = Zmatrix.learn(1, 2, 3)) {
            for (Executable use : List.<Executable>of(() -> Zmatrix.learn((Path) null), () -> Zmatrix.learn((String) null),
                    () -> Zmatrix.load(null), () -> model.save(null), () -> model.continueWith((int[]) null),
                    () -> model.continueWith(new int[0], 1, null), () -> model.probability((int[]) null))) {
                assertThrows(NullPointerException.class, use);
            }
            for (Executable use : List.<Executable>of(() -> Zmatrix.learner().order(0), () -> Zmatrix.learner().order(5000),
                    () -> Options.seed(1).withOrder(0), () -> model.generate(new int[0], -1, Options.DEFAULTS),
                    () -> Zmatrix.learn(Arrays.asList(1, null)), () -> Zmatrix.learn(List.of(1.5)))) {
                assertThrows(IllegalArgumentException.class, use);
            }
            assertEquals(2, model.size()); // steps
        }
    }

    @Test
    void aClosedModelAndAnotherKindAreRefused() {
        Model model = Zmatrix.learn(1, 2, 3, 5, 8);
        assertThrows(InputException.class, () -> model.learn("a text"));
        assertThrows(InputException.class, () -> model.continueWith("one"));
        assertThrows(InputException.class, () -> model.surprise(List.of()));
        assertThrows(InputException.class, () -> Zmatrix.learner().words().learn(1, 2));
        Continuation<Value> pending = model.continueWith(5, 8);
        pending.next();
        model.close();
        model.close();
        for (Executable use : List.<Executable>of(model::size, model::info, model::continueWith, () -> model.learn(1),
                () -> model.save(folder.resolve("model")), () -> pending.stream().limit(1000).count())) {
            assertThrows(ClosedException.class, use);
        }
    }

    @Test
    void aLaterContinuationEndsAnEarlierOne() {
        try (Model harbour = Examples.harbour()) {
            Continuation<Token> first = harbour.continueWith("The ");
            first.next();
            harbour.continueWith("The ").next();
            assertThrows(InUseException.class, () -> first.stream().limit(1000).toList());
        }
    }

    @Test
    void whatATimeOrAnArrayCanNotHoldIsRefused() {
        try (Model tunes = Zmatrix.learn(Examples.of("canon.krn"))) {
            assertThrows(InputException.class, () -> tunes.continueWith(List.of(new Note(60, 1e9, 1))));
            assertThrows(InputException.class, () -> tunes.continueWith(List.of(new Note(60, Double.NaN, 1))));
            assertEquals(1, tunes.generate(List.of(new Note(Integer.MAX_VALUE, 0, 1)), 1, Options.seed(1)).size());
        }
    }

    @Test
    void damagedFilesAreTold() throws IOException {
        Path path = folder.resolve("model");
        try (Model harbour = Examples.harbour()) {
            harbour.save(path);
            Path wrong = folder.resolve("no folder/model");
            ZmatrixException failure = assertThrows(ZmatrixException.class, () -> harbour.save(wrong));
            assertTrue(failure.getMessage().contains("no folder"), failure.getMessage());
        }
        byte[] whole = Files.readAllBytes(path);
        for (int length : new int[] {0, 10, whole.length / 2}) {
            Files.write(path, Arrays.copyOf(whole, length));
            assertThrows(InputException.class, () -> Zmatrix.load(path));
        }
        assertThrows(DamagedException.class, () -> Zmatrix.load(path));
        try (Model rest = Zmatrix.loadDamaged(path)) {
            assertEquals(Kind.TEXT, rest.kind());
        }
    }

    @Test
    void oneModelIsForOneThreadAtATime() {
        try (Model model = Zmatrix.learn(1, 2, 3)) {
            model.handle.use(() -> {
                CompletableFuture<Void> intruder = CompletableFuture.runAsync(model::size);
                assertEquals(InUseException.class, assertThrows(CompletionException.class, intruder::join).getCause().getClass());
                assertThrows(InUseException.class, model::close);
            });
            assertEquals(2, model.size()); // steps
        }
    }

    private static String work(int seed) {
        try (Model model = Zmatrix.learn("The tide comes in. The tide goes out. ".repeat(50))) {
            return model.generate("The ", 500, Options.seed(seed));
        }
    }

    @Test
    void threadsWithModelsOfTheirOwnGiveWhatOneThreadGives() {
        List<CompletableFuture<String>> results = new ArrayList<>();
        for (int seed = 0; seed < 4; seed++) {
            int own = seed;
            results.add(CompletableFuture.supplyAsync(() -> work(own)));
        }
        for (int seed = 0; seed < 4; seed++) {
            assertEquals(work(seed), results.get(seed).orTimeout(60, TimeUnit.SECONDS).join());
        }
    }

    private static void make(int count, boolean closes) {
        for (int seed = 0; seed < count; seed++) {
            Model model = Zmatrix.learner().order(3).learn(1, 2, 4, 5, 7, 8, 10);
            model.generate(new int[] {20, 21}, 3, Options.seed(seed));
            model.continueWith().next();
            if (closes) {
                model.close();
            } else if (seed % 100 == 0) {
                System.gc();
            }
        }
    }

    /** The memory of the process after models without references have been released, which takes a while. */
    private static long resident() throws Exception {
        System.gc();
        long least = Long.MAX_VALUE;
        for (int look = 0; look < 20; look++) {
            Thread.sleep(50);
            least = Math.min(least, Long.parseLong(Files.readString(Path.of("/proc/self/statm")).split(" ")[1]) * 4096);
        }
        return least;
    }

    @Test
    void tenThousandModelsLeaveNothingBehind() throws Exception {
        make(2000, true);
        make(500, false);
        long before = resident();
        make(8000, true);
        make(2000, false);
        long more = resident() - before;
        System.out.printf("10,000 models leave %,d bytes%n", more);
        assertTrue(more < 4 << 20, "bytes left: " + more);
    }
}
