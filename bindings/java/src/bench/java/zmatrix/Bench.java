package zmatrix;

import java.io.IOException;
import java.lang.management.ManagementFactory;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.stream.IntStream;

/**
 * Measures generation from Java in items per second, and the time of learning a text beside the command. Processor time is measured,
 * including that of Java's compiler, since elapsed time depends on other programs.
 */
final class Bench {
    private static final int COUNT = 400_000;
    private static final double CLOCK_TICKS = 100; // per second, in /proc

    private Bench() {}

    private static double seconds() {
        var system = (com.sun.management.OperatingSystemMXBean) ManagementFactory.getOperatingSystemMXBean();
        return system.getProcessCpuTime() / 1e9;
    }

    /** The processor time of child processes that ended. */
    private static double secondsOfCommands() throws IOException {
        String[] fields = Files.readString(Path.of("/proc/self/stat")).replaceAll("^.*\\) ", "").split(" ");
        return (Long.parseLong(fields[13]) + Long.parseLong(fields[14])) / CLOCK_TICKS;
    }

    /** The first run includes the time of Java's compiler. */
    private static void rate(String what, Runnable work) {
        double first = run(work);
        double best = Math.max(Math.max(run(work), run(work)), run(work));
        System.out.printf("%-24s %,12.0f items a second, %,12.0f at first%n", what, best, first);
    }

    private static double run(Runnable work) {
        double begin = seconds();
        work.run();
        return COUNT / (seconds() - begin);
    }

    /** The best of three runs in turn, since the machine may be busy. */
    private static void compareLearning(Path text, String command) throws IOException, InterruptedException {
        Path folder = Files.createTempDirectory("zmatrix");
        double own = Double.POSITIVE_INFINITY;
        double other = Double.POSITIVE_INFINITY;
        for (int round = 0; round < 3; round++) {
            double begin = seconds();
            try (Model model = Zmatrix.learn(text)) {
                model.save(folder.resolve("model"));
            }
            own = Math.min(own, seconds() - begin);
            double before = secondsOfCommands();
            String[] learn = {command, "learn", text.toString(), "--out", folder.resolve("model").toString(), "--quiet"};
            if (new ProcessBuilder(learn).inheritIO().start().waitFor() != 0) {
                throw new IOException("the command failed");
            }
            other = Math.min(other, secondsOfCommands() - before);
        }
        Files.delete(folder.resolve("model"));
        Files.delete(folder);
        System.out.printf("learning and saving: %.2f s, the command %.2f s, %.2f times%n", own, other, own / other);
    }

    public static void main(String[] arguments) throws IOException, InterruptedException {
        Path text = Path.of(arguments.length > 0 ? arguments[0] : "examples/harbour.txt");
        Options options = Options.seed(1);
        double begin = seconds();
        Zmatrix.learn(1, 2, 3).close();
        System.out.printf("loading the library: %.2f s%n", seconds() - begin);
        if (arguments.length > 1) {
            compareLearning(text, arguments[1]);
        }
        try (Model letters = Zmatrix.learn(text); Model words = Zmatrix.learner().words().learn(text);
                Model numbers = Zmatrix.learn(IntStream.range(0, 5000).map(step -> step * 3 % 1000).toArray())) {
            rate("letters in bulk", () -> letters.generate("The ", COUNT, options));
            rate("numbers in bulk", () -> numbers.generate(new int[0], COUNT, options));
            rate("letters one by one", () -> letters.continueWith("The ", COUNT, options).stream().count());
            rate("words one by one", () -> words.continueWith("The", COUNT, options).stream().count());
            rate("numbers one by one", () -> numbers.continueWith(new int[0], COUNT, options).stream().count());
        }
    }
}
