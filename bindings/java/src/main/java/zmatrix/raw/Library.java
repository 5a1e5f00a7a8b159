package zmatrix.raw;

import com.sun.jna.FunctionMapper;
import com.sun.jna.Native;
import com.sun.jna.NativeLibrary;
import com.sun.jna.Platform;
import java.io.File;
import java.io.IOException;
import java.util.Map;

/** Loads the shared library: the one in the jar, or the one that the environment variable ZMATRIX_LIBRARY names. */
final class Library {
    private static final String PATH = pathOfLibrary();

    private Library() {}

    /** Binds each native method of a class to the function of its name followed by {@code suffix}. */
    static void bind(Class<?> functions, String suffix) {
        FunctionMapper name = (library, method) -> method.getName() + suffix;
        Map<String, Object> options = Map.of(com.sun.jna.Library.OPTION_FUNCTION_MAPPER, name,
                com.sun.jna.Library.OPTION_STRING_ENCODING, "UTF-8", com.sun.jna.Library.OPTION_CLASSLOADER,
                Library.class.getClassLoader());
        Native.register(functions, NativeLibrary.getInstance(PATH, options));
    }

    private static String pathOfLibrary() {
        String named = System.getenv("ZMATRIX_LIBRARY");
        return named != null ? named : extract("/" + Platform.RESOURCE_PREFIX + "/libzmatrix.so");
    }

    /** The loader needs a file, so the library is copied to a temporary one that is deleted with the process. */
    private static String extract(String resource) {
        try {
            File copy = Native.extractFromResourcePath(resource, Library.class.getClassLoader());
            copy.deleteOnExit();
            return copy.getAbsolutePath();
        } catch (IOException e) {
            throw new UnsatisfiedLinkError("the jar holds no library for this platform: " + e.getMessage());
        }
    }
}
