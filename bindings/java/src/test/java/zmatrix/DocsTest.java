package zmatrix;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.ByteArrayOutputStream;
import java.io.PrintStream;
import java.net.URI;
import java.net.URL;
import java.net.URLClassLoader;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.regex.MatchResult;
import java.util.regex.Pattern;
import javax.tools.JavaCompiler;
import javax.tools.SimpleJavaFileObject;
import javax.tools.ToolProvider;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Compiles and runs the code of docs/java.md in order and compares the output with the page. */
class DocsTest {
    private static final String SEPARATOR = "\f\n";

    @TempDir
    Path folder;

    private static class Page extends SimpleJavaFileObject {
        private final String code;

        Page(String code) {
            super(URI.create("string:///Page.java"), Kind.SOURCE);
            this.code = code;
        }

        @Override
        public CharSequence getCharContent(boolean ignoresErrors) {
            return code;
        }
    }

    private static String program(List<MatchResult> blocks) {
        StringBuilder imports = new StringBuilder();
        StringBuilder body = new StringBuilder();
        for (MatchResult block : blocks) {
            block.group(1).lines().forEach(line -> (line.startsWith("import ") ? imports : body).append(line).append('\n'));
            body.append("System.out.print(\"\\f\\n\");\n");
        }
        return imports + "public class Page { public static void main(String[] none) throws Exception {\n" + body + "}}\n";
    }

    private String output(String program) throws Exception {
        JavaCompiler compiler = ToolProvider.getSystemJavaCompiler();
        assertTrue(compiler.getTask(null, null, null, List.of("-d", folder.toString()), null, List.of(new Page(program))).call());
        PrintStream before = System.out;
        ByteArrayOutputStream written = new ByteArrayOutputStream();
        System.setOut(new PrintStream(written, true, StandardCharsets.UTF_8));
        try (URLClassLoader loader = new URLClassLoader(new URL[] {folder.toUri().toURL()})) {
            loader.loadClass("Page").getMethod("main", String[].class).invoke(null, (Object) new String[0]);
        } finally {
            System.setOut(before);
        }
        return written.toString(StandardCharsets.UTF_8);
    }

    @Test
    void thePageDoesWhatItSays() throws Exception {
        Pattern code = Pattern.compile("```java\n(.*?)```(?:\\s*```text\n(.*?)```)?", Pattern.DOTALL);
        List<MatchResult> blocks = code.matcher(Files.readString(Path.of("java.md"))).results().toList();
        String[] outputs = output(program(blocks)).split(SEPARATOR, -1);
        int compared = 0;
        for (int at = 0; at < blocks.size(); at++) {
            String expected = blocks.get(at).group(2);
            assertEquals(expected == null ? "" : expected, outputs[at]);
            compared += expected == null ? 0 : 1;
        }
        assertTrue(compared >= 4, "the page has outputs");
    }
}
