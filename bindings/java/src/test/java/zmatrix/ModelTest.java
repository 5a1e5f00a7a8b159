package zmatrix;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.google.gson.Gson;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Collections;
import java.util.List;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import java.util.stream.Stream;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.MethodSource;

/** Learning, continuing, measuring, and files. */
class ModelTest {
    private static final int[] STEPS = {0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16};

    @TempDir
    Path folder;

    /** A row of seeds.json, which the tests of all languages read. */
    static class Row {
        String name;
        List<String> files;
        boolean words;
        int[] numbers;
        Object start;
        int count;
        long seed;
        Object items;

        @Override
        public String toString() {
            return name;
        }
    }

    static Stream<Row> rows() throws IOException {
        return Stream.of(new Gson().fromJson(Files.readString(Path.of("seeds.json")), Row[].class));
    }

    private static int[] integers(Object list) {
        return ((List<?>) list).stream().mapToInt(number -> ((Double) number).intValue()).toArray();
    }

    private static Object continued(Model model, Row row) {
        Options options = Options.seed(row.seed);
        return switch (model.kind()) {
            case TEXT -> model.continueWith((String) row.start, row.count, options).stream().map(Token::text)
                    .collect(Collectors.joining());
            case WORDS -> model.continueWith((String) row.start, row.count, options).stream().map(Token::text).toList();
            case NUMBERS -> model.continueWith(integers(row.start), row.count, options).stream()
                    .map(number -> (double) number.value()).toList();
            case MUSIC -> model.continueWith(List.of(), row.count, options).stream()
                    .map(note -> List.of((double) note.pitch(), note.start(), note.duration())).toList();
        };
    }

    @ParameterizedTest
    @MethodSource("rows")
    void seedsGiveTheItemsThatEveryLanguageGives(Row row) {
        Learner learner = row.words ? Zmatrix.learner().words() : Zmatrix.learner();
        try (Model model = row.files == null ? learner.learn(row.numbers)
                : learner.learn(row.files.stream().map(Examples::of).toList())) {
            model.save(folder.resolve("model"));
            assertEquals(row.items, continued(model, row));
            try (Model loaded = Zmatrix.load(folder.resolve("model"))) {
                assertEquals(row.items, continued(loaded, row));
                assertEquals(model.info(), loaded.info());
            }
        }
    }

    @Test
    void itemsCarryTheirProbabilityAndBulkGivesTheSame() {
        try (Model harbour = Examples.harbour(); Model numbers = Zmatrix.learn(STEPS)) {
            List<Token> tokens = harbour.continueWith("The ", 3000, Options.seed(5)).stream().toList();
            assertTrue(tokens.stream().allMatch(token -> token.probability() > 0 && token.probability() <= 1));
            assertEquals(tokens.stream().map(Token::text).collect(Collectors.joining()),
                    harbour.generate("The ", 3000, Options.seed(5)));
            int[] start = {100, 101, 103};
            assertArrayEquals(numbers.continueWith(start, 50, Options.seed(3)).stream().mapToInt(Value::value).toArray(),
                    numbers.generate(start, 50, Options.seed(3)));
            assertEquals(70_000, numbers.generate(start, 70_000, Options.DEFAULTS).length);
        }
    }

    @Test
    void anOrderBeyondTheLearnedOneChangesNothingAndASmallOneForgets() {
        try (Model harbour = Examples.harbour(); Model pairs = Zmatrix.learner().order(4).learn("abcabdabcabd")) {
            assertEquals(harbour.generate("The ", 200, Options.seed(2)),
                    harbour.generate("The ", 200, Options.seed(2).withOrder(50)));
            String written = pairs.generate("a", 400, Options.seed(1).withOrder(1));
            assertTrue(written.contains("bc") && written.contains("bd"));
            assertEquals(harbour.generate("", 50, Options.seed(1).withMethod(SuccessorMethod.BEST)),
                    harbour.generate("", 50, Options.seed(9).withMethod(SuccessorMethod.BEST)));
        }
    }

