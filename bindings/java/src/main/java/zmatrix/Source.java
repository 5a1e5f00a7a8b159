package zmatrix;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.stream.Stream;

/** One input: the items of a text or of a series of numbers, or the bytes of a file of music. */
record Source(Form form, int[] items, byte[] bytes, String name) {
    enum Form { TEXT, NUMBERS, MIDI, KERN }

    private static final List<String> SUFFIXES = List.of(".txt", ".mid", ".midi", ".krn");
    private static final int KERN_HEAD = 65536; // bytes that are searched for the line with **kern

    Kind kind() {
        return switch (form) {
            case TEXT -> Kind.TEXT;
            case NUMBERS -> Kind.NUMBERS;
            default -> Kind.MUSIC;
        };
    }

    int length() {
        return items.length;
    }

    boolean isBlank() {
        for (int item : items) {
            if (!Character.isWhitespace(item)) {
                return false;
            }
        }
        return true;
    }

    /** The sources in a text, a path, the bytes of a file, numbers, or several of these. */
    static List<Source> allOf(Object given) {
        List<Source> sources = new ArrayList<>();
        add(given, sources);
        return sources;
    }

    private static void add(Object given, List<Source> sources) {
        if (given instanceof CharSequence text) {
            sources.add(new Source(Form.TEXT, Text.itemsOf(text), null, "text"));
        } else if (given instanceof byte[] bytes) {
            sources.add(ofBytes(bytes, "bytes"));
        } else if (given instanceof int[] numbers) {
            sources.add(new Source(Form.NUMBERS, numbers.clone(), null, "numbers"));
        } else if (given instanceof Path path) {
            addPath(path, sources);
        } else if (given instanceof Iterable<?> several) {
            addSeveral(several, sources);
        } else {
            throw new IllegalArgumentException("a text, a path, bytes, numbers or an iterable of these is learned, not "
                    + (given == null ? "null" : given.getClass().getName()));
        }
    }

    private static void addSeveral(Iterable<?> several, List<Source> sources) {
        List<Object> entries = new ArrayList<>();
        several.forEach(entries::add);
        if (!entries.isEmpty() && entries.stream().allMatch(Integer.class::isInstance)) {
            add(entries.stream().mapToInt(Integer.class::cast).toArray(), sources);
        } else {
            entries.forEach(entry -> add(entry, sources));
        }
    }

    private static void addPath(Path path, List<Source> sources) {
        try {
            if (Files.isDirectory(path)) {
                for (Path file : filesOf(path)) {
                    addPath(file, sources);
                }
            } else {
                sources.add(ofBytes(Files.readAllBytes(path), path.toString()));
            }
        } catch (IOException e) {
            throw new InputException("cannot read " + path + ": " + e, e);
        } catch (OutOfMemoryError e) {
            throw new LimitException(path + " does not fit into memory");
        }
    }

    private static List<Path> filesOf(Path folder) throws IOException {
        try (Stream<Path> entries = Files.list(folder)) {
            return entries.filter(entry -> hasSuffix(entry) && Files.isRegularFile(entry)).sorted().toList();
        }
    }

    private static boolean hasSuffix(Path file) {
        String name = file.getFileName().toString().toLowerCase(Locale.ROOT);
        return SUFFIXES.stream().anyMatch(name::endsWith);
    }

    private static Source ofBytes(byte[] bytes, String name) {
        if (bytes.length >= 4 && bytes[0] == 'M' && bytes[1] == 'T' && bytes[2] == 'h' && bytes[3] == 'd') {
            return new Source(Form.MIDI, new int[0], bytes.clone(), name);
        }
        if (isKern(bytes)) {
            return new Source(Form.KERN, new int[0], bytes.clone(), name);
        }
        int[] numbers = Text.numbersOf(bytes);
        if (numbers != null) {
            return new Source(Form.NUMBERS, numbers, null, name);
        }
        return new Source(Form.TEXT, Text.itemsOf(Text.decode(bytes)), null, name);
    }

    private static boolean isKern(byte[] bytes) {
        String head = Text.latin(bytes, Math.min(bytes.length, KERN_HEAD));
        for (String line : (Iterable<String>) head.lines()::iterator) {
            if (line.startsWith("**")) {
                return List.of(line.split("\t")).contains("**kern");
            }
            if (!line.isEmpty() && !line.startsWith("!")) {
                return false;
            }
        }
        return false;
    }
}
