package zmatrix;

import java.nio.file.Path;

/** The sample files, in the folder that scripts/java makes. */
final class Examples {
    static final Path FOLDER = Path.of("examples");

    private Examples() {}

    static Path of(String name) {
        return FOLDER.resolve(name);
    }

    static Model harbour() {
        return Zmatrix.learn(of("harbour.txt"));
    }
}