    @Test
    void probabilityIsTheProductOfSharesAndSurpriseItsBits() {
        List<Integer> coins = Collections.nCopies(50, List.of(1, 2, 1, 3)).stream().flatMap(List::stream).toList();
        try (Model coin = Zmatrix.learner().coding(Coding.PLAIN).order(2).learn(coins)) {
            assertEquals(0.125, coin.probability(1, 2, 1, 2), 0.01);
            assertEquals(-Math.log(coin.probability(1, 2, 1, 3)) / Math.log(2), coin.surprise(1, 2, 1, 3) * 4, 1e-9);
            assertEquals(0, coin.probability(2, 2));
            assertEquals(Double.POSITIVE_INFINITY, coin.surprise(9));
        }
    }

    @Test
    void aTextComesBackInItsCharacters() {
        String text = "Ünï “quotes” 日本 \uD83D\uDE00 \u0085 … ".repeat(3);
        try (Model model = Zmatrix.learner().order(20).learn(text)) {
            String written = model.generate("Ü", 200, Options.seed(1));
            assertTrue(written.codePoints().allMatch(character -> character == '\n' || text.indexOf(character) >= 0), written);
            assertTrue(model.generate("Ünï “quotes” ", 30, Options.seed(1)).startsWith("日本 \uD83D\uDE00 \u0085 …"));
        }
    }

    @Test
    void bytesPathsAndNumbersAreToldApart() throws IOException {
        byte[] score = Files.readAllBytes(Examples.of("canon.krn"));
        byte[] windows = "caf\u00e9 caf\u00e9 ".getBytes(StandardCharsets.ISO_8859_1);
        Files.writeString(folder.resolve("a.txt"), "Hello there.");
        Files.writeString(folder.resolve("b.log"), "Not read.");
        try (Model music = Zmatrix.learn(score); Model midi = Zmatrix.learn(Examples.of("tide.mid"));
                Model primes = Zmatrix.learn(Examples.of("primes.txt")); Model latin = Zmatrix.learn(windows);
                Model utf16 = Zmatrix.learn(List.of("\uFEFFAb Ab".getBytes(StandardCharsets.UTF_16LE)));
                Model texts = Zmatrix.learn(folder)) {
            assertEquals(List.of(Kind.MUSIC, Kind.MUSIC, Kind.NUMBERS), List.of(music.kind(), midi.kind(), primes.kind()));
            assertEquals("é", latin.generate("caf", 1, Options.DEFAULTS));
            assertEquals("b", utf16.generate("A", 1, Options.DEFAULTS));
            assertEquals(List.of(folder.resolve("a.txt").toString()), texts.info().subMatrices().get(0).names());
            assertEquals(Zmatrix.learn(STEPS).size(), Zmatrix.learn(IntStream.of(STEPS).boxed().toList()).size());
        }
    }

    @Test
    void musicIsWrittenAsMidi() throws IOException {
        try (Model tunes = Zmatrix.learn(List.of(Examples.of("canon.krn"), Examples.of("song.krn")))) {
            List<Note> start = tunes.generate(List.of(), 4, Options.seed(1));
            assertEquals(8, tunes.generate(start, 8, Options.seed(1)).size());
            assertTrue(tunes.probability(start) > 0);
            assertTrue(tunes.writeMidi(folder.resolve("new.mid"), List.of(), 40, Options.seed(1)) > 30);
            assertEquals("MThd", new String(Files.readAllBytes(folder.resolve("new.mid")), 0, 4, StandardCharsets.US_ASCII));
        }
    }

    @Test
    void learningOnAddsToTheModel() {
        try (Model model = Zmatrix.learn("A first sentence stands here.")) {
            long before = model.size();
            Info info = model.learn("A second sentence stands here.").info();
            assertTrue(info.items() > before);
            assertEquals(List.of(Kind.TEXT, Tier.MEDIUM, 8, model.size()),
                    List.of(info.kind(), info.tier(), info.order(), info.items()));
        }
    }
}
